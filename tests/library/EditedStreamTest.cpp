#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "library/forms/EditedStream.h"
#include "library/forms/FieldGroups.h"
#include "tests/support/PagePictures.h"

// Steps of changes of a label, and changes of several fields at once.
namespace {

class EditedStreamTest : public testing::Test {
protected:
    EditedStreamTest() : drawer_(StillOptions()) {}

    FormatDrawer drawer_;
};

std::function<void(FieldEdits&)> Move(std::size_t field, int right, int down) {
    return [=](FieldEdits& edits) { edits.Move(field, right, down); };
}

TEST_F(EditedStreamTest, ADragIsOneStep) {
    EditedStream stream(drawer_, "^XA^FO10,10^FDa^FS^XZ", {});
    EXPECT_TRUE(stream.Edit(Move(0, 1, 0)));
    for (int way = 1; way < 9; ++way) EXPECT_TRUE(stream.Edit(Move(0, way, way), "drag 1"));
    EXPECT_EQ(stream.Bytes(), "^XA^FO19,18^FDa^FS^XZ");
    EXPECT_FALSE(stream.Edit(Move(0, 8, 8), "drag 1"));
    EXPECT_TRUE(stream.Edit(Move(0, 1, 0), "drag 2"));
    EXPECT_TRUE(stream.Edit(Move(0, 0, 0), "drag 2")) << "back to where it began, which is no step";
    EXPECT_EQ(stream.Bytes(), "^XA^FO19,18^FDa^FS^XZ");
    EXPECT_TRUE(stream.Undo());
    EXPECT_EQ(stream.Bytes(), "^XA^FO11,10^FDa^FS^XZ");
    EXPECT_TRUE(stream.Edit(Move(0, 1, 0), "drag 1")) << "a step of its own, and nothing is left to do again";
    EXPECT_FALSE(stream.Redo());
    EXPECT_TRUE(stream.Undo());
    EXPECT_TRUE(stream.Undo());
    EXPECT_FALSE(stream.IsChanged());
    EXPECT_FALSE(stream.Undo());
}

TEST_F(EditedStreamTest, ForgetsTheOldestStepsAlone) {
    EditedStream stream(drawer_, "^XA^PW20^LL20^FO0,0^FDa^FS^XZ", {});
    for (int i = 0; i < 1010; ++i) EXPECT_TRUE(stream.Edit(Move(0, 1, 0)));
    while (stream.Undo()) {
    }
    EXPECT_EQ(stream.Bytes(), "^XA^PW20^LL20^FO10,0^FDa^FS^XZ");
}

TEST_F(EditedStreamTest, ShowsNumbersThatWaitForDataWithASample) {
    EditedStream stream(drawer_, "^FO9,9^FN1\"Who^\"^FS^FO9,60^BCN,50^FN2^FS^FO9,200^FN3^FS^FO9,250^FN3^FS",
                        ObjectName::Parse("E:X.ZPL", 'R', "", "ZPL"));
    std::map<std::string, int> texts;
    for (auto const& field : stream.Drawn().fields) {
        EXPECT_FALSE(field.box.IsEmpty()) << field.details.text;
        ++texts[field.details.text];
    }
    EXPECT_EQ(texts, (std::map<std::string, int>{{"Who", 1}, {"12345678", 1}, {"#3", 2}}));
    EXPECT_FALSE(stream.IsChanged());
}

TEST_F(EditedStreamTest, BringsFieldsIntoLine) {
    std::string const fields = "^FO10,10^GB20,10,2^FS^FO50,40^GB40,30,2^FS^FO200,90^GB30,20,2^FS^FO300,99^FD^FS";
    struct Row {
        std::function<std::vector<FieldShift>(DrawnFormat const&)> shifts;
        std::string origins;
    };
    std::vector<std::size_t> const all = {2, 0, 1, 3, 99};
    auto const align = [&](Alignment alignment) {
        return [=](DrawnFormat const& drawn) { return Align(drawn, all, alignment); };
    };
    Row const rows[] = {
        {align(Alignment::Left), "10,10 10,40 10,90 300,99 "},
        {align(Alignment::Right), "210,10 190,40 200,90 300,99 "},
        {align(Alignment::Top), "10,10 50,10 200,10 300,99 "},
        {align(Alignment::Bottom), "10,100 50,80 200,90 300,99 "},
        {align(Alignment::CenterAcross), "110,10 100,40 105,90 300,99 "},
        {align(Alignment::CenterDown), "10,55 50,45 200,50 300,99 "},
        {[&](DrawnFormat const& drawn) { return Distribute(drawn, all, true); }, "10,10 95,40 200,90 300,99 "},
        {[&](DrawnFormat const& drawn) { return Distribute(drawn, all, false); }, "10,10 50,40 200,90 300,99 "},
    };
    for (auto const& [shifts, origins] : rows) {
        EditedStream stream(drawer_, "^XA" + fields + "^XZ", {});
        auto const moves = shifts(stream.Drawn());
        stream.Edit([&](FieldEdits& edits) {
            for (auto const& [field, right, down] : moves) edits.Move(field, right, down);
        });
        std::string told;
        for (auto const& field : stream.Drawn().fields)
            told += std::to_string(field.details.origin->x) + "," + std::to_string(field.details.origin->y) + " ";
        EXPECT_EQ(told, origins);
    }
}

TEST_F(EditedStreamTest, MovesTheWayThatIsSeenOnThePage) {
    for (std::string const shape : {"", "^POI", "^PMY", "^POI^PMY", "^JMB"}) {
        EditedStream stream(drawer_, "^XA^PMN^PON^JMA" + shape + "^PW400^LL400^FO90,90^GB20,20,9^FS^XZ", {});
        auto const before = stream.Drawn().fields.at(0).box;
        auto const shift = ShiftOf(stream.Drawn(), 0, 8, 4);
        EXPECT_TRUE(stream.Edit(Move(0, shift.right, shift.down)));
        auto const after = stream.Drawn().fields.at(0).box;
        EXPECT_EQ(std::pair(after.left - before.left, after.top - before.top), std::pair(8, 4)) << shape;
    }
}

}  // namespace
