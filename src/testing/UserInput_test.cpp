// What reaches the main screen from the keyboard and from the other screens:
// any text in the answer boxes, names and questions with "&" or markup in
// them, and number ranges at the ends of their lists.
#include "MainScreenFixture.h"

#include "testsupport/ShownText.h"

#include <QTest>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

std::string Utf8(const QString &text)
{
    return text.toStdString();
}

} // namespace

class MainScreenUserInputTest : public MainScreenTest {
protected:
    void chooseLevel(int level)
    {
        option(QStringLiteral("optLevel%1").arg(level).toLatin1().constData())->click();
    }
    QLabel *lastQuestion(int part) const
    {
        return label(QStringLiteral("lblLastQuestion_Math%1").arg(part).toLatin1().constData());
    }
};

TEST_F(MainScreenUserInputTest, AnswerBoxesTakeAnyTextAndJudgeItByTheEquation)
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
        {3, "1e308", "1e-308", "1", false},
        {3, "7", "-0", "0", false}, // a division by zero, signed or not, is wrong
        {3, "99999999999999999999", "99999999999999999999", "1", true},
    };
    int level = -1;
    int rights = 0;
    int wrongs = 0;
    const auto stop = [&] {
        screen->cmdStop_Click();
        EXPECT_EQ(text("lblScoreTotal"), QString::number(rights - wrongs));
        EXPECT_EQ(studentsOnDisk().Students[0].Results[ArithmeticSubject].Last[level],
                  rights - wrongs);
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
        box("txtNum1")->setText(QString::fromLatin1(entry.number1));
        box("txtNum2")->setText(QString::fromLatin1(entry.number2));
        QTest::keyClicks(box("txtAnswer"), QString::fromLatin1(entry.answer));
        QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
        EXPECT_EQ(text("lblRightWrong"), entry.right ? "Right:" : "Wrong:")
            << entry.number1 << " " << text("lblOp") << " " << entry.number2 << " = "
            << entry.answer;
        (entry.right ? rights : wrongs) += 1;
        EXPECT_TRUE(box("txtAnswer")->text().isEmpty()) << "the next question is up";
    }
    stop();
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(MainScreenUserInputTest, AmpersandsAndMarkupShowAsTyped)
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
        for (std::vector<Question> &level : questions.Items)
            level.resize(static_cast<std::size_t>(bank.QuestionMax) + 1);
        questions.Items[0][0] = {"Is 3 < 4 & 5 > 2", answers[0], answers[1], answers[2],
                                 answers[3]};
        bank.QuestionBank.push_back(questions);
    });
    StudentRecords roster;
    roster.Students.push_back(NewStudent(6));
    roster.Students[0].Name = studentName;
    roster.Students[0].Current = true;
    ASSERT_FALSE(SaveStudents(roster, session.paths.StudentsPath));
    startUp();
    EXPECT_EQ(Utf8(ShownText(*label("lblStudent"))), studentName);

    combo("cmbSubject")->setCurrentIndex(6);
    EXPECT_EQ(Utf8(combo("cmbSubject")->currentText()), subjectName);
    EXPECT_EQ(Utf8(ShownText(*label("lblSubject"))), subjectName);

    screen->cmdStartTest_Click();
    EXPECT_EQ(Utf8(ShownText(*label("lblQuestion_Multi"))), "Is 3 < 4 & 5 > 2?");
    std::multiset<std::string> shown;
    QRadioButton *right = nullptr;
    for (int index = 0; index < 4; ++index) {
        QRadioButton *answer =
            option(QStringLiteral("optAnswer%1").arg(index).toLatin1().constData());
        shown.insert(Utf8(ShownText(*answer)));
        if (ShownText(*answer) == QStringLiteral("&"))
            right = answer;
    }
    EXPECT_EQ(shown, std::multiset<std::string>(answers.begin(), answers.end()));
    ASSERT_NE(right, nullptr);
    QTest::mouseClick(right, Qt::LeftButton);
    QTest::keyClick(right, Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), "Right.");
    EXPECT_EQ(Utf8(ShownText(*label("lblLastQuestion_Multi1"))), "&");
    screen->cmdStop_Click();
    EXPECT_EQ(studentsOnDisk().Students[0].Results[6].Last[0], 1);
}

TEST_F(MainScreenUserInputTest, RangesAtTheEndsOfTheirListsGiveWholeProblems)
{
    // Addition 0..30 and 30..30, subtraction 0..0 and 0..30, multiplication
    // 9..9 and 2..12, division 1..30 and 30..30; numbers switch places and the
    // blank moves from box to box.
    constexpr int Level = 9;
    saveTestsWith([](TestBank &bank) {
        bank.ArithOps[Level] = "x+-/";
        const int ranges[4][4] = {{0, 30, 30, 30}, {0, 0, 0, 30}, {9, 9, 2, 12}, {1, 30, 30, 30}};
        for (int op = 0; op < 4; ++op) {
            bank.ArithLow1[Level][op] = ranges[op][0];
            bank.ArithHigh1[Level][op] = ranges[op][1];
            bank.ArithLow2[Level][op] = ranges[op][2];
            bank.ArithHigh2[Level][op] = ranges[op][3];
        }
        bank.ArithSwitch[Level] = {true, true};
    });
    startUp();
    chooseLevel(Level);
    screen->cmdStartTest_Click();
    std::set<std::string> ops;
    for (int question = 0; question < 64; ++question) {
        QLineEdit *blank = nullptr;
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"})
            if (box(name)->text().isEmpty())
                blank = box(name);
        ASSERT_NE(blank, nullptr);
        QTest::keyClicks(blank, QStringLiteral("0"));
        QTest::keyClick(blank, Qt::Key_Return);

        // The problem that was asked, in full.
        const long number1 = lastQuestion(0)->text().toLong();
        const std::string op = Utf8(lastQuestion(1)->text());
        const long number2 = lastQuestion(2)->text().toLong();
        const long answer = lastQuestion(4)->text().toLong();
        ops.insert(op);
        // The two drawn numbers, whichever place each took.
        const std::multiset<long> drawn = op == "+" || op == "x"
                                              ? std::multiset<long>{number1, number2}
                                              : std::multiset<long>{number2, answer};
        // One of them is the range that is a single value, both lie in the span
        // of the two ranges.
        const auto drawnFrom = [&drawn](long single, long low, long high) {
            return drawn.count(single) > 0 && std::all_of(drawn.begin(), drawn.end(), [&](long n) {
                       return n >= low && n <= high;
                   });
        };
        const std::string asked = std::to_string(number1) + " " + op + " " +
                                  std::to_string(number2) + " = " + std::to_string(answer);
        if (op == "+") {
            EXPECT_EQ(number1 + number2, answer) << asked;
            EXPECT_TRUE(drawnFrom(30, 0, 30)) << asked;
        } else if (op == "-") {
            EXPECT_EQ(number1 - number2, answer) << asked;
            EXPECT_TRUE(drawnFrom(0, 0, 30)) << asked;
        } else if (op == "x") {
            EXPECT_EQ(number1 * number2, answer) << asked;
            EXPECT_TRUE(drawnFrom(9, 2, 12)) << asked;
        } else {
            ASSERT_EQ(op, "/");
            EXPECT_EQ(number1, number2 * answer) << asked;
            EXPECT_TRUE(drawnFrom(30, 1, 30)) << asked;
        }
    }
    EXPECT_EQ(ops, (std::set<std::string>{"+", "-", "x", "/"}));
    screen->cmdStop_Click();
    EXPECT_TRUE(prompt.shown().empty());
}
