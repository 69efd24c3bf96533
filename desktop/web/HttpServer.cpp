#include "desktop/web/HttpServer.h"

#include <signal.h>

#include <algorithm>
#include <system_error>

#include "desktop/web/HttpConnection.h"

using namespace HttpParts;

namespace {

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
