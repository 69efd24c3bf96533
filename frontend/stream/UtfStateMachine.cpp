#include "frontend/stream/UtfStateMachine.h"

#include <utf8.h>

#include <algorithm>
#include <span>
#include <utility>

namespace {

constexpr std::array<std::uint8_t, 3> Utf8Bom{0xEF, 0xBB, 0xBF};
constexpr std::array<std::uint8_t, 2> Utf16LeBom{0xFF, 0xFE};
constexpr std::array<std::uint8_t, 2> Utf16BeBom{0xFE, 0xFF};

bool EndsWith(std::span<std::uint8_t const> bytes, std::span<std::uint8_t const> mark) {
    return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.end() - mark.size());
}

}  // namespace

UtfStateMachine::Result UtfStateMachine::Consume(char byte, Encoding encoding, bool inBinaryMode) {
    auto const value = static_cast<std::uint8_t>(byte);
    ForgetBytesOfOthers(encoding);
    Push(value);
    if (!inBinaryMode) {
        if (auto const mark = HaveReadBom()) {
            // The last byte of the mark goes on as a character: between commands it is dropped, in a parameter kept.
            size_ = 0;
            encoding_ = *mark;
            return {*mark, value, true, 1};
        }
    }
    switch (encoding) {
        case Encoding::Utf16Le:
        case Encoding::Utf16Be: return ConsumeUtf16(encoding);
        case Encoding::Utf8: return ConsumeUtf8();
        default: return {encoding, value, true, 1};  // the queue stays, so that a mark can still be recognised
    }
}

void UtfStateMachine::ForgetBytesOfOthers(Encoding encoding) {
    if (encoding != encoding_) size_ = 0;
    encoding_ = encoding;
}

// Surrogates are not combined: each code unit is a character of its own. Two bytes that begin a UTF-8 mark wait for its
// third; where another follows, the queue is never again two bytes long, and the stream is silent up to its next mark.
UtfStateMachine::Result UtfStateMachine::ConsumeUtf16(Encoding encoding) {
    if (size_ != 2 || CouldBeUtf8Bom()) return {encoding, 0, false, 0};
    auto const older = bytes_[0];
    auto const newer = bytes_[1];
    size_ = 0;
    auto const unit = encoding == Encoding::Utf16Le ? newer << 8 | older : older << 8 | newer;
    return {encoding, static_cast<char32_t>(unit), true, 2};
}

// The held bytes count only as a whole: after a stray byte nothing is delivered until newer bytes have pushed it out,
// and what is then held behind the first character is lost.
UtfStateMachine::Result UtfStateMachine::ConsumeUtf8() {
    std::uint8_t const* oldest = bytes_.data();
    if (!utf8::is_valid(oldest, oldest + size_)) return {Encoding::Utf8, 0, false, 0};
    auto const character = static_cast<char32_t>(utf8::unchecked::next(oldest));
    return {Encoding::Utf8, character, true, std::exchange(size_, std::uint8_t{0})};
}

std::optional<Encoding> UtfStateMachine::HaveReadBom() const {
    // Every mark ends in one of these; most bytes need no further look.
    if (size_ < 2 || bytes_[size_ - 1] < Utf8Bom.back()) return std::nullopt;
    std::span const held(bytes_.data(), size_);
    if (EndsWith(held, Utf8Bom)) return Encoding::Utf8;
    if (EndsWith(held, Utf16LeBom)) return Encoding::Utf16Le;
    if (EndsWith(held, Utf16BeBom)) return Encoding::Utf16Be;
    return std::nullopt;
}

bool UtfStateMachine::CouldBeUtf8Bom() const {
    return size_ == 2 && bytes_[0] == Utf8Bom[0] && bytes_[1] == Utf8Bom[1];
}

std::size_t UtfStateMachine::UnfinishedBytes(Encoding encoding) const {
    if (encoding != encoding_) return 0;
    if (encoding != Encoding::SingleByte) return size_;
    std::span const held(bytes_.data(), size_);
    if (EndsWith(held, std::span(Utf8Bom).first(2))) return 2;
    bool const mayBegin =
        size_ > 0 && (held.back() == Utf8Bom[0] || held.back() == Utf16LeBom[0] || held.back() == Utf16BeBom[0]);
    return mayBegin ? 1 : 0;
}

void UtfStateMachine::SkipRun(std::string_view run, Encoding encoding) {
    if (run.empty()) return;
    ForgetBytesOfOthers(encoding);
    if (encoding != Encoding::SingleByte) return;
    if (run.size() < bytes_.size()) {
        for (char const byte : run) Push(static_cast<std::uint8_t>(byte));
        return;
    }
    std::copy(run.end() - bytes_.size(), run.end(), bytes_.begin());
    size_ = static_cast<std::uint8_t>(bytes_.size());
}

void UtfStateMachine::Push(std::uint8_t byte) {
    if (size_ == bytes_.size()) {
        std::copy(bytes_.begin() + 1, bytes_.end(), bytes_.begin());
        --size_;
    }
    bytes_[size_++] = byte;
}
