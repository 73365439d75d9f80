#include "fluency/Trend.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

double meanOf(std::vector<int>::const_iterator begin, std::vector<int>::const_iterator end)
{
    const auto count = std::distance(begin, end);
    return count == 0 ? 0.0 : std::accumulate(begin, end, 0.0) / static_cast<double>(count);
}

// One decimal place, with a point whatever the locale.
std::string tenths(double value)
{
    const long long scaled = std::llround(value * 10);
    const std::string sign = scaled < 0 ? "-" : "";
    const long long magnitude = std::llabs(scaled);
    return sign + std::to_string(magnitude / 10) + "." + std::to_string(magnitude % 10);
}

} // namespace

Trend trendOf(const std::vector<int> &scores)
{
    Trend trend;
    if (scores.size() <= std::size_t(TrendTests))
        return trend;
    const auto recentBegin = scores.end() - TrendTests;
    const auto earlierBegin =
        scores.size() >= std::size_t(2 * TrendTests) ? recentBegin - TrendTests : scores.begin();
    trend.recent = meanOf(recentBegin, scores.end());
    trend.earlier = meanOf(earlierBegin, recentBegin);
    const double tolerance =
        std::max(LevelTolerancePoints, std::abs(trend.earlier) * LevelTolerancePercent / 100.0);
    const double change = trend.recent - trend.earlier;
    trend.direction = std::abs(change) <= tolerance ? TrendDirection::Level
                      : change > 0                  ? TrendDirection::Up
                                                    : TrendDirection::Down;
    return trend;
}

std::string trendName(TrendDirection direction)
{
    switch (direction) {
    case TrendDirection::Up:
        return "up";
    case TrendDirection::Level:
        return "level";
    case TrendDirection::Down:
        return "down";
    case TrendDirection::TooFewTests:
        break;
    }
    return "too few tests";
}

std::string trendText(const Trend &trend)
{
    if (trend.direction == TrendDirection::TooFewTests)
        return trendName(trend.direction);
    return trendName(trend.direction) + ": " + tenths(trend.recent) + " from " +
           tenths(trend.earlier);
}
