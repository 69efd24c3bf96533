#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "library/DeskSettings.h"
#include "library/PageFormat.h"

/// What a request wants of a stream.
struct StreamOrder {
    using Clock = std::chrono::steady_clock;

    DeskSettings desk;
    std::string stream;
    PageFormat const* format = &PageFormats[0];  ///< null: a report
    std::optional<unsigned> page = 1;            ///< from 1; nothing: all of them
    unsigned copies = 1;                         ///< of one label that are drawn at most
    unsigned rotation = 0;                       ///< degrees clockwise: 0, 90, 180 or 270
    bool draws = true;                           ///< false: the report lists labels instead of pages
    bool hasPictures = false;                    ///< in the report
    Clock::time_point deadline = Clock::time_point::max();
};

struct StreamAnswer {
    std::string content;  ///< the file of the pages, or the report
    unsigned labels = 0;  ///< of the stream
    unsigned pages = 0;   ///< of all its labels
};

/// Interprets the stream on a desk of its own and draws what is wanted. Throws Refusal if it takes longer than it may,
/// or has no such page.
StreamAnswer Fulfil(StreamOrder const& order);
