// The building blocks of the main screen's panels: their fonts, frames and
// named widgets, shared by the files that build the panels.
#pragma once

#include <QColor>
#include <QFont>
#include <QSize>
#include <QString>

class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;

namespace MainScreenWidgets {

// Point sizes: the problem and the choices are what a child reads at a
// distance, so they are the largest; captions stay readable but calm.
constexpr int CaptionPoints = 12;
constexpr int ButtonPoints = 13;
constexpr int ScorePoints = 20;
constexpr int QuestionPoints = 24;
// The least an answer is shrunk to when it is too wide for the strip.
constexpr int SmallestAnswerPoints = 14;
constexpr int ProblemPoints = 32;

// The window size the screen is laid out for: the size it opens at where the
// screen has the room, and beyond which the test's text grows with the window.
constexpr QSize LaidOutSize(1000, 700);

QFont arial(int points, bool bold = false);

template <typename W> W *named(W *widget, const char *name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QLabel *caption(const QString &text, int points = CaptionPoints, bool bold = false);
// Shows its text as typed, never as markup.
QLabel *namedLabel(const char *name, int points, bool bold);
// Pressed by Enter as well as by the Space bar when it has the focus.
QPushButton *button(const char *name, const QString &text, int points = ButtonPoints);
QFrame *panel(const char *name);
// Dark strip behind the numbers and the answer buttons, so that the white
// numbers and the white and green answer texts stand out.
QFrame *darkStrip();
// A box of the Arithmetic problem, five digits wide in its own font.
QLineEdit *problemBox(const char *name);
QLabel *problemSign(const char *name, const QString &text);
// Sets a box or a sign of the problem in a font of this many points, its room
// growing with the font.
void setProblemPoints(QLineEdit &box, int points);
void setProblemPoints(QLabel &sign, int points);

} // namespace MainScreenWidgets
