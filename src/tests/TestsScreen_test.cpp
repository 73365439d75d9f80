// The Tests screen's subjects, test lengths, revert all and closing, and the
// keyboard and screen-reader path through it.
#include "TestsScreen.h"

#include "TestsScreenFixture.h"
#include "core/StudentsFile.h"
#include "testsupport/ScreenAccess.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include <filesystem>

namespace {

class TestsScreenTest : public TestsScreenFixture {
protected:
    void addSubject(const QString &name)
    {
        prompt.answerInput(name);
        click(QStringLiteral("cmdAddSubject"));
    }
    QComboBox *subjects() const { return control<QComboBox>(QStringLiteral("cmbSubject")); }
    QString duration() const { return control<QLineEdit>(QStringLiteral("txtDuration"))->text(); }

    StudentRecords loadedStudents(const TestBank &bank) const
    {
        StudentRecords records;
        EXPECT_EQ(LoadStudents(records, bank, session.paths.StudentsPath).status,
                  LoadResult::Status::Loaded);
        return records;
    }
};

TEST_F(TestsScreenTest, AddingASubjectKeepsTwentyCharactersAndWritesBothFiles)
{
    session.records.Students[0].Results[1].High[3] = 9;
    open(1);

    // Cancelling the input box changes nothing and writes nothing.
    click(QStringLiteral("cmdAddSubject"));
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Add New Subject"));
    EXPECT_EQ(session.bank.SubjectMax, 5);
    EXPECT_FALSE(std::filesystem::exists(session.paths.TestsPath));

    addSubject(QStringLiteral("Astronomy and Planets")); // 21 characters
    addSubject(QStringLiteral("Twenty-five characters!!!"));
    const TestBank &bank = session.bank;
    ASSERT_EQ(bank.SubjectMax, 7);
    EXPECT_EQ(bank.Subjects[6].Name, "Astronomy and Planet");
    EXPECT_EQ(bank.Subjects[7].Name, "Twenty-five characte");
    EXPECT_FALSE(bank.Subjects[7].AdjacentLevels);
    EXPECT_EQ(bank.Limits[7].Seconds, 30);
    std::array<int32_t, LevelCount> oneQuestionAtK;
    oneQuestionAtK.fill(-1);
    oneQuestionAtK[0] = 0;
    EXPECT_EQ(bank.Limits[7].LastQuestion, oneQuestionAtK);

    // The new subject is shown with its one empty question.
    EXPECT_EQ(subjects()->currentText(), QStringLiteral("Twenty-five characte"));
    EXPECT_EQ(control<QTableView>(QStringLiteral("Grid1"))->model()->rowCount(), 1);

    // Both files hold the new subject; the student's results grew and kept the old ones.
    const TestBank saved = loadedTests();
    EXPECT_EQ(saved.Subjects.at(7).Name, "Twenty-five characte");
    const StudentRecords records = loadedStudents(saved);
    ASSERT_EQ(records.Students.at(0).Results.size(), 8u);
    EXPECT_EQ(records.Students[0].Results[1].High[3], 9);
    EXPECT_EQ(records.Students[0].Results[7].High, SubjectResults{}.High);
    EXPECT_EQ(records.CurrentSubject, 7);
}

TEST_F(TestsScreenTest, DeletingAMiddleSubjectMovesTheRestButNotTheirFlags)
{
    open(1);
    for (const char *name : {"A", "B", "C"})
        addSubject(QString::fromLatin1(name));
    TestBank &bank = session.bank;
    for (int s = 6; s <= 8; ++s) {
        bank.Limits[s].Seconds = 100 + s;
        bank.QuestionBank[s].Items()[0][0].Text = "question of " + bank.Subjects[s].Name;
        bank.Subjects[s].AdjacentLevels = s != 7;
        session.records.Students[0].Results[s].Last[0] = static_cast<int16_t>(s);
    }
    subjects()->setCurrentIndex(6);

    click(QStringLiteral("cmdDeleteSubject")); // Cancel
    EXPECT_TRUE(askedToConfirm(QStringLiteral("Confirm Delete Subject")));
    EXPECT_EQ(bank.SubjectMax, 8);

    prompt.answerConfirm(true);
    click(QStringLiteral("cmdDeleteSubject"));
    ASSERT_EQ(bank.SubjectMax, 7);
    ASSERT_EQ(bank.Subjects.size(), 8u);
    EXPECT_EQ(bank.Subjects[6].Name, "B");
    EXPECT_EQ(bank.Subjects[7].Name, "C");
    EXPECT_TRUE(bank.Subjects[6].AdjacentLevels);  // A's flag stays at index 6
    EXPECT_FALSE(bank.Subjects[7].AdjacentLevels); // B's flag stays at index 7
    const std::vector<SubjectResults> &results = session.records.Students[0].Results;
    ASSERT_EQ(results.size(), 8u);
    for (int s = 6; s <= 7; ++s) {
        EXPECT_EQ(bank.Limits[s].Seconds, 101 + s);
        EXPECT_EQ(bank.QuestionBank[s].Items()[0][0].Text, "question of " + bank.Subjects[s].Name);
        EXPECT_EQ(results[s].Last[0], s + 1);
    }

    // The subject that followed the deleted one is shown; both files were written.
    EXPECT_EQ(duration(), QStringLiteral("107"));
    const TestBank saved = loadedTests();
    EXPECT_EQ(saved.SubjectMax, 7);
    EXPECT_TRUE(saved.Subjects[6].AdjacentLevels);
    EXPECT_EQ(loadedStudents(saved).Students[0].Results.size(), 8u);

    // Deleting the last subject shows the new last one.
    subjects()->setCurrentIndex(7);
    prompt.answerConfirm(true);
    click(QStringLiteral("cmdDeleteSubject"));
    EXPECT_EQ(session.records.CurrentSubject, 6);
    EXPECT_EQ(subjects()->currentText(), QStringLiteral("B"));
}

TEST_F(TestsScreenTest, RevertAllDropsAddedSubjectsAndTheirResults)
{
    open(1);
    addSubject(QStringLiteral("Extra"));
    session.records.Students[0].Results[2].Last[4] = 6;
    session.bank.Limits[1].Seconds = 77;
    ResizeQuestionSlots(session.bank, 20);

    click(QStringLiteral("cmdRevertAll")); // Cancel
    EXPECT_TRUE(askedToConfirm(QStringLiteral("Confirm Revert ALL to Default")));
    EXPECT_EQ(session.bank.SubjectMax, 6);

    prompt.answerConfirm(true);
    click(QStringLiteral("cmdRevertAll"));
    EXPECT_EQ(session.bank.SubjectMax, 5);
    EXPECT_EQ(session.bank.QuestionMax, 11);
    EXPECT_EQ(session.bank.Limits[1].Seconds, 30);
    ASSERT_EQ(session.records.Students[0].Results.size(), 6u);
    EXPECT_EQ(session.records.Students[0].Results[2].Last[4], 6);
    // The added subject was current; the last built-in one is shown instead.
    EXPECT_EQ(session.records.CurrentSubject, 5);
    EXPECT_EQ(subjects()->count(), 6);

    const TestBank saved = loadedTests();
    EXPECT_EQ(saved.SubjectMax, 5);
    EXPECT_EQ(loadedStudents(saved).Students[0].Results.size(), 6u);
}

TEST_F(TestsScreenTest, TestLengthOutsideFiveToNineHundredNinetyNineBecomesThirty)
{
    // A fraction rounds to the nearest second, a half to the even one; a number
    // with an exponent is a number.
    const struct {
        const char *typed;
        int32_t seconds;
    } cases[] = {
        {"4", 30},     {"5", 5},     {"999", 999}, {"1000", 30}, {"", 30},    {"abc", 30},
        {"12abc", 30}, {"10.6", 11}, {"10.5", 10}, {"11.5", 12}, {"5.4", 5},  {"999.4", 30},
        {"999.5", 30}, {" 45 ", 45}, {"-20", 30},  {"1e9", 30},  {"1e1", 10}, {"6.5", 6},
    };
    open(2);
    auto *box = control<QLineEdit>(QStringLiteral("txtDuration"));
    for (const auto &entry : cases) {
        session.bank.Limits[2].Seconds = 60;
        box->selectAll();
        QTest::keyClicks(box, QString::fromLatin1(entry.typed));
        screen().txtDuration_LostFocus();
        EXPECT_EQ(session.bank.Limits[2].Seconds, entry.seconds) << '"' << entry.typed << '"';
        EXPECT_EQ(box->text(), QString::number(entry.seconds)) << '"' << entry.typed << '"';
    }
    EXPECT_TRUE(prompt.shown().empty()) << "no message for any of them";
    // The length belongs to the subject it was typed for.
    EXPECT_EQ(session.bank.Limits[3].Seconds, 30);
}

TEST_F(TestsScreenTest, OnlyAddedSubjectsCanBeRenamedOrDeleted)
{
    open(0);
    auto *edit = control<QPushButton>(QStringLiteral("cmdEditSubject"));
    auto *remove = control<QPushButton>(QStringLiteral("cmdDeleteSubject"));
    auto *revert = control<QPushButton>(QStringLiteral("cmdRevert"));
    click(QStringLiteral("cmdHelp"));
    EXPECT_EQ(helpOpened, 1);
    for (int subject = 0; subject < FirstAddedSubject; ++subject) {
        subjects()->setCurrentIndex(subject);
        EXPECT_FALSE(edit->isEnabled() || remove->isEnabled()) << subject;
        EXPECT_FALSE(revert->isHidden()) << subject;
        EXPECT_EQ(control<QGroupBox>(QStringLiteral("fraMulti"))->isHidden(), subject == 0);
    }
    // Called anyway, the handlers leave a built-in subject alone and ask nothing.
    screen().cmdEditSubject_Click();
    screen().cmdDeleteSubject_Click();
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_EQ(session.bank.SubjectMax, 5);

    addSubject(QStringLiteral("Poetry"));
    EXPECT_TRUE(edit->isEnabled() && remove->isEnabled());
    EXPECT_TRUE(revert->isHidden());
    std::filesystem::remove(session.paths.TestsPath);

    // Renaming offers the current name and is not saved until the screen closes.
    prompt.answerInput(QStringLiteral("Poetry and Rhymes of the World"));
    edit->click();
    EXPECT_EQ(prompt.last()->defaultText, QStringLiteral("Poetry"));
    EXPECT_EQ(subjects()->currentText(), QStringLiteral("Poetry and Rhymes of"));
    EXPECT_FALSE(std::filesystem::exists(session.paths.TestsPath));

    // Cancelled, the name stays.
    edit->click();
    EXPECT_EQ(session.bank.Subjects[6].Name, "Poetry and Rhymes of");
}

TEST_F(TestsScreenTest, EveryWayOfClosingStoresTheLengthAndWritesTheTestsFile)
{
    for (int way = 0; way < 3; ++way) {
        std::filesystem::remove(session.paths.TestsPath);
        TestsScreen &shown = open(3);
        shown.show();
        control<QLineEdit>(QStringLiteral("txtDuration"))->setText(QString::number(40 + way));
        if (way == 0)
            click(QStringLiteral("cmdClose"));
        else if (way == 1)
            QTest::keyClick(&shown, Qt::Key_Escape);
        else
            shown.close(); // the close box
        EXPECT_FALSE(shown.isVisible()) << way;
        EXPECT_EQ(session.bank.Limits[3].Seconds, 40 + way) << way;
        EXPECT_EQ(loadedTests().Limits[3].Seconds, 40 + way) << way;
        EXPECT_FALSE(std::filesystem::exists(session.paths.StudentsPath)) << way;
    }
}

TEST_F(TestsScreenTest, TabVisitsEachFrameTopDownAndTheControlsAreNamed)
{
    // Level 3 with addition and multiplication on: both show their range lists.
    session.bank.ArithOps[3] = "+x";
    session.records.CurrentLevel = 3;
    TestsScreen &arithmetic = open(ArithmeticSubject);
    arithmetic.show();
    subjects()->setFocus();
    EXPECT_EQ(TabStops(arithmetic),
              std::vector<std::string>(
                  {"cmbSubject",       "cmdAddSubject",   "txtDuration", "Grid2",      "cmbLevel2",
                   "cmbSwitchNumbers", "cmbSwitchBlanks", "cmdRevert2",  "optOn0",     "cmbLow1_0",
                   "cmbHigh1_0",       "cmbLow2_0",       "cmbHigh2_0",  "optOff1",    "optOn2",
                   "cmbLow1_2",        "cmbHigh1_2",      "cmbLow2_2",   "cmbHigh2_2", "optOff3",
                   "cmdRevertAll",     "cmdHelp",         "cmdClose"}));
    EXPECT_EQ(SpokenName(*control<QTableView>("Grid2")), "Arithmetic levels");
    EXPECT_EQ(SpokenLabel(*subjects()), "Subject:");
    EXPECT_EQ(SpokenName(*control<QLineEdit>("txtDuration")), "Time (in Seconds):");
    EXPECT_EQ(SpokenLabel(*control<QComboBox>("cmbLow1_2")), "Number 1 - Low");
    arithmetic.close();

    TestsScreen &spelling = open(1);
    spelling.show();
    subjects()->setFocus();
    EXPECT_EQ(TabStops(spelling),
              std::vector<std::string>({"cmbSubject", "cmdAddSubject", "txtDuration", "Grid1",
                                        "cmbLevel", "txt1", "txt2", "txt3", "txt4", "txt5",
                                        "cmdAdd", "cmdDelete", "chkAdjacentLevels", "cmdRevert",
                                        "cmdRevertAll", "cmdHelp", "cmdClose"}));
    EXPECT_EQ(SpokenName(*control<QTableView>("Grid1")), "Questions");
    EXPECT_EQ(SpokenLabel(*control<QComboBox>("cmbLevel")), "Level:");
    EXPECT_EQ(SpokenName(*control<QLineEdit>("txt3")), "Wrong Answer #1:");
}

} // namespace
