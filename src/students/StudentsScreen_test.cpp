// The roster side of the Students screen: the first run, renaming, adding and
// deleting students, closing, and a Students file that cannot be read.
#include "StudentsTestFixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <algorithm>
#include <fstream>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

QStringList lines(const QListWidget &list)
{
    QStringList texts;
    for (int row = 0; row < list.count(); ++row)
        texts << list.item(row)->text();
    return texts;
}

bool hasLabel(const QWidget &screen, const QString &text)
{
    const QList<QLabel *> labels = screen.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
                       [&text](const QLabel *label) { return label->text() == text; });
}

} // namespace

TEST_F(StudentsScreenTest, FirstRunWritesTheFileThenAsksForTheFirstName)
{
    prompt.answerInput(QStringLiteral("Ann"));
    auto screen = openScreen();

    ASSERT_EQ(prompt.shown().size(), 1u);
    const ScriptedPrompt::Shown &welcome = prompt.shown().front();
    EXPECT_EQ(welcome.kind, Kind::Input);
    EXPECT_EQ(welcome.title, QStringLiteral("Welcome to the Tavrino program"));
    EXPECT_EQ(welcome.text, QStringLiteral("Please enter the first Student's name:\r"
                                           "(You can add additional Students, by clicking\r"
                                           "the [Add Student] button on the next screen.)"));

    // Before the question: one nameless, current student at level K.
    ASSERT_TRUE(prompt.fileAtInput);
    const std::vector<unsigned char> &first = prompt.bytesAtInput;
    ASSERT_EQ(first.size(), 338u);
    const std::vector<unsigned char> start = {0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                              0,    0,    1, 0, 6, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_TRUE(std::equal(start.begin(), start.end(), first.begin()));
    EXPECT_EQ(first[336], 0xFF);
    EXPECT_EQ(first[337], 0xFF);

    auto *list = child<QListWidget>(*screen, "List1");
    EXPECT_EQ(lines(*list), QStringList{QStringLiteral("Ann")});
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_FALSE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());
    EXPECT_EQ(child<QLineEdit>(*screen, "txtStudent")->text(), QStringLiteral("Ann"));
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("Ann"));
    EXPECT_TRUE(child<QRadioButton>(*screen, "optLevel0")->isChecked());

    child<QPushButton>(*screen, "cmdClose")->click();
    EXPECT_EQ(screen->result(), QDialog::Accepted);
    const std::vector<unsigned char> closed = ReadFileBytes(session.paths.StudentsPath);
    ASSERT_EQ(closed.size(), 341u);
    EXPECT_EQ(closed[10], 3);
    EXPECT_EQ(std::string(closed.begin() + 12, closed.begin() + 15), "Ann");
    EXPECT_EQ(session.records.CurrentStudentName, "Ann");
    EXPECT_EQ(session.records.CurrentStudent, 0);
    EXPECT_EQ(prompt.shown().size(), 1u);
}

TEST_F(StudentsScreenTest, FirstRunWithoutANameKeepsTheNamelessStudent)
{
    auto screen = openScreen();
    EXPECT_EQ(lines(*child<QListWidget>(*screen, "List1")), QStringList{QString()});
    screen->cmdClose_Click();
    EXPECT_EQ(ReadFileBytes(session.paths.StudentsPath).size(), 338u);
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
    EXPECT_EQ(lines(*child<QListWidget>(screen, "List1")), QStringList{QStringLiteral("Ann")});
}

TEST_F(StudentsScreenTest, DamagedFileEndsTheProgramAndIsLeftAsItWas)
{
    const std::vector<unsigned char> damaged = {0xFF, 0xFF, 0, 0, 0, 0, 7, 0, 0, 0, 3, 0, 'A'};
    {
        std::ofstream out(session.paths.StudentsPath, std::ios::binary);
        out.write(reinterpret_cast<const char *>(damaged.data()),
                  static_cast<std::streamsize>(damaged.size()));
    }
    StudentsScreen screen(session);
    EXPECT_FALSE(screen.Form_Load());

    ASSERT_EQ(prompt.shown().size(), 1u);
    const ScriptedPrompt::Shown &message = prompt.shown().front();
    EXPECT_EQ(message.kind, Kind::Stop);
    EXPECT_TRUE(message.text.contains(QString::fromStdString(session.paths.StudentsPath.string())));
    EXPECT_TRUE(message.text.contains(QStringLiteral("damaged")));
    EXPECT_TRUE(message.text.contains(QStringLiteral("will now end")));
    EXPECT_TRUE(session.records.Students.empty());

    // Even a close of the half-loaded screen leaves the file alone.
    screen.cmdClose_Click();
    EXPECT_EQ(ReadFileBytes(session.paths.StudentsPath), damaged);
}

TEST_F(StudentsScreenTest, ShowsItsCaptionsAndOpensItsHelp)
{
    writeRoster({"Ann", "Bob"});
    auto screen = openScreen();
    EXPECT_EQ(screen->objectName(), QStringLiteral("frmProfiles"));
    EXPECT_EQ(screen->windowTitle(), QStringLiteral("Students"));
    EXPECT_TRUE(screen->isModal());
    const std::pair<const char *, const char *> buttons[] = {
        {"optLevel0", "K"},
        {"optLevel12", "12"},
        {"cmdAddStudent", "Add Student"},
        {"cmdDelete", "Delete Student"},
        {"cmdResetTotals_All", "Reset ALL Student Totals"},
        {"cmdResetTotals_Student", "Reset This Student's Totals"},
        {"optByStudent", "Student"},
        {"optBySubject", "Subject"}};
    for (const auto &[name, text] : buttons)
        EXPECT_EQ(child<QAbstractButton>(*screen, name)->text(), QString::fromLatin1(text));
    for (const char *text : {"Select a Student", "Student:", "Level:", "Current Subject:",
                             "SCORES FOR:", "When you are finished using this screen, press [Esc]",
                             "(All changes are automatically stored)",
                             "'Last' = Most Recent Score; 'High' = Highest Score"})
        EXPECT_TRUE(hasLabel(*screen, QString::fromLatin1(text))) << text;
    EXPECT_TRUE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());
    EXPECT_EQ(child<QComboBox>(*screen, "cmbSubject")->count(), 6);

    child<QPushButton>(*screen, "cmdHelp")->click();
    EXPECT_EQ(helpOpened, 1);
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(StudentsScreenTest, TypingANameRenamesTheStudentTrimmed)
{
    writeRoster({"Ann", "Cy"}, 1);
    auto screen = openScreen();
    auto *name = child<QLineEdit>(*screen, "txtStudent");
    auto *list = child<QListWidget>(*screen, "List1");
    EXPECT_EQ(name->text(), QStringLiteral("Cy"));

    name->clear();
    QTest::keyClicks(name, QStringLiteral("  Bob "));
    EXPECT_EQ(name->text(), QStringLiteral("  Bob "));
    EXPECT_EQ(session.records.Students[1].Name, "Bob");
    EXPECT_EQ(lines(*list), (QStringList{QStringLiteral("Ann"), QStringLiteral("Bob")}));
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("Bob"));

    screen->cmdClose_Click();
    const StudentRecords records = saved();
    ASSERT_EQ(records.Students.size(), 2u);
    EXPECT_EQ(records.Students[0].Name, "Ann");
    EXPECT_EQ(records.Students[1].Name, "Bob");
}

TEST_F(StudentsScreenTest, AddingAndDeletingKeepResultsWithTheirStudents)
{
    writeRoster({"A", "B", "C"});
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");
    auto *name = child<QLineEdit>(*screen, "txtStudent");
    list->setCurrentRow(1);
    EXPECT_EQ(name->text(), QStringLiteral("B"));

    screen->cmdDelete_Click();
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.shown()[0].kind, Kind::Confirm);
    EXPECT_EQ(prompt.shown()[0].title, QStringLiteral("Confirm Delete Student"));
    EXPECT_EQ(prompt.shown()[0].text,
              QStringLiteral("Are you sure you want to Delete this Student?"));
    EXPECT_EQ(lines(*list).size(), 3);
    EXPECT_EQ(list->currentRow(), 1);

    prompt.answerConfirm(true);
    screen->cmdDelete_Click();
    EXPECT_EQ(lines(*list), (QStringList{QStringLiteral("A"), QStringLiteral("C")}));
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(name->text(), QStringLiteral("A"));
    ASSERT_EQ(session.records.Students.size(), 2u);
    EXPECT_EQ(session.records.Students[1].Name, "C");
    EXPECT_EQ(session.records.Students[1].Results[4].High[9], scoreOf(2, 4, 9, true));

    child<QPushButton>(*screen, "cmdAddStudent")->click();
    EXPECT_EQ(lines(*list), (QStringList{QStringLiteral("A"), QStringLiteral("C"), QString()}));
    EXPECT_EQ(list->currentRow(), 2);
    EXPECT_TRUE(name->text().isEmpty());
    EXPECT_TRUE(child<QPushButton>(*screen, "cmdDelete")->isEnabled());
    const Student &added = session.records.Students.at(2);
    EXPECT_EQ(added.Results.size(), 6u);
    EXPECT_EQ(added.Results[0].Last[0], 0);
    QTest::keyClicks(name, QStringLiteral("Dee"));

    screen->cmdClose_Click();
    const StudentRecords records = saved();
    ASSERT_EQ(records.Students.size(), 3u);
    EXPECT_EQ(records.Students[1].Name, "C");
    EXPECT_EQ(records.Students[1].Results[0].Last[0], scoreOf(2, 0, 0, false));
    EXPECT_EQ(records.Students[2].Name, "Dee");
    EXPECT_FALSE(records.Students[0].Current);
    EXPECT_TRUE(records.Students[2].Current);
}

TEST_F(StudentsScreenTest, TheLastStudentCannotBeDeleted)
{
    writeRoster({"A", "B"});
    auto screen = openScreen();
    auto *list = child<QListWidget>(*screen, "List1");
    auto *remove = child<QPushButton>(*screen, "cmdDelete");

    prompt.answerConfirm(true);
    prompt.answerConfirm(true);
    QTest::keyClick(list, Qt::Key_A);
    EXPECT_TRUE(prompt.shown().empty());
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(lines(*list), QStringList{QStringLiteral("B")});
    EXPECT_FALSE(remove->isEnabled());

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
    EXPECT_EQ(session.records.Students[2].Level, 4);
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
    EXPECT_EQ(subjects->currentIndex(), 0);
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("Arithmetic"));

    subjects->setCurrentIndex(3);
    EXPECT_EQ(session.records.CurrentSubject, 3);
    EXPECT_EQ(session.records.CurrentSubjectName, "History");
    EXPECT_EQ(child<QLabel>(*screen, "lblStudentOrSubject")->text(), QStringLiteral("History"));
    const QAbstractItemModel *grid = screen->findChild<QAbstractItemView *>("Grid1")->model();
    EXPECT_EQ(grid->index(1, 2).data().toString(), QString::number(scoreOf(0, 3, 0, false)));

    screen->cmdClose_Click();
    EXPECT_EQ(saved().CurrentSubject, 3);
}
