// Runs every benchmark on the offscreen platform, so no display is needed and
// painting costs the same on every machine, then prints the table of figures.
#include "Figures.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <iostream>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    printFigures(std::cout);
    return 0;
}
