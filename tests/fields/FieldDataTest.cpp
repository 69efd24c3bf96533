#include <gtest/gtest.h>

#include "../support/FieldBench.h"
#include "fields/data/FieldElement.h"

using namespace std::string_literals;

namespace {

std::string DataOf(std::string_view stream) {
    FieldBench bench;
    bench.Run(stream);
    return bench.processor.at(ZplContextKeys::FieldData);
}

TEST(FieldData, KeepsItsDelimiters) {
    EXPECT_EQ(DataOf("^FDa,b,,c^"), "a,b,,c");
    EXPECT_EQ(DataOf("^FD,"), ",");
    FieldBench bench;
    bench.printer->SetDelimiter(';');
    bench.Run("^FDa,b;c");
    EXPECT_EQ(bench.processor.at(ZplContextKeys::FieldData), "a,b;c");
}

TEST(FieldData, HexIndicator) {
    struct Row {
        char const* stream;
        std::string expected;
    };
    Row const rows[] = {
        {"^FH^FD_41_4a_zz_4", "AJ_zz_4"}, {"^FH\\^FD\\41_41", "A_41"}, {"^FD_41", "_41"},
        {"^FH_^FDa_00b", "a\0b"s},        {"^FH^FD__41", "_A"},        {"^FH ^FD_2C_5E", ",^"},
        {"^FH^FD_5F41", "_41"},           {"^FHx^FV x41x4", " Ax4"},   {"^FH^SN_41", "A"},
    };
    for (auto const& row : rows) EXPECT_EQ(DataOf(row.stream), row.expected) << row.stream;
}

TEST(FieldData, HexIndicatorIsNoPrefix) {
    FieldBench bench;
    bench.printer->SetFormatPrefix('+');
    bench.printer->SetControlPrefix('!');
    for (char const indicator : {'+', '!', '\x07'}) {
        bench.Handlers().GetCommandHandler("FH")->HandleCommand(
            bench.processor.GetCurrentContext(), {"FH", false, {std::string(1, indicator)}}, bench.processor);
        EXPECT_EQ(bench.processor.at(ZplContextKeys::FieldHexIndicator), '_');
    }
}

constexpr DrawRow Rows[] = {
    {"comments draw nothing", "^FXa,b^FS^FO1,2^FDx^FS", "text 1,2 'x' A 1x1\n"},
    {"variable data", "^FO1,2^FVx^FS^FO1,2^FDy^FS", "text 1,2 'x' A 1x1 variable\ntext 1,2 'y' A 1x1\n"},
    {"serial data show their start", "^FO0,0^SN007,1,Y^FS^FO0,0^SN^FS", "text 0,0 '007' A 1x1\ntext 0,0 '1' A 1x1\n"},
    {"template waits for its data", "^FO1,2^FN1^FS^FO9,9^FDx^FS^FN1^FDy^FS",
     "text 9,9 'x' A 1x1\ntext 1,2 'y' A 1x1\n"},
    {"template is filled again", "^FO1,2^FN1^FS^FN1^FDx^FS^FN1^FDyy^FS", "text 1,2 'x' A 1x1\ntext 1,2 'yy' A 1x1\n"},
    {"template keeps its own font", "^FO1,2^ABN,11,7^FN1^FS^FN1^FDx^FS", "text 1,2 'x' B 1x1\n"},
    {"filling field names a font", "^FO1,2^ABN,22,14^FN1^FS^AD^FN1^FDx^FS", "text 1,2 'x' D 1x1\n"},
    {"template keeps orientation and reverse", "^FO1,2^FR^AAR^FN1^FS^FN1^FDx^FS",
     "text 1,2 'x' A 1x1 turned 90 reverse\n"},
    {"template is reversed by the label it is filled on", "^FO1,2^FN1^FS^LRY^FN1^FDx^FS",
     "text 1,2 'x' A 1x1 reverse\n"},
    {"number with data is an ordinary field", "^FO1,2^FN1^FDx^FS", "text 1,2 'x' A 1x1\n"},
    {"number is its leading digits", "^FO1,2^FN12abc^FS^FN12^FDx^FS", "text 1,2 'x' A 1x1\n"},
    {"what begins with no digit is no number", "^FO1,2^FNx1^FS^FN1^FDx^FS", "text 0,0 'x' A 1x1\n"},
    {"template reads its own hex", "^FO1,2^FH^FN1^FS^FN1^FD_41^FS", "text 1,2 'A' A 1x1\n"},
    {"template reads its clock behind the filling field's hex", "^FO1,2^FC%^FN1^FS^FN1^FH^FD_41 %Y^FS",
     "text 1,2 'A 2024' A 1x1\n"},
    {"template shows the time of the filling field", "^FO1,2^FC%^FN1^FS^ST1,1,2030^FN1^FD%Y^FS",
     "text 1,2 '2030' A 1x1\n"},
    {"variable data fill a template", "^FO1,2^FN1^FS^FN1^FVx^FS^FN1^FDy^FS",
     "text 1,2 'x' A 1x1 variable\ntext 1,2 'y' A 1x1\n"},
    {"clock of the filling field is read once", "^FO1,2^FC#^FN1^FS^FN1^FC%,^FD%Y #Y^FS", "text 1,2 '2024 #Y' A 1x1\n"},
    {"font of one filling field is not the next one's", "^FO1,2^ABN,11,7^FN1^FS^FN1^AD^FDx^FS^FN1^FDy^FS",
     "text 1,2 'x' D 1x1\ntext 1,2 'y' B 1x1\n"},
    {"hex of the filling field is read once", "^FO1,2^FH^FN1^FS^FN1^FH^FD_5F41^FS", "text 1,2 '_41' A 1x1\n"},
    {"fields go on behind a filled template", "^FO1,2^FN1^FS^FN1^FDxx^FS^FT^FDy^FS",
     "text 1,2 'xx' A 1x1\ntext 21,2 'y' A 1x1\n"},
    {"nothing in a template leaves the running position", "^FO1,2^FN1^FS^FO50,60^FDxx^FS^FN1^FD^FS^FT^FDy^FS",
     "text 50,60 'xx' A 1x1\ntext 70,60 'y' A 1x1\n"},
    {"template of a box", "^FO1,2^GB5,6,1^FN1^FS^FN1^FDx^FS", "box 1,2 5x6 border 1\n"},
};
TEST(FieldData, Draws) { ExpectDrawings(Rows); }

TEST(FieldData, LongSerialMasksAreIgnored) {
    for (std::size_t const length : {2999U, 3000U}) {
        FieldBench bench;
        bench.processor.SetCurrentLabelNumber(1);
        std::string const drawn = bench.Run("^FO1,2^FD8^SF" + std::string(length, 'd') + ",1^FS");
        EXPECT_EQ(drawn, length == 2999 ? "text 1,2 '9' A 1x1\n" : "text 1,2 '8' A 1x1\n");
    }
}

// What a host most likely did not mean is drawn by the letter, and told once a field.
TEST(FieldData, TellsWhatIsPlainlyMeantOtherwise) {
    struct Row {
        char const* set;
        char const* stream;
        char const* drawn;
        char const* told;  ///< nothing if empty
    };
    for (auto const& row : std::initializer_list<Row>{
             {"", "^FO1,2^FDa\tb^FS", "text 1,2 'a b' A 1x1\n", ""},
             {"", "^FN9^FDx^FS", "text 0,0 'x' A 1x1\n", "this format has no field 9: its data \"x\" are drawn in"},
             {"", "^FO1,2^FN9^FDx^FS", "text 1,2 'x' A 1x1\n", ""},
             {"^CI28", "^FH^FO1,2^FDcaf_E9^FS", "text 1,2 'caf\uFFFD' A 1x1\n",
              "the data \"caf\uFFFD\" are read as UTF-8, in which the byte E9 makes no character; ^CI27"},
             {"^CI28", "^FH^FO1,2^FB90,2^FDcaf_82\\&b^FS", "text 1,2 'caf\uFFFD' A 1x1\ntext 1,22 'b' A 1x1\n",
              "the data \"caf\uFFFD\\&b\" are read as UTF-8, in which the byte 82 makes no character; ^CI13"},
             {"^CI28", "^FO1,2^FDcaf\u00E9^FS", "text 1,2 'caf\u00E9' A 1x1\n", ""},
             {"^CI17", "^FO1,2^FDHel\tlo^FS", "text 1,2 'Hel lo' A 1x1\n",
              "the data \"Hel\tlo\" are plain text and drawn so"},
             {"^CI17", "^FO1,2^FB90,2^FDA\\&B^FS", "text 1,2 'A' A 1x1\ntext 1,22 'B' A 1x1\n",
              "the data \"A\\&B\" are plain text and drawn so"},
             {"^CI17", "^FH^FO1,2^FD_00A_4E_2D^FS", "text 1,2 'A\u4E2D' A 1x1\n", ""},
             {"^CI17", "^FH^FO1,2^FB90,2^FD_00A_5C_26_00B^FS", "text 1,2 'A\u5C26B' A 1x1\n", ""},
             {"^CI15", "^FH^FO1,2^FB90,2^FD_95_5C\\&A^FS", "text 1,2 '\u8868' A 1x1\ntext 1,22 'A' A 1x1\n", ""},
             {"^CI14", "^FH^FO1,2^FB90,2^FD_97_5C\\&A^FS", "text 1,2 '\u688A' A 1x1\ntext 1,22 'A' A 1x1\n", ""},
             {"^CI26", "^FH^FO1,2^FB90,2^FD_97_5C&_81_5C-\\\\^FS", "text 1,2 '\u688A&\u4E57-\\' A 1x1\n", ""},
             {"^CI26", "^FH^FO1,2^TBN,90,20^FD_97_5C&^FS", "text 1,2 '\u688A&' A 1x1\n", ""},
         }) {
        FieldBench bench;
        bench.Run(row.set);
        EXPECT_EQ(bench.Run(row.stream), row.drawn) << row.stream;
        EXPECT_EQ(bench.reports.size(), *row.told ? 1U : 0U) << row.stream;
        if (!bench.reports.empty()) {
            EXPECT_EQ(bench.reports[0].substr(0, std::string_view(row.told).size()), row.told);
        }
    }
}

TEST(FieldElement, EveryLabelHomeMovesTheFieldsBehindIt) {
    FieldBench bench;
    auto const setHome = [&bench](unsigned x, unsigned y) {
        bench.processor.set(ContextProcessor::FormatContext, ZplContextKeys::LabelOriginX, x);
        bench.processor.set(ContextProcessor::FormatContext, ZplContextKeys::LabelOriginY, y);
    };
    setHome(10, 20);
    EXPECT_EQ(bench.Run("^FO1,2^FDa^FS^FO3,4^FN1^FS"), "text 1,2 'a' A 1x1 home 10,20\n");
    setHome(30, 40);
    EXPECT_EQ(bench.Run("^FO1,2^FDb^FS^FN1^FDc^FS"), "text 1,2 'b' A 1x1 home 30,40\ntext 3,4 'c' A 1x1 home 10,20\n");
}

TEST(FieldElement, TemplatesDoNotHoldEachOther) {
    FieldBench bench;
    bench.Run("^FO1,1^FN1^FS^FO2,2^FN2^FS^FO3,3^FN3^FS");
    auto const& saved = bench.processor.at(ZplContextKeys::SavedContexts);
    ASSERT_EQ(saved.size(), 3U);
    for (auto const& [number, copy] : saved) EXPECT_TRUE(copy.at(ZplContextKeys::SavedContexts).empty()) << number;
}

TEST(FieldElement, KeepsALimitedNumberOfTemplates) {
    FieldBench bench;
    std::string stream;
    for (std::size_t i = 1; i <= ZplCore::MaximumSavedFields + 1; ++i)
        stream += "^FO1,1^FN" + std::to_string(i) + "^FS";
    bench.Run(stream);
    EXPECT_EQ(bench.processor.at(ZplContextKeys::SavedContexts).size(), ZplCore::MaximumSavedFields);
    EXPECT_EQ(bench.reports.size(), 1U);
    bench.Run("^FO5,5^FN3^FS");  // an old number is still filled
    EXPECT_EQ(bench.Run("^FN3^FDx^FS"), "text 1,1 'x' A 1x1\n");
}

TEST(FieldElement, SerialFunctionIsCalledWithItsIndex) {
    FieldBench bench;
    std::vector<unsigned> indices;
    ZplContextKeys::SerializeFunctionType const note = [&](ContextProcessor&, unsigned index) {
        indices.push_back(index);
    };
    bench.processor.set(ContextProcessor::FormatContext, ZplContextKeys::SerialNumberReplications, 3U);
    for (unsigned const copy : {0U, 2U, 3U, 7U}) {
        bench.processor.SetCurrentLabelNumber(copy);
        bench.processor.set(ContextProcessor::ElementContext, ZplContextKeys::SerializeFunction, note);
        bench.Run("^FS");
    }
    bench.Run("^FS");  // an empty element is no field
    EXPECT_EQ(indices, (std::vector<unsigned>{0, 0, 1, 2}));
}

TEST(FieldElement, WithoutTargetNothingIsDrawn) {
    FieldBench bench;
    bench.processor.SetGraphicContext(nullptr);
    bench.Run("^FO1,2^FDx^FS^FO1,2^GB9,9^FS^FO1,2^FB100,2^FDx^FS^FO1,2^TBN,50,50^FDx^FS^FO1,1^GFA,1,1,1,FF^FS");
    EXPECT_EQ(bench.Next(), "0,0");
}

}  // namespace
