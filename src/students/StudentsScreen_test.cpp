// The roster side of the Students screen: the first run, renaming, adding and
// deleting students, closing, a Students file that cannot be read, and the
// keyboard and screen-reader path through it.
#include "StudentsTestFixture.h"
#include "testsupport/ScreenAccess.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include <algorithm>
#include <fstream>

namespace {
using Kind = ScriptedPrompt::Shown::Kind;
} // namespace

TEST_F(StudentsScreenTest, FirstRunWritesTheFileThenStoresTheFirstNameAsListed)
{
    const struct {
        QString answer;
        std::string kept;
        std::size_t bytes;
    } cases[] = {{QStringLiteral("Ann"), "Ann", 341},
                 {QString(), "", 338},
                 {QStringLiteral("\U0001F600 Ann & Co"), "? Ann & Co", 348}};
    const std::vector<unsigned char> start = {0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                              0,    0,    1, 0, 6, 0, 0, 0, 0, 0, 0, 0};
    for (const auto &entry : cases) {
        std::filesystem::remove(session.paths.StudentsPath);
        session.records = StudentRecords{};
        prompt.clear();
        prompt.answerInput(entry.answer);
        auto screen = openScreen();

        ASSERT_EQ(prompt.shown().size(), 1u) << entry.kept;
        EXPECT_EQ(prompt.last()->title, QStringLiteral("Welcome to the Tavrino program"));
        // Before the question: one nameless, current student at level K.
        ASSERT_EQ(prompt.bytesAtInput.size(), 338u);
        EXPECT_TRUE(std::equal(start.begin(), start.end(), prompt.bytesAtInput.begin()));
        EXPECT_EQ(prompt.bytesAtInput[336] & prompt.bytesAtInput[337], 0xFF);

        EXPECT_EQ(Lines(*child<QListWidget>(*screen, "List1")),
                  std::vector<std::string>{entry.kept});
        EXPECT_EQ(Utf8(child<QLineEdit>(*screen, "txtStudent")->text()), entry.kept);
        EXPECT_FALSE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());

        child<QPushButton>(*screen, "cmdClose")->click();
        const std::vector<unsigned char> closed = ReadFileBytes(session.paths.StudentsPath);
        ASSERT_EQ(closed.size(), entry.bytes) << entry.kept;
        EXPECT_EQ(std::string(closed.begin() + 12, closed.begin() + 12 + entry.kept.size()),
                  entry.kept);
        EXPECT_EQ(session.records.CurrentStudentName, entry.kept);
    }
}

TEST_F(StudentsScreenTest, FirstRosterThatCannotBeSavedIsReportedAndTheScreenOpens)
{
    Session elsewhere(DataPaths::In(dir.path() / "no such directory"), prompt);
    BuildDefaultTests(elsewhere.bank);
    StudentsScreen screen(elsewhere);
    screen.setHelpOpener([](QWidget *) {});
    prompt.answerInput(QStringLiteral("Ann"));

    EXPECT_TRUE(screen.Form_Load());
    ASSERT_EQ(prompt.shown().size(), 2u);
    EXPECT_EQ(prompt.shown()[0].kind, Kind::Stop);
    EXPECT_TRUE(prompt.shown()[0].text.contains(QStringLiteral("Tavrino_Students.dat")));
    EXPECT_EQ(prompt.shown()[1].kind, Kind::Input);
    EXPECT_EQ(Lines(*child<QListWidget>(screen, "List1")), std::vector<std::string>{"Ann"});
}

TEST_F(StudentsScreenTest, DamagedFileEndsTheProgramAndIsLeftAsItWas)
{
    const std::vector<unsigned char> damaged = {0xFF, 0xFF, 0, 0, 0, 0, 7, 0, 0, 0, 3, 0, 'A'};
    std::ofstream(session.paths.StudentsPath, std::ios::binary)
        .write(reinterpret_cast<const char *>(damaged.data()),
               static_cast<std::streamsize>(damaged.size()));
    StudentsScreen screen(session);
    EXPECT_FALSE(screen.Form_Load());

    ASSERT_EQ(prompt.shown().size(), 1u);
    const QString &text = prompt.last()->text;
    EXPECT_EQ(prompt.last()->kind, Kind::Stop);
    EXPECT_TRUE(text.contains(QString::fromStdString(session.paths.StudentsPath.string())));
    EXPECT_TRUE(text.contains(QStringLiteral("damaged")) &&
                text.contains(QStringLiteral("will now end")));
    EXPECT_TRUE(session.records.Students.empty());

    // Even a close of the half-loaded screen leaves the file alone.
    screen.cmdClose_Click();
    EXPECT_EQ(ReadFileBytes(session.paths.StudentsPath), damaged);
}

TEST_F(StudentsScreenTest, AddingRenamingAndDeletingKeepResultsWithTheirStudents)
{
    writeRoster({"A", "B", "C"});
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");
    auto *name = child<QLineEdit>(*screen, "txtStudent");
    list->setCurrentRow(1);
    EXPECT_EQ(name->text(), QStringLiteral("B"));

    screen->cmdDelete_Click(); // Cancel
    EXPECT_TRUE(askedToConfirm("Confirm Delete Student"));
    EXPECT_EQ(Lines(*list).size(), 3u);
    EXPECT_EQ(list->currentRow(), 1);

    prompt.answerConfirm(true);
    screen->cmdDelete_Click();
    EXPECT_EQ(Lines(*list), (std::vector<std::string>{"A", "C"}));
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(name->text(), QStringLiteral("A"));
    EXPECT_EQ(session.records.Students.at(1).Results[4].High[9], scoreOf(2, 4, 9, true));

    child<QPushButton>(*screen, "cmdAddStudent")->click();
    EXPECT_EQ(Lines(*list), (std::vector<std::string>{"A", "C", ""}));
    EXPECT_EQ(list->currentRow(), 2);
    EXPECT_TRUE(name->text().isEmpty());
    const Student &added = session.records.Students.at(2);
    EXPECT_EQ(added.Results.size(), 6u);
    EXPECT_EQ(added.Results[0].Last[0], 0);

    // The box keeps what was typed; the roster keeps it trimmed.
    QTest::keyClicks(name, QStringLiteral("  Dee "));
    EXPECT_EQ(name->text(), QStringLiteral("  Dee "));
    EXPECT_EQ(Lines(*list), (std::vector<std::string>{"A", "C", "Dee"}));
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("Dee"));

    screen->cmdClose_Click();
    const StudentRecords records = saved();
    EXPECT_EQ(Names(records), (std::vector<std::string>{"A", "C", "Dee"}));
    EXPECT_EQ(records.Students[1].Results[0].Last[0], scoreOf(2, 0, 0, false));
    EXPECT_FALSE(records.Students[0].Current);
    EXPECT_TRUE(records.Students[2].Current);
}

TEST_F(StudentsScreenTest, TheLastStudentCannotBeDeleted)
{
    writeRoster({"A", "B"});
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");

    prompt.answerConfirm(true);
    prompt.answerConfirm(true);
    QTest::keyClick(list, Qt::Key_A);
    EXPECT_TRUE(prompt.shown().empty());
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(Lines(*list), std::vector<std::string>{"B"});
    EXPECT_FALSE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());

    QTest::keyClick(list, Qt::Key_Delete);
    screen->cmdDelete_Click();
    EXPECT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(session.records.Students.size(), 1u);
}

TEST_F(StudentsScreenTest, EnterAndEscCloseAndMakeTheSelectedStudentCurrent)
{
    writeRoster({"A", "B", "C"});
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");
    screen->show();

    list->setCurrentRow(2);
    child<QRadioButton>(*screen, "optLevel4")->click();
    QTest::keyClick(child<QLineEdit>(*screen, "txtStudent"), Qt::Key_Return);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(session.records.CurrentStudent, 2);
    EXPECT_EQ(session.records.CurrentStudentName, "C");
    EXPECT_EQ(session.records.CurrentLevel, 4);
    StudentRecords records = saved();
    EXPECT_FALSE(records.Students[0].Current);
    EXPECT_TRUE(records.Students[2].Current);
    EXPECT_EQ(records.Students[2].Level, 4);

    screen->show();
    list->setCurrentRow(1);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(screen->isVisible());
    records = saved();
    EXPECT_TRUE(records.Students[1].Current);
    EXPECT_FALSE(records.Students[2].Current);
    EXPECT_EQ(session.records.CurrentLevel, 0);
}

TEST_F(StudentsScreenTest, ChoosingASubjectMakesItCurrent)
{
    writeRoster({"A", "B"}, 0, false);
    auto screen = openScreen();
    auto *subjects = child<QComboBox>(*screen, "cmbSubject");
    auto *heading = child<QLabel>(*screen, "lblStudentOrSubject");
    EXPECT_EQ(subjects->count(), 6);
    EXPECT_EQ(heading->text(), QStringLiteral("Arithmetic"));

    subjects->setCurrentIndex(3);
    EXPECT_EQ(session.records.CurrentSubject, 3);
    EXPECT_EQ(session.records.CurrentSubjectName, "History");
    EXPECT_EQ(heading->text(), QStringLiteral("History"));
    const QAbstractItemModel *grid = child<QAbstractItemView>(*screen, "Grid1")->model();
    EXPECT_EQ(grid->index(1, 2).data().toString(), QString::number(scoreOf(0, 3, 0, false)));

    child<QPushButton>(*screen, "cmdHelp")->click();
    EXPECT_EQ(helpOpened, 1);
    screen->cmdClose_Click();
    EXPECT_EQ(saved().CurrentSubject, 3);
}

TEST_F(StudentsScreenTest, TabFollowsTheScreenAndTheControlsAreNamed)
{
    writeRoster({"Ann", "Bob"});
    auto screen = openScreen();
    screen->show();
    auto *list = child<QListWidget>(*screen, "List1");

    EXPECT_EQ(screen->focusWidget(), list) << "the arrow keys choose a student at once";
    EXPECT_EQ(
        TabStops(*screen),
        std::vector<std::string>({"List1", "cmdAddStudent", "cmdDelete", "txtStudent", "optLevel0",
                                  "cmbSubject", "optByStudent", "cmdResetTotals_Student",
                                  "cmdResetTotals_All", "cmdHelp", "cmdClose"}));
    const std::pair<const char *, const char *> spoken[] = {
        {"List1", "Students"},
        {"txtStudent", "Student name"},
        {"Grid1", "Scores"},
        {"optLevel7", "Level 7"},
        {"lblStudentOrSubject", "Scores for: Ann"}};
    for (const auto &[name, text] : spoken)
        EXPECT_EQ(SpokenName(*child<QWidget>(*screen, name)), text) << name;
    EXPECT_EQ(SpokenLabel(*child<QComboBox>(*screen, "cmbSubject")), "Current Subject:");

    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(SpokenName(*child<QLabel>(*screen, "lblStudentOrSubject")), "Scores for: Bob");
}
