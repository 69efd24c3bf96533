#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Scripting/RfidOperation.h"

/// A tag whose memory was given on the command line, and what an encoder's operations make of it. Each label of the
/// media carries such a tag, so a copy is taken for every page.
class VirtualTag {
public:
    /// `blank`, or BANK=HEX with commas in between, with the banks epc, tid, user and afi; what is not named is that of
    /// a blank tag. Throws UsageError.
    static VirtualTag Parse(std::string_view text);

    /// Performs operations in their order, and gives what was read. Writes beyond 4096 bytes of a bank are left out.
    std::vector<RfidReadResponse> Perform(std::vector<RfidOperation> const& operations);

    /// The bytes of a bank in hexadecimal: epc, tid, user, afi or reserved.
    std::string const& Bank(std::string_view name) const { return banks_.find(name)->second; }

    friend bool operator==(VirtualTag const&, VirtualTag const&) = default;

private:
    VirtualTag();

    std::map<std::string, std::string, std::less<>> banks_;
};
