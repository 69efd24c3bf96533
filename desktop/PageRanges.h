#pragma once

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

/// Pages of a run that are wanted, counted from 1; all of them as long as none are named.
class PageRanges {
public:
    void Add(unsigned first, unsigned last) { ranges_.emplace_back(first, last); }
    bool AreAll() const { return ranges_.empty(); }
    bool Hold(unsigned page) const { return AreAll() || LastOf(page, page).has_value(); }

    /// The last one that is wanted of the pages from `first` to `last`.
    std::optional<unsigned> LastOf(unsigned first, unsigned last) const {
        if (AreAll()) return last;
        std::optional<unsigned> found;
        for (auto const& [from, to] : ranges_) {
            unsigned const end = std::min(to, last);
            if (std::max(from, first) <= end) found = std::max(found.value_or(0), end);
        }
        return found;
    }

private:
    std::vector<std::pair<unsigned, unsigned>> ranges_;
};
