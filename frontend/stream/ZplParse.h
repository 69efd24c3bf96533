#pragma once

#include <optional>
#include <string>
#include <utility>

#include "Scripting/ScriptTextJustification.h"
#include "frontend/stream/ZplCommand.h"
#include "frontend/stream/ZplTypes.h"

/// A parsed parameter: a flag that says whether there is a value, and the value.
template <typename T>
struct ZplParseResult {
    bool success = false;
    T value{};

    ZplParseResult() = default;
    // A value is a result: conversions read as `return 5;`.
    ZplParseResult(T parsed) : success(true), value(std::move(parsed)) {}  // NOLINT(google-explicit-constructor)

    explicit operator bool() const { return success; }
    T const& operator*() const { return value; }
    T ValueOr(T fallback) const { return success ? value : fallback; }

    /// The result of `convert` on the value, or no value.
    template <typename Convert>
    auto Map(Convert&& convert) const -> ZplParseResult<decltype(convert(value))> {
        if (!success) return {};
        return convert(value);
    }

    /// The value if `accept` holds for it, otherwise no value.
    template <typename Accept>
    ZplParseResult Where(Accept&& accept) const {
        return success && accept(value) ? *this : ZplParseResult{};
    }
};

/// Reads a parameter. Absent and unusable text has no value and is never reported: a host may leave out anything.
///
/// Numbers are scanned forgivingly: the first run of digits anywhere counts. A run beyond the signed 32-bit range
/// throws NumberOutOfRange ("stoi"); a floating text without a number, as ".", throws UnreadableNumber ("stod").
/// Enumerations read the first letter, in either case.
template <typename T>
ZplParseResult<T> ZplParse(std::string const& text);

template <>
ZplParseResult<std::string> ZplParse<std::string>(std::string const& text);
template <>
ZplParseResult<char> ZplParse<char>(std::string const& text);
template <>
ZplParseResult<bool> ZplParse<bool>(std::string const& text);
template <>
ZplParseResult<unsigned> ZplParse<unsigned>(std::string const& text);
template <>
ZplParseResult<int> ZplParse<int>(std::string const& text);
template <>
ZplParseResult<double> ZplParse<double>(std::string const& text);
template <>
ZplParseResult<unsigned char> ZplParse<unsigned char>(std::string const& text);
template <>
ZplParseResult<std::optional<int>> ZplParse<std::optional<int>>(std::string const& text);
template <>
ZplParseResult<ZplOrientation> ZplParse<ZplOrientation>(std::string const& text);
template <>
ZplParseResult<Direction> ZplParse<Direction>(std::string const& text);
template <>
ZplParseResult<Justification> ZplParse<Justification>(std::string const& text);
template <>
ZplParseResult<Scripting::ScriptTextJustification> ZplParse<Scripting::ScriptTextJustification>(
    std::string const& text);
template <>
ZplParseResult<ZplPrintOrientation> ZplParse<ZplPrintOrientation>(std::string const& text);
template <>
ZplParseResult<ZplUnitOfMeasure> ZplParse<ZplUnitOfMeasure>(std::string const& text);
template <>
ZplParseResult<ZplPrintMode> ZplParse<ZplPrintMode>(std::string const& text);
template <>
ZplParseResult<CompressionType> ZplParse<CompressionType>(std::string const& text);

/// Reads the parameter at `index` of `command`.
template <typename T>
ZplParseResult<T> ZplParse(ZplCommand const& command, std::size_t index) {
    return ZplParse<T>(command.Parameter(index));
}
