#include "desktop/serve/StreamsAtHost.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <QtCore/QCoreApplication>

namespace {

using Zpl::Host::Packet;

class StreamsAtHostTest : public testing::Test {
protected:
    /// Gives a packet that the host takes; the last of its stream unless told otherwise.
    std::uint32_t Give(std::string payload, Encoding after = Encoding::SingleByte, bool isLast = true) {
        Packet packet{1, 0, std::move(payload)};
        if (isLast) packet.Command = Packet::EndOfStream;
        std::uint32_t const number = streams_.Give({std::move(packet), nullptr}, after).packet.Number;
        streams_.NoteTaken(true);
        return number;
    }
    /// The first bytes of what the next host is given, packet by packet.
    std::string Repeated() {
        std::string bytes;
        for (streams_.Repeat({}); streams_.IsRepeating();) bytes += streams_.GiveAgain().packet.payload.substr(0, 1);
        return bytes;
    }

    StreamsAtHost streams_;
};

TEST_F(StreamsAtHostTest, RoomOfStreamsThatAreOverIsFree) {
    std::string const half(StreamsAtHost::MostBytes / 2, 'x');
    for (int i = 0; i < 2; ++i) streams_.NoteOver(Give(half));
    Give("a" + half.substr(1));
    Give("b" + half.substr(1));
    EXPECT_EQ(Repeated(), "ab");
    Give("c");
    EXPECT_EQ(Repeated(), "ab") << "that one is too large to be kept beside them, and lost";
}

TEST_F(StreamsAtHostTest, TheEncodingIsThatBehindTheLastStreamThatHasEnded) {
    EXPECT_EQ(streams_.EncodingAfter(), Encoding::SingleByte);
    Give("a", Encoding::Utf8);
    auto const second = Give("b", Encoding::Utf16Le);
    EXPECT_EQ(streams_.EncodingAfter(), Encoding::Utf16Le);
    Give("c", Encoding::Utf16Be, false);
    EXPECT_EQ(streams_.EncodingAfter(), Encoding::Utf16Le) << "the third is still open";
    streams_.NoteOver(second);
    EXPECT_EQ(streams_.EncodingAfter(), Encoding::SingleByte);
    EXPECT_EQ(Repeated(), "c");
}

class ConnectionsTest : public testing::Test {
protected:
    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
    Connections connections_;
};

TEST_F(ConnectionsTest, WhoWasPutOffFirstHasTheFirstTurn) {
    std::vector<ClientConnection*> clients;
    for (int i = 0; i < 3; ++i) clients.push_back(&connections_.Add(::eventfd(0, EFD_CLOEXEC), {}));
    for (std::size_t const i : {1U, 0U, 2U, 1U}) connections_.PutOff(*clients[i]);
    for (std::size_t const i : {1U, 0U, 2U}) EXPECT_EQ(connections_.NextPutOff().get(), clients[i]);
    EXPECT_EQ(connections_.NextPutOff(), nullptr);
}

TEST_F(ConnectionsTest, LargeAnswersAreDroppedWhileTooMuchWaitsForClientsThatDoNotRead) {
    std::string const large(Connections::MostUnsent / 2 + (1 << 20), 'x');
    for (int i = 0; i < 3; ++i) {
        int ends[2];
        ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0);
        auto& client = connections_.Add(ends[0], {});
        connections_.Answer(client, large);
        EXPECT_EQ(client.UnsentBytes() > 0, i < 2);
        if (i < 2) continue;
        connections_.Answer(client, "small");
        char answer[6] = "";
        EXPECT_EQ(::recv(ends[1], answer, sizeof answer, 0), 5) << "of one who reads";
    }
}

}  // namespace
