#include "frontend/stream/ZplParse.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

std::string Text(std::string const& value) { return '"' + value + '"'; }
std::string Text(char value) { return {value}; }
std::string Text(bool value) { return value ? "true" : "false"; }
std::string Text(int value) { return std::to_string(value); }
std::string Text(unsigned value) { return std::to_string(value); }
std::string Text(unsigned char value) { return std::to_string(value); }
std::string Text(double value) { return std::to_string(value); }
std::string Text(std::optional<int> value) { return value ? std::to_string(*value) : "nothing"; }
template <typename T>
requires std::is_enum_v<T> std::string Text(T value) { return std::to_string(static_cast<int>(value)); }

struct Row {
    char const* text;
    char const* expected;  // "-": no value
};

template <typename T, typename Rows = std::initializer_list<Row>>
void Expect(Rows const& rows) {
    for (auto const& [text, expected] : rows) {
        auto const result = ZplParse<T>(std::string(text));
        EXPECT_EQ(result ? Text(*result) : "-", expected) << typeid(T).name() << " from '" << text << "'";
    }
}

}  // namespace

TEST(ZplParse, ReadsText) {
    Expect<std::string>({{"", "\"\""}, {" a b ", "\" a b \""}});
    Expect<char>({{"", "-"}, {"xy", "x"}});
    Expect<bool>({{"", "-"}, {"Y", "true"}, {"yes", "true"}, {"n", "false"}, {"true", "-"}, {" Y", "-"}, {"1", "-"}});
}

TEST(ZplParse, FindsNumbersAnywhere) {
    constexpr Row Unsigned[] = {{"", "-"},   {"x", "-"},  {"12AB", "12"}, {"AB12", "12"}, {"abc12x3", "12"},
                                {"-5", "5"}, {"+5", "5"}, {"1.5", "1"},   {"007", "7"},   {"2147483647", "2147483647"}};
    Expect<unsigned>(Unsigned);
    constexpr Row Signed[] = {{"", "-"},    {"-", "-"},       {"-5", "-5"},
                              {"- 5", "5"}, {"--5", "-5"},    {"+5", "5"},
                              {"3-5", "3"}, {"x-12y", "-12"}, {"-2147483648", "-2147483648"}};
    Expect<int>(Signed);
    Expect<unsigned char>({{"", "-"}, {"300", "44"}, {"255", "255"}, {"-1", "1"}});
    Expect<std::optional<int>>({{"", "nothing"}, {"x", "nothing"}, {"-7", "-7"}});
    constexpr Row Fractions[] = {{"", "-"},
                                 {"x", "-"},
                                 {"-", "-"},
                                 {"2.5", "2.500000"},
                                 {"-1.5", "1.500000"},
                                 {"x.5y", "0.500000"},
                                 {"3.0,1", "3.000000"},
                                 {"1.2.3", "1.200000"},
                                 {"1e2", "100.000000"}};
    Expect<double>(Fractions);
}

TEST(ZplParse, ThrowsBeyondTheRange) {
    auto const expectOutOfRange = [](auto parse, char const* text, char const* conversion) {
        try {
            parse(text);
            ADD_FAILURE() << text;
        } catch (std::out_of_range const& error) {
            EXPECT_STREQ(error.what(), conversion);
        }
    };
    for (char const* const text : {"2147483648", "x99999999999999999999y"}) {
        expectOutOfRange([](char const* t) { ZplParse<int>(std::string(t)); }, text, "stoi");
        expectOutOfRange([](char const* t) { ZplParse<unsigned>(std::string(t)); }, text, "stoi");
        expectOutOfRange([](char const* t) { ZplParse<unsigned char>(std::string(t)); }, text, "stoi");
        expectOutOfRange([](char const* t) { ZplParse<std::optional<int>>(std::string(t)); }, text, "stoi");
        expectOutOfRange([](char const* t) { ZplParse<Justification>(std::string(t)); }, text, "stoi");
    }
    expectOutOfRange([](char const* t) { ZplParse<int>(std::string(t)); }, "-2147483649", "stoi");
    expectOutOfRange([](char const* t) { ZplParse<double>(std::string(t)); }, "1e999", "stod");
    EXPECT_THROW(ZplParse<double>(std::string(".")), std::invalid_argument);
    EXPECT_THROW(ZplParse<double>(std::string("x.y")), std::invalid_argument);
}

TEST(ZplParse, ReadsFirstLettersOfEnumerations) {
    Expect<ZplOrientation>({{"N", "0"}, {"rotated", "90"}, {"I", "180"}, {"b", "270"}, {"", "-"}, {"X", "-"}});
    Expect<Direction>({{"H", "0"}, {"v", "1"}, {"R", "2"}, {"N", "-"}});
    Expect<Justification>({{"0", "0"}, {"1", "1"}, {"-1", "1"}, {"x2", "2"}, {"3", "-"}, {"L", "-"}, {"", "-"}});
    Expect<Scripting::ScriptTextJustification>({{"L", "0"}, {"R", "1"}, {"c", "2"}, {"J", "3"}, {"0", "-"}});
    Expect<ZplPrintOrientation>({{"n", "0"}, {"I", "1"}, {"R", "-"}});
    Expect<ZplUnitOfMeasure>({{"D", "0"}, {"i", "1"}, {"M", "2"}, {"", "-"}});
    Expect<ZplPrintMode>({{"t", "0"}, {"C", "1"}, {"P", "2"}, {"A", "3"}, {"R", "-"}});
    Expect<CompressionType>({{"a", "0"}, {"B", "1"}, {"C", "2"}, {":", "-"}});
}

TEST(ZplParse, TreatsAbsentParametersAsEmpty) {
    ZplCommand const command{"FO", false, {"", "20"}};
    EXPECT_FALSE(ZplParse<unsigned>(command, 0));
    EXPECT_EQ(*ZplParse<unsigned>(command, 1), 20U);
    EXPECT_FALSE(ZplParse<unsigned>(command, 2));
    EXPECT_TRUE(ZplParse<std::string>(command, 2));
}
