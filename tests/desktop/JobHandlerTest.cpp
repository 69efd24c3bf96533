#include "desktop/serve/JobHandler.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <atomic>
#include <thread>

#include "desktop/bus/PropertyServer.h"
#include "foundation/Base64.h"
#include "jobhost/model/Packet.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using Zpl::Host::Packet;

/// A job handler whose packets the test takes in place of the host: each is written down, and answered if it asks.
class JobHandlerTest : public testing::Test {
protected:
    JobHandlerTest() : stop_(::eventfd(0, 0)) {
        auto made = std::make_unique<PropertyServer>(folder_ / "bus", folder_ / "archive");
        server_ = std::thread([this, held = std::move(made)]() mutable {
            held->Run(stop_);
            held.reset();
        });
        host_ = std::make_unique<BusComponent>(threads_, ComponentIdentifiers::ZplHost, folder_ / "bus");
        handler_ = std::make_unique<JobHandler>(threads_, folder_ / "bus", "127.0.0.1", 0);
        command_ = host_->Properties().Follow<StringProperty>(
            ComponentIdentifiers::JobHandler, ExternalAppRegistration::EveryWrite,
            {PropertyNames::ZPLCommandToProcess, "", PropertyGroups::PrintOperations}, "");
        command_->AddCallback([this](std::shared_ptr<Property> const& changed) {
            auto const packet = Packet::Parse(changed->ValueText());
            if (!packet) return;
            packets_ += '[' + packet->payload + (packet->Command == Packet::EndOfStream ? "]." : "]");
            if (deaf_) return;
            using enum zpl::NetworkResponse::Status;
            Respond(Processing, std::nullopt);
            if (packet->payload.find("~HS") != std::string::npos) Respond(Answer, std::string("\x02 ok\xFF\0\r\n", 8));
            if (packet->payload.find("echo") != std::string::npos) Respond(Answer, packet->payload);
            if (packet->payload.find("large") != std::string::npos) Respond(Answer, std::string(3'000'000, 'x'));
            bool const isLast = packet->Command == Packet::EndOfStream;
            bool const isJob = packet->payload.find("^XZ") != std::string::npos;
            if (isLast && !isJob) Respond(Done, std::nullopt);
            command_->Set("");
            if (isJob) Respond(Answer, "page of " + packet->payload);
        });
    }
    ~JobHandlerTest() override {
        handler_.reset();
        host_.reset();
        std::uint64_t const one = 1;
        EXPECT_EQ(::write(stop_, &one, sizeof one), 8);
        server_.join();
        ::close(stop_);
    }

    void Respond(zpl::NetworkResponse::Status status, std::optional<std::string> const& data) {
        auto const text = data ? std::optional(Base64::Encode(*data)) : std::nullopt;
        host_->Write(ComponentIdentifiers::JobHandler, PropertyNames::ZPLResponseToProcess,
                     zpl::NetworkResponse::Create(status, text));
    }
    int Connect() const {
        int const client = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(handler_->Port()));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        return client;
    }
    static void Settle() {
        QCoreApplication::processEvents();
        ::usleep(2000);
    }
    /// Runs the event loop until the client has as many bytes, or has been hung up on.
    std::string Read(int client, std::size_t size) {
        std::string bytes;
        for (int i = 0; i < 2000 && bytes.size() < size; ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            char buffer[64 * 1024];
            ssize_t const count = ::recv(client, buffer, sizeof buffer, MSG_DONTWAIT);
            if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
            if (count == 0) break;
            ::usleep(1000);
        }
        return bytes;
    }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    TemporaryDirectory folder_;
    ThreadFactory threads_{10};
    int stop_;
    std::thread server_;
    std::unique_ptr<BusComponent> host_;
    std::shared_ptr<StringProperty> command_;
    std::unique_ptr<JobHandler> handler_;
    std::string packets_;
    std::atomic<bool> deaf_{false};  // the host takes packets and does nothing with them
};

TEST_F(JobHandlerTest, SendsAnswersBackOnTheSameConnection) {
    std::string const answer("\x02 ok\xFF\0\r\n", 8);
    int const other = Connect();
    int const client = Connect();
    ASSERT_EQ(::send(client, "~HS\r\n", 5, 0), 5);
    EXPECT_EQ(Read(client, 8), answer);
    EXPECT_EQ(packets_, "[~HS\r\n].");
    // Again on the same connection, and half closed as a sender does that waits for the answer.
    ASSERT_EQ(::send(client, "~HS~HS", 6, 0), 6);
    ::shutdown(client, SHUT_WR);
    EXPECT_EQ(Read(client, 100), answer) << "and then the connection ends";
    EXPECT_EQ(::recv(other, &packets_[0], 1, MSG_DONTWAIT), -1) << "nobody else is answered";
    ::close(client);
    ::close(other);
}

TEST_F(JobHandlerTest, GivesEachClientItsOwnAnswers) {
    std::vector<int> clients;
    for (int i = 0; i < 4; ++i) clients.push_back(Connect());
    std::vector<std::string> expected(clients.size());
    for (int round = 0; round < 5; ++round) {
        for (std::size_t i = 0; i < clients.size(); ++i) {
            std::string const question = "~echo" + std::to_string(i) + '.' + std::to_string(round) + '\n';
            ASSERT_EQ(::send(clients[i], question.data(), question.size(), 0), static_cast<ssize_t>(question.size()));
            expected[i] += question;
        }
        if (round % 2) Settle();
    }
    for (std::size_t i = 0; i < clients.size(); ++i) {
        EXPECT_EQ(Read(clients[i], expected[i].size()), expected[i]);
        ::close(clients[i]);
    }
}

TEST_F(JobHandlerTest, OneAnswerMayBeLarge) {
    int const client = Connect();
    ASSERT_EQ(::send(client, "~large", 6, 0), 6);
    EXPECT_EQ(Read(client, 3'000'000), std::string(3'000'000, 'x'));
    ::close(client);
}

TEST_F(JobHandlerTest, PagesAnswerTheSenderOfTheirJob) {
    int const asking = Connect();
    int const other = Connect();
    ASSERT_EQ(::send(asking, "^XA^XZ", 6, 0), 6);
    // Hung up as `nc -N` does.
    ::shutdown(asking, SHUT_WR);
    ASSERT_EQ(::send(other, "~echo", 5, 0), 5);
    EXPECT_EQ(Read(asking, 100), "page of ^XA^XZ");
    EXPECT_EQ(Read(other, 5), "~echo");
    ::close(asking);
    ::close(other);
}

TEST_F(JobHandlerTest, DropsAStreamOnWhichTheHostEndsTwice) {
    deaf_ = true;
    int const bad = Connect();
    int const good = Connect();
    ASSERT_EQ(::send(bad, "~bad", 4, 0), 4);
    ::close(bad);
    for (int i = 0; i < 500 && packets_.empty(); ++i) Settle();
    EXPECT_EQ(packets_, "[~bad].");
    handler_->HostEnded();
    Settle();
    deaf_ = false;
    handler_->HostEnded();
    ASSERT_EQ(::send(good, "~echo", 5, 0), 5);
    EXPECT_EQ(Read(good, 5), "~echo");
    ::close(good);
}

}  // namespace
