#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Data that counts on from label to label. `steps` is how many times the step has been added: 0 for the first number.
namespace ZplCore::SerialData {

/// The largest number of digits that count.
inline constexpr std::size_t MostDigits = 12;

/// Adds `step` to the rightmost run of digits in `start` (its last MostDigits), within the width of the run: past its
/// end it starts again, below zero it goes on from all nines. What stands around the run stays. Without `leadingZeros`
/// the zeros in front of the number are left out. Text without a digit stays as it is.
std::string CountNumber(std::string_view start, std::int64_t step, bool leadingZeros, std::uint64_t steps);

/// Adds `step` to `data` by `mask`, which is laid over the end of the data: D or d is a decimal place, H or h a
/// hexadecimal one, O or o an octal one, A or a a letter, N or n a digit or letter, any other character leaves its
/// place alone. `step` is laid over the end of the mask, each character a digit of its place's system; an empty step
/// adds one at the last counting place. Carries run to the left over counting places; the last one is lost.
std::string CountByMask(std::string_view data, std::string_view mask, std::string_view step, std::uint64_t steps);

}  // namespace ZplCore::SerialData
