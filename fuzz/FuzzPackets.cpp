#include <string>

#include "PrintEngine/Printing/JobMetaData.h"
#include "foundation/Base64.h"
#include "fuzz/Fuzz.h"
#include "jobhost/model/NetworkResponse.h"
#include "jobhost/model/Packet.h"

// What comes over the bus from others: packets of a stream and answers to a sender. What can be read is written and
// read again as the same, and any payload travels whole.

using zpl::NetworkResponse;
using Zpl::Host::Packet;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    unsigned const session = input.Byte();
    unsigned const command = input.Byte();
    std::string const text(input.Rest());
    for (auto const& sent : {text, Base64::Encode(text)}) {
        if (auto const packet = Packet::Parse(sent)) Require(Packet::Parse(packet->Text()) == packet);
    }
    Packet const made{static_cast<std::uint8_t>(session), static_cast<std::uint8_t>(command), text};
    Require(Packet::Parse(made.Text()) == made);
    if (auto const response = NetworkResponse::Parse(text))
        Require(NetworkResponse::Parse(NetworkResponse::Create(response->status, response->data)) == response);
    return 0;
}
