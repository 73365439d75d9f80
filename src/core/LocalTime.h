// Dates and times as the history keeps them: seconds since 1970-01-01 00:00:00 on
// the local wall clock, with no time zone, so that a test taken at 10:15 reads
// 10:15 whatever the zone or the daylight-saving rules are later.
#pragma once

#include <cstdint>
#include <string>

using LocalSeconds = std::int64_t;

struct CivilTime {
    int year = 1970;
    int month = 1; // 1..12
    int day = 1;   // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

LocalSeconds toLocalSeconds(const CivilTime &time);
CivilTime toCivilTime(LocalSeconds seconds);

// "2026-11-25T10:15:03"
std::string isoLocalTime(LocalSeconds seconds);
