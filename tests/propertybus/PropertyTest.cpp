#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "propertybus/PublishingPropertyManager.h"

TEST(Property, CallsBackOnlyOnChange) {
    auto const property = std::make_shared<StringProperty>("name", "group", "component", "^");
    std::string calls;
    property->AddCallback([&](std::shared_ptr<Property> const& changed) {
        EXPECT_EQ(changed, property);
        calls += property->Get() + ' ';
    });
    property->AddCallback([&](std::shared_ptr<Property> const&) { calls += "second "; });
    property->Set("^");
    property->Set("+");
    property->Set("+");
    EXPECT_EQ(calls, "+ second ");
}

TEST(Property, CallbacksMaySetAndAdd) {
    auto const property = std::make_shared<BoolProperty>("name", "group", "component");
    int calls = 0;
    property->AddCallback([&](std::shared_ptr<Property> const&) {
        ++calls;
        property->AddCallback([&](std::shared_ptr<Property> const&) { calls += 10; });
        property->Set(false);  // as a request that is put back once it is taken
    });
    property->Set(true);
    EXPECT_FALSE(property->Get());
    EXPECT_EQ(calls, 12);  // once for each change; what the first change added hears the second
}

TEST(Property, NumbersStayWithinLimits) {
    UInt32Property const low("name", "group", "component", 1, 5, 10);
    EXPECT_EQ(low.Get(), 5U);
    auto const property = std::make_shared<UInt32Property>("name", "group", "component", 7U, 5U, 10U);
    int calls = 0;
    property->AddCallback([&](std::shared_ptr<Property> const&) { ++calls; });
    property->Set(11);
    EXPECT_EQ(property->Get(), 10U);
    property->Set(4294967295U);
    EXPECT_EQ(calls, 1);
    property->Set(0);
    EXPECT_EQ(property->Get(), 5U);
}

TEST(Property, TakesValuesFromManyThreads) {
    auto const property = std::make_shared<StringProperty>("name", "group", "component");
    std::atomic<int> torn = 0;
    property->AddCallback([&](std::shared_ptr<Property> const&) {
        auto const value = property->Get();
        if (value != std::string(value.size(), value[0])) ++torn;
    });
    std::vector<std::thread> threads;
    for (char letter = 'a'; letter < 'e'; ++letter) {
        threads.emplace_back([&, letter] {
            for (std::size_t i = 1; i < 500; ++i) property->Set(std::string(i % 50 + 1, letter));
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(torn, 0);
}

TEST(PublishingPropertyManager, FindsWhatItCreated) {
    PublishingPropertyManager manager;
    auto const created = manager.Create<UInt32Property>("count", "group", "component", 3U);
    EXPECT_EQ(created->GroupId(), "group");
    EXPECT_EQ(created->ComponentId(), "component");
    EXPECT_EQ(manager.Find("count"), created);
    EXPECT_EQ(manager.Find<UInt32Property>("count"), created);
    EXPECT_EQ(manager.Find<StringProperty>("count"), nullptr);
    EXPECT_EQ(manager.Find("other"), nullptr);
}

TEST(PublishingPropertyManager, KeepsThePropertyThatExists) {
    PublishingPropertyManager manager;
    auto const first = manager.Create<UInt32Property>("count", "group", "component", 3U);
    first->Set(4);
    EXPECT_EQ(manager.Create<UInt32Property>("count", "group", "component", 3U), first);
    EXPECT_EQ(first->Get(), 4U);
    EXPECT_THROW(manager.Create<StringProperty>("count", "group", "component"), std::logic_error);
    EXPECT_EQ(manager.Find("count"), first);
}
