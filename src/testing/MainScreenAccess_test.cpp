// The main screen for a child who uses only the keyboard, or a screen reader.
#include "testing/MainScreen.h"

#include "MainScreenFixture.h"
#include "testsupport/ScreenAccess.h"

#include <QTest>

#include <set>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

const Names BetweenTests = {"cmdSelectStudent", "cmdTest",   "cmdHelp",     "cmdExit",
                            "cmbSubject",       "optLevel3", "cmdStartTest"};

} // namespace

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
    EXPECT_EQ(TabStops(*screen), BetweenTests) << "one stop for the levels: the chosen one";
    EXPECT_EQ(SpokenLabel(*combo("cmbSubject")), "Subject:");
    EXPECT_EQ(SpokenName(*option("optLevel0")), "Level K");
    EXPECT_EQ(SpokenName(*option("optLevel12")), "Level 12");
    EXPECT_EQ(SpokenName(*label("lblStudent")), "Student: Ann");
    EXPECT_EQ(SpokenName(*label("lblHighScore")), "High Score: 0");

    // The arrow keys choose the level; Enter on it starts the test, as Start Test does.
    option("optLevel3")->setFocus();
    for (const char *level : {"optLevel3", "optLevel2", "optLevel1"})
        QTest::keyClick(option(level), Qt::Key_Left);
    EXPECT_EQ(text("lblLevel"), "K");
    EXPECT_EQ(session.records.CurrentLevel, 0);
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    ASSERT_TRUE(shown("fraQuestion_Math"));
    EXPECT_EQ(screen->focusWidget(), box("txtAnswer"));
    EXPECT_EQ(TabStops(*screen), Names({"txtAnswer", "cmdStop"}));
    EXPECT_EQ(SpokenName(*box("txtNum1")), "First number");
    EXPECT_EQ(SpokenName(*box("txtNum2")), "Second number");
    EXPECT_EQ(SpokenName(*box("txtAnswer")), "Answer");
    EXPECT_EQ(SpokenName(*label("lblOp")), "plus");
    const QString first = box("txtNum1")->text();
    const QString second = box("txtNum2")->text();
    EXPECT_EQ(SpokenDescription(*box("txtAnswer")),
              QString("%1 plus %2 equals blank").arg(first, second).toStdString());

    QTest::keyClicks(box("txtAnswer"), QString::number(first.toInt() + second.toInt()));
    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(SpokenName(*label("lblScoreRight")), "Right: 1");
    EXPECT_EQ(SpokenName(*label("lblScoreWrong")), "Wrong: 0");
    EXPECT_EQ(SpokenName(*label("lblScoreTotal")), "Score: 1");
    EXPECT_EQ(SpokenName(*label("lblTimeLeft")),
              ("Time left: " + text("lblTimeLeft")).toStdString());

    // Stop from the keyboard; the focus lands on the level, where Enter starts again.
    QTest::keyClick(button("cmdStop"), Qt::Key_Return);
    EXPECT_TRUE(shown("lblTestCompleted"));
    EXPECT_EQ(SpokenName(*label("lblLastScore")), "Last Score: 1");
    ASSERT_EQ(screen->focusWidget(), option("optLevel0"));
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    ASSERT_TRUE(shown("fraQuestion_Math"));

    // After a test that ran out of time, Enter held from the last answer starts
    // nothing until Start Test is back.
    while (shown("fraQuestion_Math"))
        screen->Timer1_Timer();
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_FALSE(shown("fraQuestion_Math"));
    screen->Timer1_Timer();
    QTest::keyClick(option("optLevel0"), Qt::Key_Return);
    EXPECT_TRUE(shown("fraQuestion_Math"));
}

TEST_F(MainScreenTest, AnswerButtonsTakeArrowKeysAndAreReadAsTheirAnswers)
{
    constexpr int Geography = 2;
    saveTestsWith([](TestBank &bank) {
        bank.Subjects[Geography].AdjacentLevels = false;
        bank.Limits[Geography].LastQuestion.fill(-1);
        bank.Limits[Geography].LastQuestion[0] = 0;
        bank.QuestionBank[Geography].Items[0][0] = {"Which are rivers", "Tigris & Euphrates",
                                                    "Alps", "Sahara", "Gobi"};
    });
    startUp();
    combo("cmbSubject")->setCurrentIndex(Geography);
    QTest::keyClick(button("cmdStartTest"), Qt::Key_Return);
    ASSERT_TRUE(shown("fraQuestion_Multi"));

    std::set<std::string> spoken;
    QString right;
    for (int index = 0; index < 4; ++index) {
        QRadioButton *answer = option(QString("optAnswer%1").arg(index).toLatin1().constData());
        spoken.insert(SpokenName(*answer));
        EXPECT_EQ(SpokenDescription(*answer), "Which are rivers?") << "the question with its mark";
        if (SpokenName(*answer) == "Tigris & Euphrates")
            right = answer->objectName();
    }
    EXPECT_EQ(spoken, std::set<std::string>({"Tigris & Euphrates", "Alps", "Sahara", "Gobi"}))
        << "an ampersand is shown, not taken for a shortcut";

    ASSERT_EQ(QApplication::focusWidget(), option("optAnswer0"));
    QTest::keyClick(option("optAnswer0"), Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), option("optAnswer1"));
    EXPECT_TRUE(option("optAnswer1")->isChecked());
    QTest::keyClick(option("optAnswer1"), Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), right == "optAnswer1" ? "Right." : "Wrong.");
}

TEST_F(MainScreenTest, WithAMovingBlankTabGoesFromTheBlankToStopTest)
{
    saveTestsWith([](TestBank &bank) {
        bank.ArithOps[0] = "+";
        bank.ArithSwitch[0] = {false, true};
    });
    startUp();
    QTest::keyClick(button("cmdStartTest"), Qt::Key_Return);
    std::set<std::string> blanks;
    for (int question = 0; question < 6; ++question) {
        QWidget *blank = screen->focusWidget();
        ASSERT_NE(blank, nullptr);
        blanks.insert(blank->objectName().toStdString());
        EXPECT_EQ(TabStops(*screen), Names({blank->objectName().toStdString(), "cmdStop"}));
        blank->setFocus();
        QTest::keyClicks(blank, "1");
        QTest::keyClick(blank, Qt::Key_Return);
    }
    EXPECT_EQ(blanks, std::set<std::string>({"txtNum1", "txtNum2", "txtAnswer"}));
}
