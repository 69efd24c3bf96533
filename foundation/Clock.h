#pragma once

#include <chrono>
#include <ctime>

/// A clock of local wall time, behind an interface so that tests can stop it.
class Clock {
public:
    using TimePoint = std::chrono::system_clock::time_point;

    virtual ~Clock() = default;
    virtual TimePoint Now() const = 0;
};

/// The wall time of the machine's time zone, as a label shows it: the time point is that of a clock in UTC that reads
/// the same.
class LocalClock : public Clock {
public:
    TimePoint Now() const override {
        auto const now = std::chrono::system_clock::now();
        std::time_t const seconds = std::chrono::system_clock::to_time_t(now);
        std::tm local{};
        if (!::localtime_r(&seconds, &local)) return now;
        return now + std::chrono::seconds(local.tm_gmtoff);
    }
};

/// Stands still.
class FixedClock : public Clock {
public:
    explicit FixedClock(TimePoint now) : now_(now) {}
    TimePoint Now() const override { return now_; }

private:
    TimePoint now_;
};
