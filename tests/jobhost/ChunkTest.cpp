#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "foundation/Files.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/StreamRun.h"

namespace {

// Longer streams are cut at this many seeded places and not at every byte.
constexpr std::size_t LongestCutEverywhere = 20'000 / SanitizerFactor;
constexpr std::size_t SeededCuts = 500 / SanitizerFactor;

std::vector<std::filesystem::path> Streams() {
    // A folder of one's own streams can be named, for a longer run by hand.
    char const* const named = std::getenv("ZPL_STREAMS");
    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::directory_iterator(named ? named : "examples")) {
        if (entry.path().extension() == ".zpl") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::size_t> Cuts(std::size_t size) {
    std::vector<std::size_t> cuts;
    if (size <= LongestCutEverywhere) {
        for (std::size_t i = 1; i < size; ++i) cuts.push_back(i);
        return cuts;
    }
    std::mt19937 random(1);
    for (std::size_t i = 0; i < SeededCuts; ++i) cuts.push_back(1 + random() % (size - 1));
    return cuts;
}

TEST(Chunks, OfAStreamMakeTheSameLabelsWhereverItIsCut) {
    DeskSettings options;
    options.widthInches = options.heightInches = 1;
    Desk desk(options);
    auto const streams = Streams();
    ASSERT_GE(streams.size(), 6U);
    for (auto const& file : streams) {
        std::string const stream = ReadRegularFile(file);
        StreamRun const whole = RunStream(desk, stream);
        for (std::size_t const cut : Cuts(stream.size())) {
            std::string_view const view(stream);
            ASSERT_TRUE(RunStream(desk, {view.substr(0, cut), view.substr(cut)}) == whole)
                << file << " cut at byte " << cut;
        }
    }
}

}  // namespace
