#include <gtest/gtest.h>
#include <utf8.h>

#include <cstdlib>
#include <functional>
#include <iterator>

#include "foundation/Files.h"
#include "library/forms/EditedStream.h"
#include "library/forms/FieldData.h"
#include "tests/support/PagePictures.h"
#include "tests/support/StreamFiles.h"
#include "tests/support/TemporaryDirectory.h"

// Labels that are changed field by field. ZPL_STREAMS=DIR names a folder of further streams.
namespace {

using Scripting::PixelBox;
using ZplCore::ByteRange;
using ZplCore::FieldKind;

/// One change of one field.
struct Change {
    char const* name;
    /// Whether the field can be changed so; false leaves it out.
    std::function<bool(FieldTraits const&)> fits;
    std::function<void(FieldEdits&, std::size_t, FieldTraits const&)> make;
    std::function<bool(FieldTraits const& before, FieldTraits const& after)> isDone;
};

std::vector<Change> const Changes = {
    {"move",
     [](auto const& traits) { return traits.canMove; },
     [](FieldEdits& edits, std::size_t field, auto const&) { edits.Move(field, 6, 4); },
     {}},
    {"text", [](auto const& traits) { return traits.text && !traits.barcode; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         // National sets have other characters in the place of some.
         try {
             edits.SetText(field, *traits.text + "x^_41");
         } catch (EditRefusal const&) {
             edits.SetText(field, *traits.text + "x");
         }
     },
     [](auto const& before, auto const& after) {
         return *after.text == *before.text + "x^_41" || *after.text == *before.text + "x";
     }},
    {"font", [](auto const& traits) { return traits.font && traits.font->name.size() == 1; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         edits.SetFont(field, {'0', traits.font->height + 9, traits.font->width + 9});
     },
     [](auto const& before, auto const& after) {
         return after.font->height == before.font->height + 9 && after.font->width == before.font->width + 9;
     }},
    {"module", [](auto const& traits) { return traits.barcode && traits.barcode->module.value_or(0) > 0; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         edits.SetBarcode(field, {.module = *traits.barcode->module + 1});
     },
     [](auto const& before, auto const& after) { return *after.barcode->module == *before.barcode->module + 1; }},
    {"ratio", [](auto const& traits) { return traits.barcode && traits.barcode->ratio; },
     [](FieldEdits& edits, std::size_t field, auto const&) { edits.SetBarcode(field, {.ratio = 2.3}); },
     [](auto const&, auto const& after) { return std::abs(*after.barcode->ratio - 2.3) < 0.01; }},
    {"height", [](auto const& traits) { return traits.barcode && traits.barcode->height; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         edits.SetBarcode(field, {.height = *traits.barcode->height + 3});
     },
     [](auto const& before, auto const& after) { return *after.barcode->height == *before.barcode->height + 3; }},
    {"line of text", [](auto const& traits) { return traits.barcode && traits.barcode->line; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         bool const isNone = *traits.barcode->line == FieldTraits::TextLine::None;
         edits.SetBarcode(field, {.line = isNone ? FieldTraits::TextLine::Above : FieldTraits::TextLine::None});
     },
     [](auto const& before, auto const& after) { return after.barcode->line != before.barcode->line; }},
    {"thickness", [](auto const& traits) { return traits.shape && traits.shape->thickness; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         edits.SetShape(field, {.thickness = *traits.shape->thickness + 1});
     },
     [](auto const& before, auto const& after) { return *after.shape->thickness == *before.shape->thickness + 1; }},
    {"size", [](auto const& traits) { return traits.shape && traits.shape->width; },
     [](FieldEdits& edits, std::size_t field, auto const& traits) {
         edits.SetShape(field, {.width = *traits.shape->width + 8});
     },
     [](auto const& before, auto const& after) { return *after.shape->width == *before.shape->width + 8; }},
};

/// Whether the place of other fields hangs on a field: some typeset origins go on from it.
bool HasChainedOrigins(std::string const& stream) {
    for (auto at = stream.find("^FT"); at != stream.npos; at = stream.find("^FT", at + 3)) {
        auto const sent = stream.substr(at + 3, stream.find('^', at + 3) - at - 3);
        auto const comma = sent.find(',');
        if (comma == sent.npos || comma == 0 || comma + 1 >= sent.size() || sent[comma + 1] == ',') return true;
    }
    return false;
}

PixelBox Around(PixelBox const& a, PixelBox const& b) {
    PixelBox both = a;
    both.Add(b);
    return {both.left - 2, both.top - 2, both.right + 2, both.bottom + 2};
}

/// The first pixel outside of a box that differs, as "x,y"; empty if there is none.
std::string DifferenceOutside(DrawnFormat const& a, DrawnFormat const& b, PixelBox const& box) {
    std::size_t const stride = static_cast<std::size_t>(a.size.width + 7) / 8;
    for (std::size_t i = 0; i < a.rows.size(); ++i) {
        if (a.rows[i] == b.rows[i]) continue;
        int const y = static_cast<int>(i / stride);
        for (int bit = 0; bit < 8; ++bit) {
            int const x = static_cast<int>(i % stride) * 8 + bit;
            bool const isInside = x >= box.left && x < box.right && y >= box.top && y < box.bottom;
            bool const differs = ((a.rows[i] ^ b.rows[i]) >> (7 - bit) & 1) != 0;
            if (differs && !isInside) return std::to_string(x) + "," + std::to_string(y);
        }
    }
    return {};
}

/// Bytes outside of the commands of the field are as they were.
void ExpectOnlyFieldChanged(std::string const& before, std::string const& after, DrawnField const& field) {
    auto first = field.look ? *field.look : *field.data;
    if (field.data && field.data->offset < first.offset) first = *field.data;
    auto last = field.look ? *field.look : *field.data;
    if (field.data && field.data->End() > last.End()) last = *field.data;
    auto const rest = before.size() - last.End();
    EXPECT_EQ(after.substr(0, first.offset), before.substr(0, first.offset));
    ASSERT_GE(after.size(), first.offset + rest);
    EXPECT_EQ(after.substr(after.size() - rest), before.substr(last.End()));
}

std::vector<std::string> OtherFields(DrawnFormat const& drawn, std::size_t field) {
    std::vector<std::string> told;
    for (std::size_t i = 0; i < drawn.fields.size(); ++i) {
        auto const& [left, top, right, bottom] = drawn.fields[i].box;
        if (i == field) continue;
        told.push_back(drawn.fields[i].details.text + Describe(drawn.fields[i].details) + std::to_string(left) + "," +
                       std::to_string(top) + "," + std::to_string(right) + "," + std::to_string(bottom));
    }
    return told;
}

class FieldEditsTest : public testing::Test {
protected:
    FieldEditsTest() : drawer_(StillOptions()) {}

    void TryChange(EditedStream& stream, std::size_t field, Change const& change, bool othersMayMove) {
        auto const before = stream.Bytes();
        auto const drawn = stream.Drawn();
        auto const traits = stream.TraitsOf(field);
        if (!change.fits(traits)) return;
        SCOPED_TRACE(std::string(change.name) + " of \"" + drawn.fields[field].details.text + "\", " +
                     Describe(drawn.fields[field].details));
        bool const isChanged =
            stream.Edit([&](FieldEdits& edits) { change.make(edits, field, traits); }, std::string());
        EXPECT_TRUE(isChanged);
        if (!isChanged) return;
        ++changes_;
        ExpectOnlyFieldChanged(before, stream.Bytes(), drawn.fields[field]);
        ASSERT_EQ(stream.Drawn().fields.size(), drawn.fields.size()) << stream.Bytes();
        // Bitmap fonts have some sizes alone.
        auto const& font = stream.Drawn().fields[field].details.font;
        bool const isStepped = change.name == std::string("font") && font && font->magnificationX != 0;
        bool const isDone = !change.isDone || isStepped || change.isDone(traits, stream.TraitsOf(field));
        EXPECT_TRUE(isDone) << stream.Bytes().substr(0, 2000);
        if (!othersMayMove) {
            EXPECT_EQ(OtherFields(stream.Drawn(), field), OtherFields(drawn, field)) << stream.Bytes().substr(0, 2000);
            auto const box = Around(drawn.fields[field].box, stream.Drawn().fields[field].box);
            EXPECT_EQ(DifferenceOutside(drawn, stream.Drawn(), box), "");
        }
        EXPECT_TRUE(stream.Undo());
        EXPECT_EQ(stream.Bytes(), before);
        EXPECT_EQ(stream.Drawn().rows, drawn.rows);
    }

    /// Each kind of change on each field, or on the first fields of each description.
    void TryAll(std::string const& bytes, std::optional<ObjectName> const& stored = {}) {
        EditedStream stream(drawer_, bytes, stored);
        EXPECT_EQ(stream.Bytes(), bytes);
        EXPECT_FALSE(stream.IsChanged());
        bool const othersMayMove = HasChainedOrigins(bytes) || bytes.find("^MCN") != bytes.npos;
        std::map<std::string, int> tried;
        for (std::size_t field = 0; field < stream.Drawn().fields.size(); ++field) {
            auto const& drawn = stream.Drawn().fields[field];
            if (++tried[Describe(drawn.details)] > 2) continue;
            for (auto const& change : Changes) TryChange(stream, field, change, othersMayMove);
        }
        EXPECT_FALSE(stream.IsChanged());
    }

    FormatDrawer drawer_;
    int changes_ = 0;
};

TEST_F(FieldEditsTest, AChangeOfOneFieldChangesNothingElse) {
    for (auto const& file : StreamFiles()) {
        SCOPED_TRACE(file.string());
        TryAll(ReadRegularFile(file));
    }
    RecordProperty("changes", changes_);
    EXPECT_GT(changes_, 300);
}

TEST_F(FieldEditsTest, TheSameOfStoredFormats) {
    auto const name = ObjectName::Parse("R:X.ZPL", 'R', "", "ZPL");
    Desk desk(StillOptions());
    for (auto const& file : StreamFiles()) {
        auto stream = ReadRegularFile(file);
        auto const start = stream.find("^XA");
        if (start == stream.npos) continue;
        SCOPED_TRACE(file.string());
        RunStream(desk, stream.insert(start + 3, "^DFR:X^FS"));
        TryAll(ReadRegularFile(desk.FormatsFolder() / name->Path()), name);
    }
    RecordProperty("changes", changes_);
    EXPECT_GT(changes_, 300);
}

using Line = FieldTraits::TextLine;
using Edit = std::function<void(FieldEdits&)>;

Edit Move(std::size_t field, int right, int down) {
    return [=](FieldEdits& edits) { edits.Move(field, right, down); };
}
Edit Text(std::size_t field, std::string text) {
    return [=](FieldEdits& edits) { edits.SetText(field, text); };
}
Edit Font(std::size_t field, FontChange change) {
    return [=](FieldEdits& edits) { edits.SetFont(field, change); };
}
Edit Bars(std::size_t field, BarcodeChange change) {
    return [=](FieldEdits& edits) { edits.SetBarcode(field, change); };
}
Edit Shape(std::size_t field, ShapeChange change) {
    return [=](FieldEdits& edits) { edits.SetShape(field, change); };
}
Edit Remove(std::size_t field) {
    return [=](FieldEdits& edits) { edits.Remove(field); };
}
Edit Duplicate(std::size_t field) {
    return [=](FieldEdits& edits) { edits.Duplicate(field, 5, 5); };
}

/// UTF-16, low byte first, behind a byte order mark.
std::string Wide(std::string_view text) {
    std::u16string wide = u"\uFEFF";
    utf8::utf8to16(text.begin(), text.end(), std::back_inserter(wide));
    std::string bytes;
    for (char16_t const unit : wide) bytes.append(1, static_cast<char>(unit)).append(1, static_cast<char>(unit >> 8));
    return bytes;
}

struct HardCase {
    std::string before;
    Edit edit;
    std::string after;
    bool isStored = false;
};

TEST_F(FieldEditsTest, WritesWhatALabelOfThatKindNeeds) {
    using namespace std::string_literals;
    HardCase const cases[] = {
        // Origins
        {"^XA^FXFO1,1^FS ^FO10,20,0^FX c^FDa^FS^XZ", Move(0, 5, 0), "^XA^FXFO1,1^FS ^FO15,20,0^FX c^FDa^FS^XZ"},
        {"^XA^F\r\nO 1\n0 , 20 \n^FDa^FS^XZ", Move(0, 5, 1), "^XA^F\r\nO 15 , 21 \n^FDa^FS^XZ"},
        {"^XA^fo^FDa^FS^XZ", Move(0, 5, 6), "^XA^fo5,6^FDa^FS^XZ"},
        {"^XA^FO10^FDa^FS^XZ", Move(0, 0, 6), "^XA^FO10,6^FDa^FS^XZ"},
        {"^XA^FO,10^FDa^FS^XZ", Move(0, 3, -90), "^XA^FO3,0^FDa^FS^XZ"},
        {"^XA^LH9,9^LS3^LT5^POI^PMY^FO10,10^A0R,30^FDa^FS^XZ", Move(0, 1, 1),
         "^XA^LH9,9^LS3^LT5^POI^PMY^FO11,11^A0R,30^FDa^FS^XZ"},
        {"^XA^A0N,30^FDa^FS^FO9,9^FDb^FS^XZ", Move(0, 5, 6), "^XA^FO5,6^A0N,30^FDa^FS^FO9,9^FDb^FS^XZ"},
        {"^XA^FT9,40^FDa^FS^A0N,30^FDb^FS^XZ", Move(1, 5, 6), "^XA^FT9,40^FDa^FS^FT5,6^A0N,30^FDb^FS^XZ"},
        {"^XA^FT9,40^FDa^FS^FT^FDb^FS^XZ", Move(1, 0, 6), "^XA^FT9,40^FDa^FS^FT,46^FDb^FS^XZ"},
        {"^XA^MUM^FO10,10.5^FDa^FS^XZ", Move(0, 4, 1), "^XA^MUM^FO10.5,10.6^FDa^FS^XZ"},
        {"^XA^FO9,9^GFA,1,1,1,F0^FO40,40^FDa^XZ", Move(0, 1, 1), "^XA^FO10,10^GFA,1,1,1,F0^FO40,40^FDa^XZ"},
        {"^XA^FO9,9^FR^FDa^FS^XZ^XA^FO9,9^FDa^FS^XZ", Move(0, 1, 1), "^XA^FO10,10^FR^FDa^FS^XZ^XA^FO9,9^FDa^FS^XZ"},
        // Other characters of commands
        {"^XA^CC!!CD;!FO9;9!A0N;30!FDa^b!FS!XZ", Move(0, 1, 1), "^XA^CC!!CD;!FO10;10!A0N;30!FDa^b!FS!XZ"},
        {"^XA^CC!!CD;!FO9!FDa^b!FS!XZ", Text(0, "c!d"), "^XA^CC!!CD;!FO9!FH!FDc_21d!FS!XZ"},
        {"^XA^CC!!CD;!FO9!FDa!FS!XZ", Font(0, {'0', 30, 20}), "^XA^CC!!CD;!FO9!A0N;30;20!FDa!FS!XZ"},
        // Text
        {"^XA^FO9,9^FDa,b  ^FS^XZ", Text(0, "c~, d"), "^XA^FO9,9^FH^FDc_7E, d^FS^XZ"},
        {"^XA^FO9,9^FDa\n  ^FS^XZ", Text(0, "b"), "^XA^FO9,9^FDb\n  ^FS^XZ"},
        {"^XA^FO9,9^FH\\^FDa\\5Eb^FS^XZ", Text(0, "^_41\\42"), "^XA^FO9,9^FH\\^FD\\5E_41\\5C42^FS^XZ"},
        {"^XA^FO9,9^FDa^FS^XZ", Text(0, "\u00E9"), "^XA^FO9,9^FD\x82^FS^XZ"},
        {"^XA^CI27^FO9,9^FDa^FS^XZ", Text(0, "\u20AC"), "^XA^CI27^FO9,9^FD\x80^FS^XZ"},
        {"^XA^CI28^FO9,9^FH^FDa_c3_a9^FS^XZ", Text(0, "a\u00E9\u4E2D"), "^XA^CI28^FO9,9^FH^FDa\u00E9\u4E2D^FS^XZ"},
        {"^XA^CI15^FO9,9^FDa^FS^XZ", Text(0, "\u8868\u30BE"), "^XA^CI15^FO9,9^FD\x95\\\x83]^FS^XZ"},
        {"^XA^FO9,9^FB200,3^FDa\\&b^FS^XZ", Text(0, "a\n\nc"), "^XA^FO9,9^FB200,3^FDa\\&\\&c^FS^XZ"},
        {"^XA^FO9,9^SN007,1,Y^FS^XZ", Text(0, "A,9"), "^XA^FO9,9^FH^SNA_2C9,1,Y^FS^XZ"},
        {"^XA^FO9,9^FC%^FD%H:%M^FS^XZ", Text(0, "%H.%M"), "^XA^FO9,9^FC%^FD%H.%M^FS^XZ"},
        {"^XA^FO9,9^BCN,50^FVa^FS^XZ", Text(0, ">:b"), "^XA^FO9,9^BCN,50^FV>:b^FS^XZ"},
        {"^XA^FO9,9^FDa^XZ", Text(0, "b"), "^XA^FO9,9^FDb^XZ"},
        // Fonts
        {"^XA^FO9,9^A0N,30^FDa^FS^XZ", Font(0, {.height = 40}), "^XA^FO9,9^A0N,40^FDa^FS^XZ"},
        {"^XA^FO9,9^AdR,36,20^FDa^FS^XZ", Font(0, {'0'}), "^XA^FO9,9^A0R,36,20^FDa^FS^XZ"},
        {"^XA^FWR^CF0,30,25^FO9,9^FDa^FS^FO9,60^FDb^FS^XZ", Font(0, {.height = 40}),
         "^XA^FWR^CF0,30,25^FO9,9^A0R,40,25^FDa^FS^FO9,60^FDb^FS^XZ"},
        {"^XA^FO9,9^A0N,30^CF0,50^FDa^FS^FO9,60^FDb^FS^XZ", Font(0, {.height = 40, .width = 40}),
         "^XA^FO9,9^A0N,30^CF0,50^A0N,40,40^FDa^FS^FO9,60^FDb^FS^XZ"},
        {"^XA^FO9,9^A@N,30,30,E:X.TTF^FDa^FS^FO9,60^A@N,20^FDb^FS^XZ", Font(0, {'0', 30, 30}),
         "^XA^FO9,9^A@N,30,30,E:X.TTF^A0N,30,30^FDa^FS^FO9,60^A@N,20^FDb^FS^XZ"},
        // Barcodes
        {"^XA^BY2^FO9,9^BCN,50^FD1^FS^FO9,99^BCN,50^FD2^FS^XZ", Bars(0, {.module = 3}),
         "^XA^BY3^FO9,9^BCN,50^FD1^FS^BY2^FO9,99^BCN,50^FD2^FS^XZ"},
        {"^XA^BY2^FO9,9^BCN,50^FD1^FS^FO9,99^BCN,50^FD2^FS^XZ", Bars(1, {.module = 3}),
         "^XA^BY2^FO9,9^BCN,50^FD1^FS^FO9,99^BY3^BCN,50^FD2^FS^BY2^XZ"},
        {"^XA^BY2^FO9,9^BCN,50^FD1^FS^XZ", Bars(0, {.module = 3}), "^XA^BY3^FO9,9^BCN,50^FD1^FS^XZ"},
        {"^XA^BY3^FO9,9^BCN,50^FD1^FS^BY2^FO9,99^BCN,50^FD2^FS^XZ", Bars(0, {.module = 4}),
         "^XA^BY4^FO9,9^BCN,50^FD1^FS^BY2^FO9,99^BCN,50^FD2^FS^XZ"},
        {"^XA^FO9,9^B3N,N,50^FD1^FS^FO9,99^B3N,N,50^FD2^XZ", Bars(0, {.ratio = 2.5}),
         "^XA^FO9,9^BY,2.5^B3N,N,50^FD1^FS^BY,3.0^FO9,99^B3N,N,50^FD2^XZ"},
        {"^XA^FO9,9^B3N,N,50^FD1^FS^FO9,99^B3N,N,50^FD2^XZ", Bars(1, {.ratio = 2.5}),
         "^XA^FO9,9^B3N,N,50^FD1^FS^FO9,99^BY,2.5^B3N,N,50^FD2^FS^BY,3.0^XZ"},
        {"^XA^BY2,3,80^FO9,9^BC^FD1^FS^XZ", Bars(0, {.height = 50, .line = Line::Above}),
         "^XA^BY2,3,80^FO9,9^BC,50,Y,Y^FD1^FS^XZ"},
        {"^XA^FO9,9^BQN,2,3^FDQA,1^FS^XZ", Bars(0, {.module = 5}), "^XA^FO9,9^BQN,2,5^FDQA,1^FS^XZ"},
        {"^XA^FO9,9^BEN,50,Y,N^FD1^FS^XZ", Bars(0, {.line = Line::None}), "^XA^FO9,9^BEN,50,N,N^FD1^FS^XZ"},
        // Shapes
        {"^XA^FO9,9^GB200,3,3^FS^XZ", Shape(0, {.thickness = 5}), "^XA^FO9,9^GB200,5,5^FS^XZ"},
        {"^XA^FO9,9^GB200,0,3,B^FS^XZ", Shape(0, {.width = 300}), "^XA^FO9,9^GB300,0,3,B^FS^XZ"},
        {"^XA^FO9,9^GC40^FS^XZ", Shape(0, {.thickness = 5}), "^XA^FO9,9^GC40,5^FS^XZ"},
        // Whole fields
        {"^XA^FO9,9^ZZ1^BY3^PW400\n^FX c^A0N,9^FDa^FS \n^FO9,60^FDb^FS^XZ", Remove(0),
         "^XA^ZZ1^BY3^PW400\n^FX c \n^FO9,60^FDb^FS^XZ"},
        {"^XA^FO9,9^GFA,1,1,1,F0^FO40,40^FDa^XZ", Duplicate(1),
         "^XA^FO9,9^GFA,1,1,1,F0^FO40,40^FDa^FS^FO45,45^FDa^FS^XZ"},
        // A stream that stores and recalls
        {"^XA^DFR:T^FS^FO9,9^FN1^FS^XZ^XA^XFR:T^FN1^FDa^FS^XZ", Move(0, 1, 1),
         "^XA^DFR:T^FS^FO10,10^FN1^FS^XZ^XA^XFR:T^FN1^FDa^FS^XZ"},
        {"^XA^DFR:T^FS^FO9,9^FN1^FS^XZ^XA^XFR:T^FN1^FDa^FS^XZ", Text(0, "b"),
         "^XA^DFR:T^FS^FO9,9^FN1^FS^XZ^XA^XFR:T^FN1^FDb^FS^XZ"},
        {"^XA^FO9,9^FN1^FS^FO9,60^FN1^FS^FN1^FDa^FS^XZ", Remove(1), "^XA^FO9,9^FN1^FS^FN1^FDa^FS^XZ"},
        // Encodings of their own
        {Wide("^XA^FO9,9^FDa^FS^XZ"), Move(0, 1, 1), Wide("^XA^FO10,10^FDa^FS^XZ")},
        {Wide("^XA^FO9,9^FDa^FS^XZ"), Text(0, "\u00E9^\u4E2D"), Wide("^XA^FO9,9^FH^FD\u00E9_5E\u4E2D^FS^XZ")},
        {Wide("^XA^FO9^FDa^FS^XZ"), Font(0, {'0', 30, 30}), Wide("^XA^FO9^A0N,30,30^FDa^FS^XZ")},
        {"\xEF\xBB\xBF^XA^FO9,9^FDa^FS^XZ", Text(0, "\u00E9"), "\xEF\xBB\xBF^XA^FO9,9^FD\u00E9^FS^XZ"},
        {"^XA^CI28^XZ^XA^FO9,9^FDa^FS^XZ", Text(0, "\u00E9"), "^XA^CI28^XZ^XA^FO9,9^FD\u00E9^FS^XZ"},
        // Stored formats
        {"^FO9,9^BY2^BCN,50^FN1\"Who\"^FS^FO9,99^FDx^FS", Bars(1, {.height = 60}),
         "^FO9,9^BY2^BCN,60^FN1\"Who\"^FS^FO9,99^FDx^FS", true},
        {"^FO9,9^FN1^FDa^FS", Text(0, "b"), "^FO9,9^FN1^FDb^FS", true},
        {"^CC!^FO9,9^FDx^FS", Move(0, 1, 0), "^CC!^FO10,9^FDx^FS", true},
    };
    for (auto const& [before, edit, after, isStored] : cases) {
        SCOPED_TRACE(before);
        EditedStream stream(drawer_, before, isStored ? ObjectName::Parse("R:X.ZPL", 'R', "", "ZPL") : std::nullopt);
        ASSERT_NO_THROW(EXPECT_TRUE(stream.Edit(edit)));
        EXPECT_EQ(stream.Bytes(), after);
        EXPECT_TRUE(stream.Undo());
        EXPECT_EQ(stream.Bytes(), before);
        EXPECT_TRUE(stream.Redo());
        EXPECT_EQ(stream.Bytes(), after);
    }
}

TEST_F(FieldEditsTest, RefusesWhatCannotBe) {
    std::pair<std::string, Edit> const cases[] = {
        {"^XA^FO9,9^FDa^FS^XZ", Text(0, "\u4E2D")},          {"^XA^FO9,9^FDa^FS^XZ", Bars(0, {.height = 9})},
        {"^XA^FO9,9^GB9,9,1^FS^XZ", Text(0, "b")},           {"^XA^FO9,9^GB9,9,1^FS^XZ", Font(0, {'0'})},
        {"^XA^FO9,9^FDa^FS^XZ", Shape(0, {.thickness = 9})}, {"^XA^FO9,9^FDa^FS^XZ", Move(1, 1, 1)},
    };
    for (auto const& [bytes, edit] : cases) {
        EditedStream stream(drawer_, bytes, {});
        EXPECT_THROW(stream.Edit(edit), EditRefusal) << bytes;
        EXPECT_EQ(stream.Bytes(), bytes);
        EXPECT_FALSE(stream.CanUndo());
    }
}

}  // namespace
