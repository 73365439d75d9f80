// What reaches the main screen from the keyboard and from the other screens:
// any text in the answer boxes, and names and questions with "&" or markup.
#include "MainScreenFixture.h"

#include "testsupport/ShownText.h"

#include <set>
#include <string>
#include <vector>

TEST_F(MainScreenTest, AnswerBoxesTakeAnyTextAndAreJudgedByTheEquationOnTheScreen)
{
    // One operation per level, and always the answer box to fill in.
    saveTestsWith([](TestBank &bank) {
        const char *const ops[] = {"+", "-", "x", "/"};
        for (int level = 0; level < 4; ++level) {
            bank.ArithOps[level] = ops[level];
            bank.ArithSwitch[level] = {false, false};
        }
    });
    startUp();
    // Any numbers that make the equation true are right, whatever was asked.
    const struct {
        int level; // its operation
        const char *number1, *number2, *answer;
        bool right;
    } cases[] = {
        // Beyond 2^53 a double cannot tell 1e20 + 1 from 1e20.
        {0, "99999999999999999999", "1", "99999999999999999999", true},
        {0, "-0", "0", "0", true},
        {0, "0", "0", "-0", true},
        {0, "abc", "2", "2", true}, // letters read as 0
        {0, "2", "2", "four", false},
        {0, "1e308", "1e308", "1e308", false}, // the sum overflows to infinity
        {1, "1e308", "1e308", "0", true},
        {1, "-1e308", "1e308", "-1e308", false},
        {2, "1e308", "1e308", "1e308", false},
        {2, "-0", "5", "0", true},
        {3, "12", "4", "3", true},
        {3, "6", "2", "3 apples", true}, // only the leading number counts
        {3, "1e308", "1e-308", "1", false},
        {3, "0", "0", "0", false}, // a division by zero, signed or not, is wrong
        {3, "7", "-0", "0", false},
        {3, "99999999999999999999", "99999999999999999999", "1", true},
    };
    int level = -1;
    int rights = 0;
    int wrongs = 0;
    const auto stop = [&] {
        screen->cmdStop_Click();
        EXPECT_EQ(text("lblScoreTotal"), QString::number(rights - wrongs));
        EXPECT_EQ(resultsOnDisk(ArithmeticSubject).Last[level], rights - wrongs);
        rights = wrongs = 0;
    };
    for (const auto &entry : cases) {
        if (entry.level != level) {
            if (level >= 0)
                stop();
            level = entry.level;
            chooseLevel(level);
            screen->cmdStartTest_Click();
        }
        box("txtNum1")->setText(entry.number1);
        box("txtNum2")->setText(entry.number2);
        QTest::keyClicks(box("txtAnswer"), entry.answer);
        QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
        EXPECT_EQ(text("lblRightWrong"), entry.right ? "Right:" : "Wrong:")
            << entry.number1 << " " << text("lblOp") << " " << entry.number2 << " = "
            << entry.answer;
        (entry.right ? rights : wrongs) += 1;
        EXPECT_TRUE(box("txtAnswer")->text().isEmpty()) << "the next question is up";
    }
    EXPECT_TRUE(shown("fraQuestion_Math")) << "a division by zero does not end the test";
    stop();
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(MainScreenTest, AmpersandsAndMarkupShowAsTyped)
{
    const std::string subjectName = "Salt & <i>Pep</i>";
    const std::string studentName = "Tom & <b>Jerry</b>";
    const std::vector<std::string> answers = {"&", "A & B", "<b>bold</b>", "&&"};
    saveTestsWith([&](TestBank &bank) {
        bank.SubjectMax += 1;
        bank.Subjects.push_back({subjectName, false});
        SubjectLimits limits;
        limits.LastQuestion.fill(-1);
        limits.LastQuestion[0] = 0;
        limits.Seconds = 30;
        bank.Limits.push_back(limits);
        SubjectQuestions questions;
        for (std::vector<Question> &level : questions.Items())
            level.resize(static_cast<std::size_t>(bank.QuestionMax) + 1);
        questions.Items()[0][0] = {"Is 3 < 4 & 5 > 2", answers[0], answers[1], answers[2],
                                   answers[3]};
        bank.QuestionBank.push_back(questions);
    });
    StudentRecords roster;
    roster.Students.push_back(NewStudent(6));
    roster.Students[0].Name = studentName;
    roster.Students[0].Current = true;
    ASSERT_FALSE(SaveStudents(roster, session.paths.StudentsPath));
    startUp();
    EXPECT_EQ(ShownText(*label("lblStudent")).toStdString(), studentName);

    combo("cmbSubject")->setCurrentIndex(6);
    EXPECT_EQ(combo("cmbSubject")->currentText().toStdString(), subjectName);
    EXPECT_EQ(ShownText(*label("lblSubject")).toStdString(), subjectName);

    screen->cmdStartTest_Click();
    EXPECT_EQ(ShownText(*label("lblQuestion_Multi")), "Is 3 < 4 & 5 > 2?");
    std::multiset<std::string> onButtons;
    for (int index = 0; index < 4; ++index)
        onButtons.insert(ShownText(*answerButton(index)).toStdString());
    EXPECT_EQ(onButtons, std::multiset<std::string>(answers.begin(), answers.end()));
    choose(true);
    EXPECT_EQ(text("lblRightWrong"), "Right.");
    EXPECT_EQ(ShownText(*label("lblLastQuestion_Multi1")), "&");
    screen->cmdStop_Click();
    EXPECT_EQ(resultsOnDisk(6).Last[0], 1);
}
