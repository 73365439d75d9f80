#include "ResultsView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

ResultsView::ResultsView(QWidget *parent) : QTableView(parent)
{
    // Scrolled a whole row at a time, the scroll bar counts the rows in view
    // (the hidden header row not among them): an even value puts a Last row on top.
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ResultsView::keepPairsWhole);
}

int ResultsView::topRow() const
{
    return rowAt(0);
}

void ResultsView::scrollToTop(int lastRow)
{
    verticalScrollBar()->setValue(lastRow - 1);
}

bool ResultsView::showsItem(int lastRow) const
{
    const int top = topRow();
    return top >= 0 && lastRow >= top && lastRow + 1 < top + 2 * m_itemsInView;
}

int ResultsView::itemHeight() const
{
    return 2 * verticalHeader()->defaultSectionSize();
}

void ResultsView::setItemsInView(int items)
{
    m_itemsInView = qMax(1, items);
    setFixedHeight(2 * frameWidth() + horizontalHeader()->sizeHint().height() +
                   m_itemsInView * itemHeight());
}

void ResultsView::keepPairsWhole(int value)
{
    // A scroll that stops on a High row (the wheel moves three rows) goes on to
    // the next pair in the direction it was moving.
    if (value % 2 != 0) {
        QScrollBar *bar = verticalScrollBar();
        const int whole = value > m_lastValue ? value + 1 : value - 1;
        if (whole >= bar->minimum() && whole <= bar->maximum()) {
            bar->setValue(whole);
            return;
        }
    }
    m_lastValue = value;
}

void ResultsView::keyPressEvent(QKeyEvent *event)
{
    QScrollBar *bar = verticalScrollBar();
    const int value = bar->value();
    const int page = 2 * m_itemsInView;
    switch (event->key()) {
    case Qt::Key_Up:
        bar->setValue(value - 2);
        break;
    case Qt::Key_Down:
        bar->setValue(value + 2);
        break;
    case Qt::Key_PageUp:
        bar->setValue(value - page);
        break;
    case Qt::Key_PageDown:
        bar->setValue(value + page);
        break;
    case Qt::Key_Home:
        bar->setValue(bar->minimum());
        break;
    case Qt::Key_End:
        bar->setValue(bar->maximum());
        break;
    default:
        // Not the view's own handling: it would move the current row, which
        // marks the highlighted item, and search the names for typed letters.
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}
