#include "fields/scan/SymbolReading.h"

#include <algorithm>

namespace ZplCore {

namespace {

/// Whether `read` is what an encoder makes of `encoded`. Symbols add a check digit, guards, or a zero in front.
bool IsMadeOf(std::string read, std::string encoded, SymbologyRule const& rule) {
    constexpr std::size_t MostAdded = 3;
    constexpr unsigned char Controls = 0xE0;  // and above: the subsets and function characters of Code 128
    if (rule.decoder == "Code128") std::erase_if(encoded, [](unsigned char byte) { return byte >= Controls; });
    constexpr char Separator = '\x1D';
    std::erase(read, Separator);
    std::erase(encoded, Separator);
    return read.size() <= encoded.size() + MostAdded && read.find(encoded) != read.npos;
}

}  // namespace

SymbolReading ReadSymbol(SymbolOnPage const& symbol, SymbolReader const& reader) {
    using Result = SymbolReading::Result;
    auto const& [mapped, rule, picture, shown, module] = symbol;
    if (rule.decoder.empty()) return {Result::Unknown, {}, {}};
    auto const seen = reader.Read(shown, rule.decoder, module);
    // One symbol of several says a part of what the field does.
    bool const isAsked = !mapped.encoded.empty() && mapped.pictures.size() == 1;
    if (seen && isAsked && IsMadeOf(*seen, mapped.encoded, rule)) return {};
    auto const onPaper = reader.Read(picture, rule.decoder, module);
    if (!onPaper) return {Result::Unknown, {}, {}};
    if (!seen) return {Result::Unread, {}, {}};
    if (*seen != *onPaper) return {Result::Other, *seen, *onPaper};
    if (isAsked) return {Result::NotAsAsked, *seen, mapped.encoded};
    return {};
}

}  // namespace ZplCore
