#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/stream/ZplTokenizer.h"

// The first byte chooses the encoding, the second the cuts: however a stream is cut, its commands are the same.

namespace {

std::vector<ZplCommand> Tokenize(std::string_view stream, Encoding encoding, std::size_t chunkSize, bool flush) {
    std::vector<ZplCommand> commands;
    ZplTokenizer tokenizer;
    while (!stream.empty()) {
        auto const chunk = stream.substr(0, chunkSize);
        stream.remove_prefix(chunk.size());
        for (std::size_t position = 0; position < chunk.size();) {
            auto const before = position;
            auto [next, command] =
                tokenizer.TokenizeString(chunk, position, '^', '~', ',', flush && stream.empty(), encoding);
            if (position <= before || position > chunk.size() || tokenizer.CommandOffset() > 1U << 30) std::abort();
            encoding = next;
            if (command) commands.push_back(std::move(*command));
        }
    }
    return commands;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 2) return 0;
    auto const encoding = static_cast<Encoding>(data[0] & 3);
    bool const flush = (data[0] & 4) != 0;
    std::size_t const chunkSize = std::size_t{data[1]} + 1;
    std::string_view const stream(reinterpret_cast<char const*>(data + 2), size - 2);
    auto const whole = Tokenize(stream, encoding, stream.size() + 1, flush);
    if (Tokenize(stream, encoding, chunkSize, flush) != whole || Tokenize(stream, encoding, 1, flush) != whole) {
        std::abort();
    }
    return 0;
}
