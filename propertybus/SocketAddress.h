#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <filesystem>

/// The address of a Unix domain socket, for bind and connect. An address holds a path of up to 107 bytes; a longer one
/// is named through the descriptor of its folder, which lives as long as this object.
class SocketAddress {
public:
    /// Throws std::system_error if there is no such folder, or the name in it is too long.
    explicit SocketAddress(std::filesystem::path const& path);
    ~SocketAddress();
    SocketAddress(SocketAddress const&) = delete;
    SocketAddress& operator=(SocketAddress const&) = delete;

    sockaddr const* Get() const { return reinterpret_cast<sockaddr const*>(&address_); }
    static constexpr socklen_t Size = sizeof(sockaddr_un);

private:
    int folder_ = -1;
    sockaddr_un address_{};
};
