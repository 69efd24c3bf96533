#include <gtest/gtest.h>

#include <thread>

#include "desktop/web/HttpServer.h"
#include "tests/support/HttpClient.h"

// Who may ask, and what nobody may take of the server.

namespace {

using namespace std::chrono_literals;

std::string Label(std::string const& text) { return "^XA^FO20,20^A0N,40,40^FD" + text + "^FS^XZ"; }

/// What hostile clients send, byte for byte, and the right answer.
struct Attack {
    char const* name;
    std::string bytes;
    int status;
};

std::string Post(std::string const& target, std::string const& fields, std::string const& body = {}) {
    return "POST " + target + " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n" + fields +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string Get(std::string const& target, std::string const& fields = "Host: localhost\r\n") {
    return "GET " + target + " HTTP/1.1\r\nConnection: close\r\n" + fields + "\r\n";
}

std::vector<Attack> const Attacks = {
    {"no HTTP", std::string(300, '\x16') + "\r\n\r\n", 400},
    {"foreign name", Get("/openapi.json", "Host: evil.example:9180\r\n"), 403},
    {"name that begins like ours", Get("/openapi.json", "Host: localhost.evil.example\r\n"), 403},
    {"address that begins like ours", Get("/openapi.json", "Host: 127.0.0.1.evil.example\r\n"), 403},
    {"no name", Get("/openapi.json", ""), 403},
    {"two names", Get("/openapi.json", "Host: localhost\r\nHost: evil.example\r\n"), 403},
    {"foreign page", Post("/render", "Origin: https://evil.example\r\n", Label("x")), 403},
    {"page without an origin", Post("/render", "Origin: null\r\n", Label("x")), 403},
    {"page of another port", Post("/render", "Origin: http://localhost:8000\r\n", Label("x")), 403},
    {"picture in a foreign page", Get("/openapi.json", "Host: localhost\r\nSec-Fetch-Site: cross-site\r\n"), 403},
    {"path out of the folder", Get("/../../../../etc/passwd"), 404},
    {"path out of the folder, encoded", Get("/%2e%2e/%2e%2e/%2e%2e/etc/passwd"), 404},
    {"path out of the examples", Get("/examples/..%2f..%2f..%2fREADME.md"), 404},
    {"path with a zero byte", Get("/examples/shipping-label.zpl%00.js"), 404},
    {"body that is said to be huge",
     "POST /render HTTP/1.1\r\nHost: localhost\r\nContent-Length: 99999999999999\r\n\r\nx", 413},
    {"chunk that is said to be huge",
     "POST /render HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n7fffffff\r\nx", 413},
    {"header without end", "GET / HTTP/1.1\r\nHost: localhost\r\nX: " + std::string(200'000, 'x'), 431},
    {"length that is none", "POST /render HTTP/1.1\r\nHost: localhost\r\nContent-Length: -1\r\n\r\n", 400},
    {"form without a boundary", Post("/render", "Content-Type: multipart/form-data\r\n", "--\r\n\r\nx"), 400},
    {"form without end", Post("/render", "Content-Type: multipart/form-data; boundary=b\r\n", "--b\r\n\r\n"), 400},
    {"packed body", Post("/render", "Content-Encoding: gzip\r\n", "\x1f\x8b"), 415},
    {"script in a label", Post("/check", "", "^XA^FO9,9^A0,9^FD<script>alert(1)</script>^FS^XZ"), 200},
};

TEST(WebLimits, HostileRequestsGetTheRightAnswer) {
    WebProgram const server;
    auto const client = server.Client();
    for (auto const& attack : Attacks) {
        auto const reply = client.Exchange(attack.bytes);
        EXPECT_EQ(reply.status, attack.status) << attack.name << ": " << reply.body.substr(0, 300);
        // Whatever it is, no browser takes it for a page.
        EXPECT_EQ(reply.Field("x-content-type-options"), "nosniff") << attack.name;
        EXPECT_EQ(reply.Field("content-type"), "application/json") << attack.name;
    }
    // What asks for pages without end is stopped by the size of its answer or, on a slow machine, by its time.
    auto const endless =
        client.Ask("POST", "/render?format=pdf&copies=99999999&size=30x30in", "^XA^PQ99999999^FO9,9^GB9^FS^XZ");
    EXPECT_TRUE(endless.status == 413 || endless.status == 503) << endless.status;
    EXPECT_EQ(client.Ask("POST", "/render", Label("still here")).status, 200);
    auto const page = client.Ask("GET", "/examples/shipping-label.zpl").header;
    EXPECT_NE(page.find("content-security-policy: default-src 'none'; script-src 'self'"), std::string::npos);
}

TEST(WebLimits, PagesOfAllowedOriginsMayAsk) {
    WebProgram const server({"--allow-origin", "https://labels.example", "--allow-host", "desk.example"});
    auto const client = server.Client();
    std::string const allowed = "Origin: https://labels.example\r\n";
    auto const reply = client.Ask("POST", "/render", Label("x"), "Host: desk.example:80\r\n" + allowed);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.Field("access-control-allow-origin"), "https://labels.example");
    auto const preflight = client.Ask("OPTIONS", "/render", "", allowed);
    EXPECT_EQ(preflight.status, 204);
    EXPECT_EQ(preflight.Field("access-control-allow-methods"), "post");
    EXPECT_EQ(client.Ask("POST", "/render", Label("x"), "Origin: https://labels.example.evil\r\n").status, 403);
    EXPECT_EQ(client.Ask("POST", "/render", Label("x"), "Host: localhost:7\r\nOrigin: http://localhost:7\r\n").status,
              200);
}

/// A server that answers with what it was sent, but for those that nobody answers.
class SmallServer {
public:
    explicit SmallServer(HttpLimits limits)
        : server_("127.0.0.1", 0, limits,
                  {[](HttpRequest const&) { return std::nullopt; },
                   [this](HttpRequest request, HttpServer::Reply reply) {
                       if (request.path == "/never")
                           forgotten_ = std::move(reply);
                       else
                           reply({200, "text/plain", request.body});
                   },
                   [](HttpRequest const&, unsigned status, std::string const& sentence) {
                       return HttpAnswer{status, "text/plain", sentence};
                   }}),
          thread_([this] { server_.Run(); }) {}
    ~SmallServer() {
        server_.Stop();
        thread_.join();
    }
    HttpClient Client() const { return HttpClient(static_cast<int>(server_.Port())); }

private:
    HttpServer::Reply forgotten_;
    HttpServer server_;
    std::thread thread_;
};

TEST(WebLimits, WhoIsSlowIsLetGo) {
    HttpLimits limits;
    limits.idle = 500ms;
    limits.header = limits.body = limits.answer = 50ms;
    SmallServer const server(limits);
    auto const client = server.Client();
    EXPECT_EQ(client.Exchange("").status, 0);
    EXPECT_EQ(client.Exchange("GET / HT").status, 408);
    EXPECT_EQ(client.Exchange("POST / HTTP/1.1\r\nContent-Length: 9\r\n\r\nx").status, 408);
    EXPECT_EQ(client.Ask("GET", "/never").status, 503);
    EXPECT_EQ(client.Ask("POST", "/", "all at once").body, "all at once");
}

TEST(WebLimits, RequestsOfOneConnectionAreAnsweredInTheirOrder) {
    SmallServer const server({});
    auto const client = server.Client();
    int const connection = client.Connect();
    HttpClient::Send(connection,
                     "POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\noneHEAD / HTTP/1.1\r\n\r\n"
                     "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n3\r\ntwo\r\n0\r\n\r\n"
                     "POST / HTTP/1.1\r\nExpect: 100-continue\r\nContent-Length: 5\r\n\r\n");
    auto const early = HttpClient::Receive(connection, "100 Continue\r\n\r\n");
    EXPECT_LT(early.find("one"), early.find("two"));
    HttpClient::Send(connection, "threeGET / HTTP/1.0\r\n\r\n");
    EXPECT_NE(HttpClient::Receive(connection).find("three"), std::string::npos);
    ::close(connection);
}

TEST(WebLimits, ANewClientTakesThePlaceOfOneThatWaits) {
    HttpLimits limits;
    limits.connections = 2;
    SmallServer const server(limits);
    auto const client = server.Client();
    int const busy = client.Connect(), idle = client.Connect();
    HttpClient::Send(busy, "GET /never HTTP/1.1\r\n\r\n");
    HttpClient::Send(idle, "GET / HTTP/1.1\r\n\r\n");
    HttpClient::Receive(idle, "\r\n\r\n");
    EXPECT_EQ(client.Ask("POST", "/", "hello").body, "hello");
    EXPECT_EQ(HttpClient::Receive(idle), "");
    HttpClient::Send(busy, "x");
    ::close(busy);
    ::close(idle);
}

}  // namespace
