#include "propertybus/SocketAddress.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

SocketAddress::SocketAddress(std::filesystem::path const& path) {
    std::string name = path.string();
    if (name.size() >= sizeof address_.sun_path) {
        folder_ = ::open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (folder_ < 0) throw std::system_error(errno, std::generic_category(), path.parent_path().string());
        name = "/proc/self/fd/" + std::to_string(folder_) + '/' + path.filename().string();
    }
    if (name.size() >= sizeof address_.sun_path) {
        ::close(folder_);
        throw std::system_error(ENAMETOOLONG, std::generic_category(), path.string());
    }
    address_.sun_family = AF_UNIX;
    std::memcpy(address_.sun_path, name.c_str(), name.size() + 1);
}

SocketAddress::~SocketAddress() {
    if (folder_ >= 0) ::close(folder_);
}
