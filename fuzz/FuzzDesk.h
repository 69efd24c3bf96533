#pragma once

#include <unistd.h>

#include "library/Desk.h"

/// Where the pages of a run go; the next run writes over them.
inline std::filesystem::path const& PageFolder() {
    static TemporaryFolder const folder(std::filesystem::temp_directory_path(), "fuzz-pages-");
    return folder.Make();
}

/// A desk with labels of one inch and a clock that stands still, made once; nothing is stored on it when a run begins.
inline Desk& EmptyDesk() {
    static Desk desk = [] {
        DeskSettings options;
        options.widthInches = 1;
        options.heightInches = 1;
        options.time = std::chrono::system_clock::time_point{};
        options.tag = VirtualTag::Parse("blank");
        options.machine.jobsFolder = PageFolder();
        return Desk(options);
    }();
    std::error_code ignored;
    for (auto const& device : std::filesystem::directory_iterator(desk.FormatsFolder(), ignored))
        std::filesystem::remove_all(device, ignored);
    desk.StartStream();
    return desk;
}
