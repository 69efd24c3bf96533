#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "barcodes/RetailText.h"

using namespace ZplCore;
using Barcode::Encoder::ValidationStatus;

namespace {

struct StatusRow {
    ValidationStatus (*validate)(std::string_view);
    char const* data;
    ValidationStatus status;
};

constexpr auto Valid = ValidationStatus::Valid;
constexpr auto Character = ValidationStatus::InvalidCharacter;
constexpr auto CheckDigit = ValidationStatus::InvalidCheckDigit;
constexpr auto TooLong = ValidationStatus::TooLong;
constexpr auto TooShort = ValidationStatus::TooShort;

constexpr StatusRow Statuses[] = {
    {EAN13::Validate, "400638133393", Valid},
    {EAN13::Validate, "4006381333931", Valid},
    {EAN13::Validate, "4006381333932", CheckDigit},
    {EAN13::Validate, "40063813339x", Character},
    {EAN13::Validate, "40063813339", TooShort},
    {EAN13::Validate, "40063813339311", TooLong},
    {UPCA::Validate, "03600029145", Valid},
    {UPCA::Validate, "036000291452", Valid},
    {UPCA::Validate, "036000291453", CheckDigit},
    {UPCA::Validate, "0360002914", TooShort},
    {UPCA::Validate, "0360002914522", TooLong},
    {EAN8::Validate, "123456", TooShort},
    {EAN8::Validate, "12345x7", Character},
    {EAN8::Validate, "9638507", Valid},
    {EAN8::Validate, "96385074", Valid},
    {EAN8::Validate, "96385075", CheckDigit},
    {EAN8::Validate, "963850745", TooShort},
    {EAN8::Validate, "96385074501", TooShort},
    {EAN8::Validate, "963850745012", Character},
    // The check digit of the seven digits from the sixth on.
    {EAN8::Validate, "0000096385074", Character},
    {EAN8::Validate, "0000096385075", CheckDigit},
    {EAN8::Validate, "00000963850741", TooLong},
    {UPCE::Validate, "12345", TooShort},
    {UPCE::Validate, "123456", Valid},
    {UPCE::Validate, "0123456", Valid},
    {UPCE::Validate, "2123456", Character},
    {UPCE::Validate, "01234565", Valid},
    {UPCE::Validate, "01234566", CheckDigit},
    {UPCE::Validate, "11234565", Character},
    {UPCE::Validate, "123456789", Character},
    {UPCE::Validate, "1230000064", Valid},
    {UPCE::Validate, "1234567890", Character},
    {UPCE::Validate, "12345678901", Character},
    {UPCE::Validate, "123456789012", TooLong},
};

TEST(Retail, Validates) {
    for (auto const& row : Statuses) EXPECT_EQ(row.validate(row.data), row.status) << row.data;
}

TEST(Retail, Repairs) {
    struct {
        std::string (*repair)(std::string const&);
        char const* data;
        char const* repaired;
    } const rows[] = {
        {EAN13::TransformInvalidInput, "4006381333931", "400638133393"},
        {UPCA::TransformInvalidInput, "036000291452", "03600029145"},
        {EAN8::TransformInvalidInput, "123", "0000123"},
        {EAN8::TransformInvalidInput, "96385074", "9638507"},
        {EAN8::TransformInvalidInput, "123456789", "0006789"},
        {EAN8::TransformInvalidInput, "12345678901", "0678901"},
        {EAN8::TransformInvalidInput, "123456789012", "6789012"},
        {EAN8::TransformInvalidInput, "1234567890123", "6789012"},
        {UPCE::TransformInvalidInput, "12", "000012"},
        {UPCE::TransformInvalidInput, "1200000345", "0123450"},
        {UPCE::TransformInvalidInput, "1230000045", "0123453"},
        {UPCE::TransformInvalidInput, "1234000005", "0123454"},
        {UPCE::TransformInvalidInput, "1234500006", "0123456"},
        {UPCE::TransformInvalidInput, "123456789", "0123455"},
        {UPCE::TransformInvalidInput, "123406789", "0123404"},
    };
    for (auto const& [repair, data, repaired] : rows) EXPECT_EQ(repair(data), repaired) << data;
}

TEST(Retail, CompressedNumbersExpandToThemselves) {
    using Barcode::Encoder::UPCEEncoder;
    for (char const* number : {"1200000345", "1230000045", "1234000005", "1234500006", "0000000000"})
        EXPECT_EQ(UPCEEncoder::Expand(UPCE::TransformInvalidInput(number)), std::string("0") + number);
}

// The recording target's characters are 10 wide and 20 high.
constexpr DrawRow Drawings[] = {
    {"EAN-13", "^BY2^FO100,50^BEN,60^FD400638133393^FS",
     "image 100,50 190x73 from 190x73 pixels\ntext 82,114 '4' A 2x2\ntext 119,114 '006381' A 2x2\n"
     "text 249,114 '333931' A 2x2\n"},
    {"EAN-13 stands on its y", "^BY2^FT100,200^BEN,60,N^FD400638133393^FS",
     "image 100,127 190x73 from 190x73 pixels\n"},
    {"EAN-13 turned", "^BY2^FO100,50^BER,60,N^FD400638133393^FS", "image 100,50 190x73 from 190x73 pixels turned 90\n"},
    {"UPC-A without its check digit", "^BY2^FO100,50^BUN,60,Y,N,N^FD03600029145^FS",
     "image 100,50 190x73 from 190x73 pixels\ntext 82,114 '0' A 2x2\ntext 106,114 '36000' A 2x2\n"
     "text 184,114 '29145' A 2x2\n"},
    {"supplement", "^BY2^FO100,50^BSN,60^FD12^FS", "image 100,50 40x60 from 40x60 pixels\ntext 100,2 '12' A 2x2\n"},
    {"an error needs no validation", "^BY2^FO100,50^BEN,60^FD4006381333932^FS",
     "rect 109,59 to 221,77 thickness 18\ntext 100,58 ' INVALID - E ' D 1x1 white\n"},
};
TEST(Retail, Draws) { ExpectDrawings(Drawings); }

TEST(Retail, NotchesCutTheBarsBetweenTheGuards) {
    FieldBench bench(300, 600);
    ASSERT_EQ(bench.Run("^BY2^FO0,0^BUN,60,N^FD03600029145^FS"), "image 0,0 190x73 from 380x146 pixels\n");
    auto const darkColumns = [&](std::size_t y) {
        std::vector<std::size_t> columns;
        for (std::size_t module = 0; module < 95; ++module) {
            std::size_t const x = module * 4;
            if (bench.target->lastImage[y * 48 + x / 8] & 0x80U >> x % 8) columns.push_back(module);
        }
        return columns;
    };
    EXPECT_GT(darkColumns(119).size(), 40U);
    for (auto const module : darkColumns(120))
        EXPECT_TRUE(module < 10 || (module >= 45 && module < 50) || module >= 84);
    EXPECT_EQ(darkColumns(120), darkColumns(145));
    EXPECT_GE(darkColumns(145).size(), 6U);
}

}  // namespace
