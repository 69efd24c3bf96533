#include "desktop/serve/Listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

Listener::Listener(std::string const& host, unsigned port)
    : descriptor_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    constexpr int Backlog = 256;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    int const on = 1;
    ::setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    bool const isAddress = ::inet_pton(AF_INET, host.c_str(), &address.sin_addr) == 1;
    if (!isAddress || ::bind(descriptor_, generic, size) != 0 || ::listen(descriptor_, Backlog) != 0 ||
        ::getsockname(descriptor_, generic, &size) != 0) {
        int const error = isAddress ? errno : EINVAL;
        ::close(descriptor_);
        throw std::system_error(error, std::generic_category(), host + ':' + std::to_string(port));
    }
    port_ = ntohs(address.sin_port);
}

Listener::~Listener() { ::close(descriptor_); }

int Listener::Accept() const { return ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }
