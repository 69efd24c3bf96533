#include "library/forms/StreamEdit.h"

#include <algorithm>
#include <utility>

using ZplCore::ByteRange;

void StreamEdit::Replace(ByteRange const& range, std::string text) {
    auto const meets = [&](Replacement const& other) {
        return range.length > 0 && other.range.length > 0 && range.offset < other.range.End() &&
               other.range.offset < range.End();
    };
    if (std::any_of(replacements_.begin(), replacements_.end(), meets)) return;
    // What is put in stands before what is replaced there.
    auto const precedes = [](ByteRange const& a, Replacement const& b) {
        return a.offset < b.range.offset || (a.offset == b.range.offset && a.length == 0 && b.range.length > 0);
    };
    auto const at = std::upper_bound(replacements_.begin(), replacements_.end(), range, precedes);
    replacements_.insert(at, {range, std::move(text)});
}

std::string StreamEdit::ApplyTo(std::string_view text) const {
    std::string result;
    std::size_t done = 0;
    for (auto const& [range, replacement] : replacements_) {
        result += text.substr(done, range.offset - done);
        result += replacement;
        done = range.End();
    }
    return result += text.substr(done);
}

StreamEdit StreamEdit::InverseFor(std::string_view before) const {
    StreamEdit inverse;
    std::uint64_t grown = 0;  // modulo 2^64, as offsets may shrink
    for (auto const& [range, replacement] : replacements_) {
        inverse.replacements_.push_back(
            {{range.offset + grown, replacement.size()}, std::string(before.substr(range.offset, range.length))});
        grown += replacement.size() - range.length;
    }
    return inverse;
}

StreamEdit StreamEdit::Within(ByteRange const& range) const {
    StreamEdit part;
    for (auto const& replacement : replacements_) {
        if (replacement.range.offset < range.offset || replacement.range.End() > range.End()) continue;
        part.replacements_.push_back(replacement);
        part.replacements_.back().range.offset -= range.offset;
    }
    return part;
}

std::size_t StreamEdit::Bytes() const {
    std::size_t bytes = sizeof *this;
    for (auto const& replacement : replacements_) bytes += sizeof replacement + replacement.text.size();
    return bytes;
}
