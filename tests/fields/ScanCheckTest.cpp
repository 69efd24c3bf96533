#include <gtest/gtest.h>

#include "foundation/Files.h"
#include "library/StreamInterpreter.h"

// What a scanner would complain of is told of each barcode of a label in one sentence, with how to mend it.

namespace {

enum class Look { Only, AndRead };

/// What is told of the barcodes of a stream, as "kind: sentence".
std::vector<std::string> Complaints(std::string const& stream, unsigned dpi = 203, Look look = Look::Only) {
    DeskSettings settings;
    settings.designDpi = settings.printerDpi = dpi;
    settings.readsSymbols = look == Look::AndRead;
    Desk desk(settings);
    Findings findings(stream);
    StreamInterpreter interpreter(desk, stream, findings);
    interpreter.Run([&](FinishedLabel& finished) {
        Scripting::PageKeeper::Of(&interpreter.Target())->KeepPages();
        for (unsigned copy = 0; copy < finished.label.Quantity(); ++copy)
            finished.label.RenderLabel({}, copy, copy, copy + 1 == finished.label.Quantity());
        return true;
    });
    std::vector<std::string> lines;
    for (auto const& finding : findings.List()) {
        if (NameOf(finding.kind).starts_with("barcode-") || look == Look::AndRead)
            lines.push_back(std::string(NameOf(finding.kind)) + ": " + finding.text);
    }
    return lines;
}

std::string const Cut = "barcode-cut: the barcode \"ABC-12345\" is ";
std::string const Doubtful = "barcode-doubtful: the barcode \"ABC\" ";
std::string const Unreadable = "barcode-unreadable: the barcode \"ABC\" ";

struct Damage {
    char const* fields;  ///< of a page of 400 x 400 dots at 203 dpi
    std::string complaint;
};

Damage const DamagedLabels[] = {
    // Cut.
    {"^FO200,50^BCN,80,N^FDABC-12345^FS",
     Cut + "cut: 68 of its 268 dots are missing at the right edge of the page; move the field to x = 132 "
           "or less"},
    {"^FO330,40^BXN,6,200^FDABC-12345^FS",
     Cut + "cut: 14 of its 84 dots are missing at the right edge of the page; move the field to x = 316 "
           "or less"},
    {"^POI^FO40,380^BCN,80,N^FDABC-12345^FS",
     Cut + "cut: 60 of its 80 dots are missing at the top edge of the page; move the field to y = 320 or "
           "less"},
    {"^BY3^FO0,9^A0N,30^FDText^FS^FO10,50^BCN,80,N^FDABC-12345^FS",
     Cut + "cut: 12 of its 402 dots are missing at the right edge of the page; make the symbol smaller "
           "or the page larger"},
    {"^FO9,9^A0N,30^FDText^FS^FO40,420^BCN,80,N^FDABC-12345^FS",
     Cut + "not on the page: it stands 20 dots beyond the bottom edge; move the field to y = 320 or less"},
    // Crowded.
    {"^FO6,50^BCN,80,N^FDABC^FS",
     Doubtful +
         "needs 10 modules of white on the left and has 3 to the edge of the page: move the field to x = 20 or more"},
    {"^POI^FO6,50^BCN,80,N^FDABC^FS",
     Doubtful +
         "needs 10 modules of white on the right and has 3 to the edge of the page: move the field to x = 20 or more"},
    {"^FO100,8^BCR,80,N^FDABC^FS",
     Doubtful + "needs 10 modules of white above and has 4 to the edge of the page: move the field to y = 20 or more"},
    {"^FO40,50^BCN,80,N^FDABC^FS^FO188,60^A0N,30,30^FDnext^FS",
     Doubtful +
         "needs 10 modules of white on the right and has 7 to the text \"next\": move the field to x = 34 or less"},
    {"^FO40,20^GB160,120,2^FS^FO50,50^BCN,80,N^FDABC^FS",
     Doubtful +
         "needs 10 modules of white on the left and has 4 to the box or line at x = 40, y = 20 and 10 modules of "
         "white on the right and has 6 to the box or line at x = 40, y = 20: give it more room"},
    {"^FO40,10^A0N,30,30^FDHeading^FS^FO40,35^BXN,6,200^FDABC^FS",
     Doubtful + "needs 1 module of white above and has 0.6 to the text \"Heading\": move the field to y = 37 or more"},
    {"^FO60,50^BEN,80^FD400638133393^FS^FO45,50^GB3,80,3^FS",
     "barcode-doubtful: the barcode \"400638133393\" needs 11 modules of white on the left and has 6 to the box or "
     "line at x = 45, y = 50: move the field to x = 70 or more"},
    {"^FO10,50^BZN,40,N^FD12345^FS",
     "barcode-doubtful: the barcode \"12345\" needs 3.2 mm of white on the left and has 1.2 to the edge of the page: "
     "move the field to x = 26 or more"},
    // Too thin, too low.
    {"^BY1^FO40,50^B3N,N,80,N^FDABC^FS",
     Doubtful + "has modules of 0.125 mm, and scanners need 0.15 mm: set them to 2 dots or more with ^BY"},
    {"^FO40,50^BQN,2,1^FDQA,Hello^FS",
     "barcode-doubtful: the barcode \"QA,Hello\" has modules of 0.125 mm, and scanners need 0.15 mm: give it a "
     "magnification of 2 or more"},
    {"^BY1^FO9,50^BCB,20,N^FDABC^FS",
     Doubtful +
         "has modules of 0.125 mm, and scanners need 0.15 mm: set them to 2 dots or more with ^BY; it also has bars "
         "2.5 mm high, and 5 mm are the usual least: make them 40 dots high or more"},
    // Overprinted.
    {"^FO40,50^BCN,80,N^FDABC^FS^FO90,30^GB3,120,3^FS",
     Unreadable + "is overprinted across its whole height by the box or line at x = 90, y = 30: move one of them"},
    {"^FO9,9^GB380,380,3^FS^FO40,50^BCN,80,N^FDABC^FS^FO60,70^A0N,40,40^FDVOID^FS",
     Doubtful + "is overprinted on 38 % of its height by the text \"VOID\": move one of them"},
    {"^FO80,20^GB20,150,20,W^FS^FO40,50^BCN,80,N^FDABC^FS^FO80,20^GB20,150,20,W^FS",
     Unreadable +
         "is overprinted across its whole height by the white box or line at x = 80, y = 20: move one of them"},
    {"^FO40,50^BCN,80,N^FDABC^FS^FO80,90^GB20,150,20,W^FS",
     Doubtful + "is overprinted on 50 % of its height by the white box or line at x = 80, y = 90: move one of them"},
    {"^FO60,50^B7N,6,3,3^FDABC^FS^FO60,70^GB300,10,10^FS",
     Doubtful + "is overprinted on 10 % of its area by the box or line at x = 60, y = 70: move one of them"},
    // Reversed.
    {"^FO10,10^GB300,200,200^FS^FO60,50^FR^BCN,80,N^FDABC^FS",
     Unreadable + "is white on black, and scanners read Code 128 black on white: draw it without the black beneath it"},
    {"^FO10,10^GB300,200,200^FS^FO60,50^FR^BXN,6,200^FDABC^FS",
     Doubtful + "is white on black, which only some scanners read: draw it without the black beneath it"},
    {"^FO10,10^GB100,200,100^FS^FO60,50^FR^BCN,80,N^FDABC^FS",
     Unreadable + "is overprinted across its whole height by the box or line at x = 10, y = 10: move one of them"},
};

TEST(ScanCheck, DamagedLabelsGetTheirSentence) {
    for (auto const& [fields, complaint] : DamagedLabels) {
        auto const stream = "^XA^PW400^LL400^BY2" + std::string(fields) + "^XZ";
        EXPECT_EQ(Complaints(stream), std::vector{complaint}) << fields;
    }
}

TEST(ScanCheck, WhatScansIsNotComplainedOf) {
    for (auto const* fields : {
             // A frame around it, its own text, the first digit of an EAN, a line that touches the ends of bars.
             "^FO20,20^GB360,360,3^FS^FO60,60^BCN,80^FDABC^FS",
             "^FO60,60^BEN,80^FD400638133393^FS",
             "^FO60,60^BCN,80,N^FDABC^FS^FO60,59^GB100,3,3^FS",
             // Inverted upon white.
             "^FO60,60^FR^BCN,80,N^FDABC^FS",
             // Symbols that need no white.
             "^FO0,0^BON,4^FDABC^FS^FO92,0^GB3,90,3^FS",
             // Twice the same in one place.
             "^FO60,60^BCN,80,N^FDABC^FS^FO60,60^BCN,80,N^FDABC^FS",
             // Data that make no symbol.
             "^FO0,0^BEN,20^FDABC^FS",
         }) {
        auto complaints = Complaints("^XA^PW400^LL400^BY2" + std::string(fields) + "^XZ");
        std::erase_if(complaints, [](auto const& line) { return line.starts_with("barcode-refused"); });
        EXPECT_EQ(complaints, std::vector<std::string>()) << fields;
    }
    for (auto const& [name, dpi] : {std::pair{"barcodes", 203U},
                                    {"inventory-batch", 203},
                                    {"pharmacy-label", 300},
                                    {"product-label", 203},
                                    {"shipping-label", 203},
                                    {"stored-format", 203},
                                    {"warehouse-shelf", 203}}) {
        auto const stream = ReadRegularFile("examples/" + std::string(name) + ".zpl");
        ASSERT_FALSE(stream.empty()) << name;
        EXPECT_EQ(Complaints(stream, dpi), std::vector<std::string>()) << name;
    }
}

std::string const Unread =
    "barcode-unreadable: the barcode \"QA,Hello\" is not read on its page, though it is on white paper: ";

Damage const ReadLabels[] = {
    {"^FO40,40^BCR,80^FD>;1234>6AB^FS^FO200,40^BXN,6,200,,,,_^FD_1AB^FS^FO200,200^BQN,2,4^FDHM,N0123^FS", {}},
    {"^PMY^FO100,40^BCN,80^FDABC^FS^FO200,200^BQN,2,4^FDQA,Hello^FS", Unread + "print it without mirroring"},
    // A UPC-A told in the six digits of a UPC-E.
    {"^FO60,60^B9N,160^FD1234500006^FS", {}},
    // What error correction repairs, and what it does not.
    {"^FO60,60^BQN,2,4^FDQA,Hello^FS^FO100,100^GB12,12,12^FS",
     "barcode-doubtful: the barcode \"QA,Hello\" is overprinted on 1 % of its area by the box or line at x = 100, y = "
     "100: move one of them"},
    {"^FO60,60^BQN,2,4^FDQA,Hello^FS^FO60,100^GB84,12,12^FS",
     Unread + "free it of what stands on it or beside it; it also is overprinted on 8 % of its area by the box or line "
              "at x = 60, y = 100: move one of them"},
    // Several symbols of one field, and such as no reader knows.
    {"^FO40,40^BON,3,N,0,N,3^FDin several symbols^FS", {}},
    {"^FO60,60^BPN,N,80^FD12^FS^FO60,200^BPN,N,80^FD34^FS",
     "notice: a symbol of Plessey is not read back: no reader knows it"},
};

TEST(ScanCheck, ReadsSymbolsBack) {
    for (auto const& [fields, complaint] : ReadLabels) {
        auto const stream = "^XA^PW400^LL400^BY2" + std::string(fields) + "^XZ^XA^PMN^XZ";
        auto const complaints = complaint.empty() ? std::vector<std::string>() : std::vector{complaint};
        EXPECT_EQ(Complaints(stream, 203, Look::AndRead), complaints) << fields;
    }
}

TEST(ScanCheck, CopiesRepeatWhatTheyChangeAlone) {
    // The third copy has a letter, which makes it wider.
    EXPECT_EQ(Complaints("^XA^PW400^PQ4^BY2^FO6,50^BCN,80,N,N,N,A^FD1238^SFHHHH,1^FS^XZ").size(), 2U);
}

}  // namespace
