#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Scripting/RfidOperation.h"

/// A tag whose memory is given, and what an encoder's operations make of it. Each label of the
/// media carries such a tag, so a copy is taken for every page.
class VirtualTag {
public:
    /// `blank`, or BANK=HEX with commas in between, each of the banks epc, tid, user, afi and reserved at most once;
    /// what is not named is that of a blank tag. Throws std::invalid_argument, with a text to stand behind the name of
    /// what was given.
    static VirtualTag Parse(std::string_view text);

    /// Performs operations in their order, and gives what was read. A write is left out as a whole if it reaches beyond
    /// 4096 bytes of a bank, into the tid bank, or into what is locked. Blocks of user memory are four words.
    std::vector<RfidReadResponse> Perform(std::vector<RfidOperation> const& operations);

    /// The bytes of a bank in hexadecimal: epc, tid, user, afi or reserved.
    std::string const& Bank(std::string_view name) const { return banks_.find(name)->second; }

    friend bool operator==(VirtualTag const&, VirtualTag const&) = default;

private:
    /// Digits [first, last) of a bank that keep what they hold: for good, or for all that lack the access password.
    struct LockedPart {
        std::string bank;
        std::size_t first, last;
        bool forGood;
        friend bool operator==(LockedPart const&, LockedPart const&) = default;
    };

    VirtualTag();

    /// Whether an operation may change digits [first, last).
    bool Takes(RfidOperation const& operation, std::string_view bank, std::size_t first, std::size_t last) const;
    void Write(RfidOperation const& operation, std::string& memory, std::string_view bank, std::size_t digit);
    void Lock(RfidOperation const& operation, std::string_view bank, std::size_t digit);

    std::vector<LockedPart> locks_;
    std::map<std::string, std::string, std::less<>> banks_;
};
