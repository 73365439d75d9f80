#include "core/BackupKeeping.h"

namespace {

constexpr LocalSeconds SecondsPerDay = 86400;

// Days since 1970-01-01, rounding down for times before it.
LocalSeconds dayOf(LocalSeconds seconds)
{
    return seconds >= 0 ? seconds / SecondsPerDay
                        : -((-seconds + SecondsPerDay - 1) / SecondsPerDay);
}

} // namespace

std::vector<bool> copiesToKeep(const std::vector<KeptCopy> &newestFirst, const KeepRule &rule)
{
    const std::size_t count = newestFirst.size();
    std::vector<bool> kept(count, false);
    std::size_t daysSeen = 0;
    std::optional<LocalSeconds> lastDay;
    for (std::size_t i = 0; i < count; ++i) {
        const LocalSeconds day = dayOf(newestFirst[i].made);
        // Newest first, so the first copy met of a day is that day's newest.
        const bool newDay = !lastDay || day != *lastDay;
        if (newDay) {
            lastDay = day;
            ++daysSeen;
        }
        kept[i] = i < rule.newest || (newDay && daysSeen <= rule.days);
    }
    if (!rule.maxBytes) {
        return kept;
    }
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (kept[i]) {
            total += newestFirst[i].bytes;
        }
    }
    for (std::size_t i = count; i-- > rule.alwaysKept && total > *rule.maxBytes;) {
        if (kept[i]) {
            kept[i] = false;
            total -= newestFirst[i].bytes;
        }
    }
    return kept;
}
