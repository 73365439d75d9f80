// The Students screen: the first run, a Students file that cannot be written
// or read, the roster and its names, the level buttons, the results grid in
// both modes with its resets, what closing saves, and the keyboard path.
#include "StudentsScreenFixture_test.h"

#include "testsupport/ScreenAccess.h"
#include "testsupport/ShownText.h"
#include "ui/FileText.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <fstream>
#include <tuple>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

} // namespace

TEST_F(StudentsScreenTest, FirstRunAndAFileThatCannotBeWrittenOrRead)
{
    // The first run asks for a name and keeps it as the file can hold it.
    prompt.answerInput(QStringLiteral("\U0001F600 Ann & Co"));
    auto screen = openScreen();
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(lines(*screen), std::vector<std::string>{"? Ann & Co"});
    // The only student cannot be deleted, not even by calling the handler.
    EXPECT_FALSE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());
    screen->deleteStudent();
    EXPECT_EQ(prompt.shown().size(), 1u);
    child<QPushButton>(*screen, "cmdClose")->click();
    EXPECT_EQ(saved().students.at(0).name, "? Ann & Co");

    // A damaged file ends the program and is never overwritten, not even on close.
    prompt.clear();
    const std::string damaged("\xFF\xFF\0\0\0\0\7\0\0\0\3\0A", 13);
    std::ofstream(session.paths.studentsPath, std::ios::binary) << damaged;
    StudentsScreen damagedScreen(session);
    EXPECT_FALSE(damagedScreen.loadRoster());
    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString &text = prompt.last()->text;
    EXPECT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_TRUE(text.contains(QString::fromStdString(session.paths.studentsPath.string())) &&
                text.contains(QStringLiteral("will now end")));
    damagedScreen.closeScreen();
    EXPECT_EQ(readFileBytes(session.paths.studentsPath),
              std::vector<unsigned char>(damaged.begin(), damaged.end()));

    // A first roster that cannot be saved is reported; the screen still opens.
    prompt.clear();
    session.paths = DataPaths::in(dir.path() / "no such directory");
    prompt.answerInput(QStringLiteral("Ann"));
    auto first = openScreen();
    ASSERT_EQ(prompt.shown().size(), 2u);
    EXPECT_EQ(prompt.shown()[0].kind, Kind::Stop);
}

TEST_F(StudentsScreenTest, ResultsOfABankWithMoreSubjectsOpenWithThisBanksAndAreKept)
{
    // Saved while the bank had 19 subjects, after a test in subject 10; the
    // Tests file has gone since, and the six default subjects are used.
    StudentRecords records;
    records.currentSubject = 10;
    for (const char *name : {"Ann", "Ben"}) {
        Student &student = records.students.emplace_back(newStudent(18));
        student.name = name;
        for (int s = 0; s <= 18; ++s)
            student.results[s].high[0] = static_cast<int16_t>(s + 1);
    }
    records.students[1].current = true;
    ASSERT_FALSE(saveStudents(records, session.paths.studentsPath).has_value());
    std::vector<unsigned char> kept = readFileBytes(session.paths.studentsPath);

    auto screen = openScreen();
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"Ann", "Ben"}));
    EXPECT_EQ(child<QComboBox>(*screen, "cmbSubject")->count(), 6);
    const QAbstractItemModel &grid = *child<QTableView>(*screen, "Grid1")->model();
    ASSERT_EQ(grid.rowCount(), 13) << "a Last and a High row for each of six subjects";
    EXPECT_EQ(cell(grid, 12, 0), QStringLiteral("Science"));
    EXPECT_EQ(cell(grid, 12, 2), QStringLiteral("6"));

    // Closing saves the roster: the other 13 subjects' results go back as they
    // were; the current subject, one this bank lacks, became Arithmetic.
    child<QPushButton>(*screen, "cmdClose")->click();
    kept[2] = 0;
    EXPECT_EQ(readFileBytes(session.paths.studentsPath), kept);
}

TEST_F(StudentsScreenTest, RosterEditsLevelsAndClosingKeepResultsAndNamesAsTheFileKeepsThem)
{
    writeRoster({"A", "B", "C"});
    session.bank.limits[1].lastQuestion[11] = session.bank.limits[1].lastQuestion[12] = -1;
    session.bank.arithOps[0].clear();
    auto screen = openScreen();
    screen->show();
    auto *list = child<QListWidget>(*screen, "List1");
    auto *name = child<QLineEdit>(*screen, "txtStudent");
    list->setCurrentRow(1);

    QTest::keyClick(list, Qt::Key_Delete); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm Delete Student");
    prompt.answerConfirm(true);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"A", "C"}));
    EXPECT_EQ(name->text(), QStringLiteral("A"));

    // Typed or pasted, a name is kept as the file can hold it; the box keeps the
    // spaces around it, the roster does not.
    const std::tuple<QString, std::string, std::string> names[] = {
        {QStringLiteral("  Dee "), "  Dee ", "Dee"},
        {QStringLiteral("Zoë Ünal"), "Zoë Ünal", "Zoë Ünal"},
        {QStringLiteral("Ann \U0001F600"), "Ann ?", "Ann ?"},
        {QStringLiteral("A\tB\x01y\x7f"), "A\tB\x01y\x7f", "A\tB\x01y\x7f"},
        {QStringLiteral("<b>Bo</b> & Co"), "<b>Bo</b> & Co", "<b>Bo</b> & Co"},
    };
    std::vector<std::string> expected = {"A", "C"};
    for (const auto &[typed, box, kept] : names) {
        child<QPushButton>(*screen, "cmdAddStudent")->click();
        name->insert(typed); // typing and pasting both go through the box's check
        EXPECT_EQ(name->text().toStdString(), box);
        EXPECT_EQ(shownText(*child(*screen, "lblStudentOrSubject")).toStdString(), kept);
        expected.push_back(kept);
    }
    // A name longer than the file holds is cut. Set rather than pasted, which
    // under AddressSanitizer takes minutes at this length.
    QCoreApplication::processEvents();
    const int screenWidth = screen->width();
    child<QPushButton>(*screen, "cmdAddStudent")->click();
    name->setText(QString(70000, QLatin1Char('n')));
    name->insert(QStringLiteral("\U0001F600")); // a full box takes no more
    expected.emplace_back(FileTextMaxLength, 'n');
    EXPECT_EQ(name->text().toStdString(), expected.back());
    EXPECT_EQ(lines(*screen), expected);
    // Nor does the heading widen the screen with it.
    QCoreApplication::processEvents();
    EXPECT_EQ(screen->width(), screenWidth);

    // The level buttons offer the levels the subject has questions for; only the
    // button moves, not the student's level. Arithmetic has none at K here.
    list->setCurrentRow(1);
    auto level = [&screen](int number) {
        return child<QRadioButton>(*screen, QStringLiteral("optLevel%1").arg(number).toLatin1());
    };
    auto *subject = child<QComboBox>(*screen, "cmbSubject");
    level(12)->click();
    subject->setCurrentIndex(1);
    EXPECT_TRUE(level(0)->isEnabled() && level(10)->isChecked() && !level(12)->isEnabled());
    subject->setCurrentIndex(0);
    EXPECT_FALSE(level(0)->isEnabled());
    EXPECT_TRUE(level(12)->isEnabled() && level(12)->isChecked());

    // Enter closes and saves the selected student, level and subject as current.
    subject->setCurrentIndex(3);
    EXPECT_EQ(session.records.currentSubjectName, "History");
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(session.records.currentStudentName, "C");
    EXPECT_EQ(session.records.currentLevel, 12);
    const StudentRecords records = saved();
    EXPECT_EQ(records.students[1].results[0].last[0], scoreOf(2, 0, 0, false));
    EXPECT_TRUE(!records.students[0].current && records.students[1].current);
    EXPECT_EQ(records.students[1].level, 12);
    EXPECT_EQ(records.currentSubject, 3);

    // After a restart the screen lists the same names; Esc closes and saves too.
    session.records = StudentRecords{};
    auto reopened = openScreen();
    EXPECT_EQ(lines(*reopened), expected);
    list = child<QListWidget>(*reopened, "List1");
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_TRUE(saved().students[0].current);
}

TEST_F(StudentsScreenTest, GridShowsOneStudentOrOneSubjectAndResetsClearOnlyTheirScores)
{
    writeRoster({"A", "B", "C"}, 1);
    auto screen = openScreen();
    screen->show();
    auto *list = child<QListWidget>(*screen, "List1");
    EXPECT_EQ(screen->focusWidget(), list) << "the arrow keys choose a student at once";
    EXPECT_EQ(tabStops(*screen),
              std::vector<std::string>({"List1", "cmdAddStudent", "cmdAddClass", "cmdDelete",
                                        "txtStudent", "optLevel0", "cmbSubject", "optByStudent",
                                        "Grid1", "cmdResetTotals_Student", "cmdResetTotals_All",
                                        "cmdReport", "cmdExport", "cmdBackups", "cmdHelp",
                                        "cmdClose"}));
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("C"));
    list->setCurrentRow(1);
    child<QPushButton>(*screen, "cmdHelp")->click();
    EXPECT_EQ(helpOpened, 1);

    // By student: B's Last and High for every subject; Geography is current.
    child<QRadioButton>(*screen, "optLevel3")->click();
    const QAbstractItemModel &grid = *child<QTableView>(*screen, "Grid1")->model();
    QWidget *heading = child(*screen, "lblStudentOrSubject");
    ASSERT_EQ(grid.rowCount(), 13);
    EXPECT_EQ(shownText(*heading), QStringLiteral("B"));
    EXPECT_EQ(cell(grid, 12, 0), QStringLiteral("Science"));
    EXPECT_EQ(cell(grid, 5, 2), QString::number(scoreOf(1, 2, 0, false)));
    EXPECT_EQ(cell(grid, 6, 14), QString::number(scoreOf(1, 2, 12, true)));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    for (int row = 1; row < 13; ++row) {
        // High rows are red; the student's level (3, column 5) is bold.
        const QVariant ink = grid.index(row, 14).data(Qt::ForegroundRole);
        EXPECT_EQ(ink.value<QColor>() == bgrColor(Bgr::Red), row % 2 == 0) << row;
        EXPECT_TRUE(bold(grid, row, 5) && !bold(grid, row, 4) && !bold(grid, row, 6)) << row;
    }

    // By subject: every student's pair in Geography; the selected student's is yellow.
    child<QRadioButton>(*screen, "optBySubject")->click();
    EXPECT_EQ(shownText(*heading), QStringLiteral("Geography"));
    EXPECT_EQ(cell(grid, 6, 2), QString::number(scoreOf(2, 2, 0, true)));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{3, 4}));
    list->setCurrentRow(2);
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    EXPECT_TRUE(bold(grid, 1, 2) && !bold(grid, 1, 5)) << "C is at level K";

    // Resets ask first; Cancel keeps every score.
    child<QPushButton>(*screen, "cmdResetTotals_Student")->click();
    EXPECT_EQ(lastConfirm(), "Confirm Reset Student's Totals");
    child<QPushButton>(*screen, "cmdResetTotals_All")->click();
    EXPECT_EQ(lastConfirm(), "Confirm Reset ALL Student Totals");
    EXPECT_EQ(session.records.students[2].results[3].high[7], scoreOf(2, 3, 7, true));
    // The selected student's scores go, in the grid too; the others' stay.
    prompt.answerConfirm(true);
    child<QPushButton>(*screen, "cmdResetTotals_Student")->click();
    for (int column = 2; column < ResultsModel::ColumnCount; ++column)
        EXPECT_EQ(cell(grid, 5, column) + cell(grid, 6, column), QStringLiteral("00")) << column;
    EXPECT_EQ(session.records.students[0].results[5].last[12], scoreOf(0, 5, 12, false));
    prompt.answerConfirm(true);
    child<QPushButton>(*screen, "cmdResetTotals_All")->click();
    const SubjectResults zero{};
    for (const Student &student : session.records.students)
        for (const SubjectResults &results : student.results)
            EXPECT_TRUE(results.last == zero.last && results.high == zero.high) << student.name;
}

TEST_F(StudentsScreenTest, ALargeClassScrollsOnlyWhenNeededAndRefreshesInOneReset)
{
    std::vector<std::string> names;
    for (int i = 0; i < 1000; ++i)
        names.push_back("Student " + std::to_string(i));
    writeRoster(names, 0, false);
    auto screen = openScreen();
    screen->show();
    EXPECT_TRUE(child<QRadioButton>(*screen, "optBySubject")->isChecked());
    auto *view = child<QTableView>(*screen, "Grid1");
    auto *list = child<QListWidget>(*screen, "List1");
    // The current row goes to the top when it is above it or over 16 rows below it.
    const std::pair<int, int> studentAndTop[] = {{0, 1}, {8, 1}, {9, 19}, {5, 11}};
    for (const auto &[student, top] : studentAndTop) {
        list->setCurrentRow(student);
        EXPECT_EQ(view->rowAt(0), top) << student;
    }
    QSignalSpy resets(view->model(), &QAbstractItemModel::modelReset);
    list->setCurrentRow(999);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(cell(*view->model(), 2000, 0), QStringLiteral("Student 999"));
}

TEST_F(StudentsScreenTest, ClicksBesideTheNamesKeepTheSelectedStudentSelected)
{
    writeRoster({"A", "B", "C"});
    auto screen = openScreen();
    screen->show();
    auto *list = child<QListWidget>(*screen, "List1");
    list->setCurrentRow(1);
    QWidget *area = list->viewport();
    const QPoint onB = list->visualItemRect(list->item(1)).center();
    auto onlyBSelected = [list] {
        return list->currentRow() == 1 && list->selectedItems() == QList{list->item(1)};
    };

    // Below the last name, Ctrl+click and Ctrl+Space on the selected name.
    QTest::mouseClick(area, Qt::LeftButton, {}, QPoint(10, area->height() - 5));
    EXPECT_TRUE(onlyBSelected()) << "click below the names";
    QTest::mouseClick(area, Qt::LeftButton, Qt::ControlModifier, onB);
    EXPECT_TRUE(onlyBSelected()) << "Ctrl+click";
    QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(onlyBSelected()) << "Ctrl+Space";

    // Delete removes the student who looks selected; a click still chooses another.
    prompt.answerConfirm(true);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(lines(*screen), (std::vector<std::string>{"A", "C"}));
    QTest::mouseClick(area, Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("C"));
    EXPECT_EQ(list->selectedItems(), QList{list->item(1)});
}
