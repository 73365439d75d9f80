#include "Figures.h"

#include <algorithm>
#include <cstdio>
#include <iomanip>

namespace {

std::vector<Figure> &allFigures()
{
    static std::vector<Figure> figures;
    return figures;
}

std::string withDecimals(double value, int decimals)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// Small times keep their digits; large ones need none after the point.
std::string amount(double value)
{
    return withDecimals(value, value < 1 ? 3 : value < 100 ? 2 : 0);
}

} // namespace

std::optional<double> Figure::ratio() const
{
    if (!floor || *floor <= 0)
        return std::nullopt;
    return value / *floor;
}

std::optional<double> Figure::cpuRatio() const
{
    if (!cpu || !floorCpu || *floorCpu <= 0)
        return std::nullopt;
    return *cpu / *floorCpu;
}

Sample operator+(const Sample &a, const Sample &b)
{
    Sample sum;
    sum.value = a.value + b.value;
    if (a.cpu && b.cpu)
        sum.cpu = *a.cpu + *b.cpu;
    return sum;
}

double cpuMilliseconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void recordFigure(const Figure &figure)
{
    std::vector<Figure> &figures = allFigures();
    const auto same = std::find_if(figures.begin(), figures.end(),
                                   [&](const Figure &each) { return each.name == figure.name; });
    if (same != figures.end())
        *same = figure;
    else
        figures.push_back(figure);
}

const std::vector<Figure> &recordedFigures()
{
    return allFigures();
}

void printFigures(std::ostream &out)
{
    const auto optional = [](const std::optional<double> &value, const std::string &unit) {
        return value ? amount(*value) + ' ' + unit : std::string("-");
    };
    const auto times = [](const std::optional<double> &ratio) {
        return ratio ? withDecimals(*ratio, 2) + "x" : std::string("-");
    };
    out << "\n| Figure | Median | Floor | Ratio | CPU | Floor CPU | CPU ratio | Goal | Met | Runs "
           "|\n"
        << "|---|---:|---:|---:|---:|---:|---:|---|---|---:|\n";
    for (const Figure &figure : allFigures()) {
        out << "| " << figure.name << " | " << amount(figure.value) << ' ' << figure.unit << " | "
            << optional(figure.floor, figure.unit) << " | " << times(figure.ratio()) << " | "
            << optional(figure.cpu, "ms") << " | " << optional(figure.floorCpu, "ms") << " | "
            << times(figure.cpuRatio()) << " | " << figure.goal << " | "
            << (figure.met() ? "yes" : "**no**") << " | " << figure.runs << " |\n";
    }
    out << std::flush;
}

namespace {

std::optional<double> medianCpu(const std::vector<Sample> &samples)
{
    std::vector<double> cpu;
    for (const Sample &sample : samples)
        if (sample.cpu)
            cpu.push_back(*sample.cpu);
    return cpu.size() == samples.size() && !cpu.empty() ? std::optional<double>(median(cpu))
                                                        : std::nullopt;
}

void fillMedians(Figure &figure, const std::vector<Sample> &samples,
                 const std::vector<Sample> &floorSamples)
{
    std::vector<double> wall;
    for (const Sample &sample : samples)
        wall.push_back(sample.value);
    figure.value = median(wall);
    figure.cpu = medianCpu(samples);
    if (floorSamples.empty())
        return;
    wall.clear();
    for (const Sample &sample : floorSamples)
        wall.push_back(sample.value);
    figure.floor = median(wall);
    figure.floorCpu = medianCpu(floorSamples);
}

// One benchmark may report several figures; the counters of each carry a prefix.
void showCounters(benchmark::State &state, const Figure &figure, const std::string &prefix)
{
    state.counters[prefix + figure.unit] = figure.value;
    if (figure.floor) {
        state.counters[prefix + "floor_" + figure.unit] = *figure.floor;
        state.counters[prefix + "ratio"] = *figure.ratio();
    }
    if (figure.cpu)
        state.counters[prefix + "cpu_ms"] = *figure.cpu;
    state.counters[prefix + "met"] = figure.met() ? 1 : 0;
}

} // namespace

void reportAgainstFloor(benchmark::State &state, const std::string &name,
                        const std::vector<Sample> &samples, const std::vector<Sample> &floorSamples,
                        double factor, const std::string &unit, const std::string &prefix)
{
    Figure figure;
    figure.name = name;
    figure.unit = unit;
    fillMedians(figure, samples, floorSamples);
    figure.limit = factor * *figure.floor;
    figure.goal =
        "within " + withDecimals(factor, factor == static_cast<int>(factor) ? 0 : 1) + "x floor";
    figure.runs = static_cast<int>(samples.size());
    showCounters(state, figure, prefix);
    recordFigure(figure);
}

void reportUnder(benchmark::State &state, const std::string &name,
                 const std::vector<Sample> &samples, double limit,
                 const std::vector<Sample> &floorSamples, const std::string &unit,
                 const std::string &prefix)
{
    Figure figure;
    figure.name = name;
    figure.unit = unit;
    fillMedians(figure, samples, floorSamples);
    figure.limit = limit;
    figure.goal = "under " + amount(limit) + " " + unit;
    figure.runs = static_cast<int>(samples.size());
    showCounters(state, figure, prefix);
    recordFigure(figure);
}

double median(std::vector<double> samples)
{
    if (samples.empty())
        return 0;
    const auto middle = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end());
    if (samples.size() % 2 == 1)
        return *middle;
    const double upper = *middle;
    const double lower = *std::max_element(samples.begin(), middle);
    return (lower + upper) / 2;
}
