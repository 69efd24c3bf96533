#pragma once

#include <chrono>

/// Shows how far a long run is, on a terminal only, and only once it has taken a moment.
class Progress {
public:
    explicit Progress(bool enabled);
    ~Progress();
    void Page(unsigned pages);
    /// Takes the line away, before something else is written.
    void Clear();

private:
    bool enabled_;
    bool shown_ = false;
    std::chrono::steady_clock::time_point next_;
};
