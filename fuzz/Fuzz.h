#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

/// Ends the run where something is not as it must be, also in builds without assertions.
inline void Require(bool isSo) {
    if (!isSo) std::abort();
}

/// The input of a run: numbers are taken from its front, what is left is text.
class FuzzInput {
public:
    FuzzInput(std::uint8_t const* data, std::size_t size) : rest_(reinterpret_cast<char const*>(data), size) {}

    /// 0 when nothing is left.
    unsigned Byte() {
        if (rest_.empty()) return 0;
        unsigned const byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }
    unsigned Word() {
        unsigned const high = Byte();
        return high << 8 | Byte();
    }
    std::string_view Rest() const { return rest_; }

private:
    std::string_view rest_;
};

/// A text in pieces, whose lengths come from the text itself and are small and odd.
template <typename Take>
void CutAnywhere(std::string_view text, Take&& take) {
    while (!text.empty()) {
        std::size_t const step = 1 + static_cast<unsigned char>(text.front()) * (text.size() % 3) % 97;
        auto const piece = text.substr(0, step);
        text.remove_prefix(piece.size());
        take(piece, text.empty());
    }
}
