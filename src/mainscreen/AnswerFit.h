// Multiple-choice answers are read from a distance, so they are set large; an
// answer too wide for the screen is set smaller, down to a size a child still
// reads easily, instead of pushing the window past the edge of the screen.
#pragma once

#include <array>

class QRadioButton;

// Sets the four answers in one font size: the largest from largestPoints down to
// smallestPoints at which the widest of them fits in width pixels. Past the
// smallest size a long answer is cut off at the right; its text is kept whole.
void fitAnswers(const std::array<QRadioButton *, 4> &answers, int width, int largestPoints,
                int smallestPoints);
