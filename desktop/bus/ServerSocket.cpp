#include "desktop/bus/ServerSocket.h"

#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "foundation/DebugZones.h"
#include "propertybus/SocketAddress.h"

namespace {

[[noreturn]] void Fail(std::string const& what) { throw std::system_error(errno, std::generic_category(), what); }

bool IsServed(SocketAddress const& address) {
    int const probe = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    bool const served = ::connect(probe, address.Get(), SocketAddress::Size) == 0;
    ::close(probe);
    return served;
}

int OpenListener(std::filesystem::path const& path) {
    std::filesystem::create_directories(path.parent_path());
    SocketAddress const address(path);
    if (IsServed(address)) {
        errno = EADDRINUSE;
        Fail(path.string());
    }
    ::unlink(path.c_str());
    int const listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    mode_t const before = ::umask(0177);
    bool const bound = ::bind(listener, address.Get(), SocketAddress::Size) == 0;
    ::umask(before);
    if (!bound || ::listen(listener, 32) != 0) {
        int const error = errno;
        ::close(listener);
        errno = error;
        Fail(path.string());
    }
    return listener;
}

}  // namespace

ServerSocket::ServerSocket(std::filesystem::path path)
    : path_(std::move(path)), watch_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    try {
        Listen();
    } catch (...) {
        ::close(watch_);
        throw;
    }
}

ServerSocket::~ServerSocket() {
    ::close(listener_);
    ::close(watch_);
    if (IsThere()) ::unlink(path_.c_str());
}

void ServerSocket::Listen() {
    int const listener = OpenListener(path_);
    ::close(std::exchange(listener_, listener));
    struct stat status {};
    ::lstat(path_.c_str(), &status);
    inode_ = status.st_ino;
    // The folder may be a new one too.
    auto const folder = path_.parent_path();
    ::inotify_add_watch(watch_, folder.empty() ? "." : folder.c_str(),
                        IN_DELETE | IN_MOVED_FROM | IN_DELETE_SELF | IN_MOVE_SELF);
}

bool ServerSocket::IsThere() const {
    struct stat status {};
    return ::lstat(path_.c_str(), &status) == 0 && status.st_ino == inode_;
}

void ServerSocket::NoteChange() {
    constexpr std::chrono::milliseconds Pause{100};
    char events[4096];
    while (::read(watch_, events, sizeof events) > 0) {
    }
    if (!IsThere()) due_ = Clock::now() + Pause;
}

int ServerSocket::RestoreInTime() {
    if (!due_) return -1;
    auto const left = std::chrono::ceil<std::chrono::milliseconds>(*due_ - Clock::now());
    if (left.count() > 0) return static_cast<int>(left.count());
    due_.reset();
    Restore();
    return -1;
}

void ServerSocket::Restore() {
    if (IsThere()) return;
    try {
        Listen();
        DebugLog(Warning, path_.string() + " was removed; it is made again");
    } catch (std::exception const& error) {
        DebugLog(Error, std::string("the socket was removed and cannot be made again: ") + error.what());
    }
}
