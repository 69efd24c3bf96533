#include <string>

#include "desktop/serve/StreamWatch.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzDesk.h"
#include "jobhost/model/PrintStream.h"

// The watch at the door and the host read one stream: behind every byte they agree on whether a format is open, where
// it began and how many have ended. So nothing is cut amid a format, and nobody waits for an end that has come.

namespace {

/// What a recalled format sets, the watch does not see: it does not know what is stored. Questions by name are the
/// door's.
bool IsLeftOut(std::string_view stream) {
    std::string letters;
    for (char const c : stream) {
        if (c != '\0') letters += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    }
    auto const holds = [&](char const* text) { return letters.find(text) != letters.npos; };
    return (holds("DF") && holds("XF")) || holds("! U1 ");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const stream(reinterpret_cast<char const*>(data), size);
    if (IsLeftOut(stream)) return 0;
    Desk& desk = EmptyDesk();
    Zpl::Host::PrintStream host([&] { return desk.MakeSession(); });
    StreamWatch watch{StreamState()};
    std::uint64_t formats = 0;
    bool wasInFormat = false;
    for (std::size_t i = 0; i < stream.size(); ++i) {
        auto const progress = watch.Read(stream.substr(i, 1));
        Require(progress.read == 1);
        // What the door answers itself it takes out of the stream.
        if (progress.question && progress.question->kind != StreamWatch::Question::Kind::Host) return 0;
        for (auto rest = stream.substr(i, 1); !rest.empty();) rest = host.Consume(rest, false, false).remaining;

        bool const isInFormat = host.Current().IsInFormat();
        if (wasInFormat && !isInFormat) ++formats;
        wasInFormat = isInFormat;
        Require(watch.Formats() == formats);
        Require(!isInFormat || (watch.InFormat() && watch.SafeCut() <= host.Current().FormatOffset().value_or(i)));
        Require(isInFormat || !watch.InFormat() || watch.SafeCut() >= host.Current().LastCommandOffset());
    }
    return 0;
}
