#pragma once

// The library uses it without saying so.
#include <utility>

#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include "desktop/web/HttpServer.h"

// The inside of HttpServer, which alone sees the library.

namespace HttpParts {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using Error = beast::error_code;
using Tcp = asio::ip::tcp;

}  // namespace HttpParts

/// What the connections share.
struct HttpServer::State {
    State(std::string const& host, unsigned port, HttpLimits itsLimits, Doors itsDoors);

    void Accept();
    void Admit(HttpParts::Tcp::socket socket);
    bool MakeRoom();
    void Forget(Connection* connection);

    HttpLimits const limits;
    Doors const doors;
    HttpParts::asio::io_context context{1};
    HttpParts::Tcp::acceptor acceptor{context};
    HttpParts::asio::steady_timer acceptPause{context};
    HttpParts::asio::signal_set signals{context};
    std::list<std::shared_ptr<Connection>> connections;  ///< who has waited longest is the first
    std::size_t bodyBytes = 0;                           ///< of requests that are being read
};

/// One client: its requests are read, answered and written one after the other. It lives as long as something is under
/// way for it.
class HttpServer::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(State& state, HttpParts::Tcp::socket socket)
        : state_(state),
          socket_(std::move(socket)),
          timer_(state.context),
          buffer_(state.limits.headerBytes + ReadAhead) {}

    void Start() { Await(); }
    void Close();
    /// Whether the server waits for this client, which it need not.
    bool KeepsWaiting() const { return step_ == Step::Idle || step_ == Step::Header || step_ == Step::Body; }
    bool IsIdle() const { return step_ == Step::Idle; }
    void WakeFeed();
    void RefuseBusy();

    std::list<std::shared_ptr<Connection>>::iterator place;  ///< among those of the server

private:
    enum class Step { Idle, Header, Body, Answer, Write, Feed, Linger, Closed };
    static constexpr std::size_t ReadAhead = 64 << 10;

    void Await();
    void SetStep(Step step, std::chrono::milliseconds time);
    void TimeIsUp();
    void Read();
    void Parse();
    void RefuseError(HttpParts::Error error);
    bool AdmitHeader();
    void TakeHeader();
    void CountBody(std::size_t bytes);
    void Open();
    void Refuse(unsigned status, std::string const& sentence);
    void Send(HttpAnswer answer, bool keepsOn);
    void WriteFeed(std::string piece);
    void Sent(HttpParts::Error error);
    void Linger();

    State& state_;
    HttpParts::Tcp::socket socket_;
    HttpParts::asio::steady_timer timer_;
    HttpParts::beast::flat_buffer buffer_;
    std::optional<HttpParts::http::request_parser<HttpParts::http::string_body>> parser_;
    HttpRequest request_;
    bool isAdmitted_ = false;
    bool keepsOn_ = false;
    bool isHead_ = false;
    bool isWriting_ = false;
    std::size_t counted_ = 0;  ///< of the body, in the sum of all
    std::uint64_t turn_ = 0;   ///< which request is under way: an answer to an earlier one comes too late
    std::uint64_t alarm_ = 0;  ///< which deadline counts
    Step step_ = Step::Idle;
    HttpParts::http::response<HttpParts::http::string_body> response_;
    std::optional<HttpParts::http::response_serializer<HttpParts::http::string_body>> serializer_;
    std::unique_ptr<HttpFeed> feed_;
    std::string piece_;
    std::size_t lingered_ = 0;
};
