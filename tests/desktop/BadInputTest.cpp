#include <gtest/gtest.h>

#include "desktop/StreamInterpreter.h"

// What goes wrong in a stream is told in a sentence with its place, and the next label still prints.

namespace {

struct BadRow {
    char const* name;
    std::string stream;
    std::vector<std::string> findings;
    unsigned labels = 1;  ///< before the next one
};

std::string Marks(std::size_t count, char mark) { return std::string(count, mark); }

std::vector<BadRow> const Rows = {
    {"unknown command",
     "^XA\n^QQ1^FDa^FS^XZ",
     {"label 1, byte 4, line 2, column 1: command ^QQ is not known and was left out"}},
    {"unknown command behind a change of encoding",
     "^XA^CI28^XZ~QQ^XA^FDa^FS^XZ",
     {"byte 11, line 1, column 12: command ~QQ is not known and was left out"}},
    {"truncated picture",
     "^XA\n^FO9,9^GFA,800,800,10,FF^FS^XZ",
     {"label 1, byte 10, line 2, column 7: the data of a picture end behind 1 of 80 rows; the rest is white"}},
    {"truncated raw picture",
     "^XA^FO9,9^GFB,4,4,2,\xFF\xFF",
     {"label 1, byte 22, line 1, column 23: the stream ends inside a format: ^XZ is missing"},
     0},
    {"overlong picture", "^XA^GFA,4,4,2," + Marks(5000, 'F') + "^FS^XZ", {}},
    {"wrong check sum",
     "^XA^GFA,8,2,2,:B64:/4E=:0000^FS^XZ",
     {"label 1, byte 3, line 1, column 4: the check sum of a picture's data is EF02, and not \"0000\" as sent; it is "
      "drawn all the same"}},
    {"damaged packed data",
     "^XA^GFA,8,2,2,:Z64:/4E=:EF02^FS^FDa^FS^XZ",
     {"label 1, byte 3, line 1, column 4: the packed data of a picture are damaged; what can be read of them is drawn",
      "label 1, byte 3, line 1, column 4: the data of a picture end behind 0 of 1 rows; the rest is white"}},
    {"no bytes in a row", "^XA^GFA,8,8,0,FF^FS^FDa^FS^XZ", {}},
    {"too many bytes in a row",
     "^XA^GFA,8,200000,100000,FF^FS^FDa^FS^XZ",
     {"label 1, byte 3, line 1, column 4: a picture of 200000 bytes in rows of 100000 is too large and is left out"}},
    {"a picture far larger than every page",
     "~DGR:P.GRF,1080000,300," + Marks(2160000, 'F') + "^XA^XGR:P,10,10^FS^FDa^FS^XZ",
     {}},
    {"missing picture",
     "^XA\r\n^FO9,9^XGE:LOGO.GRF,1,1^FS^FDa^FS^XZ",
     {"label 1, byte 11, line 2, column 7: no picture is stored under the name \"E:LOGO.GRF\""}},
    {"missing format",
     "^XA^XFE:NONE.ZPL^FS^FDa^FS^XZ",
     {"label 1, byte 3, line 1, column 4: no format is stored under the name \"E:NONE.ZPL\""}},
    {"a name with path parts",
     "~DGE:../X,1,1,FF^XA^FDa^FS^XZ",
     {"label 1, byte 0, line 1, column 1: no picture can have the name \"E:../X\""}},
    {"a fault of a stored format",
     "^XA^DFR:T^FO9,9^XGR:NONE^FS^FDa^FS^XZ\n^XA^XFR:T^XZ",
     {"label 1, byte 41, line 2, column 4: no picture is stored under the name \"R:NONE\""}},
    {"a number out of range",
     "^XA^FO9,9\n^FB99999999999^FDa^FS^XZ",
     {"label 1, byte 10, line 2, column 1: ^FB: the number \"99999999999\" is out of range; this format is "
      "dropped"},
     0},
    {"text in the place of a number",
     "^XA^FOcenter. To move,5^FDa^FS^XZ",
     {"label 1, byte 3, line 1, column 4: ^FO: \"center. To move\" is no number; this format is dropped"},
     0},
    {"a number out of range outside all formats",
     "~SD99999999999^XA^FDa^FS^XZ",
     {"label 1, byte 0, line 1, column 1: ~SD: the number \"99999999999\" is out of range; this command is "
      "dropped"}},
    {"the rest of a format with a number out of range",
     "^XA^FDlost^FS^PQ99999999999^PQ7^DFR:U^QQ^FDb^FS^XZ^XA^XFR:U^FDa^FS^XZ",
     {"label 1, byte 13, line 1, column 14: ^PQ: the number \"99999999999\" is out of range; this format is "
      "dropped",
      "label 1, byte 37, line 1, column 38: command ^QQ is not known and was left out",
      "label 1, byte 53, line 1, column 54: no format is stored under the name \"R:U\""}},
    {"a number out of range in UTF-16",
     "\xFF\xFE" +
         [] {
             std::string wide;
             for (char const c : std::string("^XA^PQ99999999999^XZ^XA^FDa^FS^XZ")) wide += {c, '\0'};
             return wide;
         }(),
     {"label 1, byte 8, line 1, column 9: ^PQ: the number \"99999999999\" is out of range; this format is "
      "dropped"}},
    {"a quantity out of range",
     "^XA^PQ2147483648^FDa^FS^XZ",
     {"label 1, byte 3, line 1, column 4: ^PQ: the number \"2147483648\" is out of range; this format is dropped"},
     0},
    {"huge quantities and groups", "^XA^PQ99999999,99999999,99999999,N^FDa^FS^XZ", {}},
    {"clocks out of range",
     "^XA^ST99,99,9999,99,99,99^SO2,99999,99999,99999,99999,99999,99999^SO3,-99999,-99999,-99999,-99999,-99999,-99999"
     "^FC%,{,#^FD%Y {Y #Y {Q#^FS^XZ",
     {}},
    {"masks of odd lengths",
     "^XA^PQ3^FDab^SFdddddddddd,99999^FS^FDab^SFd^FS^FDab^SF,5^FS^FDab^SFd%,9999999^FS^FD^SFdd^FS^FDab^SF" +
         Marks(4000, 'd') + "^FS^SN" + Marks(50, '9') + ",-2147483647,Y^FS^XZ",
     {}},
    {"a barcode without data for it",
     "^XA^FO9,9^BEN,50^FDabc^FS^XZ",
     {"label 1, byte 16, line 1, column 17: no barcode can be made of the data \"abc\": the symbology has not all of "
      "their characters"}},
    {"a QR Code without its switches",
     "^XA^FO9,9^BQN,2,4^FDHELLO^FS^FO9,99^BQN,2,4^FDQA,HELLO^FS^FO9,199^BQN,2,4^FDA,HELLO^FS^XZ",
     {"label 1, byte 17, line 1, column 18: the data of a QR Code begin with error level, input mode and a comma, as "
      "\"QA,\"; \"HEL\" stands there, and is left out"}},
    {"UTF-8 under another set",
     "^XA^FO9,9^FDcaf\xC3\xA9^FS^XZ",
     {"label 1, byte 9, line 1, column 10: the data \"caf\xC3\xA9\" look like UTF-8, and are read as ^CI0; ^CI28 "
      "stands "
      "for UTF-8"}},
    {"a missing font",
     "^XA^FO9,9^A@N,30,30,E:NONE.TTF^FDa^FS^XZ",
     {"label 1, byte 30, line 1, column 31: font \"NONE.TTF\" is not there; font A stands for it"}},
    {"questions without end",
     "^XA" +
         [] {
             std::string questions;
             for (int i = 0; i < 1100; ++i) questions += "^HV1";
             return questions;
         }() +
         "^FDa^FS^XZ",
     {"label 1, byte 4003, line 1, column 4004: a format asks more than 1000 questions; the rest is not answered"}},
    {"one fault in two places",
     "^XA^XGA^FS\n^XGA^FS^FDa^FS^XZ",
     {"label 1, byte 3, line 1, column 4: no picture is stored under the name \"A\"",
      "label 1, byte 11, line 2, column 1: no picture is stored under the name \"A\""}},
};

TEST(BadInput, IsToldWithItsPlaceAndTheNextLabelPrints) {
    Desk desk{RenderOptions{}};
    for (auto const& row : Rows) {
        SCOPED_TRACE(row.name);
        desk.StartStream();
        bool const isWhole = row.stream.ends_with("^XZ");
        std::string const stream = row.stream + (isWhole ? "^XA^FDnext^FS^XZ" : "");
        Findings findings(stream);
        StreamInterpreter interpreter(desk, stream, findings);
        std::vector<std::string> texts;
        interpreter.Run([&texts](FinishedLabel& label) {
            texts.push_back(label.text);
            return true;
        });
        ASSERT_EQ(texts.size(), row.labels + (isWhole ? 1 : 0));
        EXPECT_TRUE(!isWhole || texts.back() == "next");
        std::vector<std::string> lines;
        for (auto const& finding : findings.List()) lines.push_back(finding.Describe());
        EXPECT_EQ(lines, row.findings);
    }
}

}  // namespace
