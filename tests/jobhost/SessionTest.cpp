#include "jobhost/model/Session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "foundation/Files.h"
#include "labels/Job.h"
#include "tests/support/StreamRun.h"

namespace {

using namespace std::string_literals;

DeskSettings OneInch() {
    DeskSettings options;
    options.widthInches = options.heightInches = 1;
    return options;
}

class SessionTest : public testing::Test {
protected:
    std::vector<std::string> TextsOf(std::string_view stream) { return Texts(RunStream(desk_, stream)); }

    Desk desk_{OneInch()};
};

using Strings = std::vector<std::string>;

TEST_F(SessionTest, LabelsComeOutOfStreams) {
    struct Row {
        char const* name;
        std::string stream;
        Strings texts;
        std::string missing = {};
        bool endsInFormat = false;
    };
    std::vector<Row> const rows = {
        {"nothing", "", {}},
        {"two labels", "^XA^FO10,10^FDa^FS^XZ^XA^FO10,10^FDb^FS^XZ", {"a", "b"}},
        {"text around formats is dropped", "noise^XA^FDa^FS^XZnoise\r\n^XA^FDb^FS^XZ noise", {"a", "b"}},
        {"a field without its end is drawn", "^XA^FDa^XZ", {"a"}},
        {"an empty format prints nothing", "^XA^XZ^XA^FO1,1^FS^XZ", {}},
        {"a missing end prints nothing", "^XA^FDa^FS", {}, "", true},
        {"a stray end is ignored", "^XZ^FDlost^FS^XA^FDa^FS^XZ^XZ", {"a"}},
        {"a format begun again throws the first away", "^XA^FDa^FS^XA^FDb^FS^XZ", {"b"}},
        {"a cancelled format", "^XA^FDa^FS~JX^XZ^XA^FDb^FS^XZ", {"b"}},
        {"a cancel outside a format", "~JX^XA^FDa^FS^XZ", {"a"}},
        {"unknown commands are listed once", "^XA^ZZ1^ZZ^FDa^FS~ZY^ZZ^XZ", {"a"}, "^ZZ,~ZY"},
        {"a wrong prefix is unknown", "^XA^HS~HS^FDa^FS~XA^XZ", {"a"}, "^HS,~XA"},
        {"lower case", "^xa^fo1,1^fda^fs^xz", {"a"}},
        {"other characters", "^XA^CC!!FDa!FS!CD;!FO1;1!FDb;c!FS!XZ", {"a"}},
        {"characters last beyond a label", "~CT+^CC/^XA/XA/FDa/FS+PS/XZ", {"a"}},
        {"a stored format prints only when recalled",
         "^XA^DFR:T.ZPL^FS^FO1,1^FN1^FS^XZ^XA^XFR:T.ZPL^FN1^FDx^FS^XZ^XA^XFT^FN1^FDy^FS^XZ",
         {"x", "y"}},
        {"a format that is not stored adds nothing", "^XA^XFR:NONE.ZPL^FDa^FS^XZ", {"a"}},
        {"names never leave their folder", "^XA^DFR:../../T.ZPL^FDa^FS^XZ^XA^XFR:../../T.ZPL^FDb^FS^XZ", {"b"}},
        {"a saved picture that is not printed", "^XA^FDa^FS^ISR:P.GRF,N^XZ^XA^XGR:P.GRF^FS^XZ", {""}},
        {"the first command behind a change of encoding", "^XA^CI28^XZ^XA^FDa^FS^XZ^XA^FDb^FS^XZ", {"a", "b"}},
        {"a byte order mark", "\xEF\xBB\xBF^XA^CI28^FD\xC3\xA9^FS^XZ", {"\xC3\xA9"}},
        {"a byte order mark alone, to the end of its stream",
         "\xEF\xBB\xBF^XA^FD\xC3\xA9^FS^XZ^XA^FD\xC3\xA8^FS^XZ",
         {"\xC3\xA9", "\xC3\xA8"}},
        {"the next stream, in code page 850", "^XA^FD\x82^FS^XZ", {"\xC3\xA9"}},
        {"prefixes and delimiter of one stream", "~CT+^CD;^CC/", {}},
        {"are not those of the next", "^XA^FDx~JX^XZ^XA^FO1,2^SN7,3^FS^XZ", {"7"}},
        {"an open format", "^XA^LL50^FDx^FS", {}, "", true},
        {"is not that of the next stream", "^FDy^FS^XZ", {}},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        StreamRun const run = RunStream(desk_, row.stream);
        EXPECT_EQ(Texts(run), row.texts);
        EXPECT_EQ(run.missing, row.missing);
        EXPECT_EQ(run.endsInFormat, row.endsInFormat);
    }
}

TEST_F(SessionTest, ReturnsEachLabelWithTheRestOfTheInput) {
    auto const session = desk_.MakeSession();
    std::string const stream = "^XA^FDa^FS^XZ^XA^FDb^FS^XZ";
    auto const first = session->Consume(stream, false, true);
    ASSERT_TRUE(first.label);
    EXPECT_EQ(first.remaining, "^XA^FDb^FS^XZ");
    EXPECT_TRUE(session->Consume("~ZZ", false, false).allCommandsKnown);
    auto const none = session->Consume("", false, true);
    EXPECT_TRUE(none.allCommandsKnown) << "the open command waits for the end of an input that has bytes";
    EXPECT_FALSE(none.label);
    EXPECT_FALSE(session->Consume("\n", false, true).allCommandsKnown);
}

TEST_F(SessionTest, InControlOnlyModeNothingIsRecorded) {
    auto const session = desk_.MakeSession();
    auto const result = session->Consume("^XA^FDa^FS~PS^XZ", true, true);
    EXPECT_TRUE(result.allCommandsKnown);
    EXPECT_FALSE(result.label);
}

TEST_F(SessionTest, QuantityCountsForItsOwnFormatAndOutsideOneForAll) {
    auto const run = RunStream(desk_, "^XA^PQ3^FDa^FS^XZ^XA^FDb^FS^XZ^XA^PQ0^FDc^FS^XZ^PQ9^XA^FDd^FS^XZ");
    std::vector<unsigned> copies;
    for (auto const& label : run.labels) copies.push_back(label.copies);
    EXPECT_EQ(copies, (std::vector<unsigned>{3, 1, 1, 9}));
    EXPECT_EQ(desk_.Model().GetLifetimeZplScriptsCountProperty()->Get(), 14U);
    EXPECT_EQ(RunStream(desk_, "^XA^PQ99999999999^FDlost^FS^PQ7^XZ^XA^FDa^FS^XZ").labels.at(0).copies, 1U)
        << "the rest of a format that is dropped counts for nothing";
}

TEST_F(SessionTest, SetUpLastsFromLabelToLabelAndTheFormatDoesNot) {
    auto const run = RunStream(desk_, "^XA^PW100^LL60^FDa^FS^XZ^XA^FDb^FS^XZ~JR^XA^FDc^FS^XZ");
    ASSERT_EQ(run.labels.size(), 3U);
    EXPECT_EQ(run.labels[0].width, 100U);
    EXPECT_EQ(run.labels[1].width, 100U);
    EXPECT_EQ(run.labels[1].height, 60U);
    EXPECT_EQ(run.labels[2].width, 203U);
    EXPECT_EQ(run.labels[0].rows.size(), run.labels[1].rows.size());
}

TEST_F(SessionTest, AStoredFormatKeepsItsBytes) {
    RunStream(desk_, "^XA^CC++DFE:KEEP.ZPL+FS+FO1,2+GFB,3,3,1,^\r,+FDa,b+TA010+FS+XZ");
    EXPECT_EQ(ReadRegularFile(desk_.FormatsFolder() / "E/KEEP.ZPL"), "^FS^FO1,2^GFB,3,3,1,^\r,^FDa,b^FS");
}

TEST_F(SessionTest, ANumberOutOfRangeLeavesAsAnException) {
    auto const session = desk_.MakeSession();
    EXPECT_THROW(session->Consume("^XA^FO10,10^FB2147483648^FDa^FS^XZ", false, true), std::out_of_range);
    EXPECT_THROW(desk_.MakeSession()->Consume("^XA^PQ2147483648", false, true), std::out_of_range);
}

TEST_F(SessionTest, SerialFieldsFollowTheCopyWhateverTheOrder) {
    struct Row {
        std::string field;
        Strings texts;  // of copies 0, 1, 2, 5, 1, 0
    };
    for (auto const& row : std::vector<Row>{
             {"^SN098,1,Y", {"098", "099", "100", "103", "099", "098"}},
             {"^SN5", {"5", "6", "7", "0", "6", "5"}},
             {"^FDAB7^SFAAd,1", {"AB7", "AB8", "AB9", "AC2", "AB8", "AB7"}},
             {"^FN1^SFdd^FS^FN1^FD07", {"07", "08", "09", "12", "08", "07"}},
             {"^PQ9,0,2^SN1,1,N", {"1", "1", "2", "3", "1", "1"}},
         }) {
        SCOPED_TRACE(row.field);
        std::string const stream = "^XA^PQ9^FO10,10" + row.field + "^FS^XZ";
        auto const session = desk_.MakeSession();
        auto result = session->Consume(stream, false, true);
        Zpl::Label label = std::get<1>(*result.label);
        Strings texts;
        for (unsigned const copy : {0U, 1U, 2U, 5U, 1U, 0U}) {
            label.RenderLabel("", copy, copy, false);
            texts.push_back(session->Target().GetLabelText());
        }
        EXPECT_EQ(texts, row.texts);
    }
}

TEST_F(SessionTest, TheFirstCopyIsWhatTheStreamDrewWhereThatStillHolds) {
    using Zpl::Host::Session;
    struct Row {
        char const* name;
        std::string format;
        bool isKept = false;
        std::function<void(Session&, Zpl::Label&)> before = {};
    };
    for (auto const &row : std::vector<Row>{
             {"nothing came between", "^FDa^FS", true},
             {"the next label was drawn", "", false,
              [](Session&session, auto&) { session.Consume("^XA^FDb^FS^XZ", false, true); }},
             {"a blank page came between", "", false, [](auto&, Zpl::Label&label) { label.RenderBlank("", 0, false); }},
             {"it is a page already", "", false, [](auto&, Zpl::Label&label) { label.RenderLabel("", 0, 0, false); }},
             {"the media changed", "", false,
              [](Session&session, auto&) {
                  session.Target().LoadPart({1, 1});
              }},
             {"its tag has answered", "", false, [](auto&, Zpl::Label&label) { label.SetRfidReadResponse(0, {}); }},
             {"each copy has its own time", "^SLT"},
             {"it becomes a picture, which it may recall", "^ISR:P.GRF,Y"},
         }) {
        SCOPED_TRACE(row.name);
        auto const session = desk_.MakeSession();
        auto& target = session->Target();
        target.KeepPages();
        auto result = session->Consume("^XA" + row.format + "^FO40,40^FDa^FS^XZ", false, true);
        Zpl::Label& label = std::get<1>(*result.label);
        if (row.before) row.before(*session, label);
        // A mark that the first copy alone shows, and only if it is not drawn anew.
        target.DrawBox(0, 0, 8, 1, 1, 0);
        label.RenderLabel("", 0, 0, true);
        std::string first(target.PackedRows());
        EXPECT_EQ(first[0] == '\xFF', row.isKept);
        first[0] = '\0';
        label.RenderLabel("", 0, 0, true);
        EXPECT_EQ(target.PackedRows(), first);
    }
}

TEST(Desk, MakesTheFolderOfObjectsForItsOwnerAloneWhenOneIsStored) {
    std::filesystem::path folder;
    {
        Desk desk(OneInch());
        folder = desk.FormatsFolder();
        RunStream(desk, "^XA^FO1,1^FDa^FS^XFR:T.ZPL^XGR:T.GRF^FS^XZ");
        EXPECT_FALSE(std::filesystem::exists(folder));
        RunStream(desk, "^XA^DFR:T.ZPL^FDa^FS^XZ");
        EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
