#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktop/web/WebOptions.h"
#include "library/VirtualTag.h"

/// The options of `zpl serve`.
struct ServeOptions {
    std::string host = "127.0.0.1";
    unsigned port = 9100;
    std::filesystem::path outputFolder = ".";
    std::filesystem::path stateFolder;    ///< the user's own unless one is named
    std::filesystem::path programFolder;  ///< of this program, where its processes are found from
    unsigned dpi = 203;
    double widthInches = 4;
    double heightInches = 6;
    double speed = 6;
    std::optional<VirtualTag> tag;  ///< that every label carries; without one there is no tag encoder
    bool pauseOnStart = false;
    bool preview = false;
    bool screen = false;
    bool json = false;    ///< tells events as JSON, one object a line
    bool answers = true;  ///< whether clients are answered
    WebOptions web = {};
    bool help = false;
};
