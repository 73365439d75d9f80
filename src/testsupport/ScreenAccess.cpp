#include "ScreenAccess.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {

QAccessibleInterface &accessible(QWidget &widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

} // namespace

std::vector<std::string> tabStops(QWidget &window)
{
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    std::vector<std::string> stops;
    QWidget *const first = window.focusWidget();
    QWidget *current = first;
    // More steps than any screen has controls: a chain that never comes back
    // shows up as a long list.
    for (int step = 0; current != nullptr && step < 100; ++step) {
        stops.push_back(current->objectName().toStdString());
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(current, &tab);
        QWidget *next = window.focusWidget();
        if (next == first || next == current)
            break;
        current = next;
    }
    return stops;
}

std::string spokenName(QWidget &widget)
{
    return accessible(widget).text(QAccessible::Name).toStdString();
}

std::string spokenDescription(QWidget &widget)
{
    return accessible(widget).text(QAccessible::Description).toStdString();
}
