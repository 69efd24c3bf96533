#pragma once

#include <filesystem>
#include <string_view>

/// A folder of a name of its own, one that nobody can guess and take, which goes with all that is in it when the object
/// does. Making a folder and removing it takes a disk longer than drawing a label: so it is made when it is asked for,
/// or by who writes into it.
class TemporaryFolder {
public:
    TemporaryFolder(std::filesystem::path const& parent, std::string_view prefix);
    ~TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    std::filesystem::path const& Path() const { return path_; }
    /// Makes it for this user alone, if it is not there. Throws std::system_error.
    std::filesystem::path const& Make() const;

private:
    std::filesystem::path path_;
};
