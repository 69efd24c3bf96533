#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "foundation/Files.h"
#include "foundation/Log.h"

// The fuzz targets, fed what once failed, what they start from, and the example streams.

#define ZPL_FUZZ_TARGET(name) extern "C" int name(std::uint8_t const* data, std::size_t size);
#include "ZplFuzzTargets.h"
#undef ZPL_FUZZ_TARGET

namespace {

struct Target {
    char const* name;
    int (*run)(std::uint8_t const* data, std::size_t size);
};

constexpr Target Targets[] = {
#define ZPL_FUZZ_TARGET(name) {#name, name},
#include "ZplFuzzTargets.h"
#undef ZPL_FUZZ_TARGET
};

std::vector<std::filesystem::path> FilesIn(std::filesystem::path const& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code none;
    for (auto const& entry : std::filesystem::directory_iterator(folder, none)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

class FuzzRegression : public testing::TestWithParam<Target> {};

TEST_P(FuzzRegression, StaysMended) {
    auto const& target = GetParam();
    unsigned inputs = 0;
    for (auto const& folder : {std::filesystem::path("fuzz/regressions") / target.name,
                               std::filesystem::path("fuzz/seeds") / target.name, std::filesystem::path("examples")}) {
        for (auto const& file : FilesIn(folder)) {
            SCOPED_TRACE(file);
            // A target ends the process where something is wrong; the last name told is the input.
            std::cout << file.string() << std::endl;
            std::string const bytes = ReadRegularFile(file);
            target.run(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
            ++inputs;
        }
    }
    EXPECT_GT(inputs, 0U);
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzRegression, testing::ValuesIn(Targets),
                         [](auto const& row) { return std::string(row.param.name); });

}  // namespace
