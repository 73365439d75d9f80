#include "ListWheel.h"

#include <QComboBox>
#include <QEvent>

namespace {

class UnfocusedWheelFilter : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel)
            return false;
        const auto *list = qobject_cast<const QComboBox *>(watched);
        if (list == nullptr || list->hasFocus())
            return false;
        // Refused here, the event goes on to the list's parents, up to the
        // scroll area that holds the screen.
        event->ignore();
        return true;
    }
};

} // namespace

void changeByWheelOnlyWhenFocused(QComboBox &list)
{
    list.setFocusPolicy(Qt::StrongFocus);
    list.installEventFilter(new UnfocusedWheelFilter(&list));
}
