#include "desktop/VirtualTag.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "desktop/CommandLine.h"
#include "rfid/TagData.h"

namespace {

constexpr std::size_t LargestBank = 2 * 4096;  // digits
constexpr std::size_t DigitsOfAWord = 4;

/// Where the memory that an operation names lies in a tag.
struct Place {
    std::string_view bank;
    std::size_t digit = 0;  ///< the first one
    std::size_t digits = 0;
};

std::size_t NumberOf(RfidOperation const& operation, std::string_view name) {
    std::string_view const text = operation.Argument(name);
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::min(number, LargestBank);
}

Place PlaceOf(RfidOperation const& operation) {
    struct Row {
        std::string_view letter;
        std::string_view bank;
        std::size_t hiddenWords;  ///< of the bank, before what the tag keeps
    };
    // The bank of the EPC begins with a checksum and a word of control bits, which the tag makes itself.
    constexpr std::array Rows{Row{"E", "epc", 0}, Row{"A", "epc", 0},  Row{"0", "reserved", 0}, Row{"1", "epc", 2},
                              Row{"2", "tid", 0}, Row{"3", "user", 0}, Row{"AFI", "afi", 0}};
    auto const row = std::find_if(Rows.begin(), Rows.end(),
                                  [letter = operation.Argument("Bank")](Row const& r) { return r.letter == letter; });
    if (row == Rows.end()) return {};
    std::size_t const start = NumberOf(operation, "Start");
    return {row->bank, (start - std::min(start, row->hiddenWords)) * DigitsOfAWord, NumberOf(operation, "Bytes") * 2};
}

}  // namespace

VirtualTag::VirtualTag()
    : banks_{{"epc", std::string(24, '0')},
             {"tid", "E28011700000020000000001"},
             {"user", std::string(64, '0')},
             {"afi", "00"},
             {"reserved", std::string(16, '0')}} {}

VirtualTag VirtualTag::Parse(std::string_view text) {
    VirtualTag tag;
    if (text == "blank") return tag;
    auto const bad = [text](std::string const& why) {
        return UsageError("--tag is blank or BANK=HEX[,BANK=HEX...] with the banks epc, tid, user and afi; " + why +
                          " in \"" + std::string(text) + "\"");
    };
    for (std::string_view rest = text; !rest.empty();) {
        std::string_view const part = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
        auto const equals = part.find('=');
        auto const bank = tag.banks_.find(part.substr(0, equals));
        if (equals == part.npos || bank == tag.banks_.end()) throw bad("there is no such bank");
        auto const hex = ToTagHex(TagFormat::Hex, part.substr(equals + 1), {});
        if (!hex || hex->empty() || hex->size() % 2 != 0 || hex->size() > LargestBank)
            throw bad("bytes are two hexadecimal digits each, at most 4096 of them");
        bank->second = *hex;
    }
    return tag;
}

std::vector<RfidReadResponse> VirtualTag::Perform(std::vector<RfidOperation> const& operations) {
    std::vector<RfidReadResponse> responses;
    for (auto const& operation : operations) {
        auto const place = PlaceOf(operation);
        auto const bank = banks_.find(place.bank);
        if (bank == banks_.end()) continue;
        std::string& memory = bank->second;
        if (operation.type == RfidOperation::Read) {
            std::string data = memory.substr(std::min(place.digit, memory.size()));
            if (place.digits != 0) data.resize(place.digits, '0');
            responses.push_back({static_cast<unsigned>(NumberOf(operation, "Sequence")), std::move(data)});
        } else if (operation.type == RfidOperation::Write) {
            std::string_view const data = operation.Argument("Data");
            if (place.digit + data.size() > LargestBank) continue;
            memory.resize(std::max(memory.size(), place.digit + data.size()), '0');
            memory.replace(place.digit, data.size(), data);
        }
    }
    return responses;
}
