// Tests run on the main screen: against the clock, stopped early, from the
// keyboard alone and as a screen reader reads them.
#include "testing/MainScreen.h"

#include "MainScreenFixture.h"
#include "testsupport/ScreenAccess.h"
#include "ui/Colours.h"

#include <QApplication>
#include <QTimer>

#include <set>
#include <string>
#include <vector>

using Names = std::vector<std::string>;

TEST_F(MainScreenTest, AnArithmeticTestRunsToTheEndOfTheClock)
{
    saveTestsWith([](TestBank &bank) { bank.Limits[ArithmeticSubject].Seconds = 5; });
    startUp();
    QTimer *timer = find<QTimer>("Timer1");
    button("cmdStartTest")->click();
    EXPECT_EQ(text("lblTimeLeft"), "5");
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 1000);
    EXPECT_TRUE(shown("fraQuestion_Math"));
    EXPECT_TRUE(shown("cmdStop"));
    for (const char *hidden : {"fraStartTest", "cmdSelectStudent", "cmdTest", "cmdHelp", "cmdExit"})
        EXPECT_FALSE(shown(hidden)) << hidden;
    EXPECT_EQ(blank(), box("txtAnswer")) << "level K asks for the answer";
    EXPECT_EQ(screen->focusWidget(), box("txtAnswer"));

    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(text("lblScoreWrong"), "0") << "Enter on an empty box judges nothing";
    EXPECT_FALSE(shown("fraLastAnswer"));

    const QString asked1 = box("txtNum1")->text();
    const QString asked2 = box("txtNum2")->text();
    const QString expected = QString::number(rightEntry());
    typeAnswer(true);
    EXPECT_EQ(text("lblRightWrong"), "Right:");
    EXPECT_EQ(textColour(label("lblRightWrong")), BgrColor(Bgr::Blue));
    EXPECT_EQ(text("lblLastQuestion_Math0") + text("lblLastQuestion_Math1") +
                  text("lblLastQuestion_Math2") + "=" + text("lblLastQuestion_Math4"),
              asked1 + "+" + asked2 + "=" + expected);
    EXPECT_TRUE(box("txtAnswer")->text().isEmpty()) << "the next question is up";

    typeAnswer(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong:");
    EXPECT_EQ(textColour(label("lblRightWrong")), BgrColor(Bgr::Red));
    typeAnswer(true);
    typeAnswer(true);
    EXPECT_EQ(text("lblScoreRight") + text("lblScoreWrong") + text("lblScoreTotal"), "312");

    tick(4);
    EXPECT_EQ(text("lblTimeLeft"), "1");
    EXPECT_TRUE(shown("fraQuestion_Math"));
    tick(1);
    EXPECT_EQ(text("lblTimeLeft"), "0");
    EXPECT_FALSE(shown("fraQuestion_Math"));
    EXPECT_TRUE(shown("fraStartTest"));
    EXPECT_FALSE(shown("cmdStartTest")) << "held back while a key may still be down";
    for (const char *visible : {"cmdSelectStudent", "cmdTest", "cmdHelp", "cmdExit"})
        EXPECT_TRUE(shown(visible)) << visible;
    EXPECT_EQ(text("lblTestCompleted"), "***** HIGH SCORE ***** Congratulations!");
    EXPECT_EQ(textColour(label("lblTestCompleted")), BgrColor(Bgr::Green));
    EXPECT_EQ(text("lblLastScore") + text("lblHighScore"), "22");
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).Last[0], 2);
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).High[0], 2);
    EXPECT_EQ(timer->interval(), 2000);

    tick(1);
    EXPECT_TRUE(shown("cmdStartTest"));
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(timer->interval(), 1000);
    EXPECT_EQ(text("lblTimeLeft"), "0") << "the pause does not count as time";
}

TEST_F(MainScreenTest, OnlyAScoreAboveTheHighIsANewHigh)
{
    saveTestsWith([](TestBank &bank) { bank.Limits[ArithmeticSubject].Seconds = 3; });
    startUp();
    session.records.Students[0].Results[ArithmeticSubject].High[0] = 2;
    // An equal score, then a higher one; each test starts from nothing.
    for (const int score : {2, 3}) {
        screen->cmdStartTest_Click();
        EXPECT_EQ(text("lblScoreTotal"), "0");
        for (int i = 0; i < score; ++i)
            typeAnswer(true);
        tick(3);
        EXPECT_EQ(text("lblTestCompleted"),
                  score == 2 ? "Test Completed" : "***** HIGH SCORE ***** Congratulations!");
        EXPECT_EQ(resultsOnDisk(ArithmeticSubject).Last[0], score);
        EXPECT_EQ(resultsOnDisk(ArithmeticSubject).High[0], std::max(score, 2));
        tick(1);
    }
    EXPECT_EQ(textColour(label("lblTestCompleted")), BgrColor(Bgr::Green));
}

TEST_F(MainScreenTest, WithSwitchingBlanksOnlyTheBlankBoxTakesTheAnswerAndTheFocus)
{
    startUp();
    chooseLevel(5); // all four operations, switching numbers and blanks, no zero
    ASSERT_TRUE(session.bank.ArithSwitch[5][SwitchBlanks]);
    screen->cmdStartTest_Click();

    std::set<QLineEdit *> blanks;
    for (int question = 0; question < 6; ++question) {
        QLineEdit *entry = blank();
        ASSERT_NE(entry, nullptr);
        blanks.insert(entry);
        EXPECT_EQ(screen->focusWidget(), entry);
        EXPECT_EQ(TabStops(*screen), Names({entry->objectName().toStdString(), "cmdStop"}));
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"}) {
            QLineEdit *other = box(name);
            const bool isBlank = other == entry;
            EXPECT_EQ(other->palette().color(QPalette::Base),
                      BgrColor(isBlank ? Bgr::White : Bgr::Black));
            if (!isBlank) {
                other->setFocus(Qt::MouseFocusReason);
                EXPECT_EQ(QApplication::focusWidget(), entry) << name << " passes the focus on";
            }
        }
        const int blankPart = entry == box("txtNum1") ? 0 : entry == box("txtNum2") ? 2 : 4;
        typeAnswer(true);
        EXPECT_EQ(text("lblRightWrong"), "Right:");
        for (int part : {0, 2, 4})
            EXPECT_EQ(textColour(label(QString("lblLastQuestion_Math%1").arg(part))) ==
                          BgrColor(Bgr::Blue),
                      part == blankPart)
                << "question " << question << " label " << part;
    }
    EXPECT_EQ(blanks.size(), 3u) << "the blank moves through all three boxes";
}

TEST_F(MainScreenTest, AMultipleChoiceTestStoppedEarlyStillRecordsTheScore)
{
    startUp();
    combo("cmbSubject")->setCurrentIndex(SpellingSubject);
    chooseLevel(3);
    session.records.Students[0].Results[SpellingSubject].High[3] = 5;

    screen->cmdStartTest_Click();
    EXPECT_TRUE(shown("fraQuestion_Multi"));
    EXPECT_FALSE(shown("fraQuestion_Math"));
    EXPECT_EQ(text("lblInstruction_Multi"), "Select the correct spelling, and press [Enter]:");
    EXPECT_EQ(screen->focusWidget(), answerButton(0));

    const QString right = rightChoice();
    choose(true);
    EXPECT_EQ(text("lblRightWrong"), "Right.");
    EXPECT_EQ(text("lblLastQuestion_Multi0"), "The correct spelling is:");
    EXPECT_EQ(text("lblLastQuestion_Multi1"), right);
    EXPECT_FALSE(shown("lblLastQuestion_Math0"));
    choose(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong.");
    choose(true);

    button("cmdStop")->click();
    EXPECT_EQ(text("lblTestCompleted"), "Test was Stopped");
    EXPECT_TRUE(shown("cmdStartTest")) << "no pause after Stop";
    EXPECT_FALSE(find<QTimer>("Timer1")->isActive());
    EXPECT_EQ(text("lblLastScore") + " " + text("lblHighScore"), "1 5");
    EXPECT_EQ(resultsOnDisk(SpellingSubject).Last[3], 1);
    EXPECT_EQ(resultsOnDisk(SpellingSubject).High[3], 5);
    EXPECT_EQ(studentsOnDisk().Students[0].Level, 3);
}

TEST_F(MainScreenTest, AnArithmeticTestRunsFromTheKeyboardAndIsReadOut)
{
    saveTestsWith([](TestBank &bank) {
        bank.ArithOps[0] = "+";
        bank.ArithSwitch[0] = {false, false};
    });
    startUp();
    // The Students screen closes on a student at level 3.
    session.records.Students[0].Level = 3;
    screen->cmdSelectStudent_Click();

    button("cmdSelectStudent")->setFocus();
    EXPECT_EQ(TabStops(*screen), Names({"cmdSelectStudent", "cmdTest", "cmdHelp", "cmdExit",
                                        "cmbSubject", "optLevel3", "cmdStartTest"}))
        << "one stop for the levels: the chosen one";
    EXPECT_EQ(SpokenLabel(*combo("cmbSubject")), "Subject:");
    EXPECT_EQ(SpokenName(*option("optLevel0")), "Level K");
    EXPECT_EQ(SpokenName(*label("lblStudent")), "Student: Ann");
    EXPECT_EQ(SpokenName(*label("lblHighScore")), "High Score: 0");

    // The arrow keys choose the level; Enter on it starts the test, as Start Test does.
    option("optLevel3")->setFocus();
    for (const char *level : {"optLevel3", "optLevel2", "optLevel1"})
        QTest::keyClick(option(level), Qt::Key_Left);
    EXPECT_EQ(text("lblLevel"), "K");
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    ASSERT_TRUE(shown("fraQuestion_Math"));
    EXPECT_EQ(TabStops(*screen), Names({"txtAnswer", "cmdStop"}));
    EXPECT_EQ(SpokenName(*box("txtNum1")), "First number");
    EXPECT_EQ(SpokenName(*box("txtNum2")), "Second number");
    EXPECT_EQ(SpokenName(*box("txtAnswer")), "Answer");
    const QString first = box("txtNum1")->text();
    const QString second = box("txtNum2")->text();
    EXPECT_EQ(SpokenDescription(*box("txtAnswer")),
              QString("%1 plus %2 equals blank").arg(first, second).toStdString());

    typeAnswer(true);
    EXPECT_EQ(SpokenName(*label("lblScoreRight")), "Right: 1");
    EXPECT_EQ(SpokenName(*label("lblScoreWrong")), "Wrong: 0");
    EXPECT_EQ(SpokenName(*label("lblScoreTotal")), "Score: 1");
    EXPECT_EQ(SpokenName(*label("lblTimeLeft")),
              ("Time left: " + text("lblTimeLeft")).toStdString());

    // Stop from the keyboard; the focus lands on the level, where Enter starts again.
    QTest::keyClick(button("cmdStop"), Qt::Key_Return);
    EXPECT_EQ(SpokenName(*label("lblLastScore")), "Last Score: 1");
    ASSERT_EQ(screen->focusWidget(), option("optLevel0"));
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    ASSERT_TRUE(shown("fraQuestion_Math"));

    // After a test that ran out of time, Enter held from the last answer starts
    // nothing until Start Test is back.
    while (shown("fraQuestion_Math"))
        tick(1);
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_FALSE(shown("fraQuestion_Math"));
    tick(1);
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_TRUE(shown("fraQuestion_Math"));
}

TEST_F(MainScreenTest, AnswerButtonsTakeArrowKeysShowTheChoiceAndAreReadAsTheirAnswers)
{
    constexpr int Geography = 2;
    saveTestsWith([](TestBank &bank) {
        bank.Subjects[Geography].AdjacentLevels = false;
        bank.Limits[Geography].LastQuestion.fill(-1);
        bank.Limits[Geography].LastQuestion[0] = 0;
        bank.QuestionBank[Geography].Items()[0][0] = {"Which are rivers", "Tigris & Euphrates",
                                                      "Alps", "Sahara", "Gobi"};
    });
    startUp();
    combo("cmbSubject")->setCurrentIndex(Geography);
    QTest::keyClick(button("cmdStartTest"), Qt::Key_Return);
    ASSERT_TRUE(shown("fraQuestion_Multi"));
    EXPECT_EQ(text("lblInstruction_Multi"), "Select the correct answer, and press [Enter]:");

    std::set<std::string> spoken;
    for (int index = 0; index < 4; ++index) {
        spoken.insert(SpokenName(*answerButton(index)));
        EXPECT_EQ(SpokenDescription(*answerButton(index)), "Which are rivers?");
    }
    EXPECT_EQ(spoken, std::set<std::string>({"Tigris & Euphrates", "Alps", "Sahara", "Gobi"}))
        << "an ampersand is shown, not taken for a shortcut";

    // The chosen answer is marked green, the others stay white.
    ASSERT_EQ(QApplication::focusWidget(), answerButton(0));
    QTest::keyClick(answerButton(0), Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), answerButton(1));
    EXPECT_TRUE(answerButton(1)->isChecked());
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ(textColour(answerButton(index)),
                  BgrColor(index == 1 ? Bgr::BrightGreen : Bgr::White))
            << index;
    const bool chosenRight = ShownText(*answerButton(1)) == rightChoice();
    QTest::keyClick(answerButton(1), Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), chosenRight ? "Right." : "Wrong.");
    EXPECT_EQ(text("lblLastQuestion_Multi0"), "The correct answer is:");
    EXPECT_EQ(ShownText(*label("lblLastQuestion_Multi1")), "Tigris & Euphrates");
}

TEST_F(MainScreenTest, LongAnswersAreSetSmallerAndNeverWidenTheWindow)
{
    constexpr int Geography = 2;
    const std::string longer = "The river that flows north through Egypt to the sea";
    saveTestsWith([&](TestBank &bank) {
        bank.Subjects[Geography].AdjacentLevels = false;
        bank.Limits[Geography].LastQuestion.fill(-1);
        bank.Limits[Geography].LastQuestion[0] = 0;
        bank.QuestionBank[Geography].Items()[0][0] = {"Which", longer, "Alps", "Sahara", "Gobi"};
    });
    startUp();
    combo("cmbSubject")->setCurrentIndex(Geography);
    const int windowWidth = screen->width();
    const auto runTest = [&] {
        screen->cmdStartTest_Click();
        QCoreApplication::processEvents();
        ASSERT_TRUE(shown("fraQuestion_Multi"));
    };
    const auto shownWhole = [](const QRadioButton *answer) {
        return answer->width() >= answer->sizeHint().width();
    };

    runTest();
    const int points = answerButton(0)->font().pointSize();
    EXPECT_LT(points, 24) << "set smaller than a short answer";
    EXPECT_GE(points, 14);
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(answerButton(index)->font().pointSize(), points) << "one size for all four";
        EXPECT_TRUE(shownWhole(answerButton(index)))
            << ShownText(*answerButton(index)).toStdString();
    }
    EXPECT_EQ(screen->width(), windowWidth);
    button("cmdStop")->click();

    // Too long for the smallest size: cut off at the right, the window unchanged.
    const std::string endless = longer + ", " + longer + ", " + longer;
    session.bank.QuestionBank[Geography].Items()[0][0].Wrong3 = endless;
    runTest();
    std::set<std::string> spoken;
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(answerButton(index)->font().pointSize(), 14);
        spoken.insert(SpokenName(*answerButton(index)));
    }
    EXPECT_TRUE(spoken.count(endless)) << "the text is kept whole";
    EXPECT_EQ(screen->width(), windowWidth);
    button("cmdStop")->click();

    // Short answers again: back to the full size.
    session.bank.QuestionBank[Geography].Items()[0][0] = {"Which", "Nile", "Alps", "Sahara",
                                                          "Gobi"};
    runTest();
    EXPECT_EQ(answerButton(0)->font().pointSize(), 24);
}
