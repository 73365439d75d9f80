#include "ScreenFit.h"

#include <QDialog>
#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace {

// What a desktop typically adds around a window: a title bar and thin borders.
// The window's own frame is unknown until it is shown, so this is an estimate.
constexpr int FrameWidth = 16;
constexpr int FrameHeight = 48;

const QScreen *displayOf(const QWidget &window)
{
    if (const QScreen *screen = window.screen())
        return screen;
    return QGuiApplication::primaryScreen();
}

} // namespace

QScrollArea *scrollWhenTooSmall(QDialog &dialog, QWidget *content)
{
    auto *scrollArea = new QScrollArea(&dialog);
    scrollArea->setObjectName(QStringLiteral("scrScreen"));
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setFocusPolicy(Qt::NoFocus);
    scrollArea->setWidgetResizable(true);
    scrollArea->setWidget(content);

    auto *layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scrollArea);
    return scrollArea;
}

QSize roomOnScreen(const QWidget &window)
{
    const QScreen *display = displayOf(window);
    if (display == nullptr)
        return QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    return display->availableGeometry().size() - QSize(FrameWidth, FrameHeight);
}

QSize wholeContentSize(const QDialog &dialog, const QScrollArea &scrollArea)
{
    const QWidget *content = scrollArea.widget();
    QSize size =
        content != nullptr ? content->sizeHint().expandedTo(content->minimumSizeHint()) : QSize();
    const int frame = 2 * scrollArea.frameWidth();
    size += QSize(frame, frame);
    if (const QLayout *layout = dialog.layout()) {
        const QMargins margins = layout->contentsMargins();
        size += QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
    }
    return size;
}

void fitInto(QWidget &window, const QSize &wanted, const QSize &room)
{
    const int scrollBar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize size = wanted;
    // A side that scrolls gives up the width of its scroll bar to the other side.
    if (size.height() > room.height())
        size.rwidth() += scrollBar;
    if (size.width() > room.width())
        size.rheight() += scrollBar;
    size = size.boundedTo(room);
    window.resize(size);

    const QScreen *display = displayOf(window);
    if (display == nullptr)
        return;
    // A window's position is that of its frame.
    const QRect area = display->availableGeometry();
    const int left = area.x() + (area.width() - size.width() - FrameWidth) / 2;
    const int top = area.y() + (area.height() - size.height() - FrameHeight) / 2;
    window.move(qMax(area.x(), left), qMax(area.y(), top));
}
