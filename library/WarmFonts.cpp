#include "library/WarmFonts.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <utility>

namespace WarmFonts {

namespace {

constexpr std::size_t Most = 8;

struct Kept {
    std::mutex mutex;
    std::deque<std::pair<std::string, std::unique_ptr<Fonts>>> list;  ///< the oldest first
};

/// Never destroyed: desks may be closed while the process ends.
Kept& All() {
    static auto& kept = *new Kept;
    return kept;
}

}  // namespace

std::unique_ptr<Fonts> Take(std::string const& settings) {
    auto& kept = All();
    std::lock_guard const lock(kept.mutex);
    auto const found =
        std::find_if(kept.list.rbegin(), kept.list.rend(), [&](auto const& entry) { return entry.first == settings; });
    if (found == kept.list.rend()) return nullptr;
    auto fonts = std::move(found->second);
    kept.list.erase(std::next(found).base());
    return fonts;
}

void Keep(std::string settings, std::unique_ptr<Fonts> fonts) noexcept try {
    auto& kept = All();
    std::lock_guard const lock(kept.mutex);
    kept.list.emplace_back(std::move(settings), std::move(fonts));
    if (kept.list.size() > Most) kept.list.pop_front();
} catch (std::exception const&) {
    // Without memory for it they go.
}

}  // namespace WarmFonts
