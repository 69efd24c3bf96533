#include "foundation/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

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
    /// Closes now, and tells whether the last of the data reached the disk.
    bool Close() {
        int const result = ::close(descriptor_);
        descriptor_ = -1;
        return result == 0;
    }

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

std::error_code WriteFileAtomically(std::filesystem::path const& path, std::string_view content,
                                    WholeAfter wholeAfter) {
    static std::atomic<unsigned> serial{0};
    std::filesystem::path temporary = path;
    temporary += "." + std::to_string(::getpid()) + "-" + std::to_string(++serial) + ".tmp";

    FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (file.Get() < 0) return LastError();
    // The rename may reach the disk before the bytes do.
    bool const written =
        WriteAll(file.Get(), content) && (wholeAfter == WholeAfter::ProcessEnd || ::fdatasync(file.Get()) == 0);
    if (!written || !file.Close() || ::rename(temporary.c_str(), path.c_str()) != 0) {
        std::error_code const error = LastError();
        ::unlink(temporary.c_str());
        return error;
    }
    return {};
}
