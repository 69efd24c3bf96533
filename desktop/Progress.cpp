#include "desktop/Progress.h"

#include <unistd.h>

#include <cstdio>

namespace {
constexpr auto Patience = std::chrono::milliseconds(500);
constexpr auto Interval = std::chrono::milliseconds(100);
}  // namespace

Progress::Progress(bool enabled)
    : enabled_(enabled && ::isatty(STDERR_FILENO) == 1), next_(std::chrono::steady_clock::now() + Patience) {}

Progress::~Progress() { Clear(); }

void Progress::Page(unsigned pages) {
    if (!enabled_) return;
    auto const now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + Interval;
    shown_ = true;
    std::fprintf(stderr, "\r%u pages ...", pages);
    std::fflush(stderr);
}

void Progress::Clear() {
    if (!shown_) return;
    std::fputs("\r\033[K", stderr);
    shown_ = false;
}
