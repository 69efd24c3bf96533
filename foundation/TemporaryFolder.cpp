#include "foundation/TemporaryFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <random>
#include <string>
#include <system_error>

TemporaryFolder::TemporaryFolder(std::filesystem::path const& parent, std::string_view prefix) {
    constexpr char const* Digits = "0123456789abcdef";
    std::string name(prefix);
    std::random_device random;
    for (int i = 0; i < 32; ++i) name += Digits[random() % 16];
    path_ = parent / name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::filesystem::path const& TemporaryFolder::Make() const {
    if (::mkdir(path_.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), path_.parent_path().string());
    return path_;
}
