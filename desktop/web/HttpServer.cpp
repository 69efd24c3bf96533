#include "desktop/web/HttpServer.h"

#include <signal.h>

#include <array>
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <ctime>
#include <list>
#include <system_error>

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using Error = beast::error_code;
using Tcp = asio::ip::tcp;

HttpRequest RequestOf(http::request_header<> const& header) {
    HttpRequest request;
    request.method = std::string(header.method_string());
    std::string const target(header.target());
    auto const question = target.find('?');
    request.path = target.substr(0, question);
    if (question != std::string::npos) request.query = target.substr(question + 1);
    for (auto const& field : header) {
        std::string name(field.name_string());
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
        request.fields.emplace_back(std::move(name), std::string(field.value()));
    }
    return request;
}

/// The time as HTTP has it (RFC 9110, 5.6.7).
std::string DateNow() {
    std::time_t const now = std::time(nullptr);
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%a, %d %b %Y %H:%M:%S GMT", &utc);
    return text.data();
}

Tcp::endpoint EndpointOf(asio::io_context& context, std::string const& host, unsigned port) {
    // Also where no list of hosts names it (RFC 6761).
    std::string const name = host == "localhost" ? "127.0.0.1" : host;
    Error error;
    auto const address = asio::ip::make_address(name, error);
    if (!error) return {address, static_cast<unsigned short>(port)};
    auto const found = Tcp::resolver(context).resolve(Tcp::v4(), name, std::to_string(port), error);
    if (error) throw std::runtime_error("cannot listen at " + host + ": " + error.message());
    return found.begin()->endpoint();
}

}  // namespace

/// What the connections share.
struct HttpServer::State {
    State(std::string const& host, unsigned port, HttpLimits itsLimits, Doors itsDoors);

    void Accept();
    void Admit(Tcp::socket socket);
    bool MakeRoom();
    void Forget(Connection* connection);

    HttpLimits const limits;
    Doors const doors;
    asio::io_context context{1};
    Tcp::acceptor acceptor{context};
    asio::steady_timer acceptPause{context};
    asio::signal_set signals{context};
    std::list<std::shared_ptr<Connection>> connections;  ///< who has waited longest is the first
    std::size_t bodyBytes = 0;                           ///< of requests that are being read
};

/// One client: its requests are read, answered and written one after the other. It lives as long as something is under
/// way for it.
class HttpServer::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(State& state, Tcp::socket socket)
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
    void RefuseError(Error error);
    bool AdmitHeader();
    void TakeHeader();
    void CountBody(std::size_t bytes);
    void Open();
    void Refuse(unsigned status, std::string const& sentence);
    void Send(HttpAnswer answer, bool keepsOn);
    void WriteFeed(std::string piece);
    void Sent(Error error);
    void Linger();

    State& state_;
    Tcp::socket socket_;
    asio::steady_timer timer_;
    beast::flat_buffer buffer_;
    std::optional<http::request_parser<http::string_body>> parser_;
    HttpRequest request_;
    bool isAdmitted_ = false;
    bool keepsOn_ = false;
    bool isHead_ = false;
    bool isWriting_ = false;
    std::size_t counted_ = 0;  ///< of the body, in the sum of all
    std::uint64_t turn_ = 0;   ///< which request is under way: an answer to an earlier one comes too late
    std::uint64_t alarm_ = 0;  ///< which deadline counts
    Step step_ = Step::Idle;
    http::response<http::string_body> response_;
    std::optional<http::response_serializer<http::string_body>> serializer_;
    std::unique_ptr<HttpFeed> feed_;
    std::string piece_;
    std::size_t lingered_ = 0;
};

// ---- Steps

void HttpServer::Connection::SetStep(Step step, std::chrono::milliseconds time) {
    step_ = step;
    timer_.expires_after(time);
    timer_.async_wait([self = shared_from_this(), alarm = ++alarm_](Error error) {
        if (!error && alarm == self->alarm_) self->TimeIsUp();
    });
}

void HttpServer::Connection::TimeIsUp() {
    if (step_ == Step::Header) return Refuse(408, "the header of the request was not complete in time");
    if (step_ == Step::Body) return Refuse(408, "the body of the request was not complete in time");
    if (step_ == Step::Answer) return Refuse(503, "this took longer than a request may take");
    if (step_ == Step::Feed && !isWriting_) return WriteFeed(": still here\n\n");
    Close();
}

void HttpServer::Connection::Close() {
    if (step_ == Step::Closed) return;
    step_ = Step::Closed;
    CountBody(0);
    ++alarm_;
    timer_.cancel();
    Error ignored;
    socket_.shutdown(Tcp::socket::shutdown_both, ignored);
    socket_.close(ignored);
    state_.Forget(this);
}

/// Of the bytes that are held for requests under way, this client's are so many.
void HttpServer::Connection::CountBody(std::size_t bytes) {
    state_.bodyBytes += bytes - counted_;
    counted_ = bytes;
}

// ---- Reading

void HttpServer::Connection::Await() {
    parser_.emplace();
    parser_->header_limit(static_cast<std::uint32_t>(state_.limits.headerBytes));
    parser_->body_limit(state_.limits.bodyBytes);
    request_ = {};
    isAdmitted_ = false;
    SetStep(Step::Idle, state_.limits.idle);
    state_.connections.splice(state_.connections.end(), state_.connections, place);
    if (buffer_.size() > 0) SetStep(Step::Header, state_.limits.header);
    Parse();
}

void HttpServer::Connection::Read() {
    socket_.async_read_some(buffer_.prepare(ReadAhead), [self = shared_from_this()](Error error, std::size_t bytes) {
        self->buffer_.commit(bytes);
        if (!self->KeepsWaiting()) return;
        if (error) return self->Close();
        if (self->IsIdle()) self->SetStep(Step::Header, self->state_.limits.header);
        self->Parse();
    });
}

/// Takes what has come, as far as it goes: up to the end of the header, and then to the end of the request.
void HttpServer::Connection::Parse() {
    Error error;
    while (!error && buffer_.size() > 0 && !parser_->is_done() && (isAdmitted_ || !parser_->is_header_done()))
        buffer_.consume(parser_->put(buffer_.data(), error));
    if (error && error != http::error::need_more) return RefuseError(error);
    if (!parser_->is_header_done()) return Read();
    if (!isAdmitted_) return TakeHeader();
    CountBody(parser_->get().body().size());
    if (state_.bodyBytes > state_.limits.allBodyBytes) return Refuse(503, "too much is being sent at once; try again");
    if (!parser_->is_done()) return Read();
    Open();
}

void HttpServer::Connection::RefuseError(Error error) {
    auto const& limits = state_.limits;
    if (error == http::error::header_limit)
        return Refuse(431, "the header of a request may have " + std::to_string(limits.headerBytes >> 10) + " KiB");
    if (error != http::error::body_limit) return Refuse(400, "this is no HTTP request");
    // Who may not ask at all is told that.
    if (isAdmitted_ || AdmitHeader())
        Refuse(413, "the body of a request may have " + std::to_string(limits.bodyBytes >> 20) + " MiB");
}

/// False if it has been refused.
bool HttpServer::Connection::AdmitHeader() {
    request_ = RequestOf(parser_->get().base());
    isHead_ = request_.method == "HEAD";
    isAdmitted_ = true;
    auto refusal = state_.doors.admit(request_);
    if (!refusal) return true;
    bool const isWhole = parser_->is_done() && parser_->get().keep_alive();
    Send(std::move(*refusal), isWhole);
    return false;
}

void HttpServer::Connection::TakeHeader() {
    if (!AdmitHeader()) return;
    SetStep(Step::Body, state_.limits.body);
    if (!beast::iequals(parser_->get()[http::field::expect], "100-continue")) return Parse();
    static constexpr std::string_view GoOn = "HTTP/1.1 100 Continue\r\n\r\n";
    asio::async_write(socket_, asio::buffer(GoOn.data(), GoOn.size()),
                      [self = shared_from_this()](Error error, std::size_t) {
                          if (self->step_ != Step::Body) return;
                          error ? self->Close() : self->Parse();
                      });
}

// ---- Answering

void HttpServer::Connection::Open() {
    keepsOn_ = parser_->get().keep_alive();
    request_.body = std::move(parser_->get().body());
    SetStep(Step::Answer, state_.limits.answer);
    // An answer may come from any thread, and when nobody waits for it any more.
    auto reply = [weak = weak_from_this(), turn = ++turn_, &context = state_.context](HttpAnswer answer) {
        auto const self = weak.lock();
        if (!self) return;
        auto const shared = std::make_shared<HttpAnswer>(std::move(answer));
        asio::dispatch(context, [self, turn, shared] {
            if (self->step_ == Step::Answer && self->turn_ == turn) self->Send(std::move(*shared), self->keepsOn_);
        });
    };
    HttpRequest head{request_.method, request_.path, request_.query, request_.fields, {}};
    std::swap(head, request_);
    state_.doors.open(std::move(head), std::move(reply));
}

void HttpServer::Connection::Refuse(unsigned status, std::string const& sentence) {
    ++turn_;
    // What is still being read is not wanted any more.
    Error ignored;
    socket_.cancel(ignored);
    Send(state_.doors.refuse(request_, status, sentence), false);
}

/// Behind a request of which not all has been read there is no other one.
void HttpServer::Connection::Send(HttpAnswer answer, bool keepsOn) {
    CountBody(0);
    keepsOn_ = keepsOn && !answer.feed;
    feed_ = std::move(answer.feed);
    response_ = {static_cast<http::status>(answer.status), 11};
    response_.set(http::field::date, DateNow());
    if (!answer.type.empty()) response_.set(http::field::content_type, answer.type);
    for (auto const& [name, value] : answer.fields) response_.set(name, value);
    response_.keep_alive(keepsOn_);
    std::size_t const size = answer.body.size();
    if (!isHead_) response_.body() = std::move(answer.body);
    if (!feed_ && answer.status != 204) response_.content_length(size);
    serializer_.emplace(response_);
    SetStep(Step::Write, state_.limits.write);
    auto const sent = [self = shared_from_this()](Error error, std::size_t) { self->Sent(error); };
    // The end of the connection is that of a feed.
    if (feed_ || isHead_) return http::async_write_header(socket_, *serializer_, sent);
    http::async_write(socket_, *serializer_, sent);
}

void HttpServer::Connection::Sent(Error error) {
    if (step_ == Step::Closed) return;
    serializer_.reset();
    response_ = {};
    isWriting_ = false;
    if (error) return Close();
    if (feed_) {
        constexpr std::chrono::seconds Sign{15};
        SetStep(Step::Feed, Sign);
        return WakeFeed();
    }
    if (keepsOn_) return Await();
    Linger();
}

void HttpServer::Connection::WakeFeed() {
    if (step_ != Step::Feed || isWriting_) return;
    if (auto piece = feed_->Next(); !piece.empty()) WriteFeed(std::move(piece));
}

void HttpServer::Connection::WriteFeed(std::string piece) {
    piece_ = std::move(piece);
    isWriting_ = true;
    SetStep(Step::Feed, state_.limits.write);
    asio::async_write(socket_, asio::buffer(piece_),
                      [self = shared_from_this()](Error error, std::size_t) { self->Sent(error); });
}

/// A connection that is closed while its client sends is lost to it with the answer; so what comes is read and thrown
/// away for a moment.
void HttpServer::Connection::Linger() {
    constexpr std::chrono::seconds Moment{2};
    constexpr std::size_t Most = 64 << 20;
    if (step_ != Step::Linger) {
        SetStep(Step::Linger, Moment);
        Error ignored;
        socket_.shutdown(Tcp::socket::shutdown_send, ignored);
        parser_.reset();
        buffer_.clear();
    }
    socket_.async_read_some(buffer_.prepare(ReadAhead), [self = shared_from_this()](Error error, std::size_t bytes) {
        self->lingered_ += bytes;
        if (error || self->lingered_ > Most) return self->Close();
        if (self->step_ == Step::Linger) self->Linger();
    });
}

void HttpServer::Connection::RefuseBusy() { Refuse(503, "too many clients are connected; try again"); }

// ---- Connections

HttpServer::State::State(std::string const& host, unsigned port, HttpLimits itsLimits, Doors itsDoors)
    : limits(itsLimits), doors(std::move(itsDoors)) {
    auto const endpoint = EndpointOf(context, host, port);
    try {
        acceptor.open(endpoint.protocol());
        acceptor.set_option(Tcp::acceptor::reuse_address(true));
        acceptor.bind(endpoint);
        acceptor.listen(1024);
    } catch (boost::system::system_error const& error) {
        throw std::system_error(error.code().value(), std::generic_category(),
                                "cannot listen at " + host + ":" + std::to_string(port));
    }
    Accept();
}

void HttpServer::State::Accept() {
    acceptor.async_accept([this](Error error, Tcp::socket socket) {
        if (error == asio::error::operation_aborted) return;
        if (!error) {
            Admit(std::move(socket));
            return Accept();
        }
        // Without descriptors there is nothing to do but to wait for some.
        acceptPause.expires_after(std::chrono::milliseconds(50));
        acceptPause.async_wait([this](Error ended) {
            if (!ended) Accept();
        });
    });
}

void HttpServer::State::Admit(Tcp::socket socket) {
    Error ignored;
    socket.set_option(Tcp::no_delay(true), ignored);
    bool const hasRoom = connections.size() < limits.connections || MakeRoom();
    auto const connection = std::make_shared<Connection>(*this, std::move(socket));
    connection->place = connections.insert(connections.end(), connection);
    hasRoom ? connection->Start() : connection->RefuseBusy();
}

/// Lets a client go that sends nothing, or, if there is none, one that has not sent its request yet; false if there is
/// none of these either.
bool HttpServer::State::MakeRoom() {
    auto found = std::find_if(connections.begin(), connections.end(), [](auto const& each) { return each->IsIdle(); });
    if (found == connections.end())
        found =
            std::find_if(connections.begin(), connections.end(), [](auto const& each) { return each->KeepsWaiting(); });
    if (found == connections.end()) return false;
    auto const connection = *found;
    connection->Close();
    return true;
}

void HttpServer::State::Forget(Connection* connection) { connections.erase(connection->place); }

HttpServer::HttpServer(std::string const& host, unsigned port, HttpLimits limits, Doors doors)
    : state_(std::make_unique<State>(host, port, limits, std::move(doors))) {}

HttpServer::~HttpServer() = default;

unsigned HttpServer::Port() const { return state_->acceptor.local_endpoint().port(); }

bool HttpServer::IsLocal() const { return state_->acceptor.local_endpoint().address().is_loopback(); }

void HttpServer::Run() { state_->context.run(); }

void HttpServer::Stop() { state_->context.stop(); }

void HttpServer::WakeFeeds() {
    asio::post(state_->context, [this] {
        for (auto const& connection : std::list(state_->connections)) connection->WakeFeed();
    });
}

void HttpServer::OnEndSignal(std::function<void()> take) {
    for (int const number : {SIGTERM, SIGINT, SIGHUP}) state_->signals.add(number);
    state_->signals.async_wait([take = std::move(take)](Error error, int) {
        if (!error) take();
    });
}
