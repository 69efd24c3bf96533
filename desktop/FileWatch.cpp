#include "desktop/FileWatch.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <set>
#include <system_error>
#include <utility>

namespace {

std::string FolderOf(std::string const& file) {
    auto const folder = std::filesystem::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

/// Holds signals back while it lives.
class SignalsHeldBack {
public:
    SignalsHeldBack() {
        sigset_t signals;
        sigemptyset(&signals);
        for (int const signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &before_);
    }
    ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeldBack(SignalsHeldBack const&) = delete;
    SignalsHeldBack& operator=(SignalsHeldBack const&) = delete;

    sigset_t const& Before() const { return before_; }

private:
    sigset_t before_{};
};

}  // namespace

FileWatch::FileWatch(std::vector<std::string> const& files)
    : files_(files), descriptor_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    for (auto const& file : files_) {
        auto const folder = FolderOf(file);
        int const watch = ::inotify_add_watch(descriptor_, folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO);
        if (watch < 0) {
            std::system_error const error(errno, std::generic_category(), "cannot watch " + folder);
            ::close(descriptor_);
            throw error;
        }
        folders_[folder] = watch;
    }
}

FileWatch::~FileWatch() { ::close(descriptor_); }

std::vector<std::string> FileWatch::Wait(std::function<bool()> const& isOver) {
    // A signal that comes behind the question ends the waiting.
    SignalsHeldBack const held;
    for (;;) {
        if (isOver()) return {};
        if (auto changed = TakeChanged(); !changed.empty()) return changed;
        pollfd ready{descriptor_, POLLIN, 0};
        ::ppoll(&ready, 1, nullptr, &held.Before());
    }
}

std::vector<std::string> FileWatch::TakeChanged() {
    std::set<std::pair<int, std::string>> written;
    bool isLost = false;  // of what was written
    alignas(inotify_event) std::array<char, 16384> buffer{};
    for (;;) {
        auto const size = ::read(descriptor_, buffer.data(), buffer.size());
        if (size <= 0) break;
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += sizeof event;
            if (event.len != 0) written.emplace(event.wd, buffer.data() + at);
            isLost = isLost || (event.mask & IN_Q_OVERFLOW) != 0;
            at += event.len;
        }
    }
    std::vector<std::string> changed;
    std::copy_if(files_.begin(), files_.end(), std::back_inserter(changed), [&](std::string const& file) {
        auto const name = std::filesystem::path(file).filename().string();
        return isLost || written.contains({folders_.at(FolderOf(file)), name});
    });
    return changed;
}
