#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <string_view>

#include "frontend/stream/ZplTokenizer.h"

namespace {

constexpr std::size_t StreamSize = 4U << 20;    // bytes
constexpr std::size_t PacketSize = 64U << 10;   // bytes: how much of a stream arrives at once
constexpr std::size_t BinaryRun = 100U * 1218;  // bytes: a picture of 4 x 6 inches at 203 dpi

std::string Number(std::mt19937& random, unsigned below) { return std::to_string(random() % below); }

/// Labels as shops send them: many short commands, some text, a barcode.
std::string CommandStream(std::string_view text) {
    std::mt19937 random(1);
    std::string stream;
    while (stream.size() < StreamSize) {
        stream += "^XA\r\n^PW812^LL1218^LH0,0\r\n";
        for (int field = 0; field < 12; ++field) {
            stream += "^FO" + Number(random, 800) + ',' + Number(random, 1200) + "^A0N," + Number(random, 90) + ',' +
                      Number(random, 90) + "^FD";
            stream += text.substr(0, 8 + random() % (text.size() - 8));
            stream += "^FS\r\n";
        }
        stream += "^BY3,3,80^FO50,900^BCN,80,Y,N,N^FD>:" + Number(random, 1000000000) + "^FS\r\n^PQ1\r\n^XZ\r\n";
    }
    return stream;
}

std::string BinaryStream() {
    std::mt19937 random(2);
    std::string stream;
    while (stream.size() < StreamSize) {
        auto const count = std::to_string(BinaryRun);
        stream += "^XA^FO0,0^GFB," + count + ',' + count + ",100,";
        for (std::size_t i = 0; i < BinaryRun; ++i) stream += static_cast<char>(random());
        stream += "^FS^XZ";
    }
    return stream;
}

void Tokenize(benchmark::State& state, std::string const& stream, Encoding initial) {
    std::size_t commands = 0;
    for (auto _ : state) {
        ZplTokenizer tokenizer;
        Encoding encoding = initial;
        for (std::string_view rest = stream; !rest.empty();) {
            auto const packet = rest.substr(0, PacketSize);
            rest.remove_prefix(packet.size());
            for (std::size_t position = 0; position < packet.size();) {
                auto [next, command] = tokenizer.TokenizeString(packet, position, '^', '~', ',', false, encoding);
                encoding = next;
                commands += command != nullptr;
                benchmark::DoNotOptimize(command);
            }
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * stream.size()));
    state.counters["commands"] = benchmark::Counter(static_cast<double>(commands), benchmark::Counter::kIsRate);
}

constexpr std::string_view Ascii = "Deliver to: Warehouse 12, Gate 4, second floor on the left";
constexpr std::string_view Accented =
    "Stra\xC3\x9F"
    "e der Br\xC3\xBC"
    "der, 3. T\xC3\xBCr links, \xE9\x85\x8D\xE9\x80\x81\xE5\x85\x88";

void TokenizerCommands(benchmark::State& state) { Tokenize(state, CommandStream(Ascii), Encoding::SingleByte); }
void TokenizerUtf8Commands(benchmark::State& state) { Tokenize(state, CommandStream(Accented), Encoding::Utf8); }
void TokenizerBinaryRuns(benchmark::State& state) { Tokenize(state, BinaryStream(), Encoding::SingleByte); }

BENCHMARK(TokenizerCommands)->Unit(benchmark::kMillisecond);
BENCHMARK(TokenizerUtf8Commands)->Unit(benchmark::kMillisecond);
BENCHMARK(TokenizerBinaryRuns)->Unit(benchmark::kMillisecond);

}  // namespace
