#include <gtest/gtest.h>

#include "library/StreamInterpreter.h"
#include "tests/support/Texts.h"

// What goes wrong in a stream is told in a sentence with its place, and the next label still prints.

namespace {

struct BadRow {
    char const* name;
    std::string stream;
    std::vector<std::string> findings;
    unsigned labels = 1;  ///< before the next one
};

/// Without the line and column of what stands in the first line, which its byte says already.
std::string Told(Finding const& finding) {
    std::string text = finding.Describe();
    std::string const place = ", line 1, column " + std::to_string(finding.offset.value_or(0) + 1);
    if (auto const at = text.find(place); at != text.npos) text.erase(at, place.size());
    return text;
}

std::vector<BadRow> const Rows = {
    {"unknown command",
     "^XA\n^QQ1^FDa^FS^XZ",
     {"label 1, byte 4, line 2, column 1: command ^QQ is not known and was left out"}},
    {"unknown command behind a change of encoding",
     "^XA^CI28^XZ~QQ^XA^FDa^FS^XZ",
     {"byte 11: command ~QQ is not known and was left out"}},
    {"truncated picture",
     "^XA\n^FO9,9^GFA,800,800,10,FF^FS^XZ",
     {"label 1, byte 10, line 2, column 7: the data of a picture end behind 1 of 80 rows; the rest is white"}},
    {"truncated raw picture",
     "^XA^FO9,9^GFB,4,4,2,\xFF\xFF",
     {"byte 22: the stream ends inside a format: ^XZ is missing"},
     0},
    {"overlong picture", "^XA^GFA,4,4,2," + Repeated(5000, "F") + "^FS^XZ", {}},
    {"wrong check sum",
     "^XA^GFA,8,2,2,:B64:/4E=:0000^FS^XZ",
     {"label 1, byte 3: the check sum of a picture's data is EF02, and not \"0000\" as sent; it is drawn all the "
      "same"}},
    {"damaged packed data",
     "^XA^GFA,8,2,2,:Z64:/4E=:EF02^FS^FDa^FS^XZ",
     {"label 1, byte 3: the packed data of a picture are damaged; what can be read of them is drawn",
      "label 1, byte 3: the data of a picture end behind 0 of 1 rows; the rest is white"}},
    {"no bytes in a row", "^XA^GFA,8,8,0,FF^FS^FDa^FS^XZ", {}},
    {"too many bytes in a row",
     "^XA^GFA,8,200000,100000,FF^FS^FDa^FS^XZ",
     {"label 1, byte 3: a picture of 200000 bytes in rows of 100000 is too large and is left out"}},
    {"a picture far larger than every page",
     "~DGR:P.GRF,1080000,300," + Repeated(2160000, "F") + "^XA^XGR:P,10,10^FS^FDa^FS^XZ",
     {"label 1, byte 2160026: the picture is cut: 23188 of its 24000 dots are missing at the right edge of the page, "
      "and 34782 of its 36000 at the bottom edge"}},
    {"missing picture",
     "^XA\r\n^FO9,9^XGE:LOGO.GRF,1,1^FS^FDa^FS^XZ",
     {"label 1, byte 11, line 2, column 7: no picture is stored under the name \"E:LOGO.GRF\""}},
    {"missing format",
     "^XA^XFE:NONE.ZPL^FS^FDa^FS^XZ",
     {"label 1, byte 3: no format is stored under the name \"E:NONE.ZPL\""}},
    {"a name with path parts", "~DGE:../X,1,1,FF^XA^FDa^FS^XZ", {"byte 0: no picture can have the name \"E:../X\""}},
    {"a fault of a stored format",
     "^XA^DFR:T^FO9,9^XGR:NONE^FS^FDa^FS^XZ\n^XA^XFR:T^XZ",
     {"label 1, byte 41, line 2, column 4: no picture is stored under the name \"R:NONE\""}},
    {"a number out of range",
     "^XA^FO9,9\n^FB99999999999^FDa^FS^XZ",
     {"byte 10, line 2, column 1: ^FB: the number \"99999999999\" is out of range; this format is dropped"},
     0},
    {"text in the place of a number",
     "^XA^FOcenter. To move,5^FDa^FS^XZ",
     {"byte 3: ^FO: \"center. To move\" is no number; this format is dropped"},
     0},
    {"a number out of range outside all formats",
     "^PQ99999999999^XA^FDa^FS^XZ",
     {"byte 0: ^PQ: the number \"99999999999\" is out of range; this command is dropped"}},
    {"the rest of a format with a number out of range",
     "^XA^FDlost^FS^PQ99999999999^PQ7^DFR:U^QQ^FDb^FS^XZ^XA^XFR:U^FDa^FS^XZ",
     {"byte 13: ^PQ: the number \"99999999999\" is out of range; this format is dropped",
      "byte 37: command ^QQ is not known and was left out",
      "label 1, byte 53: no format is stored under the name \"R:U\""}},
    {"a number out of range in UTF-16",
     "\xFF\xFE" +
         [] {
             std::string wide;
             for (char const c : std::string("^XA^PQ99999999999^XZ^XA^FDa^FS^XZ")) wide += {c, '\0'};
             return wide;
         }(),
     {"byte 8: ^PQ: the number \"99999999999\" is out of range; this format is dropped"}},
    {"a quantity out of range",
     "^XA^PQ2147483648^FDa^FS^XZ",
     {"byte 3: ^PQ: the number \"2147483648\" is out of range; this format is dropped"},
     0},
    {"huge quantities and groups", "^XA^PQ99999999,99999999,99999999,N^FDa^FS^XZ", {}},
    {"clocks out of range",
     "^XA^ST99,99,9999,99,99,99^SO2,99999,99999,99999,99999,99999,99999^SO3,-99999,-99999,-99999,-99999,-99999,-99999"
     "^FC%,{,#^FD%Y {Y #Y {Q#^FS^XZ",
     [] {
         std::vector<std::string> findings;
         for (char const* const part :
              {"1 of ^ST is 99, beyond its range of 1 to 12", "2 of ^ST is 99, beyond its range of 1 to 31",
               "3 of ^ST is 9999, beyond its range of 1998 to 2097", "4 of ^ST is 99, beyond its range of 0 to 23",
               "5 of ^ST is 99, beyond its range of 0 to 59", "6 of ^ST is 99, beyond its range of 0 to 59"})
             findings.push_back("label 1, byte 3: parameter " + std::string(part) + "; it is left out");
         for (char const* const sign : {"", "-"}) {
             for (char digit = '2'; digit <= '7'; ++digit) {
                 findings.push_back((*sign ? "label 1, byte 65: parameter " : "label 1, byte 25: parameter ") +
                                    std::string(1, digit) + " of ^SO is " + sign +
                                    "99999, beyond its range of -32000 to 32000; " + sign + "32000 stands for it");
             }
         }
         return findings;
     }()},
    {"masks of odd lengths",
     "^XA^PQ3^FDab^SFdddddddddd,99999^FS^FDab^SFd^FS^FDab^SF,5^FS^FDab^SFd%,9999999^FS^FD^SFdd^FS^FDab^SF" +
         Repeated(4000, "d") + "^FS^SN" + Repeated(50, "9") + ",-2147483647,Y^FS^XZ",
     {}},
    {"a barcode without data for it",
     "^XA^FO9,9^BEN,50^FDabc^FS^XZ",
     {"label 1, byte 16: no barcode can be made of the data \"abc\": the symbology has not all of their characters"}},
    {"a QR Code without its switches",
     "^XA^FO9,9^BQN,2,4^FDHELLO^FS^FO9,99^BQN,2,4^FDQA,HELLO^FS^FO9,199^BQN,2,4^FDA,HELLO^FS"
     "^FO9,299^BQN,2,4^FDNY,HELLO^FS^FO9,399^BQN,2,4^FDa,HELLO^FS^XZ",
     [] {
         std::string const switches = ": the data of a QR Code begin with error level, input mode and a comma, as ";
         return std::vector{"label 1, byte 17" + switches + "\"QA,\"; \"HEL\" stands there, and is left out",
                            "label 1, byte 102" + switches + "\"QA,\"; \"NY,\" stands there, and is left out",
                            "label 1, byte 132" + switches + "\"QA,\"; \"a,\" stands there, and is left out"};
     }()},
    {"UTF-8 under another set",
     "^XA^FO9,9^FDcaf\xC3\xA9^FS^XZ",
     {"label 1, byte 9: the data \"caf\xC3\xA9\" look like UTF-8, and are read as ^CI0; ^CI28 stands for UTF-8"}},
    {"a missing font",
     "^XA^FO9,9^A@N,30,30,E:NONE.TTF^FDa^FS^XZ",
     {"label 1, byte 30: font \"NONE.TTF\" is not there; font A stands for it"}},
    {"one missing font in many places",
     "^XA^AMN^FDa^FS^AMN^FDb^FS^XZ^XA^AMN^FDc^FS^XZ",
     {"label 1, byte 7: font \"M\" is not there; font A stands for it (3 times)"},
     2},
    {"faults of formats without page",
     "~QA^XA^ZZ^DFR:T^FDa^FS^XZ^XA^QQ^XZ^XA^ZY^FDa^FS^XZ",
     {"byte 0: command ~QA is not known and was left out", "byte 6: command ^ZZ is not known and was left out",
      "byte 28: command ^QQ is not known and was left out",
      "label 1, byte 37: command ^ZY is not known and was left out"}},
    {"a byte order mark amid the stream",
     "^XA^FDa^FS^XZ\xEF\xBB\xBF",
     {"byte 13: a byte order mark stands here: what follows is read as UTF-8"}},
    {"a byte order mark in front", "\xEF\xBB\xBF^XA^FDa^FS^XZ", {}},
    {"a barcode cut by the edge, before what else is missing",
     "^XA^PW400^FO390,20^ADN,18^FDtext^FS^FO300,90^BY2^BCN,50,N^FD12345678^FS^XZ",
     {"label 1, byte 57: the barcode \"12345678\" is cut: 146 of its 246 dots are missing at the right edge of the "
      "page",
      "label 1, byte 25: the text \"text\" is cut: 36 of its 45 dots are missing at the right edge of the page",
      "label 1: the page is 400 x 1218 dots; one of 546 x 1218 dots would hold all fields"}},
    {"only the line of a barcode cut",
     "^XA^LL200^FO20,150^BY2^BCN,40^FD12^FS^XZ",
     {"label 1, byte 29: the text line of the barcode \"12\" is cut: 10 of its 14 dots are missing at the bottom edge "
      "of the page"}},
    {"fields off a page that is turned and mirrored",
     "^XA^POI^PMY^LT20^LL400^FO20,20^ADN,18^FDa^FS^FO20,390^ADN,18^FDb^FS^FO900,20^BY2^B3N,,50,N^FDC^FS^XZ"
     "^XA^PON^PMN^LT0^XZ",
     {"label 1, byte 90: the barcode \"C\" is not on the page: it stands 88 dots beyond the right edge",
      "label 1, byte 60: the text \"b\" is cut: 4 of its 14 dots are missing at the top edge of the page"}},
    {"a page that is blank because all lies off it",
     "^XA^LH0,2000^FO20,20^GB50,50,50^FS^FO20,90^BY2^B3N,,50,N^FDC^FS^XZ^XA^LH0,0^XZ",
     {"label 1: the page of 812 x 1218 dots is blank: all its 2 fields lie off it, the nearest 802 dots beyond the "
      "bottom edge"}},
    {"what runs past the page and is no loss",
     "^XA^FO0,0^GB812,1218,3^FS^FO0,50^GB2000,3,3^FS^FO900,20^FR^GB50,50,50^FS^FO900,20^GB50,50,50,W^FS"
     "^FO780,20^ADN,18^FDa                ^FS^FO760,90^GFA,40,40,20," +
         Repeated(12, "F") + Repeated(28, "0") + Repeated(12, "F") + Repeated(28, "0") + "^FS^XZ",
     {}},
    {"blocks that do not hold their text",
     "^XA^FO9,9^FB200,2^ADN,18^FDone and a half of them and some more^FS^FO9,99^TBN,200,20^ADN,18^FDone and a half of "
     "them^FS"
     "^FO9,200^FB^FDgone^FS^FO9,300^FB400,1,0,C^FDdone\\&^FS^XZ",
     {"label 1, byte 24: the text \"one and a half of them and some more\" does not fit its block of 2 lines: 1 more "
      "is printed over the last one",
      "label 1, byte 91: the text \"one and a half of them\" does not fit its block of 1 line: the rest is left out",
      "label 1, byte 130: the text \"gone\" is not drawn: its block has no width"}},
    {"each field once, however often it is drawn",
     "^XA^PQ3^FO800,20^ADN,18^SN0001,1,Y^FS^XZ",
     {"label 1, byte 23: the text \"0001\" is cut: 35 of its 46 dots are missing at the right edge of the page"}},
    {"questions without end",
     "^XA" + Repeated(1100, "^HV1") + "^FDa^FS^XZ",
     {"label 1, byte 4003: a format asks more than 1000 questions; the rest is not answered"}},
    {"numbers that are brought into their range",
     "^XA^LT500^FO1,1^GB9,9,9,B,9^FS^FO1,50^FB99,99999^FDa^FS~SD99^PQ0^BY2,9^XZ^XA^LT0^XZ",
     {"label 1, byte 3: parameter 1 of ^LT is 500, beyond its range of -120 to 120; 120 stands for it",
      "label 1, byte 15: parameter 5 of ^GB is 9, beyond its range of 0 to 8; 8 stands for it",
      "label 1, byte 37: parameter 2 of ^FB is 99999, beyond its range of 0 to 9999; it is left out",
      "label 1, byte 55: parameter 1 of ~SD is 99, beyond its range of 0 to 30; 30 stands for it",
      "label 1, byte 60: parameter 1 of ^PQ is 0, beyond its range of 1 to 99999999; 1 stands for it",
      "label 1, byte 64: parameter 2 of ^BY is 9, beyond its range of 2 to 3; it is left out"}},
    {"numbers that are fine or a custom",
     "^XA^LL0^PW0^FO1,1^GB9,0,3^FS^FO1,50^FB99,0^FDa^FS^FO1,90^GC1,0^FS^BY2,0^XZ",
     {}},
    {"numbers beyond their range in another unit",
     "^XA^MUM^PW9999^FO1,1^GB9,9,4001^FS^MUD^PW0^FDa^FS^XZ^XA^PW812^XZ",
     {"label 1, byte 7: parameter 1 of ^PW is 9999, beyond its range of 2 to 32000 dots; 32000 dots stand for it",
      "label 1, byte 20: parameter 3 of ^GB is 4001, beyond its range of 1 to 32000 dots; 32000 dots stand for it"}},
    {"a barcode for a number that the recalled format lacks",
     "^XA^DFR:N^FO9,9^ADN^FN1^FS^XZ^XA^XFR:N^FN1^FDa^FS^FN2^B3N,N,50,N^FDB^FS^XZ",
     {"label 1, byte 64: the format R:N.ZPL has no field 2: its data \"B\" are drawn in the upper left corner"}},
    {"characters that a barcode leaves out",
     "^XA^CI28^FO9,9^BCN,50^FDa\xC3\xA9^FS^FO9,99^BCN,50^FDb^FS^XZ^XA^CI0^XZ",
     {"label 1, byte 21: a barcode and its line leave out what is not ASCII of the data "
      "\"a\xC3\xA9\""}},
    {"more digits than a symbol has",
     "^XA^FO9,9^BRN,1^FD123456789012345^FS^FO9,99^BRN,9^FD12345678901234^FS^FO9,199^BRN,9^FD1234567890128^FS"
     "^FO9,299^BRN,1^FD0112345678901231^FS^XZ",
     {"label 1, byte 15: a barcode is made of \"1234567890123\" in place of the data "
      "\"123456789012345\": they are too long",
      "label 1, byte 49: a barcode is made of \"123456789012\" in place of the data "
      "\"12345678901234\": they are too long"}},
    {"an absent font for all fields",
     "^XA^CFM^FO9,9^FDa^FS^CFA^FO9,49^FDb^FS^XZ",
     {"label 1, byte 13: font \"M\" is not there; font A stands for it"}},
    {"one fault in two places",
     "^XA^XGA^FS\n^XGA^FS^FDa^FS^XZ",
     {"label 1, byte 3: no picture is stored under the name \"A\"",
      "label 1, byte 11, line 2, column 1: no picture is stored under the name \"A\""}},
};

TEST(BadInput, IsToldWithItsPlaceAndTheNextLabelPrints) {
    Desk desk{DeskSettings{}};
    for (auto const& row : Rows) {
        SCOPED_TRACE(row.name);
        desk.StartStream();
        bool const isWhole = row.stream.find("^XZ") != std::string::npos;
        std::string const stream = row.stream + (isWhole ? "^XA^FDnext^FS^XZ" : "");
        Findings findings(stream);
        StreamInterpreter interpreter(desk, stream, findings, StreamInterpreter::Detail::Ink);
        std::vector<std::string> texts;
        interpreter.Run([&texts](FinishedLabel& label) {
            texts.push_back(label.text);
            return true;
        });
        ASSERT_EQ(texts.size(), row.labels + (isWhole ? 1 : 0));
        EXPECT_TRUE(!isWhole || texts.back() == "next");
        std::vector<std::string> lines;
        for (auto const& finding : findings.List()) lines.push_back(Told(finding));
        EXPECT_EQ(lines, row.findings);
    }
}

}  // namespace
