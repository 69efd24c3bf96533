#include "desktop/serve/Listener.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace {

/// A socket address of either family.
struct Address {
    sockaddr_storage storage{};
    socklen_t size = sizeof storage;

    sockaddr* Get() { return reinterpret_cast<sockaddr*>(&storage); }
    sockaddr_in& V4() { return reinterpret_cast<sockaddr_in&>(storage); }
    sockaddr_in6& V6() { return reinterpret_cast<sockaddr_in6&>(storage); }
    bool IsV6() const { return storage.ss_family == AF_INET6; }

    in_port_t& Port() { return IsV6() ? V6().sin6_port : V4().sin_port; }
    bool IsLoopback() {
        constexpr unsigned LoopbackNetwork = 127;
        if (IsV6()) return IN6_IS_ADDR_LOOPBACK(&V6().sin6_addr);
        return ntohl(V4().sin_addr.s_addr) >> 24 == LoopbackNetwork;
    }
};

/// A name stands for its IPv4 address.
Address AddressOf(std::string host, unsigned port) {
    // Also where no list of hosts names it (RFC 6761).
    if (host == "localhost") host = "127.0.0.1";
    addrinfo hints{};
    hints.ai_family = host.find(':') == host.npos ? AF_INET : AF_INET6;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (int const error = ::getaddrinfo(host.c_str(), nullptr, &hints, &found); error != 0)
        throw std::runtime_error("cannot listen at " + host + ": " + ::gai_strerror(error));
    Address address;
    std::memcpy(address.Get(), found->ai_addr, found->ai_addrlen);
    address.size = found->ai_addrlen;
    ::freeaddrinfo(found);
    address.Port() = htons(static_cast<std::uint16_t>(port));
    return address;
}

}  // namespace

std::string AddressText(std::string const& host, unsigned port) {
    return (host.find(':') == host.npos ? host : '[' + host + ']') + ':' + std::to_string(port);
}

Listener::Listener(std::string const& host, unsigned port) {
    constexpr int Backlog = 1024;
    Address address = AddressOf(host, port);
    descriptor_ = ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    int const on = 1;
    ::setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (::bind(descriptor_, address.Get(), address.size) != 0 || ::listen(descriptor_, Backlog) != 0 ||
        ::getsockname(descriptor_, address.Get(), &address.size) != 0) {
        int const error = errno;
        ::close(descriptor_);
        throw std::system_error(error, std::generic_category(), "cannot listen at " + AddressText(host, port));
    }
    port_ = ntohs(address.Port());
    local_ = address.IsLoopback();
}

Listener::~Listener() { ::close(descriptor_); }

int Listener::Accept() const { return ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }
