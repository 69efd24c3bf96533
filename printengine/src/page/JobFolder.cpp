#include "printengine/src/page/JobFolder.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <string>

namespace PrintEngine::Pages {

namespace {

constexpr std::size_t MaxNameLength = 64;

/// Job names come from streams, so a name never says where: only letters, digits, '_' and '-' pass.
std::string HarmlessName(std::string_view name) {
    std::string result;
    for (char const c : name.substr(0, MaxNameLength)) {
        bool const harmless = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
        result += harmless ? c : '_';
    }
    return result.empty() ? "job" : result;
}

}  // namespace

std::filesystem::path MakeJobFolder(std::filesystem::path const& jobsFolder, std::string_view jobName,
                                    std::error_code& error) {
    static std::atomic<unsigned> serial{0};
    std::filesystem::create_directories(jobsFolder, error);
    if (error) return {};
    std::string const name = HarmlessName(jobName) + "-" + std::to_string(::getpid()) + "-";
    for (;;) {
        // Folders of an earlier process of the same id may still lie there.
        std::filesystem::path path = jobsFolder / (name + std::to_string(++serial));
        if (std::filesystem::create_directory(path, error)) return path;
        if (error && error != std::errc::file_exists) return {};
    }
}

}  // namespace PrintEngine::Pages
