#include "desktop/web/PrinterClient.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "desktop/web/Refusal.h"

namespace {

constexpr timeval LongestWait{5, 0};
constexpr int AnswerTime = 500;  // milliseconds that a page waits for the first bytes of an answer
constexpr std::size_t MostAnswer = 1 << 20;

/// Who listens at all addresses is reached at the loopback one.
std::string Reachable(std::string const& host) {
    if (host == "0.0.0.0") return "127.0.0.1";
    return host == "::" ? "::1" : host;
}

}  // namespace

PrinterClient::~PrinterClient() { Close(); }

void PrinterClient::Close() {
    if (connection_ >= 0) ::close(connection_);
    connection_ = -1;
}

int PrinterClient::Connect() const {
    auto const colon = address_.rfind(':');
    std::string host = address_.substr(0, colon);
    if (host.starts_with('[')) host = host.substr(1, host.size() - 2);
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    int connection = -1;
    if (colon != std::string::npos &&
        ::getaddrinfo(Reachable(host).c_str(), address_.c_str() + colon + 1, &hints, &found) == 0) {
        connection = ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ::setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &LongestWait, sizeof LongestWait);
        if (::connect(connection, found->ai_addr, found->ai_addrlen) != 0) {
            ::close(connection);
            connection = -1;
        }
        ::freeaddrinfo(found);
    }
    if (connection < 0) throw Refusal(503, "the printer at " + address_ + " does not answer");
    return connection;
}

void PrinterClient::Send(int connection, std::string const& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
        auto const count = ::send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) throw Refusal(503, "the printer takes no more; it may be paused, or have much to print");
        sent += static_cast<std::size_t>(count);
    }
}

void PrinterClient::Print(std::string const& stream) const {
    int const connection = Connect();
    try {
        Send(connection, stream);
    } catch (...) {
        ::close(connection);
        throw;
    }
    ::shutdown(connection, SHUT_WR);
    // Bytes of answers that nobody has read would make the end of the connection an error for the printer.
    pollfd wait{connection, POLLIN, 0};
    char buffer[4096];
    while (::poll(&wait, 1, AnswerTime) > 0 && ::recv(connection, buffer, sizeof buffer, 0) > 0) {
    }
    ::close(connection);
}

void PrinterClient::Write(std::string const& bytes) {
    std::lock_guard const lock(mutex_);
    bool const isFresh = connection_ < 0;
    if (isFresh) connection_ = Connect();
    try {
        Send(connection_, bytes);
    } catch (Refusal const&) {
        Close();
        // The printer may have closed a connection that was idle.
        if (isFresh) throw;
        connection_ = Connect();
        Send(connection_, bytes);
    }
}

std::string PrinterClient::Read() {
    std::lock_guard const lock(mutex_);
    std::string answer;
    char buffer[4096];
    for (int wait = AnswerTime; connection_ >= 0 && answer.size() < MostAnswer; wait = 0) {
        pollfd waits{connection_, POLLIN, 0};
        if (::poll(&waits, 1, wait) <= 0) break;
        auto const count = ::recv(connection_, buffer, sizeof buffer, 0);
        if (count <= 0)
            Close();
        else
            answer.append(buffer, static_cast<std::size_t>(count));
    }
    return answer;
}
