// The results grid as a class meets it: a selected pair never half in view,
// whatever scrolled the grid; scrolling from the keyboard; names that start
// alike told apart; and the screen on a small display.
#include "StudentsScreenFixture_test.h"

#include "testsupport/MouseWheel.h"

#include <QFontMetrics>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

namespace {

std::vector<std::string> numberedNames(int count)
{
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i)
        names.push_back("Student " + std::to_string(i));
    return names;
}

// Both cells of the name column, Last and High, lie whole inside the grid.
bool pairInView(const QTableView &view, int lastRow)
{
    const QRect area = view.viewport()->rect();
    for (int row : {lastRow, lastRow + 1})
        if (!area.contains(view.visualRect(view.model()->index(row, 0))))
            return false;
    return true;
}

int rowsInView(const QTableView &view)
{
    return view.viewport()->height() / view.rowHeight(1);
}

} // namespace

TEST_F(StudentsScreenTest, TheSelectedPairStaysWholeInViewWhateverScrollsTheGrid)
{
    writeRoster(numberedNames(1000), 0, false);
    auto screen = openScreen();
    screen->show();
    auto *view = child<QTableView>(*screen, "Grid1");
    auto *list = child<QListWidget>(*screen, "List1");
    ASSERT_EQ(rowsInView(*view) % 2, 0) << "the grid holds whole pairs";

    // A notch of the wheel moves whole pairs, down and back up. The student on
    // the last rows in view is seen whole, and the one below them scrolls up.
    for (const int notches : {-1, -2, 1}) {
        rollWheel(*view->viewport(), notches);
        const int top = view->rowAt(0);
        EXPECT_EQ(top % 2, 1) << "a Last row on top after " << notches;
        const int bottom = (top + rowsInView(*view) - 2) / 2;
        for (const int student : {bottom, bottom + 1}) {
            list->setCurrentRow(student);
            EXPECT_TRUE(pairInView(*view, 2 * student + 1)) << student << " after " << notches;
        }
    }
    EXPECT_GT(view->rowAt(0), 1) << "the wheel scrolled";
}

TEST_F(StudentsScreenTest, TheKeyboardScrollsTheGridAndLeavesTheSelectionAlone)
{
    writeRoster(numberedNames(1000), 0, false);
    auto screen = openScreen();
    screen->show();
    auto *view = child<QTableView>(*screen, "Grid1");
    const int page = rowsInView(*view);
    const int lastTop = 2000 - page + 1;
    view->setFocus(Qt::TabFocusReason);

    const std::pair<Qt::Key, int> keysAndTop[] = {
        {Qt::Key_Down, 3},       {Qt::Key_PageDown, 3 + page},
        {Qt::Key_Up, 1 + page},  {Qt::Key_End, lastTop},
        {Qt::Key_Down, lastTop}, {Qt::Key_PageUp, lastTop - page},
        {Qt::Key_Home, 1},       {Qt::Key_Up, 1},
        {Qt::Key_PageUp, 1},
    };
    for (const auto &[key, top] : keysAndTop) {
        QTest::keyClick(view, key);
        EXPECT_EQ(view->rowAt(0), top) << QTest::toString(key);
    }
    // Letters, the arrows sideways and scrolling choose no other student.
    QTest::keyClicks(view, QStringLiteral("S9"));
    QTest::keyClick(view, Qt::Key_Right);
    EXPECT_EQ(view->currentIndex().row(), 1);
    EXPECT_EQ(yellowRows(*view->model()), (std::vector<int>{1, 2}));
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("Student 0"));

    // Enter on the grid closes the screen, as everywhere on it.
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
}

TEST_F(StudentsScreenTest, LongNamesWidenTheNameColumnWithinALimitAndAreCutInTheMiddle)
{
    writeRoster({"Alexander Smith", "Alexander Jones", "Al"}, 0, false);
    auto screen = openScreen();
    screen->show();
    QCoreApplication::processEvents();
    auto *view = child<QTableView>(*screen, "Grid1");
    QFont boldFont = view->font();
    boldFont.setBold(true);
    const QFontMetrics metrics(boldFont);
    const int fitted = view->columnWidth(0);
    for (const char *name : {"Alexander Smith", "Alexander Jones"})
        EXPECT_GT(fitted, metrics.horizontalAdvance(QString::fromLatin1(name))) << name;

    // A very long name widens the column only so far, and neither the grid nor
    // the screen grows past the room kept for it.
    const QString longName = QStringLiteral("Bartholomew Alexander Montgomery-Fitzwilliam III");
    const int screenWidth = screen->width();
    child<QLineEdit>(*screen, "txtStudent")->setText(longName);
    QCoreApplication::processEvents();
    const int limit = view->columnWidth(0);
    EXPECT_GT(limit, fitted);
    EXPECT_LT(limit, metrics.horizontalAdvance(longName));
    EXPECT_EQ(view->textElideMode(), Qt::ElideMiddle);
    EXPECT_EQ(view->model()->index(1, 0).data(Qt::ToolTipRole).toString(), longName);
    EXPECT_EQ(screen->width(), screenWidth);
    EXPECT_LE(view->geometry().right(), view->parentWidget()->width());

    // Subject names are short: the column narrows again.
    child<QRadioButton>(*screen, "optByStudent")->click();
    EXPECT_LT(view->columnWidth(0), fitted);
}

TEST_F(StudentsScreenTest, OnASmallDisplayTheGridGivesUpRowsBeforeTheScreenScrolls)
{
    writeRoster(numberedNames(30), 0, false);
    auto screen = openScreen();
    screen->show();
    auto *view = child<QTableView>(*screen, "Grid1");
    auto *scrollArea = screen->findChild<QScrollArea *>();
    ASSERT_NE(scrollArea, nullptr);
    const QSize frame(16, 48); // a title bar and borders

    // 1024 x 600, 1366 x 768 at 125 % and a smaller one still, which scrolls.
    const struct {
        QSize display;
        bool scrolls;
    } displays[] = {{{1024, 600}, false}, {{1093, 614}, false}, {{700, 380}, true}};
    for (const auto &[display, scrolls] : displays) {
        const QSize room = display - frame;
        screen->fitInto(room);
        QCoreApplication::processEvents();
        EXPECT_LE(screen->width(), room.width()) << display.width();
        EXPECT_LE(screen->height(), room.height()) << display.width();
        EXPECT_EQ(rowsInView(*view) % 2, 0) << display.width();
        EXPECT_GE(rowsInView(*view), 6) << display.width();
        EXPECT_EQ(scrollArea->verticalScrollBar()->maximum() > 0, scrolls) << display.width();
        // Every control can be brought into view.
        for (const char *name : {"cmdDelete", "optLevel12", "cmdResetTotals_All", "cmdClose"}) {
            QWidget *control = child(*screen, name);
            scrollArea->ensureWidgetVisible(control, 0, 0);
            QWidget *view = scrollArea->viewport();
            const QRect shown(control->mapTo(view, QPoint(0, 0)), control->size());
            EXPECT_TRUE(view->rect().contains(shown)) << name << " at " << display.width();
        }
    }
    // The selected student is still seen whole in the shorter grid.
    child<QListWidget>(*screen, "List1")->setCurrentRow(20);
    EXPECT_TRUE(pairInView(*view, 41));
}
