// The heat map's one colour scale, light blue for the lowest High at a level to
// dark blue for the highest. Its lightness falls steadily, so a copy printed in
// grey keeps the order, and the number on a cell gets the text colour that
// reads best on it.
#pragma once

#include <QColor>

// The shade for a position 0 (lowest) .. 1 (highest); outside values are clamped.
QColor heatColour(double shade);

// Black or white, whichever contrasts more with the background.
QColor textColourOn(const QColor &background);

// The contrast ratio of two colours as the web's accessibility guidelines define
// it: 1 for the same colour up to 21 for black on white.
double contrastRatio(const QColor &a, const QColor &b);
