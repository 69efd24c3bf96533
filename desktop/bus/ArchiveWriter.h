#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

/// Writes a file that is whole after a loss of power on a thread of its own, so that who has new contents need not wait
/// for the disk. Any thread.
class ArchiveWriter {
public:
    explicit ArchiveWriter(std::filesystem::path path);
    /// What was handed over is written by then.
    ~ArchiveWriter();
    ArchiveWriter(ArchiveWriter const&) = delete;
    ArchiveWriter& operator=(ArchiveWriter const&) = delete;

    /// Hands over contents, which take the place of those that wait.
    void Write(std::string content);
    /// Waits until all that was handed over is on the disk, or its failure is told.
    void Wait();

private:
    void Run();

    std::filesystem::path const path_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<std::string> waiting_;
    bool isWriting_ = false;
    bool isEnding_ = false;
    std::thread thread_;
};
