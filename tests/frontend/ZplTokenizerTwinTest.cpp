#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/stream/ZplTokenizer.h"
#include "tests/support/CommandDump.h"
#include "tests/support/Texts.h"

// The tokenizer takes runs of bytes in one piece. Its twin here gives every byte to the two state machines; both must
// deliver the same, whatever the stream and however it is cut.

namespace {

class TwinTokenizer {
public:
    std::pair<Encoding, std::unique_ptr<ZplCommand>> TokenizeString(std::string_view input, std::size_t& position,
                                                                    char formatPrefix, char controlPrefix,
                                                                    char delimiter, bool flushAtEnd,
                                                                    Encoding encoding) {
        auto const wide = [](char c) { return static_cast<char32_t>(static_cast<unsigned char>(c)); };
        while (position < input.size()) {
            auto const result = utf_.Consume(input[position++], encoding, machine_.IsInBinaryMode());
            encoding = result.encoding;
            if (!result.complete) continue;
            auto command =
                machine_.Consume(result.character, wide(formatPrefix), wide(controlPrefix), wide(delimiter), encoding);
            if (command) return {encoding, std::move(command)};
        }
        return {encoding, flushAtEnd ? machine_.Flush() : nullptr};
    }

private:
    UtfStateMachine utf_;
    ZplTokenizerStateMachine machine_;
};

std::string RandomStream(std::mt19937& random, std::size_t pieces) {
    static auto const words = Parts(
        "^|^|~|,|,|^FO10,20|^FDSome text|^XA|^XZ|~HS|~SD15.5|~RVabc|^CC|~CT|^GFB,1,9,1,|^GFB,1,40,1,|"
        "^GFA,1,9,1,|^gf|\r\n|\xEF\xBB|\xEF\xBB\xBF|\xFF\xFE|\xFE\xFF|\xC3\xA4|\xE9\x85\x8D|+|;|B|7|\xE4|"
        "\xBF|\xFF|long text without any prefix in it");
    std::string stream;
    for (std::size_t i = 0; i < pieces; ++i) {
        if (random() % 8 == 0) {
            stream += static_cast<char>(random());
        } else if (random() % 16 == 0) {
            stream += '\0';
        } else {
            stream += words[random() % words.size()];
        }
    }
    return stream;
}

/// All that a tokenizer delivers, where each call stopped, and the encodings in force. Cuts, flushes and changes of
/// encoding by the caller are drawn from `seed`.
template <typename Tokenizer>
std::vector<std::string> Deliver(std::string_view stream, std::string_view characters, std::size_t longestChunk,
                                 unsigned seed) {
    std::mt19937 random(seed);
    Tokenizer tokenizer;
    auto encoding = static_cast<Encoding>(random() % 4);
    std::vector<std::string> deliveries;
    while (!stream.empty()) {
        auto const chunk = stream.substr(0, 1 + random() % longestChunk);
        stream.remove_prefix(chunk.size());
        bool const flush = random() % 64 == 0;
        for (std::size_t position = 0; position < chunk.size();) {
            auto [next, command] =
                tokenizer.TokenizeString(chunk, position, characters[0], characters[1], characters[2], flush, encoding);
            encoding = random() % 32 == 0 ? static_cast<Encoding>(random() % 4) : next;
            deliveries.push_back((command ? Dump(*command) : "-") + " " + std::to_string(position) + " " +
                                 std::to_string(static_cast<int>(next)));
        }
    }
    return deliveries;
}

}  // namespace

TEST(ZplTokenizerTwin, DeliversTheSame) {
    // The odd ones cannot be chosen by a command, but nothing here relies on that.
    for (std::string_view const characters : {"^~,", "+-;", "^^,", "^~^", "\xEF~,", "^\n\r", "^~\xE4", "aX7"}) {
        for (unsigned seed = 0; seed < 400; ++seed) {
            std::mt19937 random(seed);
            std::string const stream = RandomStream(random, 300);
            std::size_t const longestChunk = seed % 3 == 0 ? 3 : stream.size();
            ASSERT_EQ(Deliver<ZplTokenizer>(stream, characters, longestChunk, seed),
                      Deliver<TwinTokenizer>(stream, characters, longestChunk, seed))
                << "characters " << characters << ", seed " << seed;
        }
    }
}
