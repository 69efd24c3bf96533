#include "desktop/serve/JobHandler.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <set>

#include "foundation/Base64.h"
#include "jobhost/model/Packet.h"
#include "tests/support/PropertyServerThread.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/TcpClient.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using Zpl::Host::Packet;

constexpr std::size_t LargeAnswer = 3'000'000 / SanitizerFactor;

/// A job handler whose packets the test takes in place of the host: each is written down, and answered if it asks.
class JobHandlerTest : public testing::Test {
protected:
    JobHandlerTest() {
        host_ = std::make_unique<BusComponent>(threads_, ComponentIdentifiers::ZplHost, folder_ / "socket");
        JobHandlerOptions options;
        options.facts = [] {
            PrinterFacts facts;
            facts.version = "1.2";
            facts.totalMemory = 8192 << 10;
            facts.freeMemory = 64 << 10;
            facts.paused = true;
            return facts;
        };
        options.longestFormat = 40 << 20;
        options.ratePeriod = std::chrono::milliseconds(100);
        options.longestHold = std::chrono::milliseconds(100);
        options.onCancelled = [this](std::uint32_t packet) { cancelledUpTo_ = packet; };
        handler_ = std::make_unique<JobHandler>(
            threads_, folder_ / "socket", "127.0.0.1", 0,
            [this](PrinterEvent const& event) {
                if (!event.Line().empty()) said_ += event.Line() + '\n';
            },
            options);
        command_ = host_->Properties().Follow<StringProperty>(
            ComponentIdentifiers::JobHandler, ExternalAppRegistration::EveryWrite,
            {PropertyNames::ZPLCommandToProcess, "", PropertyGroups::PrintOperations}, "");
        // Properties change on the bus's thread; the packets are taken on the event loop, beside the test.
        command_->AddCallback([this](std::shared_ptr<Property> const& changed) {
            QMetaObject::invokeMethod(
                &application_, [this, text = changed->ValueText()] { Take(Packet::Parse(text)); },
                Qt::QueuedConnection);
        });
    }
    ~JobHandlerTest() override {
        for (int const client : clients_) ::close(client);
        handler_.reset();
        host_.reset();
    }

    void Take(std::optional<Packet> const& packet) {
        if (!packet) return;
        packets_ += '[' + packet->payload + (packet->Command == Packet::EndOfStream ? "]." : "]");
        if (deaf_) return;
        using enum zpl::NetworkResponse::Status;
        Respond(Processing, std::nullopt);
        if (stuck_) return;
        if (packet->payload.find("~HS") != std::string::npos) Respond(Answer, std::string("\x02 ok\xFF\0\r\n", 8));
        if (packet->payload.find("echo") != std::string::npos) Respond(Answer, packet->payload);
        if (packet->payload.find("large") != std::string::npos) Respond(Answer, std::string(LargeAnswer, 'x'));
        bool const isLast = packet->Command == Packet::EndOfStream;
        bool const isJob = packet->payload.find("^XZ") != std::string::npos;
        if (isLast && !isJob) Respond(Done, std::nullopt);
        command_->Set("");
        if (isJob) Respond(Answer, "page of " + packet->payload);
    }
    void Respond(zpl::NetworkResponse::Status status, std::optional<std::string> const& data) {
        auto const text = data ? std::optional(Base64::Encode(*data)) : std::nullopt;
        host_->Write(ComponentIdentifiers::JobHandler, PropertyNames::ZPLResponseToProcess,
                     zpl::NetworkResponse::Create(status, text));
    }
    /// A client who sends this, and stays until the end of the test or until it hangs up.
    int Connect(std::string const& bytes = "") {
        int const client = *clients_.insert(ConnectTo(handler_->Port())).first;
        Send(client, bytes);
        return client;
    }
    void HangUp(int client) {
        clients_.erase(client);
        ::close(client);
    }
    /// One who has no more to say.
    int ConnectAndEnd(std::string const& bytes) {
        int const client = Connect(bytes);
        ::shutdown(client, SHUT_WR);
        return client;
    }
    static void Settle() {
        QCoreApplication::processEvents();
        ::usleep(2000);
    }
    static void SettleLong() {
        for (int i = 0; i < 25; ++i) Settle();
    }
    /// Runs the event loop until the client has as many bytes, or has been hung up on.
    std::string Read(int client, std::size_t size) {
        std::string bytes;
        for (int i = 0; i < 2000 * SanitizerFactor && bytes.size() < size; ++i) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            char buffer[64 * 1024];
            ssize_t const count = ::recv(client, buffer, sizeof buffer, MSG_DONTWAIT);
            if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
            if (count == 0) break;
            ::usleep(1000);
        }
        return bytes;
    }

    /// Runs the event loop until the host has been given what is expected, or the user has been told it.
    void Await(std::string const& received, std::string const& expected) {
        for (int i = 0; i < 20000 * SanitizerFactor && received.find(expected) == std::string::npos; ++i) Settle();
        EXPECT_NE(received.find(expected), std::string::npos) << expected;
    }
    /// Sends all of it, however much that is, or what is taken before the connection is closed.
    void Send(int client, std::string_view bytes) {
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(120 * SanitizerFactor);
        while (!bytes.empty() && std::chrono::steady_clock::now() < end) {
            ssize_t const count = ::send(client, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
            if (count < 0 && errno != EAGAIN) return;
            if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
            if (!bytes.empty()) QCoreApplication::processEvents();
        }
    }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    TemporaryDirectory folder_;
    ThreadFactory threads_{10};
    PropertyServerThread server_{folder_.Path()};
    std::unique_ptr<BusComponent> host_;
    std::shared_ptr<StringProperty> command_;
    std::unique_ptr<JobHandler> handler_;
    std::set<int> clients_;
    std::string packets_;
    std::string said_;
    std::uint32_t cancelledUpTo_ = 0;
    bool deaf_ = false;   // the host hears nothing of packets
    bool stuck_ = false;  // it begins with them, and no more
};

TEST_F(JobHandlerTest, SendsAnswersBackOnTheSameConnection) {
    std::string const answer("\x02 ok\xFF\0\r\n", 8);
    int const other = Connect();
    int const client = Connect("~HS\r\n");
    EXPECT_EQ(Read(client, 8), answer);
    EXPECT_EQ(packets_, "[~HS\r\n].");
    // Again on the same connection, and half closed as a sender does that waits for the answer.
    Send(client, "~HS~HS");
    ::shutdown(client, SHUT_WR);
    EXPECT_EQ(Read(client, 100), answer) << "and then the connection ends";
    EXPECT_EQ(::recv(other, &packets_[0], 1, MSG_DONTWAIT), -1) << "nobody else is answered";
}

TEST_F(JobHandlerTest, GivesEachClientItsOwnAnswers) {
    std::vector<int> clients;
    for (int i = 0; i < 4; ++i) clients.push_back(Connect());
    std::vector<std::string> expected(clients.size());
    for (int round = 0; round < 5; ++round) {
        for (std::size_t i = 0; i < clients.size(); ++i) {
            std::string const question = "~echo" + std::to_string(i) + '.' + std::to_string(round) + '\n';
            Send(clients[i], question);
            expected[i] += question;
        }
        if (round % 2) Settle();
    }
    for (std::size_t i = 0; i < clients.size(); ++i) EXPECT_EQ(Read(clients[i], expected[i].size()), expected[i]);
}

TEST_F(JobHandlerTest, OneAnswerMayBeLarge) {
    int const client = Connect("~large");
    auto const answer = Read(client, LargeAnswer);
    EXPECT_TRUE(answer == std::string(LargeAnswer, 'x')) << answer.size();
}

TEST_F(JobHandlerTest, PagesAnswerTheSenderOfTheirJob) {
    int const asking = ConnectAndEnd("^XA^XZ");  // as `nc -N` does
    int const other = Connect("~echo");
    EXPECT_EQ(Read(asking, 100), "page of ^XA^XZ");
    EXPECT_EQ(Read(other, 5), "~echo");
}

TEST_F(JobHandlerTest, AnswersAtTheDoorInTheOrderOfTheQuestions) {
    struct Row {
        char const* question;
        std::string answer;
        char const* packets;  // to the host
    };
    std::string settings = "\x02";
    for (auto const& [value, name] :
         std::initializer_list<std::pair<std::string, std::string>>{{"15.0", "DARKNESS"},
                                                                    {"0.0 IPS", "PRINT SPEED"},
                                                                    {"+000", "TEAR OFF"},
                                                                    {"TEAR OFF", "PRINT MODE"},
                                                                    {"DIRECT-THERMAL", "PRINT METHOD"},
                                                                    {"GAP/NOTCH", "MEDIA TYPE"},
                                                                    {"0 DOTS", "PRINT WIDTH"},
                                                                    {"0 DOTS", "LABEL LENGTH"},
                                                                    {"<~>", "CONTROL CHAR"},
                                                                    {"<^>", "COMMAND CHAR"},
                                                                    {"<,>", "DELIM. CHAR"},
                                                                    {"8/MM", "RESOLUTION"},
                                                                    {"V1.2", "FIRMWARE"},
                                                                    {"8192KB", "MEMORY"},
                                                                    {"", "IP ADDRESS"},
                                                                    {"", "SERIAL NUMBER"}})
        settings +=
            "  " + value + std::string(20 - value.size(), ' ') + name + std::string(20 - name.size(), ' ') + "\r\n";
    settings += "\x03\r\n";
    Row const rows[] = {
        {"~HI", "\x02ZPLHOST,V1.2,8,8192KB,X\x03\r\n", ""},
        {"~HM\r\n", "\0028192,8192,0064\x03\r\n", ""},
        {"~HQES\r\n",
         "\x02\r\n\r\n  PRINTER STATUS\r\n    ERRORS:         1 00000000 00080000\r\n"
         "    WARNINGS:       0 00000000 00000000\r\n\x03",
         ""},
        {"^HH", settings, ""},
        {"! U1 getvar \"device.languages\"\r\n", "\"zpl\"", ""},
        {"! U1 setvar \"device.friendly_name\" \"^XA\"\r\n! U1 getvar \"none\"\r\n", "\"?\"", ""},
        {"~HS~HI", std::string("\x02 ok\xFF\0\r\n", 8) + "\x02ZPLHOST,V1.2,8,8192KB,X\x03\r\n", "[~HS]."},
        {"^XA^FDa~HI", "\x02ZPLHOST,V1.2,8,8192KB,X\x03\r\n", ""},
        {"b~HS", std::string("\x02 ok\xFF\0\r\n", 8), "[^XA~HS]."},
        {"c^FS^XZ", "page of ^XA^FDa^FXb^FXc^FS^XZ", "[^XA^FDa^FXb^FXc^FS^XZ]."},
    };
    int const client = Connect();
    for (auto const& row : rows) {
        packets_.clear();
        Send(client, row.question);
        EXPECT_EQ(Read(client, row.answer.size()), row.answer) << row.question;
        std::erase_if(packets_, [](char c) { return std::string_view(" \r\n").find(c) != std::string_view::npos; });
        EXPECT_EQ(packets_, row.packets) << row.question;
    }
}

TEST_F(JobHandlerTest, LabelsDoNotWaitForThoseWhoAskWithoutEnd) {
    constexpr std::size_t Questions = 3000;
    for (std::string flood : {"", "^XA"}) {
        for (std::size_t i = 0; i < Questions; ++i) flood += "~HS";
        Connect(flood);
    }
    Await(packets_, "~HS");
    ConnectAndEnd("^XA^XZ");
    Await(packets_, "[^XA^XZ].");
    EXPECT_LT(std::count(packets_.begin(), packets_.end(), '~'), Questions / 2);
}

TEST_F(JobHandlerTest, HandsOverWhatIsWholeAndNothingElse) {
    int const slow = Connect("^XA1^XZ^XA2" + std::string(30'000, 'x'));
    Await(packets_, "[^XA1^XZ].");
    Send(slow, "x");
    ConnectAndEnd("^XA3^XZ");
    Await(packets_, "[^XA1^XZ].[^XA3^XZ].");
    Send(slow, "^XZ^X");
    Await(packets_, "x^XZ].");
    EXPECT_EQ(packets_.find("^X]"), std::string::npos);
    HangUp(slow);
    Await(packets_, "[^X].");
    int const broken = Connect("^XA^FDa");
    HangUp(broken);
    Await(said_, "amid a label, which is not printed: after 7 bytes from ^XA no ^XZ has come");
}

TEST_F(JobHandlerTest, CutsAStreamOfManyLabelsIntoJobs) {
    std::string stream;
    for (int i = 10'000; i < 15'000; ++i) stream += "^XA" + std::to_string(i) + "^XZ";
    ConnectAndEnd(stream);
    Await(packets_, "14999^XZ].");
    std::string payloads;
    for (std::size_t at = 0, end = 0; (end = packets_.find("].", at)) != std::string::npos; at = end + 2) {
        std::string job = packets_.substr(at, end - at);
        std::erase_if(job, [](char c) { return c == '[' || c == ']'; });
        EXPECT_LT(std::count(job.begin(), job.end(), 'Z'), 2500);
        EXPECT_TRUE(job.ends_with("^XZ"));
        payloads += job;
    }
    EXPECT_EQ(payloads, stream);
}

TEST_F(JobHandlerTest, ALabelOfManyMegabytesArrivesWhole) {
    std::string label = "^XA";
    for (int i = 0; label.size() < 3U << 20; ++i) label += "^FX" + std::to_string(i);
    label += "^XZ";
    ConnectAndEnd(label);
    Await(packets_, "^XZ].");
    std::erase_if(packets_, [](char c) { return c == '[' || c == ']' || c == '.'; });
    EXPECT_TRUE(packets_ == label) << packets_.size() << " of " << label.size();
}

// A stream is read as the ones before it, of whatever sender, have left the printer.
TEST_F(JobHandlerTest, LooksAtAStreamAnewWhenAnotherChangesHowItIsRead) {
    int const waiting = Connect("^XA1");
    SettleLong();
    int const changing = Connect();
    auto const prefix =
        host_->Own<StringProperty>(PropertyNames::ZPLFormatCharacter, PropertyGroups::PrintOperations, "^");
    prefix->Set("/");
    Await(said_, "the format prefix is /");
    Send(waiting, "^XZ/XA2/XZ");
    Await(packets_, "[^XA1^XZ/XA2/XZ].");
    // A byte order mark counts to the end of its stream.
    Send(changing, "\xFF\xFE");
    HangUp(changing);
    Send(waiting, "/XA3/XZ");
    Await(packets_, "[/XA3/XZ].");
}

TEST_F(JobHandlerTest, ClosesWhatIsTooLongOrTooSlow) {
    std::string const most(17 << 20, 'x');
    Connect("^XA^FD" + most);
    Await(said_, "its label comes at less than 16384 bytes a second");
    Await(packets_, "[\n].");
    int const command = Connect();
    for (int i = 0; i < 3; ++i) Send(command, i == 0 ? "~DG" + most : most);
    Await(said_, "its command is longer than 40 MiB");
    Connect(most);
    Await(said_, "without a command");
    packets_.clear();
    Connect("^XA^XZ");
    Await(packets_, "[^XA^XZ].");
}

TEST_F(JobHandlerTest, DropsLabelsThatWait) {
    deaf_ = true;
    for (int i = 0; i < 3; ++i) ConnectAndEnd("^XA^XZ"), SettleLong();
    EXPECT_EQ(handler_->DropWaiting(), 2U) << "the host has the first";
    EXPECT_EQ(handler_->DropWaiting(), 0U);
}

TEST_F(JobHandlerTest, NothingOfAnOpenStreamOutlivesACancellation) {
    stuck_ = true;
    std::string const half = "^XA^CI28^FD" + std::string(40 << 10, 'x') + "^XZ";
    int const client = Connect(half + half + half);
    Await(packets_, half + ']');
    SettleLong();
    handler_->DropWaiting();
    EXPECT_EQ(cancelledUpTo_, 1U);
    stuck_ = false;
    packets_.clear();
    command_->Set("");
    Await(packets_, "[\n].");
    EXPECT_EQ(cancelledUpTo_, 2U) << "the job that the host makes of what it has";
    Send(client, "^XA1^XZ");
    Await(packets_, "^XA1^XZ].");
    EXPECT_EQ(packets_.substr(0, 40), "[\n].[^XA1^XZ].");
}

TEST_F(JobHandlerTest, DropsAStreamOnWhichTheHostEndsTwice) {
    stuck_ = true;
    int const bad = Connect("^XA^CI28^XZ");
    Await(packets_, "[^XA^CI28^XZ].");
    SettleLong();
    handler_->HostEnded(false);
    // The next host finds the packet.
    Respond(zpl::NetworkResponse::Status::Processing, std::nullopt);
    SettleLong();
    stuck_ = false;
    handler_->HostEnded(false);
    // Read as UTF-8, which the lost stream has set, the byte would take the prefix behind it with it.
    Connect("^XA^FD\xE4^XZ");
    Await(packets_, "[^XA^FD\xE4^XZ].");
    char byte = 0;
    EXPECT_EQ(::recv(bad, &byte, 1, MSG_DONTWAIT), -1) << "its sender is not told that it was taken";
    EXPECT_EQ(errno, ECONNRESET);
}

TEST_F(JobHandlerTest, TheNextHostIsGivenWhatTheLastOneHad) {
    int const client = Connect();
    for (char const* const label : {"^XA1^XZ", "^XA2^XZ", "^XA3^XZ"}) {
        Send(client, label);
        Await(packets_, std::string("[") + label + "].");
        SettleLong();
    }
    handler_->NoteJobOver(1);
    stuck_ = true;
    Send(client, "^XA4^XZ");
    Await(packets_, "[^XA4^XZ].");
    SettleLong();
    packets_.clear();
    stuck_ = false;
    handler_->HostEnded(false);
    Send(client, "~echo");
    Await(packets_, "[~echo].");
    EXPECT_EQ(packets_, "[^XA2^XZ].[^XA3^XZ].[^XA4^XZ].[~echo].");
    // A stream that cancels what came before it stays.
    packets_.clear();
    Send(client, "^XA5^XZ");
    Await(packets_, "[^XA5^XZ].");
    SettleLong();
    handler_->ForgetJobs();
    handler_->HostEnded(false);
    Await(packets_, "[^XA5^XZ].[^XA5^XZ].");
    SettleLong();
    handler_->DropWaiting();
    handler_->HostEnded(false);
    Send(client, "~echo");
    Await(packets_, "[~echo].");
    EXPECT_EQ(packets_, "[^XA5^XZ].[^XA5^XZ].[~echo].");
}

// It is of the packet before, and repeated after the property server was lost.
TEST_F(JobHandlerTest, AClearingOfWhatTheHostHasNotBegunDoesNotCount) {
    deaf_ = true;
    Connect("^XA1^XZ");
    Await(packets_, "[^XA1^XZ].");
    deaf_ = false;
    command_->Set("");
    Await(packets_, "[^XA1^XZ].[^XA1^XZ].");
}

}  // namespace
