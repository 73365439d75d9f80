#include "core/HistoryClock.h"

#include <chrono>
#include <ctime>

std::int64_t SystemClock::localMilliseconds()
{
    using namespace std::chrono;
    const auto now = time_point_cast<milliseconds>(system_clock::now());
    const std::time_t seconds = system_clock::to_time_t(now);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    const CivilTime civil{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                          local.tm_hour,        local.tm_min,     local.tm_sec};
    const auto millisecond = now.time_since_epoch().count() % 1000;
    return toLocalSeconds(civil) * 1000 + (millisecond < 0 ? millisecond + 1000 : millisecond);
}

std::int64_t SystemClock::steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

ManualClock::ManualClock(const CivilTime &start) : m_local(toLocalSeconds(start) * 1000)
{
}

void ManualClock::advance(std::int64_t milliseconds)
{
    m_local += milliseconds;
    m_steady += milliseconds;
}

void ManualClock::setLocalTime(const CivilTime &time)
{
    const std::int64_t local = toLocalSeconds(time) * 1000;
    if (local > m_local)
        m_steady += local - m_local;
    m_local = local;
}
