#include <algorithm>
#include <string>
#include <vector>

#include "desktop/bus/PropertyStore.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzDesk.h"

// The bytes of peers on the property bus. However they are cut they are the same lines; a message that can be read is
// written and read again as the same; and each write is answered once, whatever else happens on the bus. In the bytes
// a line of one digit says which of the peers goes on, and an empty one that the peer is gone.

namespace {

std::vector<std::string> Lines(std::string_view bytes, bool inPieces) {
    constexpr std::size_t Longest = 300;
    PiclLines lines(Longest);
    std::vector<std::string> taken;
    auto const take = [&](std::string_view line) { taken.emplace_back(line); };
    unsigned passedOver = 0;
    auto const append = [&](std::string_view piece, bool) { passedOver += lines.Append(piece, take); };
    if (inPieces) {
        CutAnywhere(bytes, append);
    } else {
        append(bytes, true);
    }
    taken.push_back(std::to_string(passedOver));
    return taken;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const bytes(reinterpret_cast<char const*>(data), size);
    auto const lines = Lines(bytes, true);
    Require(lines == Lines(bytes, false));

    unsigned answers = 0;
    PropertyStore::Peer peer = 1;
    auto const archive = PageFolder() / "archive";
    PropertyStore store(archive, [&](PropertyStore::Peer to, PiclMessage const& message) {
        Require(PiclMessage::Parse(message.Text()) == message);
        if (message.type == PiclMessage::Type::Taken && to == peer) ++answers;
    });
    for (auto const& line : lines) {
        if (line.empty()) store.Remove(peer);
        if (line.size() == 1) peer = 1 + line[0] % 3;
        auto const message = PiclMessage::Parse(line);
        if (!message) continue;
        Require(PiclMessage::Parse(message->Text()) == message);
        answers = 0;
        store.Handle(peer, *message);
        Require(answers == (message->type == PiclMessage::Type::Set ? 1 : 0));
    }
    if (store.HasChanges()) store.WriteChanges();
    std::filesystem::remove(archive);
    return 0;
}
