#include "MouseWheel.h"

#include <QApplication>
#include <QSpontaneKeyEvent>
#include <QWheelEvent>
#include <QWidget>

void rollWheel(QWidget &widget, int notches)
{
    constexpr int NotchAngle = 120; // eighths of a degree, one notch of a usual wheel
    const QPointF centre = QRectF(widget.rect()).center();
    QWheelEvent wheel(centre, widget.mapToGlobal(centre), QPoint(), QPoint(0, notches * NotchAngle),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only an event from the window system passes on to the parents; sendEvent()
    // would mark it as sent by the program.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    QApplication::instance()->notify(&widget, &wheel);
}
