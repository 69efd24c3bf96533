#include "foundation/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <utility>

namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

/// Closes what it holds.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor const&) = delete;
    FileDescriptor& operator=(FileDescriptor const&) = delete;
    ~FileDescriptor() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    int Get() const { return descriptor_; }

private:
    int descriptor_;
};

bool WriteAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        ssize_t const written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Input without an end, as from a device of zeros, ends here.
constexpr std::size_t LargestFile = 1024UL * 1024 * 1024;

std::error_code ReadAll(int descriptor, std::string& content) {
    content.clear();
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && status.st_size > 0)
        content.reserve(static_cast<std::size_t>(status.st_size) + 1);
    for (;;) {
        constexpr std::size_t Step = 64UL * 1024;
        std::size_t const size = content.size();
        if (size > LargestFile) return std::make_error_code(std::errc::file_too_large);
        std::size_t const room = content.capacity() > size ? content.capacity() - size : Step;
        content.resize(size + room);
        ssize_t const count = ::read(descriptor, content.data() + size, room);
        content.resize(size + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count == 0) return {};
        if (count < 0 && errno != EINTR) return LastError();
    }
}

}  // namespace

std::error_code ReadFile(std::filesystem::path const& path, std::string& content) {
    content.clear();
    FileDescriptor const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return file.Get() < 0 ? LastError() : ReadAll(file.Get(), content);
}

std::error_code ReadStandardInput(std::string& content) { return ReadAll(STDIN_FILENO, content); }

std::string ReadRegularFile(std::filesystem::path const& path) {
    std::error_code error;
    std::string content;
    if (!std::filesystem::is_regular_file(path, error) || ReadFile(path, content)) content.clear();
    return content;
}

AtomicFile::AtomicFile(std::filesystem::path path) : path_(std::move(path)), temporary_(path_) {
    static std::atomic<unsigned> serial{0};
    temporary_ += "." + std::to_string(::getpid()) + "-" + std::to_string(++serial) + ".tmp";
    descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (descriptor_ >= 0) return;
    error_ = LastError();
    temporary_.clear();
}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

std::error_code AtomicFile::Write(std::string_view content) {
    if (error_) return error_;
    if (!WriteAll(descriptor_, content)) error_ = LastError();
    size_ += content.size();
    return error_;
}

void AtomicFile::Close() {
    if (descriptor_ >= 0 && ::close(std::exchange(descriptor_, -1)) != 0 && !error_) error_ = LastError();
}

std::error_code AtomicFile::Keep(WholeAfter wholeAfter) {
    // The rename may reach the disk before the bytes do.
    bool const waits = !error_ && descriptor_ >= 0 && wholeAfter == WholeAfter::PowerLoss;
    if (waits && ::fdatasync(descriptor_) != 0) error_ = LastError();
    Close();
    if (error_) return error_;
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) return error_ = LastError();
    temporary_.clear();
    return {};
}

std::error_code AtomicFile::SyncFileSystem() const {
    return ::syncfs(descriptor_) == 0 ? std::error_code() : LastError();
}

std::error_code MakeMark(std::filesystem::path const& mark, std::filesystem::path const& other) {
    if (::link(other.c_str(), mark.c_str()) == 0 || errno == EEXIST) return {};
    return WriteFileAtomically(mark, {});
}

std::error_code SyncFolder(std::filesystem::path const& folder) {
    FileDescriptor const open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return open.Get() >= 0 && ::fsync(open.Get()) == 0 ? std::error_code() : LastError();
}

std::error_code WriteFileAtomically(std::filesystem::path const& path, std::string_view content,
                                    WholeAfter wholeAfter) {
    AtomicFile file(path);
    file.Write(content);
    return file.Keep(wholeAfter);
}
