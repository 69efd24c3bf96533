#include <cstddef>
#include <cstdint>
#include <string_view>

#include "desktop/Desk.h"
#include "labels/Job.h"

/// Feeds bytes to a whole session in chunks whose lengths come from the bytes themselves, and draws what comes out on a
/// label of one inch.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Desk desk = [] {
        RenderOptions options;
        options.widthInches = 1;
        options.heightInches = 1;
        return Desk(options);
    }();
    desk.StartStream();
    auto session = desk.MakeSession();
    std::string_view rest(reinterpret_cast<char const*>(data), size);
    try {
        while (!rest.empty()) {
            // A small odd step now and then, so that commands are cut anywhere.
            std::size_t const step = 1 + static_cast<unsigned char>(rest.front()) * (rest.size() % 3) % 97;
            std::string_view chunk = rest.substr(0, step);
            rest.remove_prefix(chunk.size());
            while (!chunk.empty()) {
                auto result = session->Consume(chunk, false, rest.empty());
                chunk = result.remaining;
                if (!result.label) continue;
                // Two copies: the second goes on from the state that the first left.
                auto& label = std::get<1>(*result.label);
                label.ProcessLabel(0, false);
                label.ProcessLabel(1, true);
            }
        }
    } catch (std::exception const&) {
        // A number out of range, or too much memory: the session ends, as it does in the program.
    }
    return 0;
}
