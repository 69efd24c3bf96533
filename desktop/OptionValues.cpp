#include "desktop/OptionValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <limits>
#include <optional>

namespace OptionValues {

namespace {

constexpr double MillimetersPerInch = 25.4;

/// The number that the whole text is, if it is one from `low` to `high`.
template <typename T>
std::optional<T> Within(std::string_view text, T low, T high) {
    T value{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool const isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && value >= low && value <= high ? std::optional(value) : std::nullopt;
}

}  // namespace

unsigned Number(std::string_view option, std::string_view text, unsigned low, unsigned high) {
    auto const value = Within(text, low, high);
    if (value) return *value;
    throw UsageError(std::string(option) + " takes a whole number from " + std::to_string(low) + " to " +
                     std::to_string(high) + ", not \"" + std::string(text) + "\"");
}

LabelSize Size(std::string_view text) {
    auto const bad = [&] {
        return UsageError("--size is WIDTHxHEIGHT with the unit in (if none is named), mm or dots, as 4x6in; not \"" +
                          std::string(text) + "\"");
    };
    LabelSize size{};
    auto const [afterWidth, widthError] = std::from_chars(text.data(), text.data() + text.size(), size.width);
    if (widthError != std::errc() || afterWidth == text.data() + text.size() || *afterWidth != 'x') throw bad();
    auto const [afterHeight, heightError] = std::from_chars(afterWidth + 1, text.data() + text.size(), size.height);
    if (heightError != std::errc()) throw bad();
    size.unit = std::string(afterHeight, text.data() + text.size());
    if (size.unit.empty()) size.unit = "in";
    bool const known = size.unit == "in" || size.unit == "mm" || size.unit == "dots";
    if (!known || !(size.width > 0) || !(size.height > 0) || !std::isfinite(size.width) || !std::isfinite(size.height))
        throw bad();
    return size;
}

std::pair<double, double> Inches(LabelSize const& size, unsigned dpi) {
    double const perInch = size.unit == "in" ? 1 : size.unit == "mm" ? MillimetersPerInch : dpi;
    std::pair const inches{size.width / perInch, size.height / perInch};
    if (!IsLabelSide(inches.first) || !IsLabelSide(inches.second))
        throw UsageError("--size is from 0.1 to 200 inches on a side");
    return inches;
}

std::chrono::system_clock::time_point Time(std::string const& text) {
    if (auto const time = ReadTime(text)) return *time;
    throw UsageError("--time is YEAR-MONTH-DAYTHOUR:MINUTE:SECOND, as 2026-03-31T14:05:00; not \"" + text + "\"");
}

std::pair<std::string, std::string> Font(std::string_view text) {
    if (auto font = ReadFont(text)) return *std::move(font);
    throw UsageError("--font is LETTER=FILE, not \"" + std::string(text) + "\"");
}

VirtualTag Tag(std::string_view text) {
    try {
        return VirtualTag::Parse(text);
    } catch (std::invalid_argument const& error) {
        throw UsageError(std::string("--tag ") + error.what());
    }
}

PageFormat const& Format(std::string_view text) {
    // Of no other name, since these are the choices of the option.
    return *std::find_if(std::begin(PageFormats), std::end(PageFormats) - 1,
                         [text](PageFormat const& format) { return format.name == text; });
}

std::string OutputFile(std::string const& text) {
    std::error_code ignored;
    auto const status = std::filesystem::status(text, ignored);
    if (text.empty() || is_directory(status))
        throw UsageError("-o is a file, and --out DIR a folder for files; not \"" + text + "\"");
    if (text != "-" && exists(status) && !is_regular_file(status))
        throw UsageError("-o makes a regular file, which " + text + " is not; -o - writes to standard output");
    return text;
}

std::string NamePattern(std::string const& text) {
    std::string rest = text;
    for (std::string_view const place : {"{stem}", "{page}", "{ext}"}) {
        for (std::size_t at = 0; (at = rest.find(place)) != std::string::npos;) rest.replace(at, place.size(), "x");
    }
    if (rest.empty() || rest.find_first_of("{}/") != std::string::npos || rest == "." || rest == "..")
        throw UsageError(
            "--name is the name of a file with {stem}, {page} and {ext} in it, as {stem}-{page}.{ext}; "
            "--out names the folder; not \"" +
            text + "\"");
    return text;
}

PageRanges Pages(std::string const& text) {
    constexpr unsigned Most = std::numeric_limits<unsigned>::max() / 2;
    PageRanges pages;
    for (std::size_t at = 0; at <= text.size();) {
        auto const part = std::string_view(text).substr(at, std::min(text.find(',', at), text.size()) - at);
        at += part.size() + 1;
        auto const dash = std::min(part.find('-'), part.size());
        auto const first = Within(part.substr(0, dash), 1U, Most);
        auto const last = dash == part.size()       ? first
                          : dash + 1 == part.size() ? std::optional(Most)
                                                    : Within(part.substr(dash + 1), 1U, Most);
        if (!first || !last || *first > *last)
            throw UsageError("--pages is numbers and ranges from 1 on, as 2-5,8 or 3-; not \"" + text + "\"");
        pages.Add(*first, *last);
    }
    return pages;
}

void Address(std::string_view option, std::string const& text, std::string& host, unsigned& port) {
    auto const colon = text.rfind(':');
    if (colon != std::string::npos) host = text.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    else if (host.find(':') != host.npos)
        throw UsageError("an IPv6 address stands in brackets, as in " + std::string(option) + " [::1]:9100, not \"" +
                         text + "\"");
    auto const number = Within(std::string_view(text).substr(colon == std::string::npos ? 0 : colon + 1), 0U, 65535U);
    if (!number || host.empty())
        throw UsageError(std::string(option) + " is HOST:PORT, with a PORT of 0 to 65535, not \"" + text + "\"");
    port = *number;
}

double Speed(std::string const& text) {
    auto const speed = Within(std::string_view(text), 0.0, 1000.0);
    if (!speed) throw UsageError("--speed is 0 to 1000 inches a second, not \"" + text + "\"");
    return *speed;
}

}  // namespace OptionValues
