// The keeping rule on its own: which copies of one file stay, by count, by day
// and by bytes.
#include "core/BackupKeeping.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr LocalSeconds Day = 86400;
const LocalSeconds Start = toLocalSeconds({2026, 11, 24, 10, 15, 3});

// Copies newest first: one at each of the given days before Start (and hours
// into it), each of the given size.
std::vector<KeptCopy> copiesAt(const std::vector<LocalSeconds> &ago, std::uint64_t bytes = 10)
{
    std::vector<KeptCopy> copies;
    for (const LocalSeconds back : ago) {
        copies.push_back({Start - back, bytes});
    }
    return copies;
}

std::string marks(const std::vector<bool> &kept)
{
    std::string text;
    for (const bool keep : kept) {
        text += keep ? 'k' : '-';
    }
    return text;
}

} // namespace

TEST(BackupKeeping, TheNewestThenOnePerDayForTheLatestDays)
{
    const KeepRule small{3, 2, std::nullopt, 3};
    const struct {
        const char *what;
        std::vector<LocalSeconds> ago;
        const char *expected;
    } cases[] = {
        {"fewer copies than the rule keeps", {0, 60}, "kk"},
        // Five the same day: three newest stay, and the day's newest is among them.
        {"many on one day", {0, 1, 2, 3, 4}, "kkk--"},
        // Today's three, then the newest of yesterday (the second day); the day
        // before yesterday is a third day and goes.
        {"one day beyond the newest", {0, 1, 2, 3, Day, Day + 5, 2 * Day}, "kkk-k--"},
        // Days count only when a copy was made on them: a gap of weeks is no day.
        {"days with no copy are not counted", {0, 1, 2, 30 * Day, 31 * Day, 90 * Day}, "kkkk--"},
        // The newest is at 10:15; 23:59 the evening before is within 24 hours
        // of it but on the day before, and is that day's newest.
        {"a day is a calendar day, not 24 hours",
         {0, 1, 2, 10 * 3600 + 16 * 60, 11 * 3600, 12 * 3600},
         "kkkk--"},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(marks(copiesToKeep(copiesAt(each.ago), small)), each.expected);
    }
}

TEST(BackupKeeping, PastTheByteLimitTheOldestGoButTheNewestStay)
{
    KeepRule rule;
    rule.maxBytes = 35;
    // Four copies of 10 bytes: 40 is over 35, so the oldest goes.
    EXPECT_EQ(marks(copiesToKeep(copiesAt({0, 1, 2, 3}), rule)), "kkk-");
    // Copies of 20 bytes: three make 60, over the limit, but the three newest stay.
    EXPECT_EQ(marks(copiesToKeep(copiesAt({0, 1, 2, 3, 4}, 20), rule)), "kkk--");
    // The limit counts only the copies the other rules keep: 30 of the 40 bytes.
    rule.newest = 1;
    rule.days = 3;
    rule.alwaysKept = 1;
    EXPECT_EQ(marks(copiesToKeep(copiesAt({0, 1, Day, 2 * Day}), rule)), "k-kk");
    // Without a limit nothing goes for its size.
    EXPECT_EQ(marks(copiesToKeep(copiesAt({0, 1, 2, 3}, 1'000'000'000'000), KeepRule{})), "kkkk");
}
