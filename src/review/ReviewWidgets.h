// The fonts and buttons the review and the practice panels share with the
// main screen they sit on.
#pragma once

#include <QFont>
#include <QString>

class QPushButton;

namespace ReviewWidgets {

// Large enough for a child to read from a little way off, as the main
// screen's verdicts are.
constexpr int LinePoints = 20;
constexpr int ButtonPoints = 16;

QFont arial(int points, bool bold = false);
// A named button that Enter presses as well as the Space bar.
QPushButton *button(const char *name, const QString &text);

} // namespace ReviewWidgets
