#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <future>
#include <thread>

#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "propertybus/PICLIF.h"
#include "propertybus/PublishingPropertyManager.h"
#include "propertybus/SocketAddress.h"
#include "propertybus/ThreadFactory.h"
#include "tests/support/PropertyServerThread.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using namespace std::chrono_literals;

using Server = PropertyServerThread;

/// One process on the bus.
struct Peer {
    Peer(std::filesystem::path const& folder, std::string const& component, std::chrono::milliseconds patience = 5s)
        : properties(std::make_shared<PublishingPropertyManager>(threads, 0, 1, component,
                                                                 folder / (component + ".json"), patience)),
          link(threads, properties) {
        properties->StartThread();
        link.Connect(folder / "socket");
    }
    ~Peer() {
        link.Disconnect();
        properties->StopThread();
    }
    ThreadFactory threads{5};
    std::shared_ptr<PublishingPropertyManager> properties;
    PICLIF link;
};

/// Waits until the property has the value.
template <typename T, typename V>
testing::AssertionResult Becomes(std::shared_ptr<T> const& property, V const& value) {
    auto const end = std::chrono::steady_clock::now() + 10s * SanitizerFactor;
    while (property->Get() != value) {
        if (std::chrono::steady_clock::now() > end) return testing::AssertionFailure() << property->ValueText();
        std::this_thread::sleep_for(1ms);
    }
    return testing::AssertionSuccess();
}

class PropertyLinkTest : public testing::Test {
protected:
    PropertyLinkTest() { debugZoneWarning = false; }
    ~PropertyLinkTest() override { debugZoneWarning = true; }

    TemporaryDirectory folder_;
    PropertyName const name_{"P", "label", "G"};
};

TEST_F(PropertyLinkTest, CarriesValuesBothWays) {
    Server const server(folder_.Path());
    Peer owner(folder_.Path(), "A");
    auto const own = owner.properties->Create<StringProperty>(name_, "first");
    Peer other(folder_.Path(), "B");
    ASSERT_TRUE(PICLGetSetHelper::WaitUntilPropertyAvailable(*other.link.GetServerAgent(), "A", "G", "P"));
    auto const followed = other.properties->Follow<StringProperty>("A", ExternalAppRegistration::Plain, name_, "");
    EXPECT_EQ(followed->Get(), "first") << "the value is there when following begins";
    own->Set("second \xC3\xA9\n");
    EXPECT_TRUE(Becomes(followed, "second \xC3\xA9\n"));
    followed->Set("third");
    EXPECT_TRUE(Becomes(own, "third"));
    other.link.GetServerAgent()->SetProperty("A", "G", "P", "fourth");
    EXPECT_TRUE(Becomes(own, "fourth"));
    EXPECT_EQ(followed->Get(), "fourth");
    debugZoneError = false;
    followed->AddCallback([](auto const&) { throw std::runtime_error("a callback that fails"); });
    for (char const* const value : {"fifth", "sixth"}) {
        own->Set(value);
        EXPECT_TRUE(Becomes(followed, value)) << "whatever became of the callback before";
    }
    debugZoneError = true;
}

TEST_F(PropertyLinkTest, AllEndWithTheSameValueWhoeverWrites) {
    Server const server(folder_.Path());
    Peer owner(folder_.Path(), "A");
    Peer other(folder_.Path(), "B");
    auto const own = owner.properties->Create<UInt32Property>(name_, 0U);
    auto const followed = other.properties->Follow<UInt32Property>("A", ExternalAppRegistration::Plain, name_, 0U);
    std::thread writer([&] {
        for (unsigned i = 1; i <= 3000; ++i) followed->Set(2 * i);
    });
    for (unsigned i = 1; i <= 3000; ++i) own->Set(2 * i + 1);
    writer.join();
    Peer judge(folder_.Path(), "C");
    auto const end = std::chrono::steady_clock::now() + 10s * SanitizerFactor;
    while (own->Get() != followed->Get() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(1ms);
    std::this_thread::sleep_for(20ms);
    auto const third = judge.properties->Follow<UInt32Property>("A", ExternalAppRegistration::Plain, name_, 0U);
    EXPECT_EQ(own->Get(), followed->Get());
    EXPECT_EQ(own->Get(), third->Get());
}

TEST_F(PropertyLinkTest, SurvivesTheServer) {
    auto server = std::make_unique<Server>(folder_.Path());
    Peer owner(folder_.Path(), "A");
    auto const own = owner.properties->Create<StringProperty>(name_, "a");
    Peer other(folder_.Path(), "B");
    auto const followed = other.properties->Follow<StringProperty>("A", ExternalAppRegistration::Plain, name_, "");
    server.reset();
    own->Set("while it is away");
    other.link.GetServerAgent()->SetProperty("A", "G", "Q", "kept");
    server = std::make_unique<Server>(folder_.Path());
    EXPECT_TRUE(Becomes(followed, "while it is away"));
    followed->Set("back");
    EXPECT_TRUE(Becomes(own, "back"));
    auto const late = owner.properties->Create<StringProperty>(PropertyName{"Q", "", "G"}, "");
    EXPECT_TRUE(Becomes(late, "kept"));

    PropertyName const name{"R", "", "G"};
    auto const ofLater = other.properties->Follow<StringProperty>("C", ExternalAppRegistration::Plain, name, "");
    server.reset();
    ofLater->Set("cleared");
    server = std::make_unique<Server>(folder_.Path());
    Peer later(folder_.Path(), "C");
    EXPECT_TRUE(Becomes(later.properties->Create<StringProperty>(name, "old"), "cleared"));
}

TEST_F(PropertyLinkTest, EventsCountEachButNotTheAnswerToASubscription) {
    auto server = std::make_unique<Server>(folder_.Path());
    auto owner = std::make_unique<Peer>(folder_.Path(), "A");
    auto own = owner->properties->Create<StringProperty>(name_, "tag");
    own->SetEveryWriteCounts(true);
    auto const mark = owner->properties->Create<UInt32Property>(PropertyName{"M", "", "G"}, 0U);
    Peer other(folder_.Path(), "B");
    auto const followed = other.properties->Subscribe<StringProperty>("A", name_, "");
    auto const reached =
        other.properties->Follow<UInt32Property>("A", ExternalAppRegistration::Plain, PropertyName{"M", "", "G"}, 0U);
    ASSERT_TRUE(Becomes(followed, "tag"));
    std::atomic<int> events = 0;
    followed->AddCallback([&](auto const&) { ++events; });
    own->Set("tag");
    own->Set("tag");
    mark->Set(1);
    ASSERT_TRUE(Becomes(reached, 1U));
    EXPECT_EQ(events, 2);
    // The owner knows by then that its writes are taken, and will not repeat them.
    reached->Set(7);
    ASSERT_TRUE(Becomes(mark, 7U));
    server.reset();
    server = std::make_unique<Server>(folder_.Path());
    mark->Set(2);
    ASSERT_TRUE(Becomes(reached, 2U));
    EXPECT_EQ(events, 2) << "a new link says again what is there";
}

// The identifiers stand in the other order.
TEST_F(PropertyLinkTest, WhatIsLostWithTheServerIsRepeatedInItsOrder) {
    std::mutex mutex;
    std::string writes;
    ThreadFactory threads(1);
    PublishingPropertyManager manager(threads, 0, 0, "A", "");
    manager.SetSender([&](PiclMessage const& message) {
        std::lock_guard const lock(mutex);
        if (message.type == PiclMessage::Type::Publish) writes += "publish ";
        writes += message.address.property + '=' + message.value + ' ';
        return true;
    });
    manager.StartThread();
    auto const make = [&](char const* identifier) {
        return manager.Create<StringProperty>(PropertyName{identifier, "", "G"}, "");
    };
    auto const taken = make("1"), event = make("2"), second = make("3"), first = make("4");
    event->SetEveryWriteCounts(true);
    writes.clear();
    std::atomic<bool> isTold{false};
    taken->SetTakenCallback([&] { isTold = true; });
    taken->Set("taken");
    EXPECT_FALSE(taken->IsTaken());
    manager.Post({.type = PiclMessage::Type::Taken, .address = {"A", "G", "1"}});
    while (!isTold) std::this_thread::sleep_for(1ms);
    EXPECT_TRUE(taken->IsTaken());
    for (char const* const value : {"old", "first"}) first->Set(value);
    second->Set("second");
    for (char const* const value : {"heard", "event", "event"}) event->Set(value);
    manager.Post({.type = PiclMessage::Type::Taken, .address = {"A", "G", "2"}});
    manager.HoldWrites();
    second->Set("last");
    EXPECT_EQ(std::exchange(writes, {}), "1=taken 4=old 4=first 3=second 2=heard 2=event 2=event ");
    manager.PostLinkUp();
    auto const all = [&] {
        std::lock_guard const lock(mutex);
        return writes;
    };
    while (!all().ends_with("publish 3=last ")) std::this_thread::sleep_for(1ms);
    // A value is sent before it is published, so that no answer to it comes between; an event behind the one before.
    EXPECT_EQ(all(), "publish 1=taken 4=first publish 4=first publish 2=heard 2=event 2=event 3=last publish 3=last ");
    // Of what was sent on the lost link nothing is waited for any more.
    isTold = false;
    first->SetTakenCallback([&] { isTold = true; });
    manager.Post({.type = PiclMessage::Type::Taken, .address = {"A", "G", "4"}});
    for (int i = 0; i < 10'000 * SanitizerFactor && !isTold; ++i) std::this_thread::sleep_for(1ms);
    EXPECT_TRUE(first->IsTaken());
}

/// A server whose every byte the test sends and reads itself.
class BareServer {
public:
    explicit BareServer(std::filesystem::path const& socket) : address_(socket) {
        EXPECT_EQ(::bind(listener_, address_.Get(), SocketAddress::Size), 0);
        EXPECT_EQ(::listen(listener_, 5), 0);
    }
    ~BareServer() {
        Lose();
        ::close(listener_);
    }
    void Accept() {
        peer_ = ::accept(listener_, nullptr, nullptr);
        EXPECT_GE(peer_, 0);
    }
    void Lose() {
        if (peer_ >= 0) ::close(peer_);
        peer_ = -1;
    }
    void Send(PiclMessage const& message, std::string const& end = "\n") const {
        std::string const line = message.Text() + end;
        EXPECT_EQ(::send(peer_, line.data(), line.size(), MSG_NOSIGNAL), static_cast<ssize_t>(line.size()));
    }
    /// What comes up to a text, and that.
    std::string ReadUntil(std::string_view text) const {
        std::string bytes;
        for (char byte = 0; !bytes.ends_with(text) && ::recv(peer_, &byte, 1, 0) == 1;) bytes += byte;
        return bytes;
    }

private:
    SocketAddress address_;
    int listener_ = ::socket(AF_UNIX, SOCK_STREAM, 0);
    int peer_ = -1;
};

TEST_F(PropertyLinkTest, ANewLinkBeginsWithAWholeLineAndRepeatsWhatWasNotTaken) {
    BareServer server(folder_ / "socket");
    Peer peer(folder_.Path(), "A");
    auto const agent = peer.link.GetServerAgent();
    server.Accept();
    for (char const* const value : {"first", "second", "third"}) agent->SetProperty("X", "G", value, value);
    server.ReadUntil("\"third\"}");
    server.Send({.type = PiclMessage::Type::Taken, .address = {"X", "G", "first"}});
    // What comes behind it shows that it has been read.
    server.Send({.type = PiclMessage::Type::Changed, .address = {"X", "G", "there"}, .value = "1"});
    EXPECT_TRUE(agent->WaitUntilAvailable({"X", "G", "there"}, 10s));
    // More than a socket holds: the link is lost amid the line.
    agent->SetProperty("X", "G", "long", std::string(8 << 20, 'x'));
    server.ReadUntil("xxx");
    server.Send({.type = PiclMessage::Type::Absent, .address = {"X", "G", "cut"}}, "");
    server.Lose();
    server.Accept();
    std::string const again = server.ReadUntil("\"third\"}");
    EXPECT_TRUE(again.starts_with(R"({"type":"hello")")) << again.substr(0, 80);
    EXPECT_EQ(again.find("first"), std::string::npos);
    EXPECT_LT(again.find("second"), again.find("third"));
    server.Send({.type = PiclMessage::Type::Changed, .address = {"X", "G", "after"}, .value = "1"});
    EXPECT_TRUE(agent->WaitUntilAvailable({"X", "G", "after"}, 10s));
}

// A server that dies may take a link once more and lose it at once.
TEST_F(PropertyLinkTest, ALinkThatIsLostAmidItsBeginningLeavesNothingToTheNext) {
    BareServer server(folder_ / "socket");
    Peer peer(folder_.Path(), "A");
    server.Accept();
    std::string const last = std::to_string(2000 / SanitizerFactor);
    for (int i = 1; i <= std::stoi(last); ++i)
        peer.properties->Create<StringProperty>({std::to_string(i), "", "G"}, "")->Set("written");
    server.ReadUntil(R"(","property":")" + last + R"(","value":"written"})");
    for (int loss = 0; loss < 3; ++loss) {
        server.Lose();
        server.Accept();
        server.ReadUntil("publish");
    }
    server.Lose();
    server.Accept();
    std::string const lines = server.ReadUntil(R"(","property":")" + last + R"(","value":"written","label")");
    for (std::string const type : {"set", "publish"}) {
        std::string const text = R"({"type":")" + type + R"(","component":"A","group":"G","property":")";
        int count = 0;
        for (auto at = lines.find(text); at != std::string::npos; at = lines.find(text, at + 1)) ++count;
        EXPECT_EQ(count, std::stoi(last)) << "each is repeated once: " << type;
    }
}

TEST_F(PropertyLinkTest, WhatADyingServerHasSaidLastIsHeard) {
    BareServer server(folder_ / "socket");
    Peer peer(folder_.Path(), "A", 0ms);
    server.Accept();
    auto const follow = [&](char const* property) {
        return peer.properties->Follow<StringProperty>("X", ExternalAppRegistration::Plain, {property, "", "G"}, "");
    };
    auto const first = follow("first"), last = follow("last");
    std::promise<void> begun, dead;
    first->AddCallback([&](auto const&) { begun.set_value(), dead.get_future().wait(); });
    server.Send({.type = PiclMessage::Type::Changed, .address = {"X", "G", "first"}, .value = "1"});
    begun.get_future().wait();
    // While the link is not listening: more than it reads at a time, with more to be written than anybody takes.
    peer.link.GetServerAgent()->SetProperty("X", "G", "long", std::string(8 << 20, 'x'));
    server.Send({.type = PiclMessage::Type::Changed, .address = {"X", "G", "more"}, .value = std::string(80'000, 'x')});
    server.Send({.type = PiclMessage::Type::Changed, .address = {"X", "G", "last"}, .value = "heard"});
    server.Lose();
    dead.set_value();
    EXPECT_TRUE(Becomes(last, "heard"));
}

TEST_F(PropertyLinkTest, AValueThatIsTooLongKeepsNoOthersOut) {
    Server const server(folder_.Path());
    Peer owner(folder_.Path(), "A"), other(folder_.Path(), "B");
    auto const own = owner.properties->Create<StringProperty>(name_, "a");
    auto const followed = other.properties->Follow<StringProperty>("A", ExternalAppRegistration::Plain, name_, "");
    own->Set(std::string(PiclLines::LongestLine, 'x'));
    followed->Set("b");
    EXPECT_TRUE(Becomes(own, "b"));
}

TEST_F(PropertyLinkTest, WhoLeavesIsNotThere) {
    Server const server(folder_.Path());
    auto owner = std::make_unique<Peer>(folder_.Path(), "A");
    owner->properties->Create<StringProperty>(name_, "a");
    Peer other(folder_.Path(), "B");
    PropertyAddress const address{"A", "G", "P"};
    auto const isThere = [&] { return other.link.GetServerAgent()->WaitUntilAvailable(address, {}); };
    EXPECT_TRUE(other.link.GetServerAgent()->WaitUntilAvailable(address, 10s));
    owner.reset();
    auto const end = std::chrono::steady_clock::now() + 10s * SanitizerFactor;
    while (isThere() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(1ms);
    EXPECT_FALSE(isThere());
}

TEST_F(PropertyLinkTest, ArchivedValuesComeBackWithoutTheServer) {
    for (unsigned start = 0; start < 3; ++start) {
        Peer owner(folder_.Path(), "A");
        auto const own = owner.properties->CreateArchived<UInt32Property>(name_, 7U);
        EXPECT_EQ(own->Get(), 7U + start);
        own->Set(own->Get() + 1);
    }
}

TEST_F(PropertyLinkTest, ArchivesAreWrittenWhileEverythingRuns) {
    Server const server(folder_.Path());
    Peer owner(folder_.Path(), "A");
    auto const own = owner.properties->CreateArchived<UInt32Property>(name_, 7U);
    for (std::uint32_t value = 0; value < 300; ++value) own->Set(value);
    auto const end = std::chrono::steady_clock::now() + 10s * SanitizerFactor;
    for (char const* const file : {"A.json", "archive"}) {
        while (ReadRegularFile(folder_ / file).find("\"299\"") == std::string::npos) {
            ASSERT_LT(std::chrono::steady_clock::now(), end) << file;
            std::this_thread::sleep_for(5ms);
        }
    }
}

TEST_F(PropertyLinkTest, WaitingCanBeCancelled) {
    Server const server(folder_.Path());
    Peer peer(folder_.Path(), "A");
    std::thread canceller([&] { peer.link.GetServerAgent()->CancelWaiting(); });
    EXPECT_FALSE(PICLGetSetHelper::WaitUntilPropertyAvailable(*peer.link.GetServerAgent(), "X", "G", "P"));
    canceller.join();
}

TEST_F(PropertyLinkTest, OnlyItsUserMayOpenTheSocketAndOnlyOneServes) {
    Server const server(folder_.Path());
    struct stat status {};
    ASSERT_EQ(::stat((folder_ / "socket").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_THROW(PropertyServer(folder_ / "socket", folder_ / "archive"), std::system_error);
}

TEST_F(PropertyLinkTest, TheSocketMayStandDeep) {
    auto const deep = folder_ / std::string(100, 'a') / std::string(100, 'b');
    std::filesystem::create_directories(deep);
    Server const server(deep);
    Peer owner(deep, "A");
    Peer other(deep, "B");
    owner.properties->Create<StringProperty>(name_, "reached");
    EXPECT_TRUE(
        Becomes(other.properties->Follow<StringProperty>("A", ExternalAppRegistration::Plain, name_, ""), "reached"));
}

TEST_F(PropertyLinkTest, GarbageOfOnePeerIsNothingToTheOthers) {
    Server const server(folder_.Path());
    Peer owner(folder_.Path(), "A");
    auto const own = owner.properties->Create<StringProperty>(name_, "a");
    SocketAddress const address(folder_ / "socket");
    std::vector<int> peers;
    for (std::string const& bytes : {std::string("\0\xFF{\n\n[[[[\n", 10), std::string(100'000, '['),
                                     std::string("{\"type\":\"set\"}\n"), std::string(3'000'000, 'x')}) {
        peers.push_back(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
        ASSERT_EQ(::connect(peers.back(), address.Get(), SocketAddress::Size), 0);
        EXPECT_GT(::send(peers.back(), bytes.data(), bytes.size(), MSG_NOSIGNAL), 0);
    }
    Peer other(folder_.Path(), "B");
    auto const followed = other.properties->Follow<StringProperty>("A", ExternalAppRegistration::Plain, name_, "");
    own->Set("still");
    EXPECT_TRUE(Becomes(followed, "still"));
    for (int const peer : peers) ::close(peer);
}

}  // namespace
