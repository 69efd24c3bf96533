#pragma once

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "foundation/TemporaryFolder.h"

/// What streams have stored under a name that their senders share, until nobody has used it for a while. Works on one
/// session follow each other.
class Sessions {
public:
    using Work = std::function<void(std::filesystem::path const& folder)>;

    /// `start` gives a work to a thread; false if there are too many.
    explicit Sessions(std::function<bool(std::function<void()>)> start) : start_(std::move(start)) {}

    /// Starts a work on the folder of the session's objects, now or behind the one that is under way. Throws Refusal.
    void Run(std::string const& name, Work work);
    /// Ends those that nobody has used for a while.
    void EndIdle();

private:
    struct Session {
        TemporaryFolder folder{std::filesystem::temp_directory_path(), "zpl-session-"};
        std::deque<Work> waiting;
        bool isBusy = false;
        bool wasTooLarge = false;
        std::chrono::steady_clock::time_point used;
    };

    void RunAll(std::shared_ptr<Session> const& session);
    std::shared_ptr<Session> Find(std::string const& name);

    std::function<bool(std::function<void()>)> start_;
    std::mutex mutex_;
    std::map<std::string, std::shared_ptr<Session>> sessions_;
};
