#pragma once

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <system_error>

/// A fresh folder that is removed with all it holds.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zpltest.XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::filesystem::filesystem_error("mkdtemp", name, std::error_code());
        path_ = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    std::filesystem::path const& Path() const { return path_; }

private:
    std::filesystem::path path_;
};
