#include "barcodes/composite/Gs1DatabarEncoder.h"

#include <algorithm>

#include "Barcode/Encoder/ModuleEncoder.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/retail/RetailText.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

using Barcode::Model::GS1BarcodeModel;
using Height = GS1BarcodeModel::Height;

struct TypeRow {
    ModuleSymbology symbology;
    std::size_t digits;  ///< of the linear part; 0 for element strings
    Height height;       ///< of rows whose height the symbology leaves open
    unsigned modules;
};

/// In the order of the command's numbers; heights by ISO/IEC 24724.
constexpr TypeRow Types[] = {
    {ModuleSymbology::DataBarOmnidirectional, 13, Height::Modules, 33},
    {ModuleSymbology::DataBarOmnidirectional, 13, Height::Modules, 13},
    {ModuleSymbology::DataBarStacked, 13, Height::Modules, 7},
    {ModuleSymbology::DataBarStackedOmnidirectional, 13, Height::Modules, 33},
    {ModuleSymbology::DataBarLimited, 13, Height::Modules, 10},
    {ModuleSymbology::DataBarExpanded, 0, Height::Modules, 34},
    {ModuleSymbology::UPCA, 11, Height::Bars, 0},
    {ModuleSymbology::UPCE, 7, Height::Bars, 0},
    {ModuleSymbology::EAN, 12, Height::Bars, 0},
    {ModuleSymbology::EAN, 7, Height::Bars, 0},
    {ModuleSymbology::GS1128, 0, Height::Bars, 0},
    {ModuleSymbology::GS1128, 0, Height::Bars, 0},
};

/// GS1 General Specifications, table 7.8.5-2: identifiers by their first two digits, and the digits behind them.
constexpr struct {
    std::string_view prefix;
    std::size_t length;  ///< with the identifier
} FixedLengths[] = {{"00", 20}, {"01", 16}, {"02", 16}, {"03", 16}, {"04", 18}, {"11", 8}, {"12", 8}, {"13", 8},
                    {"14", 8},  {"15", 8},  {"16", 8},  {"17", 8},  {"18", 8},  {"19", 8}, {"20", 4}, {"31", 10},
                    {"32", 10}, {"33", 10}, {"34", 10}, {"35", 10}, {"36", 10}, {"41", 16}};

constexpr char GroupSeparator = '\x1D';

/// The length of the first element; all of `text` if it is not fixed.
std::size_t ElementLength(std::string_view text) {
    for (auto const& [prefix, length] : FixedLengths) {
        if (text.substr(0, 2) == prefix) return std::min(length, text.size());
    }
    return text.size();
}

std::string DigitsOf(std::string const& text, std::size_t count) {
    std::string digits = KeepCharacters("0123456789")(text);
    // Senders may put the identifier 01 in front and the check digit behind.
    if (count == 13 && digits.size() == 16) digits.erase(0, 2);
    return digits;
}

/// Whether there are more digits than a symbol has, its check digit among them. UPC-E is made of the digits of UPC-A
/// too.
bool IsTooLong(std::string const& text, Gs1Type type, std::size_t count) {
    constexpr std::size_t UpcA = 11;
    return DigitsOf(text, count).size() > (type == Gs1Type::UPCE ? UpcA : count) + 1;
}

std::string FixedDigits(std::string const& text, Gs1Type type, std::size_t count) {
    std::string digits = DigitsOf(text, count);
    if (type == Gs1Type::UPCE) digits = UPCE::TransformInvalidInput(digits);
    if (digits.size() > count) digits.resize(count);
    return std::string(count - digits.size(), '0') + digits;
}

GS1BarcodeModel::GS1Fragment MakeFragment(std::vector<bool> const& row, unsigned height, TypeRow const& type) {
    // The library gives a row whose height is open 0 modules, a separator 1, and a row of a component 2 or (CC-C) 3.
    GS1BarcodeModel::GS1Fragment fragment;
    for (bool const dark : row) fragment.blocks.emplace_back(false, dark);
    fragment.modules = height == 0 ? type.modules : height;
    if (height == 0) fragment.height = type.height;
    if (height == 1) fragment.height = Height::Separator;
    if (height == 2 || height == 3) fragment.height = Height::Component;
    return fragment;
}

}  // namespace

std::string BracketIdentifiers(std::string_view elements) {
    std::string result;
    if (elements.find_first_of("[(") != std::string_view::npos) {
        result = elements;
        std::replace(result.begin(), result.end(), '(', '[');
        std::replace(result.begin(), result.end(), ')', ']');
        return result;
    }
    while (!elements.empty()) {
        if (elements[0] == GroupSeparator) {
            elements.remove_prefix(1);
            continue;
        }
        // What begins with no identifier is information between partners.
        bool const hasIdentifier = elements.size() >= 2 && IsAsciiDigit(elements[0]) && IsAsciiDigit(elements[1]);
        std::string_view const group = elements.substr(0, elements.find(GroupSeparator));
        std::string_view const element = hasIdentifier ? group.substr(0, ElementLength(group)) : group;
        result += '[';
        result += hasIdentifier ? element.substr(0, 2) : "90";
        result += ']';
        result += element.substr(hasIdentifier ? 2 : 0);
        elements.remove_prefix(element.size());
    }
    return result;
}

namespace {

constexpr unsigned CcC = 3;

/// A component of CC-C is as wide as its linear part, which must have room for its frame and one column of data: the
/// library takes that for granted.
bool HasRoomForCcC(std::string const& linear) {
    constexpr std::size_t FrameModules = 62;
    constexpr std::size_t ColumnModules = 17;
    ModuleRequest request;
    request.symbology = ModuleSymbology::GS1128;
    request.data = linear;
    request.isGs1 = true;
    auto const rows = EncodeModules(request).rows;
    return !rows.empty() && rows[0].size() >= FrameModules + ColumnModules;
}

ModuleRequest RequestOf(std::string const& data, Gs1Type type, unsigned segments) {
    TypeRow const& row = Types[static_cast<std::size_t>(type) - 1];
    std::size_t const bar = data.find('|');
    std::string const linear = data.substr(0, bar);
    auto const part = row.digits == 0 ? BracketIdentifiers(linear) : FixedDigits(linear, type, row.digits);
    ModuleRequest request;
    request.symbology = row.symbology;
    // No symbol has more than 22 segments, which then stand in one row; the library counts pairs of them.
    if (type == Gs1Type::Expanded && segments < 22) {
        request.symbology = ModuleSymbology::DataBarExpandedStacked;
        request.columns = std::max(1U, segments / 2);
    }
    request.isComposite = bar != std::string::npos && bar + 1 < data.size();
    request.isGs1 = request.isComposite || row.digits == 0;
    request.data = request.isComposite ? BracketIdentifiers(std::string_view(data).substr(bar + 1)) : part;
    if (request.isComposite) request.primary = part;
    if (request.isComposite && type == Gs1Type::Gs1128WithCcC) request.mode = CcC;
    return request;
}

BarcodeStatus Validate(std::string const& data, Gs1Type type) {
    if (type < Gs1Type::Omnidirectional || type > Gs1Type::Gs1128WithCcC) return BarcodeStatus::InvalidParameter;
    if (data.empty() || data[0] == '|') return BarcodeStatus::TooShort;
    bool const isNumber = Types[static_cast<std::size_t>(type) - 1].digits != 0;
    bool const hasDigits = data.substr(0, data.find('|')).find_first_of("0123456789") != std::string::npos;
    return isNumber && !hasDigits ? BarcodeStatus::InvalidCharacter : BarcodeStatus::Valid;
}

}  // namespace

Gs1Symbol EncodeGs1(std::string const& data, Gs1Type type, unsigned segments) {
    Gs1Symbol symbol;
    symbol.status = Validate(data, type);
    if (symbol.status != BarcodeStatus::Valid) return symbol;
    auto const request = RequestOf(data, type, segments);
    if (request.mode == CcC && !HasRoomForCcC(request.primary)) {
        symbol.status = BarcodeStatus::TooShort;
        symbol.reason = "the linear part is narrower than the component above it";
        return symbol;
    }
    std::string const linear = data.substr(0, data.find('|'));
    std::size_t const digits = Types[static_cast<std::size_t>(type) - 1].digits;
    if (digits != 0 && IsTooLong(linear, type, digits))
        symbol.shortened = request.isComposite ? request.primary : request.data;
    auto const modules = EncodeModules(request);
    symbol.status = modules.status;
    for (std::size_t r = 0; r < modules.rows.size(); ++r)
        symbol.model << MakeFragment(modules.rows[r], modules.heights[r], Types[static_cast<std::size_t>(type) - 1]);
    return symbol;
}

}  // namespace ZplCore
