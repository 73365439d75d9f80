#include "AnswerFit.h"

#include <QFontMetrics>
#include <QRadioButton>

#include <algorithm>

namespace {

// The text as shown: a doubled ampersand is one ampersand on the screen.
QString ShownAnswer(const QRadioButton &answer)
{
    return answer.text().replace(QStringLiteral("&&"), QStringLiteral("&"));
}

} // namespace

void FitAnswers(const std::array<QRadioButton *, 4> &answers, int width, int largestPoints,
                int smallestPoints)
{
    // What a button adds to its text (the round mark, padding, the focus frame)
    // does not depend on the text's size.
    int extra = 0;
    for (const QRadioButton *answer : answers) {
        const int text = QFontMetrics(answer->font()).horizontalAdvance(ShownAnswer(*answer));
        extra = std::max(extra, answer->sizeHint().width() - text);
    }
    QFont font = answers[0]->font();
    int points = largestPoints;
    for (; points > smallestPoints; --points) {
        font.setPointSize(points);
        const QFontMetrics metrics(font);
        int widest = 0;
        for (const QRadioButton *answer : answers)
            widest = std::max(widest, metrics.horizontalAdvance(ShownAnswer(*answer)));
        if (extra + widest <= width)
            break;
    }
    font.setPointSize(points);
    for (QRadioButton *answer : answers) {
        if (answer->font() != font)
            answer->setFont(font);
    }
}
