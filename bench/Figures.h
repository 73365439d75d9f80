// The figures the benchmarks measure, each with its goal and, where the goal
// is relative, the floor measured beside it; printed as one table at the end.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

// One run: wall-clock time, and the CPU time of the process over the same span.
// With other work on the machine the wall time grows while the CPU time barely
// does, so both are kept.
struct Sample {
    double value = 0; // wall-clock ms, or the amount measured (MB)
    std::optional<double> cpu;
};
Sample operator+(const Sample &a, const Sample &b);

struct Figure {
    std::string name;
    double value = 0;               // median of the runs (wall time for times)
    std::string unit;               // "ms" or "MB"
    std::optional<double> floor;    // median of the floor's runs, same unit
    std::optional<double> cpu;      // median CPU time of the runs, when measured
    std::optional<double> floorCpu; // and of the floor's runs
    double limit = 0;               // the goal as a bound on value
    std::string goal;               // the goal as a reader states it
    int runs = 0;

    bool met() const { return value <= limit; }
    std::optional<double> ratio() const;
    std::optional<double> cpuRatio() const;
};

// Keeps the latest figure of each name, in the order first recorded.
void recordFigure(const Figure &figure);
const std::vector<Figure> &recordedFigures();

// The table of every recorded figure.
void printFigures(std::ostream &out);

// Records a figure whose goal is a multiple of its floor, and shows the floor
// and the ratio as counters on the benchmark's own line.
void reportAgainstFloor(benchmark::State &state, const std::string &name,
                        const std::vector<Sample> &samples, const std::vector<Sample> &floorSamples,
                        double factor, const std::string &unit = "ms",
                        const std::string &prefix = "");

// Records a figure whose goal is a fixed bound; a floor, when given, is shown beside it.
// A benchmark that reports several figures gives each its own counter prefix.
void reportUnder(benchmark::State &state, const std::string &name,
                 const std::vector<Sample> &samples, double limit,
                 const std::vector<Sample> &floorSamples = {}, const std::string &unit = "ms",
                 const std::string &prefix = "");

// Timing helpers: one call measured, and the median of samples.
double cpuMilliseconds();
template <typename Call> Sample measure(Call &&call)
{
    const double cpuStart = cpuMilliseconds();
    const auto start = std::chrono::steady_clock::now();
    call();
    const auto end = std::chrono::steady_clock::now();
    return {std::chrono::duration<double, std::milli>(end - start).count(),
            cpuMilliseconds() - cpuStart};
}

double median(std::vector<double> samples);
