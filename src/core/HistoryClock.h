// The clock the history reads: the local date and time an answer is given, and
// a clock that never jumps for how long it took. Tests set the time by hand.
#pragma once

#include "core/LocalTime.h"

#include <cstdint>

class HistoryClock {
public:
    virtual ~HistoryClock() = default;
    // Milliseconds since 1970-01-01 00:00:00 on the local wall clock (see LocalTime.h).
    virtual std::int64_t localMilliseconds() = 0;
    // Milliseconds from any fixed point; never goes back, whatever the wall clock does.
    virtual std::int64_t steadyMilliseconds() = 0;
};

class SystemClock final : public HistoryClock {
public:
    std::int64_t localMilliseconds() override;
    std::int64_t steadyMilliseconds() override;
};

// A clock that moves only when told to.
class ManualClock final : public HistoryClock {
public:
    explicit ManualClock(const CivilTime &start = {2026, 11, 25, 10, 15, 0});

    // Moves both clocks on.
    void advance(std::int64_t milliseconds);
    // Sets the wall clock (the next day, say); the steady clock moves on by as much
    // when that is later, and stays where it is otherwise.
    void setLocalTime(const CivilTime &time);

    std::int64_t localMilliseconds() override { return m_local; }
    std::int64_t steadyMilliseconds() override { return m_steady; }

private:
    std::int64_t m_local;
    std::int64_t m_steady = 0;
};
