#include "desktop/serve/RepeatLimit.h"

#include <algorithm>
#include <utility>

#include "frontend/stream/Ascii.h"

bool RepeatLimit::Admits(std::string_view sentence) {
    std::string key(sentence);
    std::erase_if(key, IsAsciiDigit);
    auto found = kinds_.find(key);
    if (found == kinds_.end()) {
        bool const isRoom = kinds_.size() < MostKinds;
        found = kinds_.try_emplace(isRoom ? std::move(key) : std::string(), Kind{std::string(sentence)}).first;
    }
    return ++found->second.times <= Most;
}

std::vector<std::string> RepeatLimit::EndPeriod() {
    std::vector<std::string> lines;
    for (auto const& [key, kind] : std::exchange(kinds_, {})) {
        if (kind.times <= Most) continue;
        bool const isOne = !key.empty();
        lines.push_back("... and " + std::to_string(kind.times - Most) + " more " +
                        (isOne ? "like it: " + kind.first : std::string("of other kinds")));
    }
    return lines;
}
