#pragma once

#include "tests/printengine/Picture.h"
#include "tests/support/StreamRun.h"

/// For pages that look the same on every machine and every day: 2026-01-02 03:04:05.
inline DeskSettings StillOptions(unsigned dpi = 203) {
    DeskSettings options;
    options.designDpi = options.printerDpi = dpi;
    using namespace std::chrono_literals;
    auto const time = std::chrono::sys_days(std::chrono::year(2026) / 1 / 2) + 3h + 4min + 5s;
    options.time = time;
    return options;
}

inline std::unique_ptr<Desk> MakeStillDesk(unsigned dpi = 203) { return std::make_unique<Desk>(StillOptions(dpi)); }

/// What is drawn on each label of a stream.
inline std::vector<Picture> DrawPages(Desk& desk, std::string_view stream) {
    std::vector<Picture> pages;
    for (auto const& label : RunStream(desk, stream).labels)
        pages.push_back(Picture::FromPacked(label.rows, static_cast<int>(label.width), static_cast<int>(label.height)));
    return pages;
}
