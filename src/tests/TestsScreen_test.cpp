// The Tests screen's subjects, test lengths, revert all and closing.
#include "TestsScreen.h"

#include "TestsScreenFixture.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <filesystem>

namespace {

using Kind = ScriptedPrompt::Shown::Kind;

class TestsScreenTest : public TestsScreenFixture {
protected:
    void addSubject(const QString &name)
    {
        prompt.answerInput(name);
        control<QPushButton>(QStringLiteral("cmdAddSubject"))->click();
    }

    void choose(int subject)
    {
        control<QComboBox>(QStringLiteral("cmbSubject"))->setCurrentIndex(subject);
    }

    TestBank loadedTests() const
    {
        TestBank bank;
        EXPECT_EQ(LoadTests(bank, session.paths.TestsPath).status, LoadResult::Status::Loaded);
        return bank;
    }

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
    control<QPushButton>(QStringLiteral("cmdAddSubject"))->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->kind, Kind::Input);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Add New Subject"));
    EXPECT_EQ(prompt.last()->text, QStringLiteral("Enter a name for the new Subject:"));
    EXPECT_TRUE(prompt.last()->defaultText.isEmpty());
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
    EXPECT_EQ(bank.Limits[7].LastQuestion[0], 0);
    for (int level = 1; level < LevelCount; ++level)
        EXPECT_EQ(bank.Limits[7].LastQuestion[level], -1) << level;
    for (const auto &level : bank.QuestionBank[7].Items)
        EXPECT_EQ(level.size(), static_cast<std::size_t>(bank.QuestionMax) + 1);

    // The new subject is shown with its one empty question.
    EXPECT_EQ(session.records.CurrentSubject, 7);
    EXPECT_EQ(session.records.CurrentSubjectName, "Twenty-five characte");
    EXPECT_EQ(control<QComboBox>(QStringLiteral("cmbSubject"))->currentText(),
              QStringLiteral("Twenty-five characte"));
    EXPECT_FALSE(control<QGroupBox>(QStringLiteral("fraMulti"))->isHidden());
    EXPECT_EQ(control<QTableView>(QStringLiteral("Grid1"))->model()->rowCount(), 1);
    EXPECT_EQ(control<QLineEdit>(QStringLiteral("txtDuration"))->text(), QStringLiteral("30"));

    // Both files hold the new subject; the student's results grew and kept the old ones.
    const TestBank saved = loadedTests();
    ASSERT_EQ(saved.SubjectMax, 7);
    EXPECT_EQ(saved.Subjects[7].Name, "Twenty-five characte");
    const StudentRecords records = loadedStudents(saved);
    ASSERT_EQ(records.Students.size(), 1u);
    ASSERT_EQ(records.Students[0].Results.size(), 8u);
    EXPECT_EQ(records.Students[0].Results[1].High[3], 9);
    EXPECT_EQ(records.Students[0].Results[7].High, SubjectResults{}.High);
    EXPECT_EQ(records.CurrentSubject, 7);

    // A name holds only what the file can keep.
    addSubject(QStringLiteral("Физика café"));
    EXPECT_EQ(bank.Subjects[8].Name, "?????? café");
}

TEST_F(TestsScreenTest, DeletingAMiddleSubjectMovesTheRestButNotTheirFlags)
{
    open(1);
    addSubject(QStringLiteral("A"));
    addSubject(QStringLiteral("B"));
    addSubject(QStringLiteral("C"));
    TestBank &bank = session.bank;
    for (int s = 6; s <= 8; ++s) {
        bank.Limits[s].Seconds = 100 + s;
        bank.QuestionBank[s].Items[0][0].Text = "question of " + bank.Subjects[s].Name;
        session.records.Students[0].Results[s].Last[0] = static_cast<int16_t>(s);
    }
    bank.Subjects[6].AdjacentLevels = true;
    bank.Subjects[7].AdjacentLevels = false;
    bank.Subjects[8].AdjacentLevels = true;
    choose(6);
    EXPECT_TRUE(control<QPushButton>(QStringLiteral("cmdDeleteSubject"))->isEnabled());

    prompt.answerConfirm(false);
    control<QPushButton>(QStringLiteral("cmdDeleteSubject"))->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->kind, Kind::Confirm);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Confirm Delete Subject"));
    EXPECT_EQ(prompt.last()->text, QStringLiteral("Are you sure you want to Delete this Subject?"));
    EXPECT_EQ(bank.SubjectMax, 8);

    prompt.answerConfirm(true);
    control<QPushButton>(QStringLiteral("cmdDeleteSubject"))->click();
    ASSERT_EQ(bank.SubjectMax, 7);
    ASSERT_EQ(bank.Subjects.size(), 8u);
    EXPECT_EQ(bank.Subjects[6].Name, "B");
    EXPECT_EQ(bank.Subjects[7].Name, "C");
    EXPECT_TRUE(bank.Subjects[6].AdjacentLevels);  // A's flag stays at index 6
    EXPECT_FALSE(bank.Subjects[7].AdjacentLevels); // B's flag stays at index 7
    EXPECT_EQ(bank.Limits[6].Seconds, 107);
    EXPECT_EQ(bank.Limits[7].Seconds, 108);
    EXPECT_EQ(bank.QuestionBank[6].Items[0][0].Text, "question of B");
    EXPECT_EQ(bank.QuestionBank[7].Items[0][0].Text, "question of C");

    const std::vector<SubjectResults> &results = session.records.Students[0].Results;
    ASSERT_EQ(results.size(), 8u);
    EXPECT_EQ(results[6].Last[0], 7);
    EXPECT_EQ(results[7].Last[0], 8);

    // The subject that followed the deleted one is shown; both files were written.
    EXPECT_EQ(control<QComboBox>(QStringLiteral("cmbSubject"))->currentText(), QStringLiteral("B"));
    EXPECT_EQ(control<QLineEdit>(QStringLiteral("txtDuration"))->text(), QStringLiteral("107"));
    const TestBank saved = loadedTests();
    EXPECT_EQ(saved.SubjectMax, 7);
    EXPECT_TRUE(saved.Subjects[6].AdjacentLevels);
    EXPECT_EQ(loadedStudents(saved).Students[0].Results.size(), 8u);

    // Deleting the last subject shows the new last one.
    choose(7);
    prompt.answerConfirm(true);
    control<QPushButton>(QStringLiteral("cmdDeleteSubject"))->click();
    EXPECT_EQ(session.records.CurrentSubject, 6);
    EXPECT_EQ(control<QComboBox>(QStringLiteral("cmbSubject"))->currentText(), QStringLiteral("B"));
}

TEST_F(TestsScreenTest, RevertAllDropsAddedSubjectsAndTheirResults)
{
    open(1);
    addSubject(QStringLiteral("Extra"));
    session.records.Students[0].Results[2].Last[4] = 6;
    session.records.Students[0].Results[6].Last[0] = 3;
    session.bank.Limits[1].Seconds = 77;
    ResizeQuestionSlots(session.bank, 20);

    prompt.answerConfirm(false);
    control<QPushButton>(QStringLiteral("cmdRevertAll"))->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Confirm Revert ALL to Default"));
    EXPECT_EQ(prompt.last()->text,
              QStringLiteral("Are you sure you want to Revert ALL Subjects to their Original, "
                             "Default state?\r(All customized Subjects will be Deleted.)"));
    EXPECT_EQ(session.bank.SubjectMax, 6);

    prompt.answerConfirm(true);
    control<QPushButton>(QStringLiteral("cmdRevertAll"))->click();
    EXPECT_EQ(session.bank.SubjectMax, 5);
    EXPECT_EQ(session.bank.QuestionMax, 11);
    EXPECT_EQ(session.bank.Limits[1].Seconds, 30);
    ASSERT_EQ(session.records.Students[0].Results.size(), 6u);
    EXPECT_EQ(session.records.Students[0].Results[2].Last[4], 6);
    // The added subject was current; the last built-in one is shown instead.
    EXPECT_EQ(session.records.CurrentSubject, 5);
    EXPECT_EQ(control<QComboBox>(QStringLiteral("cmbSubject"))->count(), 6);
    EXPECT_EQ(control<QComboBox>(QStringLiteral("cmbSubject"))->currentText(),
              QStringLiteral("Science"));

    const TestBank saved = loadedTests();
    EXPECT_EQ(saved.SubjectMax, 5);
    EXPECT_EQ(loadedStudents(saved).Students[0].Results.size(), 6u);
}

TEST_F(TestsScreenTest, TestLengthOutsideFiveToNineHundredNinetyNineBecomesThirty)
{
    open(2);
    auto *duration = control<QLineEdit>(QStringLiteral("txtDuration"));
    const struct {
        const char *typed;
        int32_t seconds;
    } cases[] = {
        {"4", 30},   {"5", 5},      {"999", 999},  {"1000", 30}, {"", 30},
        {"abc", 30}, {"12abc", 30}, {"10.6", 11},  {"10.5", 10}, {"11.5", 12},
        {"5.4", 5},  {"999.4", 30}, {"999.5", 30}, {" 45 ", 45}, {"-20", 30},
    };
    for (const auto &entry : cases) {
        session.bank.Limits[2].Seconds = 60;
        duration->setText(QString::fromLatin1(entry.typed));
        screen().txtDuration_LostFocus();
        EXPECT_EQ(session.bank.Limits[2].Seconds, entry.seconds) << '"' << entry.typed << '"';
        EXPECT_EQ(duration->text(), QString::number(entry.seconds)) << '"' << entry.typed << '"';
    }
    // No message for any of them.
    EXPECT_TRUE(prompt.shown().empty());
    // The length belongs to the subject it was typed for.
    EXPECT_EQ(session.bank.Limits[3].Seconds, 30);
}

TEST_F(TestsScreenTest, OnlyAddedSubjectsCanBeRenamedOrDeleted)
{
    open(0);
    auto *edit = control<QPushButton>(QStringLiteral("cmdEditSubject"));
    auto *remove = control<QPushButton>(QStringLiteral("cmdDeleteSubject"));
    auto *revert = control<QPushButton>(QStringLiteral("cmdRevert"));
    EXPECT_FALSE(control<QGroupBox>(QStringLiteral("fraMath"))->isHidden());
    EXPECT_TRUE(control<QGroupBox>(QStringLiteral("fraMulti"))->isHidden());
    control<QPushButton>(QStringLiteral("cmdHelp"))->click();
    EXPECT_EQ(helpOpened, 1);
    for (int subject = 0; subject < FirstAddedSubject; ++subject) {
        choose(subject);
        EXPECT_FALSE(edit->isEnabled()) << subject;
        EXPECT_FALSE(remove->isEnabled()) << subject;
        EXPECT_FALSE(revert->isHidden()) << subject;
        EXPECT_EQ(control<QGroupBox>(QStringLiteral("fraMulti"))->isHidden(), subject == 0);
    }
    // Called anyway, the handlers leave a built-in subject alone and ask nothing.
    screen().cmdEditSubject_Click();
    screen().cmdDeleteSubject_Click();
    EXPECT_TRUE(prompt.shown().empty());
    EXPECT_EQ(session.bank.Subjects[5].Name, "Science");
    EXPECT_EQ(session.bank.SubjectMax, 5);

    addSubject(QStringLiteral("Poetry"));
    EXPECT_TRUE(edit->isEnabled());
    EXPECT_TRUE(remove->isEnabled());
    EXPECT_TRUE(revert->isHidden());
    std::filesystem::remove(session.paths.TestsPath);

    // Renaming offers the current name and is not saved until the screen closes.
    prompt.answerInput(QStringLiteral("Poetry and Rhymes of the World"));
    edit->click();
    ASSERT_NE(prompt.last(), nullptr);
    EXPECT_EQ(prompt.last()->title, QStringLiteral("Edit Subject"));
    EXPECT_EQ(prompt.last()->text, QStringLiteral("Enter the new name for this Subject:"));
    EXPECT_EQ(prompt.last()->defaultText, QStringLiteral("Poetry"));
    EXPECT_EQ(session.bank.Subjects[6].Name, "Poetry and Rhymes of");
    EXPECT_EQ(control<QComboBox>(QStringLiteral("cmbSubject"))->currentText(),
              QStringLiteral("Poetry and Rhymes of"));
    EXPECT_EQ(session.records.CurrentSubject, 6);
    EXPECT_FALSE(std::filesystem::exists(session.paths.TestsPath));

    // Cancelled, the name stays.
    edit->click();
    EXPECT_EQ(session.bank.Subjects[6].Name, "Poetry and Rhymes of");
}

TEST_F(TestsScreenTest, EveryWayOfClosingStoresTheLengthAndWritesTheTestsFile)
{
    const auto closeBy = [](TestsScreen &shown, int way) {
        switch (way) {
        case 0:
            shown.findChild<QPushButton *>(QStringLiteral("cmdClose"))->click();
            break;
        case 1:
            QTest::keyClick(&shown, Qt::Key_Escape);
            break;
        default:
            shown.close(); // the close box
            break;
        }
    };
    for (int way = 0; way < 3; ++way) {
        std::filesystem::remove(session.paths.TestsPath);
        TestsScreen &shown = open(3);
        shown.show();
        control<QLineEdit>(QStringLiteral("txtDuration"))->setText(QString::number(40 + way));
        closeBy(shown, way);
        EXPECT_FALSE(shown.isVisible()) << way;
        EXPECT_EQ(session.bank.Limits[3].Seconds, 40 + way) << way;
        EXPECT_EQ(loadedTests().Limits[3].Seconds, 40 + way) << way;
        EXPECT_FALSE(std::filesystem::exists(session.paths.StudentsPath)) << way;
    }
}

} // namespace
