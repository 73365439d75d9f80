// The view of the results grid: an item's Last and High rows scroll as one, so
// the grid never shows half of a pair at its top or bottom edge, and it scrolls
// from the keyboard as well as with the wheel.
#pragma once

#include <QTableView>

class ResultsView : public QTableView {
    Q_OBJECT
public:
    explicit ResultsView(QWidget *parent = nullptr);

    // Row 0 of the model is its header row, hidden here; item i takes rows
    // 2i + 1 (Last) and 2i + 2 (High). The first row in view is always a Last row.
    int topRow() const;
    // Scrolls so that the Last row is the first row in view, or as near as the
    // grid scrolls.
    void scrollToTop(int lastRow);
    // True when the grid shows both rows of the item whose Last row this is.
    bool showsItem(int lastRow) const;

    // The grid is exactly as tall as this many items, so pairs fill it whole.
    int itemsInView() const { return m_itemsInView; }
    void setItemsInView(int items);
    int itemHeight() const;

protected:
    // Up and Down scroll by an item, Page Up and Page Down by a gridful, Home
    // and End to either end; other keys go on to the screen (Enter closes it).
    void keyPressEvent(QKeyEvent *event) override;

private:
    void keepPairsWhole(int value);

    int m_itemsInView = 1;
    int m_lastValue = 0;
};
