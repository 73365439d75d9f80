// The Students screen: the first run, a Students file that cannot be written
// or read, the roster and its names, the level buttons, the results grid in
// both modes with its resets, what closing saves, and the keyboard path.
#include "StudentsScreen.h"

#include "ResultsModel.h"
#include "core/DefaultBank.h"
#include "core/StudentsFile.h"
#include "reports/ClassReport.h"
#include "reports/ClassResultsCsv.h"
#include "testsupport/ScreenAccess.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/ShownText.h"
#include "testsupport/TempDataDir.h"
#include "ui/Colours.h"
#include "ui/FileText.h"
#include "ui/Session.h"

#include <QComboBox>
#include <QFont>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

// A score that tells student, subject, level and Last or High apart.
int16_t scoreOf(int student, int subject, int level, bool high)
{
    return static_cast<int16_t>(student * 1000 + subject * 100 + level * 2 + (high ? 1 : 0));
}

QString cell(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data().toString();
}
bool bold(const QAbstractItemModel &grid, int row, int column)
{
    return grid.index(row, column).data(Qt::FontRole).value<QFont>().bold();
}

// The rows painted yellow, Last/High column and scores alike; the others are white.
std::vector<int> yellowRows(const QAbstractItemModel &grid)
{
    std::vector<int> rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        auto colour = [&](int column) {
            return grid.index(row, column).data(Qt::BackgroundRole).value<QColor>();
        };
        const bool yellow = colour(1) == bgrColor(Bgr::Yellow);
        for (int column = 1; column < ResultsModel::ColumnCount; ++column)
            EXPECT_EQ(colour(column), bgrColor(yellow ? Bgr::Yellow : Bgr::White)) << row;
        if (yellow)
            rows.push_back(row);
    }
    return rows;
}

class StudentsScreenTest : public ::testing::Test {
protected:
    StudentsScreenTest() { buildDefaultTests(session.bank); }

    // Writes a roster file of the given names, every score marked with scoreOf().
    void writeRoster(const std::vector<std::string> &names, int current = 0, bool byStudent = true)
    {
        StudentRecords records;
        records.showByStudent = byStudent;
        records.currentSubject = 2; // Geography
        for (int i = 0; i < static_cast<int>(names.size()); ++i) {
            Student &student = records.students.emplace_back(newStudent(session.bank.subjectMax));
            student.name = names[i];
            student.current = i == current;
            for (int s = 0; s < static_cast<int>(student.results.size()); ++s)
                for (int level = 0; level < LevelCount; ++level) {
                    student.results[s].last[level] = scoreOf(i, s, level, false);
                    student.results[s].high[level] = scoreOf(i, s, level, true);
                }
        }
        ASSERT_FALSE(saveStudents(records, session.paths.studentsPath).has_value());
    }

    // The help page only counts how often it was opened.
    std::unique_ptr<StudentsScreen> openScreen()
    {
        auto screen = std::make_unique<StudentsScreen>(session);
        screen->setHelpOpener([this](QWidget *) { ++helpOpened; });
        EXPECT_TRUE(screen->loadRoster());
        return screen;
    }

    // The roster as the Students file now holds it.
    StudentRecords saved() const
    {
        StudentRecords records;
        EXPECT_EQ(loadStudents(records, session.bank, session.paths.studentsPath).status,
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

    static std::vector<std::string> lines(const StudentsScreen &screen)
    {
        const QListWidget *list = child<QListWidget>(screen, "List1");
        std::vector<std::string> texts;
        for (int row = 0; row < list->count(); ++row)
            texts.push_back(list->item(row)->text().toStdString());
        return texts;
    }

    // The title of the last dialog, when it was a confirmation.
    std::string lastConfirm() const
    {
        const ScriptedPrompt::Shown *shown = prompt.last();
        return shown && shown->kind == Kind::Confirm ? shown->title.toStdString() : "";
    }

    TempDataDir dir;
    ScriptedPrompt prompt;
    Session session{dir.paths(), prompt};
    int helpOpened = 0;
};

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
              std::vector<std::string>({"List1", "cmdAddStudent", "cmdDelete", "txtStudent",
                                        "optLevel0", "cmbSubject", "optByStudent",
                                        "cmdResetTotals_Student", "cmdResetTotals_All", "cmdReport",
                                        "cmdExport", "cmdHelp", "cmdClose"}));
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

TEST_F(StudentsScreenTest, ReportAndExportTakeTheRosterAsItStandsFromTheKeyboard)
{
    writeRoster({"A", "B"});
    auto screen = openScreen();
    std::vector<ClassReport> previewed;
    screen->setReportPreviewer(
        [&previewed](QWidget *, const ClassReport &report) { previewed.push_back(report); });
    tabStops(*screen); // shown and active, so that its mnemonics work
    child<QLineEdit>(*screen, "txtStudent")->setText(QStringLiteral("Ann"));
    EXPECT_EQ(spokenName(*child(*screen, "cmdReport")), "Class report");
    EXPECT_EQ(spokenName(*child(*screen, "cmdExport")), "Export results");

    // Alt+R: the report of the roster in memory, not yet saved.
    // A mnemonic clicks its button a moment later, as the button is seen going down.
    QTest::keyClick(screen->focusWidget(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !previewed.empty(); }));
    ASSERT_EQ(previewed.size(), 1u);
    EXPECT_EQ(previewed[0].title, "Class results: " + className(dir.path()));
    ASSERT_EQ(previewed[0].tables.size(), session.bank.subjects.size());
    EXPECT_EQ(previewed[0].tables[0].rows[0].name, "Ann");

    // Alt+X: a file dialog; the file gets ".csv" when the name has no extension.
    const std::filesystem::path chosen = dir.path().parent_path() / "class";
    prompt.clear();
    prompt.answerSaveFile(QString::fromStdString(chosen.string()));
    QTest::keyClick(screen->focusWidget(), Qt::Key_X, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return prompt.last() != nullptr; }));
    EXPECT_EQ(prompt.last()->kind, Kind::SaveFile);
    EXPECT_TRUE(prompt.last()->defaultText.endsWith(QStringLiteral(".csv")));
    std::ostringstream expected;
    writeClassResultsCsv(expected, session.bank, session.records);
    const std::vector<unsigned char> written = readFileBytes(chosen.string() + ".csv");
    EXPECT_EQ(std::string(written.begin(), written.end()), expected.str());

    // Cancelling writes nothing and says nothing; a failure is told, naming the file.
    prompt.clear();
    child<QPushButton>(*screen, "cmdExport")->click();
    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString nowhere = QStringLiteral("/no/such/folder/class.csv");
    prompt.answerSaveFile(nowhere);
    child<QPushButton>(*screen, "cmdExport")->click();
    ASSERT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_TRUE(prompt.last()->text.contains(nowhere)) << prompt.last()->text.toStdString();
}

TEST_F(StudentsScreenTest, AReportTooLongToPreviewIsOfferedAsAPdfFile)
{
    writeRoster(std::vector<std::string>(400, "Student"));
    auto screen = openScreen();
    int previews = 0;
    screen->setReportPreviewer([&previews](QWidget *, const ClassReport &) { ++previews; });

    // Cancel: nothing is written.
    screen->showReport();
    EXPECT_EQ(lastConfirm(), "Class Report");
    EXPECT_TRUE(prompt.last()->text.contains(QStringLiteral("too many"))) << "pages";

    const std::filesystem::path chosen = dir.path().parent_path() / "report";
    prompt.answerConfirm(true);
    prompt.answerSaveFile(QString::fromStdString(chosen.string()));
    screen->showReport();
    EXPECT_EQ(prompt.last()->kind, Kind::SaveFile);
    EXPECT_TRUE(prompt.last()->defaultText.endsWith(QStringLiteral(".pdf")));
    const std::vector<unsigned char> pdf = readFileBytes(chosen.string() + ".pdf");
    EXPECT_EQ(std::string(pdf.begin(), pdf.begin() + std::min<std::size_t>(5, pdf.size())),
              "%PDF-");
    EXPECT_EQ(previews, 0);
}
