// The results grid of the Students screen: both ways of showing scores, the
// highlighting, scrolling, the level buttons and the two resets.
#include "StudentsTestFixture.h"

#include "ResultsModel.h"
#include "ui/Colours.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QFont>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>

#include <algorithm>
#include <array>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

QVariant data(const QAbstractItemModel &grid, int row, int column, int role = Qt::DisplayRole)
{
    return grid.index(row, column).data(role);
}
QString cell(const QAbstractItemModel &grid, int row, int column)
{
    return data(grid, row, column).toString();
}
bool bold(const QAbstractItemModel &grid, int row, int column)
{
    return data(grid, row, column, Qt::FontRole).value<QFont>().bold();
}
QColor background(const QAbstractItemModel &grid, int row, int column)
{
    return data(grid, row, column, Qt::BackgroundRole).value<QColor>();
}
bool red(const QAbstractItemModel &grid, int row, int column)
{
    return data(grid, row, column, Qt::ForegroundRole).value<QColor>() == BgrColor(Bgr::Red);
}

// The rows painted yellow; every other data row must be white.
std::vector<int> yellowRows(const QAbstractItemModel &grid)
{
    std::vector<int> rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        for (int column = 1; column < ResultsModel::ColumnCount; ++column) {
            const QColor colour = background(grid, row, column);
            if (colour != BgrColor(Bgr::Yellow) && colour != BgrColor(Bgr::White))
                ADD_FAILURE() << "row " << row << " column " << column;
        }
        if (background(grid, row, 1) == BgrColor(Bgr::Yellow))
            rows.push_back(row);
    }
    return rows;
}

} // namespace

TEST_F(StudentsScreenTest, ScoresForOneStudentListEverySubject)
{
    writeRoster({"A", "B", "C"}, 1, true, 2);
    auto screen = openScreen();
    child<QRadioButton>(*screen, "optLevel3")->click();
    auto *view = child<QTableView>(*screen, "Grid1");
    const QAbstractItemModel &grid = *view->model();

    ASSERT_EQ(grid.rowCount(), 13);
    ASSERT_EQ(grid.columnCount(), 15);
    EXPECT_EQ(
        (QStringList{cell(grid, 2, 0), cell(grid, 11, 1), cell(grid, 12, 0), cell(grid, 12, 1)}),
        (QStringList{"Arithmetic", "Last", "Science", "High"}));
    EXPECT_EQ(cell(grid, 5, 2), QString::number(scoreOf(1, 2, 0, false)));
    EXPECT_EQ(cell(grid, 6, 14), QString::number(scoreOf(1, 2, 12, true)));
    EXPECT_EQ(cell(grid, 12, 7), QString::number(scoreOf(1, 5, 5, true)));
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("B"));

    // Geography is the current subject: its pair is yellow and current.
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    EXPECT_EQ(view->currentIndex().row(), 5);
    EXPECT_FALSE(background(grid, 5, 0).isValid());

    for (int row = 1; row < 13; ++row) {
        const bool high = row % 2 == 0;
        EXPECT_EQ(red(grid, row, 1), high) << row;
        EXPECT_EQ(red(grid, row, 14), high) << row;
        EXPECT_FALSE(red(grid, row, 0));
        // Level 3 is the student's level: column 5 is bold, its neighbours not.
        EXPECT_TRUE(bold(grid, row, 0) && bold(grid, row, 1) && bold(grid, row, 5)) << row;
        EXPECT_FALSE(bold(grid, row, 4) || bold(grid, row, 6)) << row;
    }

    // A negative score and a zero read as numbers.
    session.records.Students[1].Results[0].Last[0] = -2;
    session.records.Students[1].Results[0].High[0] = 0;
    screen->List1_Click();
    EXPECT_EQ(cell(grid, 1, 2), QStringLiteral("-2"));
    EXPECT_EQ(cell(grid, 2, 2), QStringLiteral("0"));
}

TEST_F(StudentsScreenTest, ScoresForOneSubjectListEveryStudent)
{
    writeRoster({"A", "B", "C"}, 0, false, 1);
    auto screen = openScreen();
    auto *view = child<QTableView>(*screen, "Grid1");
    const QAbstractItemModel &grid = *view->model();
    auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");

    ASSERT_EQ(grid.rowCount(), 7);
    EXPECT_EQ(cell(grid, 6, 0), QStringLiteral("C"));
    EXPECT_EQ(cell(grid, 3, 4), QString::number(scoreOf(1, 1, 2, false)));
    EXPECT_EQ(cell(grid, 6, 2), QString::number(scoreOf(2, 1, 0, true)));
    EXPECT_EQ(heading->text(), QStringLiteral("Spelling"));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{1, 2}));

    child<QListWidget>(*screen, "List1")->setCurrentRow(2);
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    EXPECT_EQ(view->currentIndex().row(), 5);
    EXPECT_TRUE(bold(grid, 3, 2) && !bold(grid, 3, 3));

    child<QRadioButton>(*screen, "optByStudent")->click();
    EXPECT_EQ(grid.rowCount(), 13);
    EXPECT_EQ(heading->text(), QStringLiteral("C"));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{3, 4}));

    child<QRadioButton>(*screen, "optBySubject")->click();
    EXPECT_EQ(grid.rowCount(), 7);
    EXPECT_EQ(heading->text(), QStringLiteral("Spelling"));

    // The choice survives a restart.
    screen->cmdClose_Click();
    EXPECT_EQ(ReadFileBytes(session.paths.StudentsPath).at(0), 0);
    session.records = StudentRecords{};
    auto reopened = openScreen();
    EXPECT_TRUE(child<QRadioButton>(*reopened, "optBySubject")->isChecked());
    EXPECT_EQ(child<QTableView>(*reopened, "Grid1")->model()->rowCount(), 7);
}

TEST_F(StudentsScreenTest, ResetsAskFirstAndClearOnlyTheirScores)
{
    writeRoster({"A", "B", "C"}, 1);
    auto screen = openScreen();
    const QAbstractItemModel &grid = *child<QTableView>(*screen, "Grid1")->model();
    auto *resetStudent = child<QPushButton>(*screen, "cmdResetTotals_Student");
    auto *resetAll = child<QPushButton>(*screen, "cmdResetTotals_All");
    const auto allZero = [](const std::array<int16_t, LevelCount> &scores) {
        return std::all_of(scores.begin(), scores.end(), [](int16_t score) { return score == 0; });
    };

    // Cancel keeps every score.
    resetStudent->click();
    EXPECT_TRUE(askedToConfirm("Confirm Reset Student's Totals"));
    resetAll->click();
    EXPECT_TRUE(askedToConfirm("Confirm Reset ALL Student Totals"));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(session.records.Students[i].Results[3].High[7], scoreOf(i, 3, 7, true));
    EXPECT_EQ(cell(grid, 1, 2), QString::number(scoreOf(1, 0, 0, false)));

    prompt.answerConfirm(true);
    resetStudent->click();
    for (int row = 1; row < grid.rowCount(); ++row)
        for (int column = 2; column < ResultsModel::ColumnCount; ++column)
            ASSERT_EQ(cell(grid, row, column), QStringLiteral("0")) << row << "," << column;
    EXPECT_EQ(session.records.Students[0].Results[5].Last[12], scoreOf(0, 5, 12, false));
    EXPECT_EQ(session.records.Students[2].Results[0].High[0], scoreOf(2, 0, 0, true));

    prompt.answerConfirm(true);
    resetAll->click();
    for (const Student &student : session.records.Students)
        for (const SubjectResults &results : student.Results)
            EXPECT_TRUE(allZero(results.Last) && allZero(results.High)) << student.Name;
    EXPECT_EQ(session.records.Students[2].Name, "C");
    EXPECT_TRUE(session.records.Students[1].Current);
}

TEST_F(StudentsScreenTest, LevelButtonsFollowTheQuestionsOfTheSubject)
{
    writeRoster({"A"});
    session.bank.Limits[1].LastQuestion[11] = -1;
    session.bank.Limits[1].LastQuestion[12] = -1;
    auto screen = openScreen();
    auto level = [&screen](int number) {
        return child<QRadioButton>(*screen, QStringLiteral("optLevel%1").arg(number).toLatin1());
    };

    level(12)->click();
    EXPECT_EQ(session.records.Students[0].Level, 12);
    child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(1);
    EXPECT_FALSE(level(11)->isEnabled() || level(12)->isEnabled());
    EXPECT_TRUE(level(0)->isEnabled() && level(10)->isEnabled());
    EXPECT_TRUE(level(10)->isChecked());
    EXPECT_EQ(session.records.Students[0].Level, 12);

    // Arithmetic offers a level exactly when it has operations there.
    session.bank.ArithOps[0].clear();
    child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(0);
    EXPECT_FALSE(level(0)->isEnabled());
    EXPECT_TRUE(level(12)->isEnabled() && level(12)->isChecked());

    screen->cmdClose_Click();
    EXPECT_EQ(session.records.CurrentLevel, 12);
}

TEST_F(StudentsScreenTest, ALargeClassScrollsOnlyWhenNeededAndRefreshesInOneReset)
{
    std::vector<std::string> names;
    for (int i = 0; i < 1000; ++i)
        names.push_back("Student " + std::to_string(i));
    writeRoster(names, 0, false);
    auto screen = openScreen();
    screen->show();
    auto *view = child<QTableView>(*screen, "Grid1");
    auto *list = child<QListWidget>(*screen, "List1");
    const auto topAt = [view, list](int student) {
        list->setCurrentRow(student);
        return view->rowAt(0);
    };
    EXPECT_EQ(view->rowAt(0), 1);
    EXPECT_EQ(topAt(8), 1);   // row 17: 16 rows below the top
    EXPECT_EQ(topAt(9), 19);  // row 19: 18 rows below the top
    EXPECT_EQ(topAt(17), 19); // row 35 of rows 19..36
    EXPECT_EQ(topAt(5), 11);  // above the top

    const QAbstractItemModel &grid = *view->model();
    QSignalSpy resets(&grid, &QAbstractItemModel::modelReset);
    QElapsedTimer clock;
    clock.start();
    list->setCurrentRow(999);
    const qint64 elapsed = clock.elapsed();
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(grid.rowCount(), 2001);
    EXPECT_EQ(cell(grid, 2000, 0), QStringLiteral("Student 999"));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{1999, 2000}));
    // Generous, for a busy machine; a refresh that touches every cell takes far longer.
    EXPECT_LT(elapsed, 1000);
}
