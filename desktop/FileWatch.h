#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

/// Tells of files that change. Their folders are watched, since editors put a new file in the place of an old one.
class FileWatch {
public:
    /// Throws std::system_error if a folder cannot be watched.
    explicit FileWatch(std::vector<std::string> const& files);
    ~FileWatch();
    FileWatch(FileWatch const&) = delete;
    FileWatch& operator=(FileWatch const&) = delete;

    /// Waits until files have been written, since it waited last, and gives them in their order; nothing once `isOver`,
    /// which is asked after each signal.
    std::vector<std::string> Wait(std::function<bool()> const& isOver);

private:
    std::vector<std::string> TakeChanged();

    std::vector<std::string> files_;
    std::map<std::string, int> folders_;  ///< with their watches
    int descriptor_;
};
