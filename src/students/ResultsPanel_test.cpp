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

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

QString cell(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data().toString();
}

bool bold(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::FontRole).value<QFont>().bold();
}

QColor background(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::BackgroundRole).value<QColor>();
}

QColor foreground(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::ForegroundRole).value<QColor>();
}

Qt::Alignment alignment(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
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
    EXPECT_EQ(cell(grid, 0, 0), QStringLiteral("Subject"));
    EXPECT_EQ(cell(grid, 0, 1), QString());
    EXPECT_EQ(cell(grid, 0, 2), QStringLiteral("K"));
    EXPECT_EQ(cell(grid, 0, 14), QStringLiteral("12"));
    EXPECT_EQ(grid.headerData(3, Qt::Horizontal).toString(), QStringLiteral("1"));
    EXPECT_EQ(cell(grid, 1, 0), QStringLiteral("Arithmetic"));
    EXPECT_EQ(cell(grid, 2, 0), QStringLiteral("Arithmetic"));
    EXPECT_EQ(cell(grid, 12, 0), QStringLiteral("Science"));
    EXPECT_EQ(cell(grid, 11, 1), QStringLiteral("Last"));
    EXPECT_EQ(cell(grid, 12, 1), QStringLiteral("High"));
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
        EXPECT_EQ(foreground(grid, row, 1) == BgrColor(Bgr::Red), high) << row;
        EXPECT_EQ(foreground(grid, row, 14) == BgrColor(Bgr::Red), high) << row;
        EXPECT_FALSE(foreground(grid, row, 0).isValid());
        // Level 3 is the student's level: column 5 is bold, its neighbours not.
        EXPECT_TRUE(bold(grid, row, 0) && bold(grid, row, 1) && bold(grid, row, 5)) << row;
        EXPECT_FALSE(bold(grid, row, 4) || bold(grid, row, 6)) << row;
        EXPECT_EQ(alignment(grid, row, 0), Qt::AlignLeft | Qt::AlignVCenter);
        EXPECT_EQ(alignment(grid, row, 5), Qt::AlignCenter);
    }
    EXPECT_TRUE(bold(grid, 0, 8));
    EXPECT_EQ(alignment(grid, 0, 0), Qt::AlignCenter);

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
    EXPECT_TRUE(child<QRadioButton>(*screen, "optBySubject")->isChecked());

    ASSERT_EQ(grid.rowCount(), 7);
    EXPECT_EQ(cell(grid, 0, 0), QStringLiteral("Student"));
    EXPECT_EQ(cell(grid, 5, 0), QStringLiteral("C"));
    EXPECT_EQ(cell(grid, 6, 0), QStringLiteral("C"));
    EXPECT_EQ(cell(grid, 3, 4), QString::number(scoreOf(1, 1, 2, false)));
    EXPECT_EQ(cell(grid, 6, 2), QString::number(scoreOf(2, 1, 0, true)));
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("Spelling"));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{1, 2}));

    child<QListWidget>(*screen, "List1")->setCurrentRow(2);
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    EXPECT_EQ(view->currentIndex().row(), 5);
    EXPECT_TRUE(bold(grid, 3, 2));
    EXPECT_FALSE(bold(grid, 3, 3));

    child<QRadioButton>(*screen, "optByStudent")->click();
    EXPECT_TRUE(session.records.ShowByStudent);
    EXPECT_EQ(grid.rowCount(), 13);
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("C"));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{3, 4}));

    child<QRadioButton>(*screen, "optBySubject")->click();
    EXPECT_FALSE(session.records.ShowByStudent);
    EXPECT_EQ(grid.rowCount(), 7);
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("Spelling"));

    // The choice survives a restart.
    screen->cmdClose_Click();
    const std::vector<unsigned char> file = ReadFileBytes(session.paths.StudentsPath);
    ASSERT_GE(file.size(), 2u);
    EXPECT_EQ(file[0], 0);
    EXPECT_EQ(file[1], 0);
    StudentsScreen reopened(session);
    reopened.setHelpOpener([](QWidget *) {});
    ASSERT_TRUE(reopened.Form_Load());
    EXPECT_TRUE(child<QRadioButton>(reopened, "optBySubject")->isChecked());
    EXPECT_EQ(child<QTableView>(reopened, "Grid1")->model()->rowCount(), 7);
}

TEST_F(StudentsScreenTest, ResetsAskFirstAndClearOnlyTheirScores)
{
    writeRoster({"A", "B", "C"}, 1);
    auto screen = openScreen();
    const QAbstractItemModel &grid = *child<QTableView>(*screen, "Grid1")->model();
    auto *resetStudent = child<QPushButton>(*screen, "cmdResetTotals_Student");
    auto *resetAll = child<QPushButton>(*screen, "cmdResetTotals_All");
    const std::vector<Student> before = session.records.Students;

    resetStudent->click();
    resetAll->click();
    ASSERT_EQ(prompt.shown().size(), 2u);
    EXPECT_EQ(prompt.shown()[0].kind, Kind::Confirm);
    EXPECT_EQ(prompt.shown()[0].title, QStringLiteral("Confirm Reset Student's Totals"));
    EXPECT_EQ(prompt.shown()[0].text,
              QStringLiteral("Are you sure you want to Reset this Student's Totals?"));
    EXPECT_EQ(prompt.shown()[1].title, QStringLiteral("Confirm Reset ALL Student Totals"));
    EXPECT_EQ(prompt.shown()[1].text,
              QStringLiteral("Are you sure you want to Reset ALL Student Totals?"));
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(session.records.Students[i].Results[3].High[7], before[i].Results[3].High[7]);
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
    for (const Student &student : session.records.Students) {
        for (const SubjectResults &results : student.Results) {
            EXPECT_TRUE(std::all_of(results.Last.begin(), results.Last.end(),
                                    [](int16_t score) { return score == 0; }));
            EXPECT_TRUE(std::all_of(results.High.begin(), results.High.end(),
                                    [](int16_t score) { return score == 0; }));
        }
    }
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
    EXPECT_FALSE(level(11)->isEnabled());
    EXPECT_FALSE(level(12)->isEnabled());
    EXPECT_TRUE(level(10)->isEnabled());
    EXPECT_TRUE(level(0)->isEnabled());
    EXPECT_TRUE(level(10)->isChecked());
    EXPECT_EQ(session.records.Students[0].Level, 12);

    // Arithmetic offers a level exactly when it has operations there.
    session.bank.ArithOps[0].clear();
    child<QComboBox>(*screen, "cmbSubject")->setCurrentIndex(0);
    EXPECT_FALSE(level(0)->isEnabled());
    EXPECT_TRUE(level(12)->isEnabled());
    EXPECT_TRUE(level(12)->isChecked());

    screen->cmdClose_Click();
    EXPECT_EQ(session.records.CurrentLevel, 12);
}

TEST_F(StudentsScreenTest, TheGridScrollsOnlyWhenTheCurrentRowLeavesTheView)
{
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i)
        names.push_back("Student " + std::to_string(i));
    writeRoster(names, 0, false);
    auto screen = openScreen();
    screen->show();
    auto *view = child<QTableView>(*screen, "Grid1");
    auto *list = child<QListWidget>(*screen, "List1");
    auto top = [view] { return view->rowAt(0); };
    EXPECT_EQ(top(), 1);

    list->setCurrentRow(8); // row 17: 16 rows below the top
    EXPECT_EQ(top(), 1);
    list->setCurrentRow(9); // row 19: 18 rows below the top
    EXPECT_EQ(view->currentIndex().row(), 19);
    EXPECT_EQ(top(), 19);
    list->setCurrentRow(17); // row 35 of rows 19..36
    EXPECT_EQ(top(), 19);
    list->setCurrentRow(5); // above the top
    EXPECT_EQ(top(), 11);
}

TEST_F(StudentsScreenTest, AClassOfAThousandRefreshesInOneReset)
{
    std::vector<std::string> names;
    for (int i = 0; i < 1000; ++i)
        names.push_back("Student " + std::to_string(i));
    writeRoster(names, 0, false);
    auto screen = openScreen();
    screen->show();
    const QAbstractItemModel &grid = *child<QTableView>(*screen, "Grid1")->model();
    QSignalSpy resets(&grid, &QAbstractItemModel::modelReset);

    QElapsedTimer clock;
    clock.start();
    child<QListWidget>(*screen, "List1")->setCurrentRow(999);
    const qint64 elapsed = clock.elapsed();

    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(grid.rowCount(), 2001);
    EXPECT_EQ(cell(grid, 2000, 0), QStringLiteral("Student 999"));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{1999, 2000}));
    // Generous, for a busy machine; a refresh that touches every cell takes far longer.
    EXPECT_LT(elapsed, 1000);
}
