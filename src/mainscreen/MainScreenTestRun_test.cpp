// Tests run on the main screen: against the clock, stopped early or by closing
// the window, from the keyboard alone and as a screen reader reads them, and
// what they leave on the screen afterwards.
#include "MainScreenFixture_test.h"
#include "testsupport/ScreenAccess.h"
#include "ui/Colours.h"

#include <QApplication>
#include <QFontMetrics>
#include <QTimer>

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using Names = std::vector<std::string>;

TEST_F(MainScreenTest, AnArithmeticTestRunsFromTheKeyboardToTheEndOfTheClockAndIsReadOut)
{
    saveTestsWith([](TestBank &bank) { bank.limits[ArithmeticSubject].seconds = 5; });
    startUp();
    QTimer *timer = find<QTimer>("Timer1");
    const auto buttonsShowing = [this] {
        return showing({"fraQuestion_Math", "cmdStop", "fraStartTest", "cmdStartTest",
                        "cmdSelectStudent", "cmdTest", "cmdHelp", "cmdExit"});
    };
    // The Students screen closes on a student at level 3.
    session.records.students[0].level = 3;
    screen->openStudentsScreen();
    button("cmdSelectStudent")->setFocus();
    EXPECT_EQ(tabStops(*screen), Names({"cmdSelectStudent", "cmdTest", "cmdWorksheet", "cmdHelp",
                                        "cmdExit", "cmbSubject", "optLevel3", "cmdStartTest"}))
        << "one stop for the levels: the chosen one";

    // The arrow keys choose the level; Enter on it starts the test, as Start Test does.
    option("optLevel3")->setFocus();
    for (const char *level : {"optLevel3", "optLevel2", "optLevel1"})
        QTest::keyClick(option(level), Qt::Key_Left);
    EXPECT_EQ(text("lblLevel"), "K");
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_EQ(text("lblTimeLeft"), "5");
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 1000);
    EXPECT_EQ(buttonsShowing(), "fraQuestion_Math|cmdStop");
    EXPECT_EQ(screen->focusWidget(), box("txtAnswer")) << "level K asks for the answer";
    EXPECT_EQ(tabStops(*screen), Names({"txtAnswer", "cmdStop"}));
    EXPECT_EQ(spokenDescription(*box("txtAnswer")),
              QString("%1 plus %2 equals blank")
                  .arg(box("txtNum1")->text(), box("txtNum2")->text())
                  .toStdString());

    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(text("lblScoreWrong"), "0") << "Enter on an empty box judges nothing";
    EXPECT_FALSE(shown("fraLastAnswer"));
    const QString asked =
        box("txtNum1")->text() + "+" + box("txtNum2")->text() + "=" + QString::number(rightEntry());
    typeAnswer(true);
    EXPECT_EQ(text("lblRightWrong"), "Right:");
    EXPECT_EQ(textColour(label("lblRightWrong")), bgrColor(Bgr::Blue));
    EXPECT_EQ(text("lblLastQuestion_Math0") + text("lblLastQuestion_Math1") +
                  text("lblLastQuestion_Math2") + "=" + text("lblLastQuestion_Math4"),
              asked);
    EXPECT_TRUE(box("txtAnswer")->text().isEmpty()) << "the next question is up";
    typeAnswer(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong:");
    EXPECT_EQ(textColour(label("lblRightWrong")), bgrColor(Bgr::Red));
    typeAnswer(true);
    typeAnswer(true);
    EXPECT_EQ(texts({"lblScoreRight", "lblScoreWrong", "lblScoreTotal"}), "3|1|2");

    tick(4);
    EXPECT_EQ(spokenName(*label("lblTimeLeft")), "Time left: 1");
    EXPECT_TRUE(shown("fraQuestion_Math"));
    tick(1);
    EXPECT_EQ(text("lblTimeLeft"), "0");
    EXPECT_EQ(buttonsShowing(), "fraStartTest|cmdSelectStudent|cmdTest|cmdHelp|cmdExit")
        << "Start Test is held back while a key may still be down";
    EXPECT_EQ(text("lblTestCompleted"), "***** HIGH SCORE ***** Congratulations!");
    EXPECT_EQ(texts({"lblLastScore", "lblHighScore"}), "2|2");
    EXPECT_EQ(timer->interval(), 2000);
    ASSERT_EQ(screen->focusWidget(), option("optLevel0"));
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_FALSE(shown("fraQuestion_Math")) << "Enter held from the last answer starts nothing";
    tick(1);
    EXPECT_TRUE(shown("cmdStartTest"));
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(timer->interval(), 1000);
    EXPECT_EQ(text("lblTimeLeft"), "0") << "the pause does not count as time";

    // An equal score is no new High; a higher one is, in a test stopped early too.
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_EQ(text("lblScoreTotal"), "0") << "each test starts from nothing";
    typeAnswer(true);
    typeAnswer(true);
    tick(5);
    EXPECT_EQ(text("lblTestCompleted"), "Test Completed");
    EXPECT_EQ(textColour(label("lblTestCompleted")), bgrColor(Bgr::Blue));
    EXPECT_EQ(scoresOnDisk(ArithmeticSubject, 0), "2|2");
    tick(1);
    screen->startTest();
    for (int i = 0; i < 3; ++i)
        typeAnswer(true);
    QTest::keyClick(button("cmdStop"), Qt::Key_Return);
    EXPECT_TRUE(shown("cmdStartTest")) << "no pause after Stop";
    EXPECT_EQ(screen->focusWidget(), option("optLevel0"));
    EXPECT_EQ(text("lblTestCompleted"), "***** HIGH SCORE ***** Congratulations!");
    EXPECT_EQ(textColour(label("lblTestCompleted")), bgrColor(Bgr::Green));
    EXPECT_EQ(scoresOnDisk(ArithmeticSubject, 0), "3|3");
}

TEST_F(MainScreenTest, WithSwitchingBlanksOnlyTheBlankBoxTakesTheAnswerAndTheFocus)
{
    startUp();
    chooseLevel(5); // all four operations, switching numbers and blanks, no zero
    ASSERT_TRUE(session.bank.arithSwitch[5][SwitchBlanks]);
    screen->startTest();

    std::set<QLineEdit *> blanks;
    for (int question = 0; question < 6; ++question) {
        QLineEdit *entry = blank();
        ASSERT_NE(entry, nullptr);
        blanks.insert(entry);
        EXPECT_EQ(screen->focusWidget(), entry);
        EXPECT_EQ(tabStops(*screen), Names({entry->objectName().toStdString(), "cmdStop"}));
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"}) {
            QLineEdit *other = box(name);
            EXPECT_EQ(other->palette().color(QPalette::Base),
                      bgrColor(other == entry ? Bgr::White : Bgr::Black));
            if (other != entry) {
                other->setFocus(Qt::MouseFocusReason);
                EXPECT_EQ(QApplication::focusWidget(), entry) << name << " passes the focus on";
            }
        }
        const int blankPart = entry == box("txtNum1") ? 0 : entry == box("txtNum2") ? 2 : 4;
        typeAnswer(true);
        EXPECT_EQ(text("lblRightWrong"), "Right:");
        for (int part : {0, 2, 4})
            EXPECT_EQ(textColour(label(QString("lblLastQuestion_Math%1").arg(part))) ==
                          bgrColor(Bgr::Blue),
                      part == blankPart)
                << "question " << question << " label " << part;
    }
    EXPECT_EQ(blanks.size(), 3u) << "the blank moves through all three boxes";
}

TEST_F(MainScreenTest, LongAnswersAreSetSmallerAndNeverWidenTheWindow)
{
    const std::string longer = "The river that flows north through Egypt to the sea";
    saveTestsWith([&](TestBank &bank) {
        addSubject(bank, "Rivers");
        bank.questionBank.back().items()[0][0] = {"Which", longer, "Alps", "Sahara", "Gobi"};
    });
    startUp();
    // At the usual size: the test platform's screen is smaller, and its window with it.
    screen->resize(1000, 700);
    combo("cmbSubject")->setCurrentIndex(6);
    Question &question = session.bank.questionBank[6].items()[0][0];
    const int windowWidth = screen->width();
    // Runs a test and gives the point sizes of the four answers.
    const auto answerSizes = [&] {
        screen->startTest();
        QCoreApplication::processEvents();
        EXPECT_TRUE(shown("fraQuestion_Multi"));
        std::set<int> sizes;
        for (int index = 0; index < 4; ++index)
            sizes.insert(answerButton(index)->font().pointSize());
        return sizes;
    };

    const std::set<int> sizes = answerSizes();
    ASSERT_EQ(sizes.size(), 1u) << "one size for all four";
    EXPECT_LT(*sizes.begin(), 24) << "set smaller than a short answer";
    EXPECT_GE(*sizes.begin(), 14);
    for (int index = 0; index < 4; ++index)
        EXPECT_GE(answerButton(index)->width(), answerButton(index)->sizeHint().width())
            << shownText(*answerButton(index)) << " is shown whole";
    EXPECT_EQ(screen->width(), windowWidth);
    const int leastWidth = screen->minimumSizeHint().width();
    button("cmdStop")->click();

    // Too long for the smallest size: cut off at the right, the window unchanged.
    question.wrong3 = longer + ", " + longer + ", " + longer;
    EXPECT_EQ(answerSizes(), std::set<int>{14});
    std::set<std::string> spoken;
    for (int index = 0; index < 4; ++index)
        spoken.insert(spokenName(*answerButton(index)));
    EXPECT_TRUE(spoken.count(question.wrong3)) << "the text is kept whole";
    EXPECT_EQ(screen->width(), windowWidth);
    // Nor may the answer raise the window's least width, which a window manager
    // would widen the window to.
    EXPECT_EQ(screen->minimumSizeHint().width(), leastWidth);
    button("cmdStop")->click();

    // Short answers again: back to the full size.
    question = {"Which", "Nile", "Alps", "Sahara", "Gobi"};
    EXPECT_EQ(answerSizes(), std::set<int>{24});
}

TEST_F(MainScreenTest, ClosingTheWindowDuringATestAsksFirstAndStopsTheTestAsStopDoes)
{
    startUp();
    screen->startTest();
    typeAnswer(true);
    typeAnswer(true);

    // Cancel: the test goes on with its clock, and the child answers on.
    EXPECT_FALSE(screen->close());
    ASSERT_EQ(prompt.shown().size(), 1u);
    EXPECT_EQ(prompt.last()->kind, ScriptedPrompt::Shown::Kind::Confirm);
    EXPECT_EQ(prompt.last()->text, "A test is running. Stop it and quit?");
    EXPECT_TRUE(screen->isVisible());
    EXPECT_TRUE(find<QTimer>("Timer1")->isActive());
    typeAnswer(true);
    EXPECT_EQ(text("lblScoreRight"), "3");
    EXPECT_EQ(scoresOnDisk(ArithmeticSubject, 0), "0|0");

    // OK: the score is kept, as Stop keeps it, before the window goes.
    prompt.answerConfirm(true);
    EXPECT_TRUE(screen->close());
    EXPECT_FALSE(screen->isVisible());
    EXPECT_FALSE(find<QTimer>("Timer1")->isActive());
    EXPECT_EQ(scoresOnDisk(ArithmeticSubject, 0), "3|3");

    // Between tests, and in the pause after a test that ran out, nothing is asked.
    for (const bool afterTimeOut : {false, true}) {
        screen->show();
        if (afterTimeOut) {
            screen->startTest();
            tick(30);
            ASSERT_TRUE(shown("fraStartTest"));
        }
        EXPECT_TRUE(screen->close()) << afterTimeOut;
        EXPECT_EQ(prompt.shown().size(), 2u) << afterTimeOut;
    }
}

TEST_F(MainScreenTest, ANewTestOrANewChoiceClearsWhatTheLastTestLeftOnTheScreen)
{
    startUp();
    // A number marked blue where the blank moved is no mark in a test where it does not.
    chooseLevel(5);
    screen->startTest();
    typeAnswer(true);
    screen->stopTest();
    chooseLevel(0);
    screen->startTest();
    typeAnswer(true);
    for (int part : {0, 2, 4})
        EXPECT_NE(textColour(label(QString("lblLastQuestion_Math%1").arg(part))),
                  bgrColor(Bgr::Blue))
            << part;
    screen->stopTest();

    // The result line, the last answer and the counts go with a new level,
    // subject or student: they belong to the test, not to the new choice.
    const std::pair<const char *, std::function<void()>> changes[] = {
        {"level", [this] { chooseLevel(1); }},
        {"subject", [this] { combo("cmbSubject")->setCurrentIndex(SpellingSubject); }},
        {"student", [this] { screen->openStudentsScreen(); }},
    };
    const auto marks = [this] {
        return showing({"lblTestCompleted", "fraLastAnswer", "fraScore_Test"});
    };
    for (const auto &[what, change] : changes) {
        combo("cmbSubject")->setCurrentIndex(ArithmeticSubject);
        chooseLevel(0);
        screen->startTest();
        typeAnswer(true);
        screen->stopTest();
        ASSERT_EQ(marks(), "lblTestCompleted|fraLastAnswer|fraScore_Test") << what;
        change();
        EXPECT_EQ(marks(), "") << what;
    }
    // Choosing the level already chosen is no new choice: the result stays.
    screen->startTest();
    screen->stopTest();
    chooseLevel(session.records.currentLevel);
    EXPECT_EQ(marks(), "lblTestCompleted|fraScore_Test");
}

TEST_F(MainScreenTest, TheMinusSignIsDrawnAsLargeAsThePlusAndStillJudgedAsAMinus)
{
    saveTestsWith([](TestBank &bank) {
        bank.arithOps[0] = "-+";
        bank.arithSwitch[0] = {false, false};
        for (int op = 0; op < OperationCount; ++op) {
            bank.arithLow1[0][op] = bank.arithLow2[0][op] = 1;
            bank.arithHigh1[0][op] = bank.arithHigh2[0][op] = 9;
        }
    });
    startUp();
    screen->startTest();
    // The ink of the sign, against that of "+" in the same font: a hyphen is
    // little more than half as wide.
    const auto inkWidth = [](const QLabel &sign, const QString &text) {
        return QFontMetrics(sign.font()).tightBoundingRect(text).width();
    };
    const QLabel &sign = *label("lblOp");
    const QString minus = sign.text();
    ASSERT_EQ(operationOnScreen(), '-');
    EXPECT_GE(inkWidth(sign, minus), 0.9 * inkWidth(sign, "+")) << minus;
    EXPECT_EQ(spokenName(*label("lblOp")), "minus");
    typeAnswer(true);
    EXPECT_EQ(text("lblRightWrong"), "Right:");
    const QLabel &lastSign = *label("lblLastQuestion_Math1");
    EXPECT_EQ(lastSign.text(), minus) << "the last answer repeats the sign";
    EXPECT_GE(inkWidth(lastSign, minus), 0.9 * inkWidth(lastSign, "+"));
    typeAnswer(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong:") << "the plus after it";
    EXPECT_EQ(session.bank.arithOps[0], "-+");
}
