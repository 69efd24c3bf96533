#pragma once

#include <filesystem>
#include <optional>

#include "foundation/TemporaryFolder.h"

/// The folder for temporary files of one printer, gone when the object goes. It is locked meanwhile; those that killed
/// printers of this user have left, which nobody holds any more, are removed.
class RuntimeFolder {
public:
    /// Throws std::runtime_error if there is no place for it.
    RuntimeFolder();
    ~RuntimeFolder();
    RuntimeFolder(RuntimeFolder const&) = delete;
    RuntimeFolder& operator=(RuntimeFolder const&) = delete;

    std::filesystem::path const& Path() const { return folder_->Path(); }
    /// The property server's. Libraries look for one called "bus" in a runtime folder, and speak another language to
    /// it.
    std::filesystem::path Socket() const { return Path() / "properties"; }
    std::filesystem::path Jobs() const { return Path() / "jobs"; }

private:
    std::optional<TemporaryFolder> folder_;
    int lock_ = -1;
};
