#pragma once

#include <chrono>

/// The wall clock, behind an interface so that tests can stop it.
class Clock {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;
    virtual TimePoint Now() const = 0;
};

class SystemClock : public Clock {
public:
    TimePoint Now() const override { return std::chrono::system_clock::now(); }
};

/// Stands still.
class FixedClock : public Clock {
public:
    explicit FixedClock(TimePoint now) : now_(now) {}
    TimePoint Now() const override { return now_; }

private:
    TimePoint now_;
};
