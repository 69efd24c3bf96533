#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <string_view>
#include <utility>

/// Where the lines of a stream begin, counted as its bytes go by.
class LineIndex {
public:
    /// Keeps the last `mostLines` of them.
    explicit LineIndex(std::size_t mostLines = std::numeric_limits<std::size_t>::max()) : mostLines_(mostLines) {}

    void Append(std::string_view bytes);
    /// Line and column, in bytes, of a byte of the stream, both from 1. Behind the end is on the last line; of what
    /// is kept no more both are 0.
    std::pair<std::size_t, std::size_t> PlaceOf(std::uint64_t offset) const;
    /// Lines that end before `offset` are not asked for any more.
    void Forget(std::uint64_t offset);

private:
    std::size_t mostLines_;
    std::deque<std::uint64_t> starts_{0};  // of the lines from first_ on, in bytes
    std::size_t first_ = 1;
    std::uint64_t size_ = 0;
};
