#include "desktop/bus/PropertyStore.h"

#include <gtest/gtest.h>

#include "foundation/Files.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using Type = PiclMessage::Type;

class PropertyStoreTest : public testing::Test {
protected:
    void Start() {
        store_.emplace(folder_ / "archive", [this](int peer, PiclMessage const& message) {
            char const* const kind = message.type == Type::Changed  ? "="
                                     : message.type == Type::Absent ? " absent"
                                     : message.type == Type::Taken  ? " taken"
                                                                    : " refused";
            told_ += (told_.empty() ? "" : ", ") + std::to_string(peer) + ':' + message.address.property + kind +
                     (message.type == Type::Changed ? message.value : "");
        });
    }
    void SetUp() override { Start(); }
    std::string Do(int peer, Type type, std::string const& value = "", bool archived = false) {
        store_->Handle(peer, {type, {"C", "G", "P"}, value, "", "string", archived});
        return std::exchange(told_, {});
    }

    TemporaryDirectory folder_;
    std::optional<PropertyStore> store_;
    std::string told_;
};

TEST_F(PropertyStoreTest, TellsFollowersAndTheOwner) {
    EXPECT_EQ(Do(2, Type::Subscribe), "2:P absent");
    EXPECT_EQ(Do(1, Type::Publish, "a"), "2:P=a");
    EXPECT_EQ(Do(3, Type::Subscribe), "3:P=a");
    EXPECT_EQ(Do(1, Type::Set, "b"), "2:P=b, 3:P=b, 1:P taken") << "who is told so knows that the others are told";
    EXPECT_EQ(Do(2, Type::Set, "c"), "3:P=c, 1:P=c, 2:P taken");
    EXPECT_EQ(Do(2, Type::Set, "c"), "3:P=c, 1:P=c, 2:P taken") << "a write of the same value is a write";
    EXPECT_EQ(Do(3, Type::Publish, "d"), "3: refused") << "it has an owner";
    store_->Remove(1);
    EXPECT_EQ(std::exchange(told_, {}), "2:P absent, 3:P absent");
    EXPECT_EQ(Do(4, Type::Publish, "e"), "2:P=e, 3:P=e");
    EXPECT_EQ(Do(4, Type::Taken), "4: refused");
    store_->Remove(2);
    EXPECT_EQ(Do(4, Type::Set, "f"), "3:P=f, 4:P taken") << "who is gone follows no more";
}

TEST_F(PropertyStoreTest, AWriteWithoutAnOwnerIsTakenOver) {
    Do(1, Type::Publish, "a");
    store_->Remove(1);
    EXPECT_EQ(Do(2, Type::Set, "b"), "2:P taken");
    EXPECT_EQ(Do(1, Type::Publish, "a"), "1:P=b");
    store_->Remove(1);
    EXPECT_EQ(Do(1, Type::Publish, "c"), "") << "nobody has written meanwhile";
    EXPECT_EQ(Do(2, Type::Subscribe), "2:P=c");
}

TEST_F(PropertyStoreTest, ArchivedValuesSurviveRestarts) {
    Do(1, Type::Publish, "a", true);
    Do(1, Type::Set, "b");
    EXPECT_TRUE(store_->HasChanges()) << "the owner holds it too, and its disk is not waited for";
    store_->WriteChanges();
    EXPECT_FALSE(store_->HasChanges());
    Start();
    EXPECT_EQ(Do(2, Type::Subscribe), "2:P absent");
    EXPECT_EQ(Do(1, Type::Publish, "newer", true), "2:P=newer");
    store_->Remove(1);
    Do(2, Type::Set, "while away");
    Start();
    EXPECT_EQ(Do(1, Type::Publish, "newer", true), "1:P=while away");
    store_->WriteChanges();
    Start();
    EXPECT_EQ(Do(1, Type::Publish, "own", true), "");
}

TEST_F(PropertyStoreTest, IsBounded) {
    std::string const large(PropertyStore::MostBytes / 2, 'x');
    Do(1, Type::Publish, large);
    store_->Handle(1, {Type::Set, {"C", "G", "Q"}, large + large});
    EXPECT_EQ(std::exchange(told_, {}), "1: refused, 1:Q taken");
    for (unsigned i = 0; i < PropertyStore::MostProperties; ++i)
        store_->Handle(1, {Type::Subscribe, {"C", "G", "N" + std::to_string(i)}});
    EXPECT_TRUE(told_.ends_with("refused")) << told_.substr(told_.size() - 40);
    store_->Handle(1, {Type::Subscribe, {std::string(1000, 'C'), "G", "P"}});
    EXPECT_TRUE(told_.ends_with("refused"));
    store_->Remove(1);
    told_.clear();
    store_->Handle(2, {Type::Subscribe, {"C", "G", "New"}});
    EXPECT_EQ(told_, "2:New absent") << "names that nobody holds are forgotten";
}

TEST_F(PropertyStoreTest, AWriteTakesThePlaceOfTheOneBefore) {
    std::string const large(PropertyStore::MostBytes / 2, 'x');
    Do(1, Type::Publish, "a");
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Do(1, Type::Set, large), "1:P taken");
    Do(1, Type::Set, "b");
    store_->Handle(1, {Type::Set, {"C", "G", "Q"}, large + large.substr(1)});
    EXPECT_EQ(std::exchange(told_, {}), "1:Q taken");
}

TEST_F(PropertyStoreTest, AnyGarbageInTheArchiveIsPassedOver) {
    for (char const* const text : {"[", "{}", "[1,[2],[1,2,3,4,5]]", R"([["C","G","P","v","written","x"]])", "\xFF"}) {
        WriteFileAtomically(folder_ / "archive", text);
        Start();
        EXPECT_EQ(Do(2, Type::Subscribe), "2:P absent") << text;
    }
}

}  // namespace
