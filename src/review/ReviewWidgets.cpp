#include "ReviewWidgets.h"

#include <QPushButton>

namespace ReviewWidgets {

QFont arial(int points, bool bold)
{
    QFont font(QStringLiteral("Arial"), points);
    font.setBold(bold);
    return font;
}

QPushButton *button(const char *name, const QString &text)
{
    auto *push = new QPushButton(text);
    push->setObjectName(QLatin1String(name));
    push->setFont(arial(ButtonPoints, true));
    push->setMinimumHeight(40);
    push->setAutoDefault(true);
    return push;
}

} // namespace ReviewWidgets
