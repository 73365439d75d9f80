// Whether a child's scores in a subject are going up: the mean of the latest
// tests against the mean of the tests before them.
#pragma once

#include <string>
#include <vector>

enum class TrendDirection { TooFewTests, Up, Level, Down };

struct Trend {
    TrendDirection direction = TrendDirection::TooFewTests;
    double earlier = 0; // the mean of the tests before the latest ones
    double recent = 0;  // the mean of the latest tests
};

// The latest tests and the ones before them each number this many (fewer
// earlier ones when there are not yet that many).
constexpr int TrendTests = 5;
// Scores move a little from test to test however well a child is doing: a
// change within 5 % of the earlier mean, or within one point (small scores),
// reads as level.
constexpr double LevelTolerancePercent = 5.0;
constexpr double LevelTolerancePoints = 1.0;

// scores oldest first. Fewer than TrendTests + 1 tests give no trend.
Trend trendOf(const std::vector<int> &scores);

// "up", "level", "down", or "too few tests".
std::string trendName(TrendDirection direction);
// "up: 14.2 from 11.0", or "too few tests".
std::string trendText(const Trend &trend);
