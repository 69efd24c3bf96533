#include "foundation/Base64.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(Base64, ReadsThePublishedExamples) {
    // RFC 4648, section 10.
    for (auto const& [bytes, text] :
         std::initializer_list<std::pair<std::string, std::string>>{{"", ""},
                                                                    {"f", "Zg=="},
                                                                    {"fo", "Zm8="},
                                                                    {"foo", "Zm9v"},
                                                                    {"foob", "Zm9vYg=="},
                                                                    {"fooba", "Zm9vYmE="},
                                                                    {"foobar", "Zm9vYmFy"}}) {
        EXPECT_EQ(Base64::Encode(bytes), text);
        EXPECT_EQ(Base64::Decode(text), bytes);
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
