#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "propertybus/PublishingPropertyManager.h"
#include "propertybus/ThreadFactory.h"

namespace {

PropertyName const Name{"identifier", "label", "group"};

TEST(Property, CallsBackOnlyOnChange) {
    auto const property = std::make_shared<StringProperty>(Name, "^");
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
    auto const property = std::make_shared<BoolProperty>(Name, false);
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
    auto const property = std::make_shared<UInt32Property>(Name, 7U, 5U, 10U);
    int calls = 0;
    property->AddCallback([&](std::shared_ptr<Property> const&) { ++calls; });
    property->Set(11);
    EXPECT_EQ(property->Get(), 10U);
    property->Set(4294967295U);
    EXPECT_EQ(calls, 1);
    property->Set(0);
    EXPECT_EQ(property->Get(), 5U);
    EXPECT_TRUE(property->SetValueText("11"));
    EXPECT_EQ(property->Get(), 10U);
    EXPECT_TRUE(property->TakeFromBus("4", false));
    EXPECT_EQ(property->Get(), 5U);
}

TEST(Property, IsTakenWhenItsLastWriteIs) {
    auto const property = std::make_shared<StringProperty>(Name, "");
    property->ConnectWriter([](std::string const&) { return true; });
    int told = 0;
    property->SetTakenCallback([&told] { ++told; });
    for (char const* const value : {"a", "b"}) property->Set(value);
    property->NoteTaken();
    EXPECT_FALSE(property->IsTaken());
    EXPECT_EQ(told, 0);
    property->NoteTaken();
    EXPECT_TRUE(property->IsTaken());
    EXPECT_EQ(told, 1);
}

TEST(Property, TakesValuesFromManyThreads) {
    auto const property = std::make_shared<StringProperty>(Name, "");
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

TEST(Property, TravelsAsText) {
    BoolProperty flag(Name, false);
    EXPECT_EQ(flag.ValueText(), "false");
    EXPECT_TRUE(std::make_shared<BoolProperty>(Name, false)->SetValueText("true"));
    EXPECT_FALSE(flag.SetValueText("1"));
    auto const number = std::make_shared<UInt32Property>(Name, 7U);
    EXPECT_TRUE(number->SetValueText("4294967295"));
    EXPECT_EQ(number->ValueText(), "4294967295");
    for (char const* const bad : {"", "-1", "4294967296", "1x", " 1"}) EXPECT_FALSE(number->SetValueText(bad)) << bad;
}

TEST(ThreadFactory, StartsAsManyThreadsAsItMay) {
    ThreadFactory threads(2);
    std::atomic<int> runs = 0;
    auto const run = [&runs] { ++runs; };
    auto const first = threads.StartThread("a", run);
    threads.StartThread("b", run);
    EXPECT_THROW(threads.StartThread("c", run), std::runtime_error);
    threads.Join(first);
    threads.Join(threads.StartThread("d", run));
    EXPECT_GE(runs, 2);
}

TEST(PublishingPropertyManager, KeepsThePropertyThatExists) {
    PublishingPropertyManager manager;
    auto const first = manager.Create<UInt32Property>(Name, 3U);
    first->Set(4);
    EXPECT_EQ(manager.Create<UInt32Property>(Name, 3U), first);
    EXPECT_EQ(first->Get(), 4U);
    EXPECT_EQ(manager.Find("identifier"), first);
    EXPECT_EQ(manager.Find("other"), nullptr);
    EXPECT_THROW(manager.Create<StringProperty>(Name, ""), std::logic_error);
}

}  // namespace
