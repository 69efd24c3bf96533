#pragma once

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

struct HttpReply {
    int status = 0;      ///< 0 if there was no answer
    std::string header;  ///< in lower case
    std::string body;

    /// The value of a field; empty if there is none.
    std::string Field(std::string const& name) const {
        auto const at = header.find("\r\n" + name + ": ");
        auto const begin = at + name.size() + 4;
        return at == std::string::npos ? std::string() : header.substr(begin, header.find('\r', begin) - begin);
    }
};

/// Speaks to an HTTP server of this machine, byte for byte as it is told.
class HttpClient {
public:
    explicit HttpClient(int port) : port_(port) {}

    int Connect() const {
        int const client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        timeval const patience{60, 0};
        ::setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port_));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) std::perror("connect");
        return client;
    }
    static void Send(int client, std::string const& bytes) {
        for (std::size_t sent = 0; sent < bytes.size();) {
            auto const count = ::send(client, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) return;
            sent += static_cast<std::size_t>(count);
        }
    }
    /// Up to the end of the connection, or to `end`.
    static std::string Receive(int client, std::string const& end = {}) {
        std::string text;
        char buffer[65536];
        while (end.empty() || text.find(end) == std::string::npos) {
            auto const count = ::recv(client, buffer, sizeof buffer, 0);
            if (count <= 0) break;
            text.append(buffer, static_cast<std::size_t>(count));
        }
        return text;
    }
    static HttpReply Read(std::string const& text) {
        HttpReply reply;
        auto const end = text.find("\r\n\r\n");
        if (end == std::string::npos) return reply;
        reply.header = text.substr(0, end + 2);
        std::transform(reply.header.begin(), reply.header.end(), reply.header.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        reply.status = std::atoi(text.c_str() + text.find(' '));
        reply.body = text.substr(end + 4);
        return reply;
    }
    /// The answer to bytes on a connection of their own.
    HttpReply Exchange(std::string const& bytes) const {
        int const client = Connect();
        Send(client, bytes);
        auto const reply = Read(Receive(client));
        ::close(client);
        return reply;
    }
    /// `fields`: lines of the header, each with its end.
    HttpReply Ask(std::string const& method, std::string const& target, std::string const& body = {},
                  std::string const& fields = {}) const {
        std::string const host = fields.find("Host:") == std::string::npos ? "Host: localhost\r\n" : "";
        return Exchange(method + ' ' + target + " HTTP/1.1\r\n" + host + "Connection: close\r\nContent-Length: " +
                        std::to_string(body.size()) + "\r\n" + fields + "\r\n" + body);
    }

private:
    int port_;
};

/// `zpl web`.
class WebProgram {
public:
    explicit WebProgram(std::vector<std::string> const& options = {}) {
        int output[2];
        if (::pipe(output) != 0) return;
        process_ = ::fork();
        if (process_ == 0) {
            ::dup2(output[1], 1);
            ::close(output[0]);
            std::vector<std::string> words = {ZPL_PROGRAM, "web", "--web", "127.0.0.1:0"};
            words.insert(words.end(), options.begin(), options.end());
            std::vector<char*> list;
            for (auto& word : words) list.push_back(word.data());
            list.push_back(nullptr);
            ::execv(ZPL_PROGRAM, list.data());
            ::_exit(127);
        }
        ::close(output[1]);
        for (char c = 0; ::read(output[0], &c, 1) == 1 && c != '\n';) line_ += c;
        ::close(output[0]);
    }
    ~WebProgram() {
        ::kill(process_, SIGTERM);
        ::waitpid(process_, nullptr, 0);
    }
    HttpClient Client() const { return HttpClient(std::atoi(line_.c_str() + line_.rfind(':') + 1)); }

private:
    pid_t process_ = 0;
    std::string line_;
};
