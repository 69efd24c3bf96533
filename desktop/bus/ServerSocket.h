#pragma once

#include <sys/types.h>
#include <chrono>
#include <filesystem>
#include <optional>

/// The socket that a server listens on, at a path that cleaners of temporary folders reach: when it is no longer there
/// it is made again.
class ServerSocket {
public:
    /// Throws std::system_error if the socket cannot be had; also if a server is listening on it already. A socket that
    /// a dead server left is replaced.
    explicit ServerSocket(std::filesystem::path path);
    ~ServerSocket();
    ServerSocket(ServerSocket const&) = delete;
    ServerSocket& operator=(ServerSocket const&) = delete;

    int Descriptor() const { return listener_; }
    /// Becomes readable when something has changed beside the socket; NoteChange is to be called then. -1 if the system
    /// has no more of the kind.
    int WatchDescriptor() const { return watch_; }
    void NoteChange();
    /// Listens at the path again if the socket is not there, a moment after it has gone: whoever removes a whole folder
    /// is let finish. Gives the milliseconds until then, as poll takes them. What cannot be done is logged, and left
    /// until the next change.
    int RestoreInTime();

private:
    using Clock = std::chrono::steady_clock;

    bool IsThere() const;
    void Restore();
    void Listen();

    std::filesystem::path const path_;
    int listener_ = -1;
    int watch_ = -1;
    ino_t inode_ = 0;  // of the socket at the path
    std::optional<Clock::time_point> due_;
};
