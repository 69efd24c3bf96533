#pragma once

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <thread>

#include "desktop/bus/PropertyServer.h"

/// A property server at FOLDER/socket on a thread, until the object goes; another may follow it.
class PropertyServerThread {
public:
    explicit PropertyServerThread(std::filesystem::path const& folder) : stop_(::eventfd(0, 0)) {
        auto server = std::make_unique<PropertyServer>(folder / "socket", folder / "archive");
        thread_ = std::thread([this, server = std::move(server)]() mutable {
            server->Run(stop_);
            server.reset();
        });
    }
    ~PropertyServerThread() {
        std::uint64_t const one = 1;
        EXPECT_EQ(::write(stop_, &one, sizeof one), 8);
        thread_.join();
        ::close(stop_);
    }

private:
    int stop_;
    std::thread thread_;
};
