#include "AnswerFit.h"

#include <QFontMetrics>
#include <QRadioButton>

#include <algorithm>

namespace {

// The text as shown: a doubled ampersand is one ampersand on the screen.
QString shownAnswer(const QRadioButton &answer)
{
    return answer.text().replace(QStringLiteral("&&"), QStringLiteral("&"));
}

} // namespace

void fitAnswers(const std::array<QRadioButton *, 4> &answers, int width, int largestPoints,
                int smallestPoints)
{
    // What a button adds to its text (the round mark, padding, the focus frame)
    // hardly depends on the text's size; the largest of the four is kept.
    int extra = 0;
    for (const QRadioButton *answer : answers) {
        const int text = QFontMetrics(answer->font()).horizontalAdvance(shownAnswer(*answer));
        extra = std::max(extra, answer->sizeHint().width() - text);
    }
    QFont font = answers[0]->font();
    const auto widestAt = [&](int points) {
        font.setPointSize(points);
        const QFontMetrics metrics(font);
        int widest = 0;
        for (const QRadioButton *answer : answers)
            widest = std::max(widest, metrics.horizontalAdvance(shownAnswer(*answer)));
        return widest;
    };
    const int room = width - extra;
    int points = largestPoints;
    const int widestLargest = widestAt(points);
    if (widestLargest > room) {
        // Text grows almost in proportion to its size, so the widths at the
        // largest size point to the size that fits, give or take a point: the
        // search starts there rather than going down from the largest.
        const int guess = room > 0 ? largestPoints * room / widestLargest : smallestPoints;
        points = std::clamp(guess, smallestPoints, largestPoints - 1);
        if (widestAt(points) <= room) {
            while (points + 1 < largestPoints && widestAt(points + 1) <= room)
                ++points;
        } else {
            while (points > smallestPoints) {
                --points;
                if (widestAt(points) <= room)
                    break;
            }
        }
    }
    font.setPointSize(points);
    for (QRadioButton *answer : answers) {
        if (answer->font() != font)
            answer->setFont(font);
    }
}
