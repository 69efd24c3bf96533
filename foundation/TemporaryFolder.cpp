#include "foundation/TemporaryFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

TemporaryFolder::TemporaryFolder(std::filesystem::path const& parent, std::string_view prefix) {
    constexpr char const* Digits = "0123456789abcdef";
    std::string name(prefix);
    // Asked of the system: std::random_device asks the processor, which takes long in a virtual machine.
    std::array<unsigned char, 16> random{};
    if (::getentropy(random.data(), random.size()) != 0)
        throw std::system_error(errno, std::generic_category(), "random bytes");
    for (unsigned const byte : random) (name += Digits[byte / 16]) += Digits[byte % 16];
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
