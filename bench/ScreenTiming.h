// Timing a step of a screen: the handler itself, and the handler followed by
// the frame that shows its result (layout and painting of what it changed).
#pragma once

#include "Figures.h"

#include <QCoreApplication>

struct StepTimes {
    Sample step;  // the handler alone
    Sample frame; // the handler and the frame drawn after it
};

template <typename Step> StepTimes timeStepAndFrame(Step &&step)
{
    StepTimes times;
    times.step = measure(step);
    times.frame = times.step + measure([] { QCoreApplication::processEvents(); });
    return times;
}

// Lets a freshly shown window be laid out and painted before timing starts.
inline void settleWindows()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}
