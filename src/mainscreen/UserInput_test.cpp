// What reaches the main screen from the keyboard, the mouse and the other
// screens: any text in the blank box and none in the numbers on show, answers
// chosen afresh for each question, and names and answers with "&" or markup.
#include "MainScreenFixture_test.h"

#include "testsupport/ScreenAccess.h"
#include "testsupport/ShownText.h"
#include "ui/Colours.h"

#include <QApplication>
#include <QTimer>

#include <set>
#include <string>

TEST_F(MainScreenTest, AnswerBoxesTakeAnyTextAndAreJudgedByTheEquationOnTheScreen)
{
    // Level K asks the four operations in turn, always with the answer box to fill in.
    saveTestsWith([](TestBank &bank) {
        bank.arithOps[0] = "+-x/";
        bank.arithSwitch[0] = {false, false};
    });
    startUp();
    screen->startTest();
    // Any numbers that make the equation true are right, whatever was asked: the
    // boxes are read as the judging rules read them (tested with those rules).
    const struct {
        char op;
        const char *number1, *number2, *answer;
        bool right;
    } cases[] = {
        {'+', "99999999999999999999", "1", "99999999999999999999", true},
        {'-', "7", "2", "five", false},
        {'x', "6", "7", "42", true},
        {'/', "0", "0", "0", false}, // a division by zero is wrong and the test goes on
        {'+', "abc", "2", "2 apples", true},
    };
    for (const auto &entry : cases) {
        ASSERT_EQ(operationOnScreen(), entry.op);
        box("txtNum1")->setText(entry.number1);
        box("txtNum2")->setText(entry.number2);
        QTest::keyClicks(box("txtAnswer"), entry.answer);
        QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
        EXPECT_EQ(text("lblRightWrong"), entry.right ? "Right:" : "Wrong:")
            << entry.number1 << " " << entry.op << " " << entry.number2 << " = " << entry.answer;
        EXPECT_TRUE(box("txtAnswer")->text().isEmpty()) << "the next question is up";
    }
    EXPECT_TRUE(shown("fraQuestion_Math"));
    screen->stopTest();
    EXPECT_EQ(text("lblScoreTotal"), "1") << "three right, two wrong";
    EXPECT_EQ(scoresOnDisk(ArithmeticSubject, 0), "1|1");
    EXPECT_TRUE(prompt.shown().empty());
}

TEST_F(MainScreenTest, AMultipleChoiceTestTakesArrowKeysShowsTextsAsTypedAndCanBeStopped)
{
    const std::string subjectName = "Salt & <i>Pep</i>";
    const std::string studentName = "Tom & <b>Jerry</b>";
    const std::multiset<std::string> answers = {"&", "A & B", "<b>bold</b>", "&&"};
    saveTestsWith([&](TestBank &bank) {
        bank.subjects[SpellingSubject] = {subjectName, false};
        bank.limits[SpellingSubject].lastQuestion[3] = 0;
        bank.questionBank[SpellingSubject].items()[3][0] = {"Is 3 < 4 & 5 > 2", "&", "A & B",
                                                            "<b>bold</b>", "&&"};
    });
    startUp();
    session.records.students[0].name = studentName;
    session.records.students[0].results[SpellingSubject].high[3] = 5;
    screen->openStudentsScreen();
    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    chooseLevel(3);
    EXPECT_EQ(shownText(*label("lblStudent")).toStdString(), studentName);
    EXPECT_EQ(combo("cmbSubject")->currentText().toStdString(), subjectName);
    EXPECT_EQ(shownText(*label("lblSubject")).toStdString(), subjectName);

    QTest::keyClick(button("cmdStartTest"), Qt::Key_Return);
    EXPECT_EQ(showing({"fraQuestion_Multi", "fraQuestion_Math"}), "fraQuestion_Multi");
    EXPECT_EQ(text("lblInstruction_Multi"), "Select the correct spelling, and press [Enter]:");
    EXPECT_EQ(shownText(*label("lblQuestion_Multi")), "Is 3 < 4 & 5 > 2:");
    std::multiset<std::string> onButtons, spoken;
    for (int index = 0; index < 4; ++index) {
        onButtons.insert(shownText(*answerButton(index)).toStdString());
        spoken.insert(spokenName(*answerButton(index)));
        EXPECT_EQ(spokenDescription(*answerButton(index)), "Is 3 < 4 & 5 > 2:");
    }
    EXPECT_EQ(onButtons, answers);
    EXPECT_EQ(spoken, answers);

    // An arrow key moves to the next answer and marks it green; Enter answers it.
    ASSERT_EQ(QApplication::focusWidget(), answerButton(0));
    QTest::keyClick(answerButton(0), Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), answerButton(1));
    EXPECT_TRUE(answerButton(1)->isChecked());
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ(textColour(answerButton(index)),
                  bgrColor(index == 1 ? Bgr::BrightGreen : Bgr::White))
            << index;
    const bool chosenRight = shownText(*answerButton(1)) == "&";
    QTest::keyClick(answerButton(1), Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), chosenRight ? "Right." : "Wrong.");
    EXPECT_EQ(text("lblLastQuestion_Multi0"), "The correct spelling is:");
    EXPECT_EQ(shownText(*label("lblLastQuestion_Multi1")), "&");
    EXPECT_FALSE(shown("lblLastQuestion_Math0"));
    choose(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong.");
    choose(true);
    EXPECT_EQ(text("lblRightWrong"), "Right.");
    choose(true);

    // Stopped early, the score counts as Last; below the High, the High stays.
    button("cmdStop")->click();
    EXPECT_EQ(text("lblTestCompleted"), "Test was Stopped");
    EXPECT_FALSE(find<QTimer>("Timer1")->isActive());
    const int score = chosenRight ? 2 : 0;
    EXPECT_EQ(texts({"lblLastScore", "lblHighScore"}), QString("%1|5").arg(score));
    EXPECT_EQ(scoresOnDisk(SpellingSubject, 3), QString("%1|5").arg(score));
}

TEST_F(MainScreenTest, EachQuestionStartsWithNoAnswerChosenAndEnterAloneTakesTheFirst)
{
    saveTestsWith([](TestBank &bank) {
        bank.subjects[SpellingSubject].adjacentLevels = false;
        bank.limits[SpellingSubject].lastQuestion[3] = 0;
        bank.questionBank[SpellingSubject].items()[3][0] = {"", "right", "wrong", "wronger",
                                                            "wrongest"};
    });
    startUp();
    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    chooseLevel(3);
    const auto expectNothingChosen = [this](const QString &when) {
        for (int index = 0; index < 4; ++index) {
            EXPECT_FALSE(answerButton(index)->isChecked()) << when << ", answer " << index;
            EXPECT_EQ(textColour(answerButton(index)), bgrColor(Bgr::White))
                << when << ", answer " << index;
        }
        EXPECT_EQ(QApplication::focusWidget(), answerButton(0)) << when;
    };

    screen->startTest();
    expectNothingChosen("the first question");
    for (int index = 0; index < 4; ++index) {
        QTest::mouseClick(answerButton(index), Qt::LeftButton);
        ASSERT_TRUE(answerButton(index)->isChecked());
        QTest::keyClick(answerButton(index), Qt::Key_Return);
        expectNothingChosen(QString("after answer %1").arg(index));
        // Enter with nothing chosen answers with the first button.
        const bool firstIsRight = shownText(*answerButton(0)) == "right";
        QTest::keyClick(answerButton(0), Qt::Key_Return);
        EXPECT_EQ(text("lblRightWrong"), firstIsRight ? "Right." : "Wrong.");
    }
    QTest::mouseClick(answerButton(2), Qt::LeftButton);
    screen->stopTest();
    screen->startTest();
    expectNothingChosen("the next test");
}

TEST_F(MainScreenTest, OnlyTheBlankBoxTakesTypingAtEveryLevel)
{
    startUp();
    for (int level = 0; level < LevelCount; ++level) {
        chooseLevel(level);
        screen->startTest();
        for (int question = 0; question < 3; ++question) {
            QLineEdit *entry = blank();
            ASSERT_NE(entry, nullptr) << "level " << level;
            EXPECT_FALSE(entry->isReadOnly());
            for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"}) {
                QLineEdit *number = box(name);
                if (number == entry)
                    continue;
                // A click leaves the focus in the blank; keys sent to the number change nothing.
                const QString shownNumber = number->text();
                QTest::mouseClick(number, Qt::LeftButton);
                EXPECT_EQ(QApplication::focusWidget(), entry) << "level " << level << " " << name;
                QTest::keyClick(number, Qt::Key_Backspace);
                QTest::keyClicks(number, "7");
                EXPECT_EQ(number->text(), shownNumber) << "level " << level << " " << name;
            }
            QTest::keyClicks(entry, "1");
            QTest::keyClick(entry, Qt::Key_Return);
        }
        screen->stopTest();
    }
}
