#include "desktop/web/HttpConnection.h"

#include <algorithm>
#include <array>
#include <ctime>

using namespace HttpParts;

namespace {

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

}  // namespace

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
