#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

/// The bytes of a regular file; empty if there is none of that path or it cannot be read.
std::string ReadRegularFile(std::filesystem::path const& path);

/// Reads a whole file of any kind (also a pipe) into `content`; the error if that fails.
std::error_code ReadFile(std::filesystem::path const& path, std::string& content);

/// Reads standard input to its end into `content`; the error if that fails.
std::error_code ReadStandardInput(std::string& content);

/// Against what a file is whole, old or new: an end of the process alone, or a loss of power too. The second waits for
/// the disk.
enum class WholeAfter { ProcessEnd, PowerLoss };

/// A file that is written piece by piece under a temporary name in its folder and gets its own name when it is whole,
/// so that a reader sees all of it or nothing. Until then, and on an error, an earlier file of that name stands.
class AtomicFile {
public:
    /// Whether it can be made is told by Keep.
    explicit AtomicFile(std::filesystem::path path);
    /// What was not kept is gone.
    ~AtomicFile();
    AtomicFile(AtomicFile const&) = delete;
    AtomicFile& operator=(AtomicFile const&) = delete;

    /// Appends; the first error is kept, and nothing is written behind it.
    std::error_code Write(std::string_view content);
    /// Bytes written so far.
    std::uint64_t Size() const { return size_; }
    /// Ends the writing of a file that waits for its name, so that it takes none of the process's descriptors. Kept, it
    /// is whole after an end of the process.
    void Close();
    /// Lets Keep give it another name in its folder.
    void SetPath(std::filesystem::path path) { path_ = std::move(path); }
    /// Gives the file its name. The first error of all that was done, if there was one.
    std::error_code Keep(WholeAfter wholeAfter = WholeAfter::ProcessEnd);
    std::filesystem::path const& Path() const { return path_; }

    std::filesystem::path const& TemporaryPath() const { return temporary_; }
    /// Waits until the disk has the bytes of all files of its file system.
    std::error_code SyncFileSystem() const;

private:
    std::filesystem::path path_;
    std::filesystem::path temporary_;  ///< empty once it is gone
    int descriptor_;
    std::uint64_t size_ = 0;
    std::error_code error_;
};

/// Makes a file of which the name says all: a second name of `other`, for which no file has to be made and taken away,
/// or where that cannot be an empty file. One that is there stays.
std::error_code MakeMark(std::filesystem::path const& mark, std::filesystem::path const& other);

/// Waits until the disk has the names of a folder.
std::error_code SyncFolder(std::filesystem::path const& folder);

/// Writes a whole file in that way.
std::error_code WriteFileAtomically(std::filesystem::path const& path, std::string_view content,
                                    WholeAfter wholeAfter = WholeAfter::ProcessEnd);
