#include "fields/data/SerialData.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "frontend/stream/Ascii.h"

namespace ZplCore::SerialData {

namespace {

/// One system of counting: its digits in their order, in upper case.
struct PlaceSystem {
    char mask;
    std::string_view digits;
};

constexpr std::string_view AllDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr PlaceSystem PlaceSystems[] = {
    {'D', AllDigits.substr(0, 10)},
    {'H', AllDigits.substr(0, 16)},
    {'O', AllDigits.substr(0, 8)},
    {'A', AllDigits.substr(10)},
    {'N', AllDigits},
};

/// The digits of a place; empty for a place that is left alone.
std::string_view DigitsOf(char mask) {
    for (auto const& system : PlaceSystems) {
        if (system.mask == ToAsciiUpper(mask)) return system.digits;
    }
    return {};
}

/// A character that is no digit of its place counts as 0.
std::uint64_t ValueIn(std::string_view digits, char character) {
    auto const place = digits.find(static_cast<char>(ToAsciiUpper(character)));
    return place == std::string_view::npos ? 0 : place;
}

/// The last character of the mask that counts; nothing if none does.
std::optional<std::size_t> LastCountingPlace(std::string_view mask) {
    for (std::size_t i = mask.size(); i > 0; --i) {
        if (!DigitsOf(mask[i - 1]).empty()) return i - 1;
    }
    return std::nullopt;
}

/// The case of a letter follows the character that it replaces, or the mask where that was no letter.
char InCase(char digit, char before, char mask) {
    bool const wasLetter = ToAsciiUpper(before) >= 'A' && ToAsciiUpper(before) <= 'Z';
    char const model = wasLetter ? before : mask;
    bool const lower = model >= 'a' && model <= 'z';
    return lower && digit >= 'A' ? static_cast<char>(digit - 'A' + 'a') : digit;
}

}  // namespace

std::string CountNumber(std::string_view start, std::int64_t step, bool leadingZeros, std::uint64_t steps) {
    auto const last = start.find_last_of("0123456789");
    if (last == std::string_view::npos) return std::string(start);
    std::size_t first = last;
    while (first > 0 && last - first + 1 < MostDigits && IsAsciiDigit(start[first - 1])) --first;
    std::size_t const width = last - first + 1;

    std::int64_t modulus = 1;
    for (std::size_t i = 0; i < width; ++i) modulus *= 10;
    std::int64_t number = 0;
    std::from_chars(start.data() + first, start.data() + last + 1, number);
    // Each factor is below the modulus, so the product needs 128 bits at most.
    __extension__ using Wide = __int128;
    auto const advanced =
        static_cast<Wide>(step % modulus) * static_cast<Wide>(steps % static_cast<std::uint64_t>(modulus));
    number = static_cast<std::int64_t>(((number + advanced) % modulus + modulus) % modulus);

    std::string digits = std::to_string(number);
    if (leadingZeros) digits.insert(0, width - digits.size(), '0');
    return std::string(start.substr(0, first)) + digits + std::string(start.substr(last + 1));
}

std::string CountByMask(std::string_view data, std::string_view mask, std::string_view step, std::uint64_t steps) {
    std::string result(data);
    auto const lastPlace = LastCountingPlace(mask);
    std::uint64_t carry = 0;
    // Places are counted from the end, where data, mask and step meet.
    for (std::size_t fromEnd = 1; fromEnd <= std::min(mask.size(), result.size()); ++fromEnd) {
        char const place = mask[mask.size() - fromEnd];
        auto const digits = DigitsOf(place);
        if (digits.empty()) continue;
        char& character = result[result.size() - fromEnd];
        std::uint64_t increment = 0;
        if (step.empty()) {
            increment = lastPlace == mask.size() - fromEnd ? 1 : 0;
        } else if (fromEnd <= step.size()) {
            increment = ValueIn(digits, step[step.size() - fromEnd]);
        }
        std::uint64_t const total = ValueIn(digits, character) + increment * steps + carry;
        if (increment != 0 || carry != 0) character = InCase(digits[total % digits.size()], character, place);
        carry = total / digits.size();
    }
    return result;
}

}  // namespace ZplCore::SerialData
