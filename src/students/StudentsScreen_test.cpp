// The Students screen: the first run, a Students file that cannot be written
// or read, the roster (adding, renaming, deleting, odd names), the results grid
// in both modes with its highlighting, resets and level buttons, what closing
// saves, and the keyboard path through the screen.
#include "StudentsScreen.h"

#include "ResultsModel.h"
#include "core/DefaultBank.h"
#include "core/StudentsFile.h"
#include "testsupport/ScreenAccess.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/ShownText.h"
#include "testsupport/TempDataDir.h"
#include "ui/Colours.h"
#include "ui/FileText.h"
#include "ui/Session.h"

#include <QComboBox>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

// Scripted answers that can look at the files while an input box is up.
struct WatchingPrompt : ScriptedPrompt {
    QString input(QWidget *parent, const QString &title, const QString &prompt,
                  const QString &defaultText = QString()) override
    {
        if (atInput)
            atInput();
        return ScriptedPrompt::input(parent, title, prompt, defaultText);
    }
    std::function<void()> atInput;
};

class StudentsScreenTest : public ::testing::Test {
protected:
    StudentsScreenTest() { BuildDefaultTests(session.bank); }

    // A score that tells student, subject, level and Last or High apart.
    static int16_t scoreOf(int student, int subject, int level, bool high)
    {
        return static_cast<int16_t>(student * 1000 + subject * 100 + level * 2 + (high ? 1 : 0));
    }

    // Writes a roster file of the given names, every score marked with scoreOf().
    void writeRoster(const std::vector<std::string> &names, int current = 0,
                     bool showByStudent = true, int currentSubject = 0)
    {
        StudentRecords records;
        records.ShowByStudent = showByStudent;
        records.CurrentSubject = currentSubject;
        for (int i = 0; i < static_cast<int>(names.size()); ++i) {
            Student student = NewStudent(session.bank.SubjectMax);
            student.Name = names[i];
            student.Current = i == current;
            for (int s = 0; s < static_cast<int>(student.Results.size()); ++s)
                for (int level = 0; level < LevelCount; ++level) {
                    student.Results[s].Last[level] = scoreOf(i, s, level, false);
                    student.Results[s].High[level] = scoreOf(i, s, level, true);
                }
            records.Students.push_back(student);
        }
        ASSERT_FALSE(SaveStudents(records, session.paths.StudentsPath).has_value());
    }

    // A loaded screen whose help page only counts how often it was opened.
    std::unique_ptr<StudentsScreen> openScreen()
    {
        auto screen = std::make_unique<StudentsScreen>(session);
        screen->setHelpOpener([this](QWidget *) { ++helpOpened; });
        EXPECT_TRUE(screen->Form_Load());
        return screen;
    }

    // The roster as the Students file now holds it.
    StudentRecords saved() const
    {
        StudentRecords records;
        EXPECT_EQ(LoadStudents(records, session.bank, session.paths.StudentsPath).status,
                  LoadResult::Status::Loaded);
        return records;
    }

    template <typename Widget = QWidget>
    static Widget *child(const StudentsScreen &screen, const char *name)
    {
        Widget *widget = screen.findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    // Texts are compared as UTF-8, which failure messages print readably.
    static std::string Utf8(const QString &text) { return text.toStdString(); }

    static std::vector<std::string> Lines(const StudentsScreen &screen)
    {
        const QListWidget *list = child<QListWidget>(screen, "List1");
        std::vector<std::string> texts;
        for (int row = 0; row < list->count(); ++row)
            texts.push_back(Utf8(list->item(row)->text()));
        return texts;
    }

    // The title of the last dialog, when it was a confirmation.
    std::string lastConfirm() const
    {
        const ScriptedPrompt::Shown *shown = prompt.last();
        return shown && shown->kind == Kind::Confirm ? Utf8(shown->title) : "";
    }

    TempDataDir dir;
    WatchingPrompt prompt;
    Session session{dir.paths(), prompt};
    int helpOpened = 0;
};

QString cell(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data().toString();
}
bool bold(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::FontRole).value<QFont>().bold();
}

// The rows painted yellow; every other data row must be white.
std::vector<int> yellowRows(const QAbstractItemModel &grid)
{
    std::vector<int> rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        for (int column = 1; column < ResultsModel::ColumnCount; ++column) {
            const QColor colour = grid.index(row, column).data(Qt::BackgroundRole).value<QColor>();
            if (colour != BgrColor(Bgr::Yellow) && colour != BgrColor(Bgr::White))
                ADD_FAILURE() << "row " << row << " column " << column;
            else if (column == 1 && colour == BgrColor(Bgr::Yellow))
                rows.push_back(row);
        }
    }
    return rows;
}

} // namespace

TEST_F(StudentsScreenTest, FirstRunAndAFileThatCannotBeWrittenOrRead)
{
    // The first run saves one nameless student, then asks for the name. The answer
    // is set, not typed, so only the file's conversion applies to it.
    prompt.answerInput(QStringLiteral("\U0001F600 Ann & Co"));
    StudentRecords atInput;
    prompt.atInput = [&] { atInput = saved(); };
    auto screen = openScreen();
    ASSERT_EQ(prompt.shown().size(), 1u);
    ASSERT_EQ(atInput.Students.size(), 1u);
    EXPECT_TRUE(atInput.Students[0].Name.empty() && atInput.Students[0].Current);
    EXPECT_EQ(Lines(*screen), std::vector<std::string>{"? Ann & Co"});
    // The only student cannot be deleted, not even by calling the handler.
    EXPECT_FALSE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());
    screen->cmdDelete_Click();
    EXPECT_EQ(prompt.shown().size(), 1u);
    child<QPushButton>(*screen, "cmdClose")->click();
    EXPECT_EQ(saved().Students.at(0).Name, "? Ann & Co");

    // A first roster that cannot be saved is reported; the screen still opens.
    prompt.clear();
    Session elsewhere(DataPaths::In(dir.path() / "no such directory"), prompt);
    BuildDefaultTests(elsewhere.bank);
    StudentsScreen first(elsewhere);
    prompt.answerInput(QStringLiteral("Ann"));
    EXPECT_TRUE(first.Form_Load());
    ASSERT_EQ(prompt.shown().size(), 2u);
    EXPECT_EQ(prompt.shown()[0].kind, Kind::Stop);
    EXPECT_TRUE(prompt.shown()[0].text.contains(QStringLiteral("Tavrino_Students.dat")));
    EXPECT_EQ(Lines(first), std::vector<std::string>{"Ann"});

    // A damaged file ends the program and is never overwritten, not even on close.
    prompt.clear();
    const std::string damaged("\xFF\xFF\0\0\0\0\7\0\0\0\3\0A", 13);
    std::ofstream(session.paths.StudentsPath, std::ios::binary) << damaged;
    session.records = StudentRecords{};
    StudentsScreen damagedScreen(session);
    EXPECT_FALSE(damagedScreen.Form_Load());
    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString &text = prompt.last()->text;
    EXPECT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_TRUE(text.contains(QString::fromStdString(session.paths.StudentsPath.string())));
    EXPECT_TRUE(text.contains(QStringLiteral("damaged")) &&
                text.contains(QStringLiteral("will now end")));
    damagedScreen.cmdClose_Click();
    EXPECT_EQ(ReadFileBytes(session.paths.StudentsPath),
              std::vector<unsigned char>(damaged.begin(), damaged.end()));
}

TEST_F(StudentsScreenTest, RosterEditsLevelsAndClosingKeepResultsAndNamesAsTheFileKeepsThem)
{
    const std::pair<QString, std::string> cases[] = {
        // typed, and kept as the screen shows it and the file holds it
        {QStringLiteral("Zoë Ünal"), "Zoë Ünal"},
        {QStringLiteral("Ann \U0001F600"), "Ann ?"},
        {QStringLiteral("A\tB\x01y\x7f"), "A\tB\x01y\x7f"},
        {QStringLiteral("<b>Bo</b> & Co"), "<b>Bo</b> & Co"},
    };
    writeRoster({"A", "B", "C"});
    session.bank.Limits[1].LastQuestion[11] = session.bank.Limits[1].LastQuestion[12] = -1;
    session.bank.ArithOps[0].clear();
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");
    auto *name = child<QLineEdit>(*screen, "txtStudent");
    auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");
    const int width = screen->sizeHint().width();
    list->setCurrentRow(1);
    EXPECT_EQ(name->text(), QStringLiteral("B"));

    QTest::keyClick(list, Qt::Key_Delete); // Cancel
    EXPECT_EQ(lastConfirm(), "Confirm Delete Student");
    prompt.answerConfirm(true);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(Lines(*screen), (std::vector<std::string>{"A", "C"}));
    EXPECT_EQ(name->text(), QStringLiteral("A"));
    EXPECT_EQ(session.records.Students.at(1).Results[4].High[9], scoreOf(2, 4, 9, true));

    child<QPushButton>(*screen, "cmdAddStudent")->click();
    EXPECT_TRUE(name->text().isEmpty());
    EXPECT_EQ(session.records.Students.at(2).Results.size(), 6u);
    // The box keeps what was typed; the roster keeps it trimmed.
    QTest::keyClicks(name, QStringLiteral("  Dee "));
    EXPECT_EQ(name->text(), QStringLiteral("  Dee "));
    EXPECT_EQ(Utf8(heading->text()), "Dee");

    std::vector<std::string> expected = {"A", "C", "Dee"};
    for (const auto &[typed, kept] : cases) {
        screen->cmdAddStudent_Click();
        name->insert(typed); // a paste goes through what typing goes through
        EXPECT_EQ(Utf8(name->text()), kept);
        EXPECT_EQ(Lines(*screen).back(), kept);
        EXPECT_EQ(Utf8(ShownText(*heading)), kept);
        expected.push_back(kept);
    }
    // A name longer than the file holds is cut. Set rather than pasted: a line
    // edit files a paste into its undo history character by character, which
    // under AddressSanitizer takes minutes at this length.
    screen->cmdAddStudent_Click();
    name->setText(QString(70000, QLatin1Char('n')));
    name->insert(QStringLiteral("\U0001F600")); // a full box takes no more
    expected.emplace_back(FileTextMaxLength, 'n');
    EXPECT_EQ(Utf8(name->text()), expected.back());
    EXPECT_EQ(screen->sizeHint().width(), width) << "the screen fits the display";
    EXPECT_EQ(Lines(*screen), expected);

    // The level buttons offer the levels the subject has questions for; only the
    // button moves, not the student's level. Arithmetic has none at K here.
    screen->show();
    list->setCurrentRow(1);
    auto level = [&screen](int number) {
        return child<QRadioButton>(*screen, QStringLiteral("optLevel%1").arg(number).toLatin1());
    };
    auto *subject = child<QComboBox>(*screen, "cmbSubject");
    level(12)->click();
    subject->setCurrentIndex(1);
    EXPECT_FALSE(level(11)->isEnabled() || level(12)->isEnabled());
    EXPECT_TRUE(level(0)->isEnabled() && level(10)->isChecked());
    subject->setCurrentIndex(0);
    EXPECT_FALSE(level(0)->isEnabled());
    EXPECT_TRUE(level(12)->isEnabled() && level(12)->isChecked());

    // Enter closes and saves the selected student, level and subject as current.
    subject->setCurrentIndex(3);
    EXPECT_EQ(session.records.CurrentSubjectName, "History");
    EXPECT_EQ(yellowRows(*child<QTableView>(*screen, "Grid1")->model()), (std::vector<int>{7, 8}));
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(session.records.CurrentStudentName, "C");
    EXPECT_EQ(session.records.CurrentLevel, 12);
    EXPECT_EQ(prompt.shown().size(), 2u) << "the roster was saved without a complaint";
    const StudentRecords records = saved();
    EXPECT_EQ(records.Students[1].Results[0].Last[0], scoreOf(2, 0, 0, false));
    EXPECT_TRUE(!records.Students[0].Current && records.Students[1].Current);
    EXPECT_EQ(records.Students[1].Level, 12);
    EXPECT_EQ(records.CurrentSubject, 3);

    // After a restart the screen lists the same names; Esc closes and saves too.
    session.records = StudentRecords{};
    auto reopened = openScreen();
    EXPECT_EQ(Lines(*reopened), expected);
    reopened->show();
    list = child<QListWidget>(*reopened, "List1");
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(reopened->isVisible());
    EXPECT_TRUE(saved().Students[0].Current);
    EXPECT_EQ(session.records.CurrentLevel, 0);
}

TEST_F(StudentsScreenTest, GridShowsOneStudentOrOneSubjectAndResetsClearOnlyTheirScores)
{
    writeRoster({"A", "B", "C"}, 1, true, 2);
    auto screen = openScreen();
    screen->show();
    auto *list = child<QListWidget>(*screen, "List1");
    EXPECT_EQ(screen->focusWidget(), list) << "the arrow keys choose a student at once";
    EXPECT_EQ(
        TabStops(*screen),
        std::vector<std::string>({"List1", "cmdAddStudent", "cmdDelete", "txtStudent", "optLevel0",
                                  "cmbSubject", "optByStudent", "cmdResetTotals_Student",
                                  "cmdResetTotals_All", "cmdHelp", "cmdClose"}));
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(SpokenName(*child(*screen, "lblStudentOrSubject")), "Scores for: C");
    list->setCurrentRow(1);
    child<QPushButton>(*screen, "cmdHelp")->click();
    EXPECT_EQ(helpOpened, 1);

    // By student: B's Last and High for every subject; Geography is current.
    child<QRadioButton>(*screen, "optLevel3")->click();
    auto *view = child<QTableView>(*screen, "Grid1");
    const QAbstractItemModel &grid = *view->model();
    auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");
    ASSERT_EQ(grid.rowCount(), 13);
    EXPECT_EQ(heading->text(), QStringLiteral("B"));
    EXPECT_EQ(cell(grid, 12, 0), QStringLiteral("Science"));
    EXPECT_EQ(cell(grid, 5, 2), QString::number(scoreOf(1, 2, 0, false)));
    EXPECT_EQ(cell(grid, 6, 14), QString::number(scoreOf(1, 2, 12, true)));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    EXPECT_EQ(view->currentIndex().row(), 5);
    for (int row = 1; row < 13; ++row) {
        // High rows are red; the student's level (3, column 5) is bold.
        const QVariant ink = grid.index(row, 14).data(Qt::ForegroundRole);
        EXPECT_EQ(ink.value<QColor>() == BgrColor(Bgr::Red), row % 2 == 0) << row;
        EXPECT_TRUE(bold(grid, row, 5) && !bold(grid, row, 4) && !bold(grid, row, 6)) << row;
    }

    // By subject: every student's pair in Geography; the selected student's is current.
    child<QRadioButton>(*screen, "optBySubject")->click();
    ASSERT_EQ(grid.rowCount(), 7);
    EXPECT_EQ(heading->text(), QStringLiteral("Geography"));
    EXPECT_EQ(cell(grid, 6, 2), QString::number(scoreOf(2, 2, 0, true)));
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{3, 4}));
    list->setCurrentRow(2);
    EXPECT_EQ(yellowRows(grid), (std::vector<int>{5, 6}));
    EXPECT_EQ(view->currentIndex().row(), 5);
    EXPECT_TRUE(bold(grid, 1, 2) && !bold(grid, 1, 5)) << "C is at level K";
    // A negative score and a zero read as numbers.
    session.records.Students[2].Results[2].Last[0] = -2;
    session.records.Students[2].Results[2].High[0] = 0;
    screen->List1_Click();
    EXPECT_EQ((QStringList{cell(grid, 5, 2), cell(grid, 6, 2)}), (QStringList{"-2", "0"}));

    // Resets ask first; Cancel keeps every score.
    auto *resetStudent = child<QPushButton>(*screen, "cmdResetTotals_Student");
    auto *resetAll = child<QPushButton>(*screen, "cmdResetTotals_All");
    resetStudent->click();
    EXPECT_EQ(lastConfirm(), "Confirm Reset Student's Totals");
    resetAll->click();
    EXPECT_EQ(lastConfirm(), "Confirm Reset ALL Student Totals");
    EXPECT_EQ(session.records.Students[2].Results[3].High[7], scoreOf(2, 3, 7, true));
    // The selected student's scores go, in the grid too; the others' stay.
    prompt.answerConfirm(true);
    resetStudent->click();
    for (int column = 2; column < ResultsModel::ColumnCount; ++column) {
        EXPECT_EQ(cell(grid, 5, column) + cell(grid, 6, column), QStringLiteral("00")) << column;
        EXPECT_NE(cell(grid, 4, column), QStringLiteral("0")) << column;
    }
    EXPECT_EQ(session.records.Students[0].Results[5].Last[12], scoreOf(0, 5, 12, false));
    prompt.answerConfirm(true);
    resetAll->click();
    for (const Student &student : session.records.Students)
        for (const SubjectResults &results : student.Results)
            EXPECT_TRUE(results.Last == SubjectResults{}.Last &&
                        results.High == SubjectResults{}.High)
                << student.Name;

    // The mode survives a restart.
    screen->cmdClose_Click();
    session.records = StudentRecords{};
    auto reopened = openScreen();
    EXPECT_TRUE(child<QRadioButton>(*reopened, "optBySubject")->isChecked());
    EXPECT_EQ(child<QTableView>(*reopened, "Grid1")->model()->rowCount(), 7);
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
    EXPECT_EQ(view->rowAt(0), 1);
    // The current row goes to the top when it is above it or over 16 rows below it.
    const std::pair<int, int> studentAndTop[] = {{8, 1}, {9, 19}, {5, 11}};
    for (const auto &[student, top] : studentAndTop) {
        list->setCurrentRow(student);
        EXPECT_EQ(view->rowAt(0), top) << student;
    }
    QSignalSpy resets(view->model(), &QAbstractItemModel::modelReset);
    list->setCurrentRow(999);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(cell(*view->model(), 2000, 0), QStringLiteral("Student 999"));
}
