#include <gtest/gtest.h>

#include <fstream>

#include "foundation/Files.h"
#include "library/forms/DrawnFormat.h"
#include "tests/support/TemporaryDirectory.h"

// Labels drawn in memory over the store of a printer.
namespace {

namespace fs = std::filesystem;

class DrawnFormatTest : public testing::Test {
protected:
    DrawnFormatTest() {
        Store("R/A.ZPL", "^FO10,10^A0N,30^FDstored^FS^FO10,60^BY2^BCN,50^FN1\"Number\"^FS");
        settings_.machine.formatsFolder = store_.Path();
    }
    void Store(std::string const& name, std::string_view bytes) const {
        fs::create_directories((store_ / name).parent_path());
        ASSERT_FALSE(WriteFileAtomically(store_ / name, bytes));
    }
    static int InkOf(DrawnFormat const& drawn) {
        int ink = 0;
        for (char const byte : drawn.rows) ink += std::popcount(static_cast<unsigned char>(byte));
        return ink;
    }
    static std::string TextsOf(DrawnFormat const& drawn) {
        std::string texts;
        for (auto const& field : drawn.fields) texts += field.details.text + field.details.prompt + ";";
        return texts;
    }

    TemporaryDirectory store_;
    DeskSettings settings_;
};

TEST_F(DrawnFormatTest, TellsWhereTheFieldsOfTheFirstLabelStand) {
    FormatDrawer drawer(settings_);
    std::string const stream =
        "^XA^DFR:B^FS^FO10,10^GB40,40,2^FS^FO9,99^FN2^FS^XZ^XA^XFR:B^FN2^FDfilled^FS^XZ^XA^FO1,1^FDx^FS^XZ";
    auto const drawn = drawer.Draw(stream);
    EXPECT_EQ(drawn.size.width, 812);
    EXPECT_EQ(drawn.dpi, 203U);
    EXPECT_EQ(drawn.rows.size(), 102U * 1218);
    ASSERT_EQ(drawn.fields.size(), 2U);
    EXPECT_EQ(drawn.fields[0].box, (Scripting::PixelBox{10, 10, 50, 50}));
    EXPECT_EQ(InkOf(drawn) > 2 * (40 + 36) * 2, true);
    auto const text = [&](ZplCore::ByteRange range) { return stream.substr(range.offset, range.length); };
    EXPECT_EQ(text(*drawn.fields[0].look), "^FO10,10^GB40,40,2^FS");
    EXPECT_EQ(text(*drawn.fields[1].look), "^FO9,99^FN2^FS");
    EXPECT_EQ(text(*drawn.fields[1].data), "^FN2^FDfilled^FS");
}

TEST_F(DrawnFormatTest, TellsTheFieldsOfAFormatThatHasNothingToPrintYet) {
    Store("E/T.ZPL", "^FO10,10^FN1\"Who\"^FS");
    auto const drawn = FormatDrawer(settings_).Draw("^XA^XFE:T.ZPL^FS^XZ");
    EXPECT_TRUE(drawn.isBlank);
    EXPECT_EQ(InkOf(drawn), 0);
    EXPECT_EQ(drawn.rows.size(), 102U * 1218);
    EXPECT_EQ(TextsOf(drawn), "Who;");
    EXPECT_FALSE(drawn.fields.at(0).look) << "it is not in the stream";
}

TEST_F(DrawnFormatTest, DrawsAStoredFormatAsItWouldBe) {
    FormatDrawer drawer(settings_);
    auto const name = ObjectName::Parse("R:A.ZPL", 'R', "", "ZPL").value();
    std::string const bytes = "^FO10,10^GB40,40,2^FS^CC!^FO9,99^FN1^FS^FO9,200^FN2^FS";
    auto const drawn = drawer.DrawStored(name, bytes, "^FN1^FDfilled^FS");
    ASSERT_EQ(drawn.fields.size(), 3U);
    auto const text = [&](ZplCore::ByteRange range) { return bytes.substr(range.offset, range.length); };
    EXPECT_EQ(text(*drawn.fields[0].look), "^FO10,10^GB40,40,2^FS");
    EXPECT_EQ(text(*drawn.fields[1].look), "^FO9,99^FN1^FS") << "its characters change nothing";
    EXPECT_FALSE(drawn.fields[1].data);
    EXPECT_EQ(drawn.fields[1].details.text, "filled");
    EXPECT_EQ(std::pair(drawn.fields[1].isWaiting, drawn.fields[2].isWaiting), std::pair(false, true));
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^XFR:A^FN1^FD12^FS^XZ")), "stored;12Number;") << "it was only looked at";
}

TEST_F(DrawnFormatTest, FindsWhatIsStoredAndStoresNothing) {
    FormatDrawer drawer(settings_);
    std::string const before = ReadRegularFile(store_ / "R/A.ZPL");
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^XFR:A^FN1^FD12^FS^XZ")), "stored;12Number;");
    // Over the stored one, beside it, a picture, and all of the memory device.
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^DFR:A^FS^FO1,1^FDother^FS^XZ^XA^DFE:N^FS^FDn^FS^XZ~DGR:G,1,1,FF~DYR:H,A,G,1,1,FF"
                                  "^XA^XFR:A^XFE:N^XZ")),
              "other;n;");
    EXPECT_EQ(TextsOf(drawer.Draw("~JR^XA^XFR:A^FN1^FD12^FS^XZ")), "12;");
    EXPECT_EQ(ReadRegularFile(store_ / "R/A.ZPL"), before);
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(store_.Path()), fs::recursive_directory_iterator()), 2);
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^XFR:A^FN1^FD12^FS^XZ")), "stored;12Number;")
        << "each stream finds the store as it is";
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^XFE:N^XZ")), "");

    Store("R/A.ZPL", "^FO10,10^FDnew^FS");
    Store("E/N.ZPL", "^FO10,10^FDbeside^FS");
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^XFR:A^XFE:N^XZ")), "new;beside;");
    fs::remove(store_ / "R/A.ZPL");
    EXPECT_EQ(TextsOf(drawer.Draw("^XA^XFR:A^XFE:N^XZ")), "beside;");
}

TEST_F(DrawnFormatTest, TellsWhatIsWrong) {
    FormatDrawer drawer(settings_);
    for (std::string const stream : {"", "^XA^XZ", "no label", "^XA^FO1,99999999999^FDx^FS^XZ", "^XA^FO1,1^FDopen"}) {
        auto const drawn = drawer.Draw(stream);
        EXPECT_EQ(drawn.rows.size(), 102U * 1218) << stream;
        EXPECT_FALSE(drawn.findings.empty()) << stream;
    }
    EXPECT_EQ(drawer.Draw("^XA^FO1,1^BEN,50^FDletters^FS^FO1,1^FDx^FS^XZ").findings.size(), 1U);
}

}  // namespace
