#pragma once

#include <string>

/// "HOST:PORT"; an IPv6 address stands in brackets.
std::string AddressText(std::string const& host, unsigned port);

/// A socket that takes TCP connections, without waiting for them.
class Listener {
public:
    /// `host` is an IPv4 or IPv6 address, or a name that has one of IPv4; port 0 picks a free one. Throws
    /// std::runtime_error if the address cannot be had.
    Listener(std::string const& host, unsigned port);
    ~Listener();
    Listener(Listener const&) = delete;
    Listener& operator=(Listener const&) = delete;

    int Descriptor() const { return descriptor_; }
    unsigned Port() const { return port_; }
    /// Whether only this machine reaches it.
    bool IsLocal() const { return local_; }
    /// The descriptor of the next connection; negative if there is none.
    int Accept() const;

private:
    int descriptor_ = -1;
    unsigned port_ = 0;
    bool local_ = false;
};
