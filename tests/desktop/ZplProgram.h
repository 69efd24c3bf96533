#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Files.h"
#include "tests/support/TemporaryDirectory.h"

/// A run of the program itself, as a user does it.
struct Outcome {
    int code;
    std::string out;
    std::string err;
};

class ZplProgram : public testing::Test {
protected:
    /// Runs `zpl ARGUMENTS` by the shell in the test's folder; `before` stands in front of it.
    Outcome Run(std::string const& arguments, std::string const& before = "") {
        std::string const command = "cd '" + folder_.Path().string() + "' && { " + before + " '" ZPL_PROGRAM "' " +
                                    arguments + "; } >.out 2>.err </dev/null";
        int const status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadRegularFile(folder_ / ".out"),
                ReadRegularFile(folder_ / ".err")};
    }

    Outcome Render(std::string const& stream, std::string const& options = "") {
        WriteFileAtomically(folder_ / "in.zpl", stream);
        return Run("render in.zpl --size 1x1in " + options);
    }

    /// The files that a run left, without those of the test itself.
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(folder_.Path())) {
            std::string const name = entry.path().filename().string();
            if (name != "in.zpl" && name != ".out" && name != ".err") names.push_back(name);
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryDirectory folder_;
};

inline std::string FromHex(std::string_view digits) {
    std::string bytes;
    for (; !digits.empty(); digits.remove_prefix(2))
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(0, 2)), nullptr, 16));
    return bytes;
}

inline constexpr char const* TwoLabels = "^XA^PQ2^FO20,20^A0N,40,40^FDone^FS^XZ^XA^FO20,20^FDtwo^FS^XZ";
