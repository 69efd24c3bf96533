#include "desktop/serve/Listener.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace {

sockaddr_in AddressOf(std::string host, unsigned port) {
    // Also where no list of hosts names it (RFC 6761).
    if (host == "localhost") host = "127.0.0.1";
    if (host.find(':') != host.npos) throw std::runtime_error("cannot listen at " + host + ": it is no IPv4 address");
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (int const error = ::getaddrinfo(host.c_str(), nullptr, &hints, &found); error != 0)
        throw std::runtime_error("cannot listen at " + host + ": " + ::gai_strerror(error));
    sockaddr_in address = *reinterpret_cast<sockaddr_in const*>(found->ai_addr);
    ::freeaddrinfo(found);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

}  // namespace

Listener::Listener(std::string const& host, unsigned port) {
    constexpr int Backlog = 256;
    sockaddr_in address = AddressOf(host, port);
    descriptor_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    int const on = 1;
    ::setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (::bind(descriptor_, generic, size) != 0 || ::listen(descriptor_, Backlog) != 0 ||
        ::getsockname(descriptor_, generic, &size) != 0) {
        int const error = errno;
        ::close(descriptor_);
        throw std::system_error(error, std::generic_category(),
                                "cannot listen at " + host + ':' + std::to_string(port));
    }
    port_ = ntohs(address.sin_port);
    constexpr unsigned LoopbackNetwork = 127;
    local_ = ntohl(address.sin_addr.s_addr) >> 24 == LoopbackNetwork;
}

Listener::~Listener() { ::close(descriptor_); }

int Listener::Accept() const { return ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }
