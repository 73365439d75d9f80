// After a test: what it remembers of each question, the review of what was
// missed, and the practice round that brings the missed questions back without
// touching the clock, the scores or the files.
#include "MainScreenFixture_test.h"

#include "review/ReviewLines.h"
#include "testsupport/ScreenAccess.h"
#include "ui/Colours.h"

#include <QAccessible>
#include <QListWidget>

#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int Geography = 2;

// A data file's bytes and the time it was last written: a save that wrote the
// same bytes again still shows.
struct FileState {
    std::vector<unsigned char> bytes;
    std::filesystem::file_time_type written;
    bool operator==(const FileState &other) const
    {
        return bytes == other.bytes && written == other.written;
    }
};

FileState fileState(const std::filesystem::path &path)
{
    return {readFileBytes(path), std::filesystem::last_write_time(path)};
}

} // namespace

class ReviewTest : public MainScreenTest {
protected:
    QListWidget *reviewList() const { return find<QListWidget>("lstReview"); }

    // The review's lines as shown, each with its mark as a screen reader reads it.
    std::vector<std::string> spokenLines() const
    {
        std::vector<std::string> lines;
        for (int row = 0; row < reviewList()->count(); ++row)
            lines.push_back(
                reviewList()->item(row)->data(Qt::AccessibleTextRole).toString().toStdString());
        return lines;
    }

    // The Arithmetic problem on the screen with the blank filled in rightly, as
    // "number1|number2|answer|blank box".
    QString problemOnScreen() const
    {
        QStringList parts;
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"})
            parts << (box(name) == blank() ? QString::number(rightEntry()) : box(name)->text());
        parts << blank()->objectName();
        return parts.join('|');
    }
    static QString recorded(const ArithmeticProblem &p)
    {
        const char *boxes[] = {"txtNum1", "txtNum2", "txtAnswer"};
        return QString("%1|%2|%3|%4")
            .arg(p.number1)
            .arg(p.number2)
            .arg(p.answer)
            .arg(boxes[static_cast<int>(p.blank)]);
    }

    // The multiple-choice question on the screen: its label and its answers in
    // button order, joined by "|".
    QString questionOnScreen() const
    {
        QStringList parts = {text("lblQuestion_Multi")};
        for (int index = 0; index < 4; ++index)
            parts << shownText(*answerButton(index));
        return parts.join('|');
    }
    static QString recorded(const MultipleChoiceProblem &q)
    {
        QStringList parts = {QString::fromStdString(q.label)};
        for (const std::string &choice : q.choices)
            parts << QString::fromStdString(choice);
        return parts.join('|');
    }
};

TEST_F(ReviewTest, ATestRemembersEachQuestionAsShownAndAnsweredForBothKindsOfSubject)
{
    startUp();
    chooseLevel(5); // every operation, the blank moving from box to box
    screen->startTest();
    std::vector<QString> asked;
    const std::vector<bool> rights = {true, false, false, true, false, true};
    for (const bool right : rights) {
        asked.push_back(problemOnScreen());
        typeAnswer(right);
    }
    const QString leftOnScreen = problemOnScreen();
    screen->stopTest();

    const std::vector<RecordedQuestion> &arithmetic = screen->testRecord().questions();
    ASSERT_EQ(arithmetic.size(), rights.size() + 1) << "the question on show at Stop too";
    for (std::size_t i = 0; i < rights.size(); ++i) {
        const auto &problem = std::get<ArithmeticProblem>(arithmetic[i].asked);
        EXPECT_EQ(recorded(problem), asked[i]);
        ASSERT_TRUE(arithmetic[i].answer);
        EXPECT_EQ(arithmetic[i].answer->right, rights[i]) << i;
        // typeAnswer types the right number, or one more.
        const QString rightNumber = asked[i].split('|')[static_cast<int>(problem.blank)];
        EXPECT_EQ(arithmetic[i].answer->typed,
                  QString::number(rightNumber.toLongLong() + (rights[i] ? 0 : 1)).toStdString());
    }
    EXPECT_EQ(recorded(std::get<ArithmeticProblem>(arithmetic.back().asked)), leftOnScreen);
    EXPECT_FALSE(arithmetic.back().answer);

    combo("cmbSubject")->setCurrentIndex(Geography);
    EXPECT_TRUE(screen->testRecord().questions().empty()) << "a new subject forgets the test";
    screen->startTest();
    asked.clear();
    std::vector<int> chosen;
    for (const bool right : {false, true, false}) {
        asked.push_back(questionOnScreen());
        choose(right);
        // choose() takes the right answer, or the first of the others.
        const QStringList answers = asked.back().split('|').mid(1);
        const QString rightAnswer = text("lblLastQuestion_Multi1");
        int index = 0;
        while (index < 3 && (answers[index] == rightAnswer) != right)
            ++index;
        chosen.push_back(index);
    }
    tick(30);
    const std::vector<RecordedQuestion> &choices = screen->testRecord().questions();
    ASSERT_EQ(choices.size(), 4u);
    for (std::size_t i = 0; i < 3; ++i) {
        const auto &question = std::get<MultipleChoiceProblem>(choices[i].asked);
        EXPECT_EQ(recorded(question), asked[i]) << "label and answers in the order shown";
        EXPECT_EQ(question.label, question.text + "?");
        EXPECT_EQ(question.choices[static_cast<std::size_t>(question.answerPosition)],
                  question.rightAnswer);
        ASSERT_TRUE(choices[i].answer);
        EXPECT_EQ(choices[i].answer->chosen, chosen[i]);
        EXPECT_EQ(choices[i].answer->right, i == 1);
    }
}

TEST_F(ReviewTest, TheReviewListsTheMissedFirstInRedAndIsReadOutAndWorkedByKeyboard)
{
    startUp();
    chooseLevel(0); // additions, the answer box always the blank
    screen->startTest();
    QStringList problems;
    for (const bool right : {true, false, true, false}) {
        problems << box("txtNum1")->text() + " + " + box("txtNum2")->text() + " = " +
                        QString::number(rightEntry());
        typeAnswer(right);
    }
    EXPECT_FALSE(shown("cmdReview")) << "not while the test runs";
    screen->stopTest();
    ASSERT_TRUE(shown("cmdReview"));
    EXPECT_EQ(button("cmdReview")->text(), "Review (2 missed)");
    // typeAnswer's wrong answer is one more than the right one.
    const auto missed = [&](int i) {
        return "Missed: " + problems[i] + ", you wrote " +
               QString::number(problems[i].section(' ', -1).toInt() + 1);
    };
    const QString unanswered = box("txtNum1")->text() + " + " + box("txtNum2")->text() + " = " +
                               QString::number(rightEntry());
    std::vector<std::string> expected;
    for (const QString &line :
         {missed(1), missed(3), "Right: " + problems[0], "Right: " + problems[2],
          "Not answered: " + unanswered + ", not answered"})
        expected.push_back(line.toStdString());

    QTest::keyClick(button("cmdReview"), Qt::Key_Return);
    EXPECT_EQ(showing({"fraStartTest", "fraReview", "fraLastAnswer", "cmdExit"}),
              "fraReview|cmdExit");
    EXPECT_EQ(text("lblReviewHeading"), "You missed 2 of 4. They come first.");
    EXPECT_EQ(spokenLines(), expected);
    for (int row = 0; row < reviewList()->count(); ++row) {
        const QListWidgetItem &item = *reviewList()->item(row);
        // The line as shown is the line as read, without the spoken mark.
        EXPECT_TRUE(expected[static_cast<std::size_t>(row)].find(item.text().toStdString()) !=
                    std::string::npos);
        const int colour = row < 2 ? Bgr::Red : row < 4 ? Bgr::Blue : -1;
        if (colour >= 0) {
            EXPECT_EQ(item.foreground().color(), bgrColor(colour)) << row;
        }
        EXPECT_GE(item.font().pointSize(), 18) << "large type";
    }
    EXPECT_TRUE(reviewList()->item(0)->font().bold());

    // A keyboard and a screen reader find the list with the heading, then the buttons.
    EXPECT_EQ(screen->focusWidget(), reviewList());
    EXPECT_EQ(spokenDescription(*reviewList()), "You missed 2 of 4. They come first.");
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(reviewList());
    ASSERT_NE(list, nullptr);
    ASSERT_GT(list->childCount(), 0);
    EXPECT_EQ(list->child(0)->text(QAccessible::Name).toStdString(), expected[0]);
    EXPECT_EQ(tabStops(*screen),
              std::vector<std::string>({"lstReview", "cmdPractise", "cmdPractiseWeak",
                                        "cmdReviewBack", "cmdSelectStudent", "cmdTest",
                                        "cmdWorksheet", "cmdHelp", "cmdExit"}));
    QTest::keyClick(reviewList(), Qt::Key_Escape);
    EXPECT_EQ(showing({"fraStartTest", "fraReview", "cmdReview"}), "fraStartTest|cmdReview");
    EXPECT_EQ(screen->focusWidget(), button("cmdReview"));
}

TEST_F(ReviewTest, PractisingTheMissedAsksThemAsShownUntilRightAndLeavesScoresAndFilesAlone)
{
    saveTestsWith([](TestBank &bank) { bank.subjects[Geography].adjacentLevels = false; });
    startUp();
    combo("cmbSubject")->setCurrentIndex(Geography);
    chooseLevel(2);
    screen->startTest();
    for (const bool right : {false, true, false, true})
        choose(right);
    tick(30);
    const std::vector<const char *> scoreLabels = {
        "lblTimeLeft",  "lblScoreRight", "lblScoreWrong",   "lblScoreTotal",
        "lblLastScore", "lblHighScore",  "lblTestCompleted"};
    const auto scores = [&] {
        QStringList all;
        for (const char *name : scoreLabels)
            all << text(name);
        return all.join('|');
    };
    const QString scoresAfterTest = scores();
    EXPECT_EQ(scoresAfterTest, "0|2|2|0|0|0|Test Completed");
    const FileState tests = fileState(session.paths.testsPath);
    const FileState students = fileState(session.paths.studentsPath);
    std::vector<QString> missed;
    for (const RecordedQuestion &question : screen->testRecord().questions())
        if (question.isMissed())
            missed.push_back(recorded(std::get<MultipleChoiceProblem>(question.asked)));
    ASSERT_EQ(missed.size(), 2u);

    button("cmdReview")->click();
    const std::vector<std::string> review = spokenLines();
    EXPECT_EQ(review.size(), 5u) << "four answers and the question the clock ended on";
    button("cmdPractise")->click();
    EXPECT_EQ(showing({"fraQuestion_Multi", "fraPractice", "fraScore_Test", "fraReview",
                       "cmdSelectStudent", "cmdExit"}),
              "fraQuestion_Multi|fraPractice");
    EXPECT_EQ(text("lblPracticeLeft"), "2 questions to go");
    EXPECT_EQ(text("lblInstruction_Multi"), "Select the correct answer, and press [Enter]:");
    EXPECT_EQ(questionOnScreen(), missed[0]) << "the same answers in the same order";
    EXPECT_EQ(screen->focusWidget(), answerButton(0));
    EXPECT_FALSE(answerButton(0)->isChecked()) << "nothing chosen";

    choose(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong.");
    EXPECT_EQ(textColour(label("lblRightWrong")), bgrColor(Bgr::Red));
    EXPECT_EQ(questionOnScreen(), missed[1]);
    EXPECT_EQ(text("lblPracticeLeft"), "2 questions to go") << "the first comes back";
    choose(true);
    EXPECT_EQ(text("lblRightWrong"), "Right.");
    EXPECT_EQ(textColour(label("lblRightWrong")), bgrColor(Bgr::Blue));
    EXPECT_EQ(text("lblPracticeLeft"), "1 question to go");
    EXPECT_EQ(questionOnScreen(), missed[0]);
    choose(true);

    EXPECT_EQ(showing({"fraQuestion_Multi", "fraPractice", "fraScore_Test", "fraReview",
                       "cmdSelectStudent", "cmdExit"}),
              "fraScore_Test|fraReview|cmdSelectStudent|cmdExit");
    EXPECT_EQ(text("lblReviewHeading"), "Well done! You got both right in the end.");
    EXPECT_EQ(textColour(label("lblReviewHeading")), bgrColor(Bgr::Green));
    EXPECT_EQ(scores(), scoresAfterTest);
    EXPECT_TRUE(fileState(session.paths.testsPath) == tests);
    EXPECT_TRUE(fileState(session.paths.studentsPath) == students);
    EXPECT_EQ(spokenLines(), review) << "the review is still the test's";
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(ReviewTest, StopEndsPracticeAndANewTestOrChoiceTakesTheReviewAway)
{
    startUp();
    chooseLevel(5);
    screen->startTest();
    std::vector<QString> missed;
    for (int i = 0; i < 3; ++i) {
        missed.push_back(problemOnScreen());
        typeAnswer(false);
    }
    screen->stopTest();
    const FileState students = fileState(session.paths.studentsPath);
    button("cmdReview")->click();
    QTest::keyClick(button("cmdPractise"), Qt::Key_Return);
    // Each problem with its own blank, the other boxes shown as numbers.
    EXPECT_EQ(problemOnScreen(), missed[0]);
    EXPECT_EQ(screen->focusWidget(), blank());
    EXPECT_TRUE(box("txtNum1")->isReadOnly() != (blank() == box("txtNum1")));
    typeAnswer(true);
    EXPECT_EQ(problemOnScreen(), missed[1]);
    EXPECT_EQ(text("lblPracticeLeft"), "2 questions to go");
    EXPECT_EQ(text("lblScoreWrong"), "3") << "practice counts nothing";

    QTest::keyClick(button("cmdStopPractice"), Qt::Key_Return);
    EXPECT_EQ(showing({"fraQuestion_Math", "fraPractice", "fraReview", "fraScore_Test"}),
              "fraReview|fraScore_Test");
    EXPECT_EQ(text("lblReviewHeading"), "You missed 3 of 3. They come first.");
    EXPECT_TRUE(fileState(session.paths.studentsPath) == students);
    button("cmdReviewBack")->click();
    EXPECT_TRUE(shown("cmdReview"));

    // A new level, subject or student takes the review away; so does a new test.
    const std::vector<std::pair<const char *, std::function<void()>>> changes = {
        {"level", [this] { chooseLevel(4); }},
        {"subject", [this] { combo("cmbSubject")->setCurrentIndex(Geography); }},
        {"student", [this] { screen->openStudentsScreen(); }},
        {"new test", [this] { screen->startTest(); }},
    };
    for (const auto &[change, makeIt] : changes) {
        combo("cmbSubject")->setCurrentIndex(ArithmeticSubject);
        chooseLevel(5);
        screen->startTest();
        typeAnswer(false);
        screen->stopTest();
        button("cmdReview")->click();
        ASSERT_TRUE(shown("fraReview")) << change;
        if (std::string(change) != "new test")
            button("cmdReviewBack")->click();
        makeIt();
        EXPECT_FALSE(shown("cmdReview")) << change;
        EXPECT_FALSE(shown("fraReview")) << change;
        EXPECT_TRUE(screen->testRecord().questions().size() <= 1) << change;
        if (std::string(change) == "new test")
            screen->stopTest();
    }
    EXPECT_FALSE(shown("cmdReview")) << "a test without an answer has nothing to review";
}
