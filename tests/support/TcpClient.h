#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

/// A connection to a port of this machine.
inline int ConnectTo(unsigned port) {
    int const client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    return client;
}
