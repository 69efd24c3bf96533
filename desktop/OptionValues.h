#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "desktop/Options.h"

/// Readers of the values that options take. Each throws UsageError with what the option allows.
namespace OptionValues {

/// A whole number from `low` to `high`.
unsigned Number(std::string_view option, std::string_view text, unsigned low, unsigned high);
/// `WxH` with a unit, inches if none is named.
LabelSize Size(std::string_view text);
/// Sides in inches, of which dots are `dpi` to the inch.
std::pair<double, double> Inches(LabelSize const& size, unsigned dpi);
std::chrono::system_clock::time_point Time(std::string const& text);
/// `LETTER=FILE`.
std::pair<std::string, std::string> Font(std::string_view text);
/// As VirtualTag::Parse.
VirtualTag Tag(std::string_view text);
/// One of PageFormats, by its name.
PageFormat const& Format(std::string_view text);
/// A file that is not there yet, or a regular one; "-" for standard output.
std::string OutputFile(std::string const& text);
/// A file name with {stem}, {page} and {ext} in it.
std::string NamePattern(std::string const& text);
/// `N`, `N-M` or `N-`, with commas in between.
PageRanges Pages(std::string const& text);
/// `HOST:PORT`, or `PORT` for the host that is set already. An IPv6 address stands in brackets.
void Address(std::string_view option, std::string const& text, std::string& host, unsigned& port);
/// Inches a second.
double Speed(std::string const& text);

}  // namespace OptionValues
