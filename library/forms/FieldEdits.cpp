#include "library/forms/FieldEdits.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "library/forms/DrawnSettings.h"
#include "library/forms/FieldData.h"

using ZplCore::ByteRange;
using ZplCore::FieldKind;

/// Where a shape has its settings, as indices of parameters; -1 where it has none of that kind.
struct FieldEdits::ShapeCommand {
    std::string_view letters;
    int width;
    int height;
    int thickness;
};

namespace {

bool IsOrigin(StreamCommand const& command) { return command.letters == "FO" || command.letters == "FT"; }

bool IsData(StreamCommand const& command) {
    return command.letters == "FD" || command.letters == "FV" || command.letters == "SN";
}

bool IsFont(StreamCommand const& command) {
    return !command.isControl && command.letters.size() == 2 && command.letters[0] == 'A';
}

/// The default font replaces what a field has said of its own before.
bool SetsFont(StreamCommand const& command) { return IsFont(command) || command.letters == "CF"; }

/// Whether a command says something of its field and of no other.
bool IsOfField(StreamCommand const& command) {
    constexpr std::string_view Others = "FO FT FD FV FN FS FB TB FH FC FR FP GB GC GD GE GS GF XG IM SN SF RF";
    if (command.isControl || command.letters.size() != 2) return false;
    return IsFont(command) || FindBarcodeCommand(command.letters) || Others.find(command.letters) != Others.npos;
}

char LetterOf(ZplOrientation orientation) {
    switch (orientation) {
        case ZplOrientation::Rotated: return 'R';
        case ZplOrientation::Inverted: return 'I';
        case ZplOrientation::BottomUp: return 'B';
        case ZplOrientation::Normal: break;
    }
    return 'N';
}

std::string RatioText(double ratio) {
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", ratio);
    return text;
}

using Values = std::vector<std::pair<std::size_t, std::string>>;

/// Parameters in the order in which SetParameters wants them.
void Add(Values& values, int index, std::string value) {
    if (index >= 0) values.emplace_back(static_cast<std::size_t>(index), std::move(value));
    std::sort(values.begin(), values.end());
}

}  // namespace

DrawnField const& FieldEdits::At(std::size_t field) const {
    if (field >= page_.drawn.fields.size()) throw EditRefusal("This field is not there any more.");
    return page_.drawn.fields[field];
}

/// The last command of a run that is wanted; null without one.
template <typename Wanted>
FieldEdits::Command FieldEdits::LastOf(std::optional<ByteRange> const& range, Wanted const& wanted) const {
    if (!range) return nullptr;
    auto [first, last] = page_.commands.In(*range);
    while (last-- > first) {
        auto const& command = page_.commands.All()[last];
        if (!command.isControl && wanted(command)) return &command;
    }
    return nullptr;
}

FieldEdits::Command FieldEdits::OriginOf(DrawnField const& field) const { return LastOf(field.look, IsOrigin); }
FieldEdits::Command FieldEdits::DataOf(DrawnField const& field) const { return LastOf(field.data, IsData); }

std::pair<FieldEdits::Command, BarcodeCommand const*> FieldEdits::BarcodeOf(DrawnField const& field) const {
    auto const* const command = LastOf(
        field.look, [](StreamCommand const& candidate) { return FindBarcodeCommand(candidate.letters) != nullptr; });
    return {command, command ? FindBarcodeCommand(command->letters) : nullptr};
}

std::pair<FieldEdits::Command, FieldEdits::ShapeCommand const*> FieldEdits::ShapeOf(DrawnField const& field) const {
    static constexpr std::array<ShapeCommand, 5> Shapes{
        {{"GB", 0, 1, 2}, {"GC", 0, -1, 1}, {"GD", 0, 1, 2}, {"GE", 0, 1, 2}, {"GS", 2, 1, -1}}};
    auto const rowOf = [](StreamCommand const& command) {
        return std::find_if(Shapes.begin(), Shapes.end(),
                            [&](ShapeCommand const& row) { return row.letters == command.letters; });
    };
    auto const* const command =
        LastOf(field.look, [&](StreamCommand const& candidate) { return rowOf(candidate) != Shapes.end(); });
    if (!command) return {nullptr, nullptr};
    return {command, &*rowOf(*command)};
}

FieldEdits::Command FieldEdits::First(DrawnField const& field) const {
    auto const [first, last] = page_.commands.In(*field.look);
    return first < last ? &page_.commands.All()[first] : nullptr;
}

/// The first command that says how a field looks. Throws if they are not here.
FieldEdits::Command FieldEdits::LookOf(DrawnField const& field) const {
    auto const* const first = field.look ? First(field) : nullptr;
    if (!first) throw EditRefusal("The look of this field is set in another format.");
    return first;
}

std::string FieldEdits::Number(StreamCommand const& command, unsigned dots) const {
    return command.units.NumberOf(static_cast<int>(dots), page_.designDpi);
}

namespace {

DataNotation NotationOf(StreamCommand const* indicator, StreamCommand const& data, bool isBlock,
                        std::string_view bytes) {
    DataNotation notation{0, isBlock, data.letters == "SN"};
    if (!indicator) return notation;
    auto const named = ParameterOf(*indicator, bytes, 0);
    char const character = named.empty() ? '_' : named.front();
    bool const isUsable = character > ' ' && character < 0x7F && character != indicator->syntax.formatPrefix &&
                          character != indicator->syntax.controlPrefix;
    notation.hexIndicator = isUsable ? character : '_';
    return notation;
}

}  // namespace

std::optional<std::string> FieldEdits::TextOf(DrawnField const& field) const {
    auto const* const data = DataOf(field);
    if (!data) return std::nullopt;
    ByteRange const before{field.data->offset, data->place.offset - field.data->offset};
    auto const isNamed = [](std::string_view letters) {
        return [letters](StreamCommand const& command) { return command.letters == letters; };
    };
    auto const notation =
        NotationOf(LastOf(before, isNamed("FH")), *data, LastOf(field.look, isNamed("FB")) != nullptr, page_.bytes);
    std::string const raw = notation.endsAtComma ? ParameterOf(*data, page_.bytes, 0) : RawText(*data, page_.bytes);
    return TextOfData(raw, *data, notation);
}

FieldTraits::Barcode FieldEdits::BarcodeTraits(DrawnField const& field, BarcodeCommand const& row) const {
    FieldTraits::Barcode traits;
    auto const isStacked = row.height >= 0 && row.above < 0 && row.module < 0;
    auto const rowHeight = SizeOf(field, "row height");
    if (row.height >= 0) traits.height = isStacked ? rowHeight.value_or(0) : SizeOf(field, "height");
    traits.countsModules = row.countsModules;
    bool const takesModule = row.module >= 0 || row.defaults != '-';
    auto const magnification = SizeOf(field, "magnification");
    if (takesModule) traits.module = magnification ? magnification : SizeOf(field, "module").value_or(0);
    if (row.defaults == 'R') traits.ratio = SettingOf(field, "ratio");
    if (row.line >= 0) traits.line = TextLineOf(field);
    return traits;
}

FieldTraits FieldEdits::TraitsOf(std::size_t index) const {
    auto const& field = At(index);
    FieldTraits traits;
    traits.canMove = field.look.has_value();
    traits.text = TextOf(field);
    if (!field.look) return traits;
    if (auto const& font = field.details.font) traits.font = {font->name, font->height, font->width};
    if (auto const [command, row] = BarcodeOf(field); row) traits.barcode = BarcodeTraits(field, *row);
    if (auto const [command, row] = ShapeOf(field); row) {
        traits.shape.emplace();
        if (row->width >= 0) traits.shape->width = SizeOf(field, "width");
        if (row->height >= 0) traits.shape->height = SizeOf(field, "height");
        if (row->thickness >= 0) traits.shape->thickness = SizeOf(field, "thickness");
    }
    return traits;
}

void FieldEdits::Move(std::size_t index, int right, int down) {
    auto const& field = At(index);
    LookOf(field);
    auto const& origin = field.details.origin;
    int const x = origin ? origin->x : 0;
    int const y = origin ? origin->y : 0;
    // One that is negative already may stay so.
    auto const moved = [](int from, int by) { return std::max(from + by, std::min(from, 0)); };
    auto const* const command = OriginOf(field);
    if (!command) return InsertOrigin(field, moved(x, right), moved(y, down));
    auto const number = [&](int dots) { return command->units.NumberOf(dots, page_.designDpi); };
    Values values;
    if (right != 0) Add(values, 0, number(moved(x, right)));
    if (down != 0) Add(values, 1, number(moved(y, down)));
    SetParameters(edit_, *command, page_.bytes, values);
}

/// As of the origin before it, since that says for all that follow which side of a field its origin is.
void FieldEdits::InsertOrigin(DrawnField const& field, int x, int y) {
    auto const* const before = LastOf(ByteRange{0, field.look->offset}, [](StreamCommand const& command) {
        return IsOrigin(command) || command.letters == "XA";
    });
    auto const* const first = First(field);
    bool const isTypeset = before && before->letters == "FT";
    std::string const text = std::string(1, first->syntax.formatPrefix) + (isTypeset ? "FT" : "FO") +
                             first->units.NumberOf(x, page_.designDpi) + first->syntax.delimiter +
                             first->units.NumberOf(y, page_.designDpi);
    edit_.Insert(first->place.offset, first->syntax.Encoded(text));
}

void FieldEdits::SetText(std::size_t index, std::string_view text) {
    auto const& field = At(index);
    auto const* const data = DataOf(field);
    if (!data) throw EditRefusal("The text of this field is not in this format.");
    if (TextOf(field) == text) return;
    ByteRange const before{field.data->offset, data->place.offset - field.data->offset};
    auto const* const indicator = LastOf(before, [](StreamCommand const& command) { return command.letters == "FH"; });
    bool const isBlock = LastOf(field.look, [](StreamCommand const& command) { return command.letters == "FB"; });
    auto notation = NotationOf(indicator, *data, isBlock, page_.bytes);
    bool needsHex = false;
    std::string const bytes = DataOfText(text, *data, notation, needsHex);
    if (needsHex && notation.hexIndicator == 0)
        edit_.Insert(data->place.offset, data->syntax.Encoded(std::string(1, data->syntax.formatPrefix) + "FH"));
    edit_.Replace(notation.endsAtComma ? ParametersOf(*data, page_.bytes)[0].place : data->parameters, bytes);
}

/// The letter of the font that a field names, or else that of all which name none.
char FieldEdits::FontLetter(DrawnField const& field) const {
    auto const* const own =
        LastOf(field.look, [](StreamCommand const& command) { return IsFont(command) && command.letters[1] != '@'; });
    if (own) return own->letters[1];
    auto const* const command = LastOf(ByteRange{0, field.look->End()}, [&](StreamCommand const& candidate) {
        return candidate.letters == "CF" && !ParameterOf(candidate, page_.bytes, 0).empty();
    });
    return command ? ParameterOf(*command, page_.bytes, 0).front() : 'A';
}

void FieldEdits::InsertFont(DrawnField const& field, FontChange const& change) {
    auto const* const origin = OriginOf(field);
    auto const* const named = LastOf(field.look, SetsFont);
    auto const& beside = origin ? *origin : *First(field);
    auto const& font = *field.details.font;
    char const comma = beside.syntax.delimiter;
    std::string const text = std::string(1, beside.syntax.formatPrefix) + 'A' +
                             change.letter.value_or(FontLetter(field)) + LetterOf(field.details.orientation) + comma +
                             Number(beside, change.height.value_or(font.height)) + comma +
                             Number(beside, change.width.value_or(font.width));
    // Behind what holds for fields to come too: the default, or the name of a font file.
    auto const at = named ? named->place.End() : origin ? origin->place.End() : beside.place.offset;
    edit_.Insert(at, beside.syntax.Encoded(text));
}

void FieldEdits::SetFont(std::size_t index, FontChange const& change) {
    auto const& field = At(index);
    LookOf(field);
    if (!field.details.font) throw EditRefusal("This field has no font.");
    auto const* const command = LastOf(field.look, SetsFont);
    bool const isOwn = command && IsFont(*command) && !(change.letter && command->letters[1] == '@');
    if (!isOwn) return InsertFont(field, change);
    if (change.letter) edit_.Replace(command->lastLetter, command->syntax.Encoded(std::string(1, *change.letter)));
    Values values;
    if (change.height) Add(values, 1, Number(*command, *change.height));
    if (change.width) Add(values, 2, Number(*command, *change.width));
    SetParameters(edit_, *command, page_.bytes, values);
}

/// Whether the fields behind one whose barcode defaults are changed have to be given those before. `isOwn`: they were
/// its own already.
bool FieldEdits::NeedsDefaultBehind(DrawnField const& field, std::size_t index, bool isOwn) const {
    auto const& all = page_.commands.All();
    for (auto i = page_.commands.In({0, field.look->End()}).second; i < all.size(); ++i) {
        if (all[i].letters == "BY" && !ParameterOf(all[i], page_.bytes, index).empty()) return false;
        if (FindBarcodeCommand(all[i].letters)) return true;
    }
    return !isOwn;
}

/// Sets a parameter of `^BY` for this field alone.
void FieldEdits::SetBarcodeDefault(DrawnField const& field, StreamCommand const& barcode, std::size_t index,
                                   std::string const& value, std::string const& before) {
    auto const* const own = LastOf(field.look, [&](StreamCommand const& command) {
        return command.letters == "BY" && !ParameterOf(command, page_.bytes, index).empty();
    });
    std::string const letters = std::string(1, barcode.syntax.formatPrefix) + "BY";
    std::string const commas(index, barcode.syntax.delimiter);
    if (own)
        SetParameters(edit_, *own, page_.bytes, {{index, value}});
    else
        edit_.Insert(barcode.place.offset, barcode.syntax.Encoded(letters + commas + value));
    if (!NeedsDefaultBehind(field, index, own != nullptr)) return;
    auto const* const end = LastOf(field.look, [](StreamCommand const& command) { return command.letters == "FS"; });
    std::string const ending = end ? "" : std::string(1, barcode.syntax.formatPrefix) + "FS";
    edit_.Insert(field.look->End(), barcode.syntax.Encoded(ending + letters + commas + before));
}

void FieldEdits::SetBarcode(std::size_t index, BarcodeChange const& change) {
    auto const& field = At(index);
    LookOf(field);
    auto const [command, row] = BarcodeOf(field);
    if (!row) throw EditRefusal("This field is no barcode.");
    auto const traits = BarcodeTraits(field, *row);
    Values values;
    if (change.height && traits.height)
        Add(values, row->height,
            row->countsModules ? std::to_string(*change.height) : Number(*command, *change.height));
    if (change.line && traits.line) {
        bool const isShown = *change.line != FieldTraits::TextLine::None;
        Add(values, row->line, isShown ? "Y" : "N");
        if (isShown) Add(values, row->above, *change.line == FieldTraits::TextLine::Above ? "Y" : "N");
    }
    // Magnifications are counted in themselves.
    bool const isMagnified = row->height < 0;
    if (change.module && row->module >= 0)
        Add(values, row->module, isMagnified ? std::to_string(*change.module) : Number(*command, *change.module));
    SetParameters(edit_, *command, page_.bytes, values);
    if (change.module && row->defaults != '-')
        SetBarcodeDefault(field, *command, 0, Number(*command, *change.module), Number(*command, *traits.module));
    if (change.ratio && traits.ratio)
        SetBarcodeDefault(field, *command, 1, RatioText(*change.ratio), RatioText(*traits.ratio));
}

void FieldEdits::SetShape(std::size_t index, ShapeChange const& change) {
    auto const& field = At(index);
    LookOf(field);
    auto const [command, row] = ShapeOf(field);
    if (!row) throw EditRefusal("This field is no line, box or circle.");
    Values values;
    auto const add = [&, at = command](int parameter, std::optional<unsigned> dots) {
        if (dots) Add(values, parameter, Number(*at, *dots));
    };
    add(row->width, change.width);
    add(row->height, change.height);
    add(row->thickness, change.thickness);
    // A line is as thick as its shorter side, also where that is written.
    if (change.thickness && field.details.notes.kind == FieldKind::Line && row->letters == "GB") {
        bool const isLevel = SizeOf(field, "width").value_or(0) >= SizeOf(field, "height").value_or(0);
        int const shorter = isLevel ? row->height : row->width;
        bool const isSet = isLevel ? change.height.has_value() : change.width.has_value();
        if (!isSet) add(shorter, change.thickness);
    }
    SetParameters(edit_, *command, page_.bytes, values);
}

void FieldEdits::RemoveIn(std::optional<ByteRange> const& range) {
    if (!range) return;
    auto const [first, last] = page_.commands.In(*range);
    for (auto i = first; i < last; ++i) {
        auto const& command = page_.commands.All()[i];
        // A font file that is named holds for fields to come too.
        bool const namesFont = command.letters == "A@" && !ParameterOf(command, page_.bytes, 3).empty();
        if (IsOfField(command) && !namesFont) edit_.Remove(command.place);
    }
}

void FieldEdits::Remove(std::size_t index) {
    auto const& field = At(index);
    LookOf(field);
    RemoveIn(field.look);
    auto const& all = page_.drawn.fields;
    bool const sharesData = std::count_if(all.begin(), all.end(), [&](DrawnField const& other) {
                                return other.data && other.data == field.data;
                            }) > 1;
    if (field.data != field.look && !sharesData) RemoveIn(field.data);
}

void FieldEdits::Duplicate(std::size_t index, int right, int down) {
    auto const& field = At(index);
    auto const* const first = LookOf(field);
    StreamEdit moving;
    FieldEdits(page_, moving).Move(index, right, down);
    auto const& look = *field.look;
    std::string copy = moving.Within(look).ApplyTo(std::string_view(page_.bytes).substr(look.offset, look.length));
    std::string const end = first->syntax.Encoded(std::string(1, first->syntax.formatPrefix) + "FS");
    auto const* const ending = LastOf(field.look, [](StreamCommand const& command) { return command.letters == "FS"; });
    edit_.Insert(look.End(), ending ? copy : end + copy + end);
}
