#include "foundation/Base64.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(Base64, ReadsThePublishedExamples) {
    // RFC 4648, section 10.
    std::string bytes = "foobar";
    for (char const* const text : {"Zm9vYmFy", "Zm9vYmE=", "Zm9vYg==", "Zm9v", "Zm8=", "Zg==", ""}) {
        EXPECT_EQ(Base64::Encode(bytes), text);
        EXPECT_EQ(Base64::Decode(text), bytes);
        if (!bytes.empty()) bytes.pop_back();
    }
}

TEST(Base64, RefusesWhatIsNoBase64) {
    for (char const* const text : {"Zg=", "Z", "Z===", "====", "Zg==Zg==", "Zm9*", "=Zg=", "Zm 9v   "})
        EXPECT_FALSE(Base64::Decode(text)) << text;
}

TEST(Base64, ReturnsWhatItWasGiven) {
    std::mt19937 random(7);
    for (std::size_t length = 0; length < 100; ++length) {
        std::string bytes(length, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(Base64::Decode(Base64::Encode(bytes)), bytes);
        EXPECT_EQ(Base64::DecodeLeniently(Base64::Encode(bytes)), bytes);
    }
    EXPECT_EQ(Base64::DecodeLeniently("Zm 9v\nYg==x"), "foob");
}

}  // namespace
