#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How a command writes the data of a tag.
enum class TagFormat { Hex, Ascii, Epc };

/// The bytes of a tag in hexadecimal, capital letters. `partitions` are the sizes in bits of the parts of an EPC, each
/// at most 64; its data are the parts as decimal numbers with commas or full stops between them. No value if the data
/// are not what the format says.
std::optional<std::string> ToTagHex(TagFormat format, std::string_view data,
                                    std::vector<std::uint8_t> const& partitions);

/// The inverse: what a tag's bytes, given in hexadecimal, read as. Bits beyond the parts of an EPC are left out.
std::string FromTagHex(TagFormat format, std::string_view hex, std::vector<std::uint8_t> const& partitions);

/// `hex` filled up with zeros, or cut, to so many bytes; 0 stands for the next whole word of 16 bits.
std::string FitTagHex(std::string hex, unsigned bytes);
