#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "desktop/web/HttpMessage.h"

/// What a client may take of the server. Whoever passes a limit is told so, if it can be, and let go.
struct HttpLimits {
    std::size_t headerBytes = 64 << 10;  ///< with the address, which may hold a stream
    std::size_t bodyBytes = 16 << 20;
    std::size_t allBodyBytes = 256 << 20;      ///< of all clients that are sending
    std::size_t connections = 256;             ///< past it the one goes that has kept the server waiting for longest
    std::chrono::milliseconds idle{60'000};    ///< between two requests
    std::chrono::milliseconds header{10'000};  ///< from the first byte of a request to the end of its header
    std::chrono::milliseconds body{30'000};    ///< from there to the end of the request
    std::chrono::milliseconds answer{10'000};  ///< from there until the answer is there
    std::chrono::milliseconds write{30'000};   ///< until the client has taken the answer, or a piece of it
};

/// Speaks HTTP/1.1 (RFC 9112) with any number of clients on one thread, so that a slow one takes nothing but memory.
class HttpServer {
public:
    /// Takes an answer, once, from any thread.
    using Reply = std::function<void(HttpAnswer)>;

    struct Doors {
        /// Looks at the header before the body is read; an answer refuses the request.
        std::function<std::optional<HttpAnswer>(HttpRequest const&)> admit;
        /// Answers a request; it must not wait.
        std::function<void(HttpRequest, Reply)> open;
        /// The answer to a request that the server itself refuses, with the status and a sentence.
        std::function<HttpAnswer(HttpRequest const&, unsigned, std::string const&)> refuse;
    };

    /// Listens; throws std::system_error. Port 0 picks a free one.
    HttpServer(std::string const& host, unsigned port, HttpLimits limits, Doors doors);
    ~HttpServer();
    HttpServer(HttpServer const&) = delete;
    HttpServer& operator=(HttpServer const&) = delete;

    unsigned Port() const;
    /// Whether only this machine reaches it.
    bool IsLocal() const;
    /// Serves until Stop is called.
    void Run();
    /// From any thread.
    void Stop();
    /// There may be more in the feeds. From any thread.
    void WakeFeeds();
    /// Calls it on the server's thread when one of the signals comes that end a process.
    void OnEndSignal(std::function<void()> take);

private:
    class Connection;
    struct State;
    std::unique_ptr<State> state_;
};
