#include <gtest/gtest.h>

#include <sstream>

#include "../support/FieldBench.h"
#include "barcodes/retail/RetailText.h"

using namespace ZplCore;
using Barcode::Encoder::ValidationStatus;

namespace {

// What they refuse stands among bad barcodes.
TEST(Retail, TakesDataWithAndWithoutTheirCheckDigit) {
    struct {
        ValidationStatus (*validate)(std::string_view);
        char const* data;
    } const rows[] = {{EAN13::Validate, "400638133393 4006381333931"},
                      {UPCA::Validate, "03600029145 036000291452"},
                      {EAN8::Validate, "9638507 96385074"},
                      {UPCE::Validate, "123456 0123456 01234565 1230000064"}};
    for (auto const& [validate, data] : rows) {
        std::istringstream texts(data);
        for (std::string text; texts >> text;) EXPECT_EQ(validate(text), ValidationStatus::Valid) << text;
    }
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
        {UPCE::TransformInvalidInput, "1210000045", "0120451"},
        {UPCE::TransformInvalidInput, "1220000045", "0120452"},
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

/// Where a field draws its symbol and, below and above, its groups of digits, and where the next field would start.
std::string Places(std::string const& field, std::string const& data) {
    std::string places;
    for (char const above : {'N', 'Y'}) {
        FieldBench bench;
        std::istringstream calls(bench.Run("^BY2" + field + ",60,Y," + above + "^FD" + data + "^FS"));
        for (std::string call; std::getline(calls, call);) {
            std::istringstream words(call);
            std::string kind, place;
            words >> kind >> place;
            if (kind == "text" || above == 'N') places += (kind == "text" ? " " : "") + place;
        }
        places += above == 'N' ? "; above" : "; next " + bench.Next();
    }
    return places;
}

// The typeset origin moves symbol and digits together, which one symbology shows for all.
TEST(Retail, PlacesInEveryOrientation) {
    struct {
        char const* field;
        char const* places;
    } const rows[] = {
        {"^FO500,400^BEN", "500,400 482,464 519,464 649,464; above 480,352 517,352 647,352; next 690,472"},
        {"^FO500,400^BER", "500,400 469,382 469,419 469,549; above 581,380 581,417 581,547; next 500,590"},
        {"^FO500,400^BEI", "500,400 689,369 552,369 422,369; above 691,481 554,481 424,481; next 500,400"},
        {"^FO500,400^BEB", "500,400 564,589 564,452 564,322; above 452,591 452,454 452,324; next 572,400"},
        {"^FT500,400^BEN", "500,327 482,391 519,391 649,391; above 480,279 517,279 647,279; next 690,400"},
        {"^FT500,400^BER", "500,400 469,382 469,419 469,549; above 581,380 581,417 581,547; next 500,590"},
        {"^FT500,400^BEI", "310,400 499,369 362,369 232,369; above 501,481 364,481 234,481; next 310,400"},
        {"^FT500,400^BEB", "427,210 491,399 491,262 491,132; above 379,401 379,264 379,134; next 500,210"},
        {"^FO500,400^B8N", "500,400 494,464 560,464; above 492,352 558,352; next 634,472"},
        {"^FO500,400^B8R", "500,400 469,394 469,460; above 581,392 581,458; next 500,534"},
        {"^FO500,400^B8I", "500,400 561,369 495,369; above 563,481 497,481; next 500,400"},
        {"^FO500,400^B8B", "500,400 564,461 564,395; above 452,463 452,397; next 572,400"},
        {"^FO500,400^BUN",
         "500,400 482,464 506,464 584,464 696,464; above 480,352 504,352 582,352 694,352; next 690,472"},
        {"^FO500,400^BUR",
         "500,400 469,382 469,406 469,484 469,596; above 581,380 581,404 581,482 581,594; next 500,590"},
        {"^FO500,400^BUI",
         "500,400 689,369 585,369 507,369 475,369; above 691,481 587,481 509,481 477,481; next 500,400"},
        {"^FO500,400^BUB",
         "500,400 564,589 564,485 564,407 564,375; above 452,591 452,487 452,409 452,377; next 572,400"},
        {"^FO500,400^B9N", "500,400 482,464 489,464 608,464; above 480,352 487,352 606,352; next 602,472"},
        {"^FO500,400^B9R", "500,400 469,382 469,389 469,508; above 581,380 581,387 581,506; next 500,502"},
        {"^FO500,400^B9I", "500,400 601,369 494,369 475,369; above 603,481 496,481 477,481; next 500,400"},
        {"^FO500,400^B9B", "500,400 564,501 564,394 564,375; above 452,503 452,396 452,377; next 572,400"},
    };
    for (auto const& [field, places] : rows) {
        char const symbology = std::string_view(field)[std::string_view(field).size() - 2];
        char const* const data = symbology == 'E'   ? "400638133393"
                                 : symbology == '8' ? "9638507"
                                 : symbology == 'U' ? "03600029145"
                                                    : "0123456";
        EXPECT_EQ(Places(field, data), places) << field;
    }
}

}  // namespace
