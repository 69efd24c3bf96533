#include "propertybus/PiclMessage.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using Type = PiclMessage::Type;

TEST(PiclMessage, TravelsAsOneLine) {
    PropertyAddress const address{"C", "G", "P"};
    std::vector<std::pair<PiclMessage, std::string>> const rows = {
        {{Type::Hello, {}, "ZplHost"}, R"({"type":"hello","value":"ZplHost"})"},
        {{Type::Publish, address, "v\n", "L", "string", true},
         R"({"type":"publish","component":"C","group":"G","property":"P","value":"v\n","label":"L","kind":"string","archived":true})"},
        {{Type::Subscribe, address}, R"({"type":"subscribe","component":"C","group":"G","property":"P"})"},
        {{Type::Set, address, "1"}, R"({"type":"set","component":"C","group":"G","property":"P","value":"1"})"},
        {{Type::Taken, address}, R"({"type":"taken","component":"C","group":"G","property":"P"})"},
    };
    for (auto const& [message, text] : rows) {
        EXPECT_EQ(message.Text(), text);
        EXPECT_EQ(PiclMessage::Parse(text), message) << text;
    }
    for (std::string const& bad :
         {std::string(), std::string("{}"), std::string("[]"), std::string(R"({"type":"set"})"),
          std::string(R"({"type":"nonsense"})"),
          std::string(R"({"type":"set","component":"C","group":"G","property":"P","value":1})"),
          std::string(2'000'000, '[')})
        EXPECT_FALSE(PiclMessage::Parse(bad)) << bad.substr(0, 80);
}

TEST(PiclLines, AreTheSameWhereverTheBytesAreCut) {
    std::string const bytes = "one\n\ntwo two\nthis line is too long\nthree\nopen";
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        PiclLines lines(12);
        std::vector<std::string> taken;
        unsigned skipped = 0;
        for (std::size_t at = 0; at < bytes.size();) {
            std::size_t const size = 1 + random() % 9;
            skipped += lines.Append(std::string_view(bytes).substr(at, size),
                                    [&](std::string_view line) { taken.emplace_back(line); });
            at += size;
        }
        ASSERT_EQ(taken, (std::vector<std::string>{"one", "", "two two", "three"}));
        ASSERT_EQ(skipped, 1U);
    }
}

}  // namespace
