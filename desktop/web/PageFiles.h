#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "desktop/web/Router.h"

/// The files that the page in the browser is made of. Which ones there are is looked up once, so that no name of a
/// request ever becomes that of a file.
class PageFiles {
public:
    /// The files below `folder` stand below `path`; it may be missing.
    void Add(std::string const& path, std::filesystem::path const& folder);
    /// One door for each of them, and one for the page itself.
    std::vector<Door> List() const;

private:
    std::map<std::string, std::filesystem::path> files_;  ///< by path
};
