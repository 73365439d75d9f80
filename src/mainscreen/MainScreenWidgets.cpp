#include "MainScreenWidgets.h"

#include "MainScreenPanels.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>

namespace MainScreenWidgets {

namespace {

// Behind the problem and the answers.
const QColor ProblemBackground(0x10, 0x18, 0x30);

// The least room of a box and of a sign of the problem at ProblemPoints.
constexpr int ProblemBoxHeight = 64;
constexpr int ProblemSignWidth = 48;

} // namespace

QFont arial(int points, bool bold)
{
    QFont font(QStringLiteral("Arial"), points);
    font.setBold(bold);
    return font;
}

QLabel *caption(const QString &text, int points, bool bold)
{
    auto *label = new QLabel(text);
    label->setFont(arial(points, bold));
    return label;
}

QLabel *namedLabel(const char *name, int points, bool bold)
{
    QLabel *label = named(new QLabel, name);
    label->setFont(arial(points, bold));
    // Names, questions and answers are shown as they were typed, never read as markup.
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton *button(const char *name, const QString &text, int points)
{
    QPushButton *push = named(new QPushButton(text), name);
    push->setFont(arial(points, true));
    push->setMinimumHeight(40);
    // Enter on a focused button presses it, as the Space bar does.
    push->setAutoDefault(true);
    return push;
}

QFrame *panel(const char *name)
{
    QFrame *frame = named(new QFrame, name);
    frame->setFrameShape(QFrame::StyledPanel);
    return frame;
}

QFrame *darkStrip()
{
    auto *strip = new QFrame;
    QPalette palette = strip->palette();
    palette.setColor(QPalette::Window, ProblemBackground);
    palette.setColor(QPalette::WindowText, Qt::white);
    strip->setPalette(palette);
    strip->setAutoFillBackground(true);
    return strip;
}

QLineEdit *problemBox(const char *name)
{
    QLineEdit *box = named(new QLineEdit, name);
    setProblemPoints(*box, ProblemPoints);
    setDisplayStyle(*box);
    return box;
}

QLabel *problemSign(const char *name, const QString &text)
{
    QLabel *sign = namedLabel(name, ProblemPoints, true);
    sign->setText(text);
    sign->setAlignment(Qt::AlignCenter);
    setProblemPoints(*sign, ProblemPoints);
    return sign;
}

void setProblemPoints(QLineEdit &box, int points)
{
    box.setFont(arial(points, true));
    // Five digits wide in the box's own font, so that the boxes grow with the
    // text on a desktop set to larger fonts and in a larger window.
    box.setFixedWidth(box.fontMetrics().horizontalAdvance(QStringLiteral("00000")) +
                      box.fontMetrics().height() / 2);
    box.setMinimumHeight(ProblemBoxHeight * points / ProblemPoints);
}

void setProblemPoints(QLabel &sign, int points)
{
    sign.setFont(arial(points, true));
    sign.setMinimumWidth(ProblemSignWidth * points / ProblemPoints);
}

} // namespace MainScreenWidgets
