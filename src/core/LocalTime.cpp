#include "core/LocalTime.h"

#include <cstdio>

namespace {

constexpr std::int64_t SecondsPerDay = 86400;

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar, counted in
// 400-year eras that begin on 1 March so that the leap day ends each era's year
// (H. Hinnant's days_from_civil).
std::int64_t daysFromCivil(std::int64_t year, unsigned month, unsigned day)
{
    year -= month <= 2;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const auto yearOfEra = static_cast<unsigned>(year - era * 400);
    const unsigned dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + static_cast<std::int64_t>(dayOfEra) - 719468;
}

} // namespace

LocalSeconds toLocalSeconds(const CivilTime &time)
{
    const std::int64_t days = daysFromCivil(time.year, static_cast<unsigned>(time.month),
                                            static_cast<unsigned>(time.day));
    return days * SecondsPerDay + time.hour * 3600 + time.minute * 60 + time.second;
}

CivilTime toCivilTime(LocalSeconds seconds)
{
    std::int64_t days = seconds / SecondsPerDay;
    std::int64_t inDay = seconds % SecondsPerDay;
    if (inDay < 0) {
        inDay += SecondsPerDay;
        --days;
    }
    // The inverse of DaysFromCivil (H. Hinnant's civil_from_days).
    days += 719468;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const auto dayOfEra = static_cast<unsigned>(days - era * 146097);
    const unsigned yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned shiftedMonth = (5 * dayOfYear + 2) / 153;
    CivilTime time;
    time.day = static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
    time.month = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    time.year =
        static_cast<int>(static_cast<std::int64_t>(yearOfEra) + era * 400 + (time.month <= 2));
    time.hour = static_cast<int>(inDay / 3600);
    time.minute = static_cast<int>(inDay / 60 % 60);
    time.second = static_cast<int>(inDay % 60);
    return time;
}

std::string isoLocalTime(LocalSeconds seconds)
{
    const CivilTime t = toCivilTime(seconds);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", t.year, t.month, t.day,
                  t.hour, t.minute, t.second);
    return text;
}
