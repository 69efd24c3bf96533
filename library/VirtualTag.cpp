#include "library/VirtualTag.h"

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>

#include "rfid/TagData.h"
#include "rfid/TagOperations.h"

namespace {

constexpr std::size_t LargestBank = 2 * 4096;  // digits
constexpr std::size_t DigitsOfAWord = 4;
constexpr std::size_t AccessPassword = 2;  // its first word in the reserved bank

/// Where the memory that an operation names lies in a tag.
struct Place {
    std::string_view bank;
    std::size_t digit = 0;  ///< the first one
    std::size_t digits = 0;
};

std::size_t Bounded(RfidOperation const& operation, std::string_view name) {
    return std::min<std::size_t>(operation.NumberOf(name), LargestBank);
}

Place PlaceOf(RfidOperation const& operation) {
    struct Row {
        std::string_view letter;
        std::string_view bank;
        std::size_t hiddenWords = 0;  ///< of the bank, before what the tag keeps
        std::size_t firstWord = 0;    ///< of the place in the bank
    };
    // The bank of the EPC begins with a checksum and a word of control bits, which the tag makes itself. The reserved
    // bank holds the two passwords.
    constexpr std::array Rows{
        Row{"E", "epc"},    Row{"A", "epc"},         Row{"0", "reserved"},
        Row{"1", "epc", 2}, Row{"2", "tid"},         Row{"3", "user"},
        Row{"AFI", "afi"},  Row{"Kill", "reserved"}, Row{"Access", "reserved", 0, AccessPassword}};
    auto const row = std::find_if(Rows.begin(), Rows.end(),
                                  [letter = operation.Argument("Bank")](Row const& r) { return r.letter == letter; });
    if (row == Rows.end()) return {};
    std::size_t const start = Bounded(operation, "Start");
    return {row->bank, (start - std::min(start, row->hiddenWords) + row->firstWord) * DigitsOfAWord,
            Bounded(operation, "Bytes") * 2};
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
    std::set<std::string_view> named;
    auto const bad = [text](std::string const& why) {
        return std::invalid_argument(
            "is blank or BANK=HEX[,BANK=HEX...] with the banks epc, tid, user, afi and reserved; " + why + " in \"" +
            std::string(text) + "\"");
    };
    if (text.empty()) throw bad("there is none");
    for (std::string_view rest = text; !rest.empty();) {
        std::string_view const part = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
        auto const equals = part.find('=');
        auto const bank = tag.banks_.find(part.substr(0, equals));
        if (equals == part.npos || bank == tag.banks_.end()) throw bad("there is no such bank");
        if (!named.insert(bank->first).second) throw bad("a bank stands twice");
        auto const hex = ToTagHex(TagFormat::Hex, part.substr(equals + 1), {});
        if (!hex || hex->empty() || hex->size() % 2 != 0 || hex->size() > LargestBank)
            throw bad("bytes are two hexadecimal digits each, at most 4096 of them");
        bank->second = *hex;
    }
    return tag;
}

bool VirtualTag::Takes(RfidOperation const& operation, std::string_view bank, std::size_t first,
                       std::size_t last) const {
    if (bank == "tid" || last > LargestBank) return false;
    // A lock that is not for good opens to the access password, unless the tag has none.
    auto const password = Bank("reserved").substr(AccessPassword * DigitsOfAWord, 2 * DigitsOfAWord);
    bool const isSecured =
        operation.Argument("Password") == password && password.find_first_not_of('0') != std::string::npos;
    return std::none_of(locks_.begin(), locks_.end(), [&](LockedPart const& part) {
        return part.bank == bank && first < part.last && last > part.first && (part.forGood || !isSecured);
    });
}

void VirtualTag::Write(RfidOperation const& operation, std::string& memory, std::string_view bank, std::size_t digit) {
    std::string_view const data = operation.Argument("Data");
    if (!Takes(operation, bank, digit, digit + data.size())) return;
    memory.resize(std::max(memory.size(), digit + data.size()), '0');
    memory.replace(digit, data.size(), data);
    if (operation.Argument("Lock") == "true") locks_.push_back({std::string(bank), digit, digit + data.size(), false});
}

void VirtualTag::Lock(RfidOperation const& operation, std::string_view bank, std::size_t digit) {
    constexpr std::size_t WordsOfABlock = 4;
    std::string_view const name = operation.Argument("Bank");
    LockedPart part{std::string(bank), 0, LargestBank, operation.Argument("Style") == "P"};
    if (name == TagOperations::Banks::KillPassword || name == TagOperations::Banks::AccessPassword) {
        part.first = digit;
        part.last = digit + 2 * DigitsOfAWord;
    } else if (std::size_t const blocks = Bounded(operation, "Blocks"); blocks != 0) {
        part.first = Bounded(operation, "Start") * WordsOfABlock * DigitsOfAWord;
        part.last = part.first + blocks * WordsOfABlock * DigitsOfAWord;
    }
    if (!Takes(operation, bank, part.first, part.last)) return;
    std::erase_if(locks_, [&](LockedPart const& old) {
        return old.bank == part.bank && old.first >= part.first && old.last <= part.last;
    });
    bool const unlocks = operation.Argument("Style") == "U" || operation.Argument("Style") == "O";
    if (!unlocks) locks_.push_back(part);
}

std::vector<RfidReadResponse> VirtualTag::Perform(std::vector<RfidOperation> const& operations) {
    std::vector<RfidReadResponse> responses;
    for (auto const& operation : operations) {
        auto const place = PlaceOf(operation);
        auto const bank = banks_.find(place.bank);
        if (bank == banks_.end()) continue;
        auto& [name, memory] = *bank;
        if (operation.type == RfidOperation::Read) {
            std::string data = memory.substr(std::min(place.digit, memory.size()));
            if (place.digits != 0) data.resize(place.digits, '0');
            responses.push_back({operation.NumberOf("Sequence"), std::move(data)});
        } else if (operation.type == RfidOperation::Lock) {
            Lock(operation, name, place.digit);
        } else if (operation.type == RfidOperation::Write || operation.type == RfidOperation::SetPassword) {
            Write(operation, memory, name, place.digit);
        }
    }
    return responses;
}
