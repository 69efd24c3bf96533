#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

/// The streams that properties of all streams are tried on: the examples, those of the golden pages, and those in the
/// folder that ZPL_STREAMS names, if it names one.
inline std::vector<std::filesystem::path> StreamFiles() {
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    char const* const further = std::getenv("ZPL_STREAMS");
    for (fs::path const folder : {"examples", "tests/golden", further ? further : ""}) {
        if (folder.empty()) continue;
        for (auto const& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() == ".zpl") files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}
