#include "desktop/serve/RuntimeFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace {

constexpr char const* Prefix = "zpl-serve-";

/// The descriptor of a folder of this user that nobody else holds; -1 if it is none.
int LockedFolder(std::filesystem::path const& path) {
    int const descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status {};
    bool const isOwn = descriptor >= 0 && ::fstat(descriptor, &status) == 0 && status.st_uid == ::geteuid();
    if (isOwn && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
    ::close(descriptor);
    return -1;
}

void RemoveAbandoned(std::filesystem::path const& parent) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(parent, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().filename().string().starts_with(Prefix)) continue;
        int const lock = LockedFolder(entry->path());
        if (lock < 0) continue;
        std::error_code ignored;
        std::filesystem::remove_all(entry->path(), ignored);
        ::close(lock);
    }
}

}  // namespace

RuntimeFolder::RuntimeFolder() {
    std::error_code error;
    auto const parent = std::filesystem::temp_directory_path(error);
    if (error) throw std::runtime_error("there is no folder for temporary files; TMPDIR names one");
    RemoveAbandoned(parent);
    do {
        // Another printer that starts at this moment may find the folder while nobody holds it, and remove it.
        if (lock_ >= 0) ::close(lock_);
        try {
            folder_.emplace(parent, Prefix).Make();
        } catch (std::system_error const& failure) {
            throw std::runtime_error("cannot write " + parent.string() + ": " + failure.code().message() +
                                     "; TMPDIR names another folder for temporary files");
        }
        lock_ = LockedFolder(Path());
    } while (lock_ < 0 || !std::filesystem::exists(Path(), error));
}

RuntimeFolder::~RuntimeFolder() {
    folder_.reset();
    ::close(lock_);
}
