#include "testing/MainScreen.h"

#include "MainScreenFixture.h"
#include "ui/Colours.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <set>

namespace {

QColor textColour(const QWidget *widget)
{
    return widget->palette().color(QPalette::WindowText);
}

} // namespace

class TimedTestTest : public MainScreenTest {
protected:
    QTimer *timer() const { return find<QTimer>("Timer1"); }

    void chooseSubject(int subject) { combo("cmbSubject")->setCurrentIndex(subject); }
    void chooseLevel(int level)
    {
        QTest::mouseClick(
            find<QRadioButton>(QString("optLevel%1").arg(level).toLatin1().constData()),
            Qt::LeftButton);
    }
    void startTest() { QTest::mouseClick(button("cmdStartTest"), Qt::LeftButton); }

    // The box the child types into: the one left empty by the question.
    QLineEdit *blank() const
    {
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"})
            if (box(name)->text().isEmpty())
                return box(name);
        return nullptr;
    }

    // The number that makes the equation on the screen true.
    long long rightEntry() const
    {
        const long long n1 = box("txtNum1")->text().toLongLong();
        const long long n2 = box("txtNum2")->text().toLongLong();
        const long long answer = box("txtAnswer")->text().toLongLong();
        const QChar op = text("lblOp").at(0);
        const QLineEdit *empty = blank();
        if (empty == box("txtAnswer"))
            return op == '+' ? n1 + n2 : op == '-' ? n1 - n2 : op == 'x' ? n1 * n2 : n1 / n2;
        if (empty == box("txtNum1"))
            return op == '+'   ? answer - n2
                   : op == '-' ? answer + n2
                   : op == 'x' ? answer / n2
                               : answer * n2;
        return op == '+'   ? answer - n1
               : op == '-' ? n1 - answer
               : op == 'x' ? answer / n1
                           : n1 / answer;
    }

    // Types into the blank box and presses Enter, as the child does.
    void typeAnswer(bool right)
    {
        QLineEdit *entry = blank();
        ASSERT_NE(entry, nullptr);
        const long long value = rightEntry() + (right ? 0 : 1);
        QTest::keyClicks(entry, QString::number(value));
        QTest::keyClick(entry, Qt::Key_Return);
    }

    // The right answer of the multiple-choice question on the screen: the
    // stored question whose four answers are the four on the buttons.
    QString rightChoice() const
    {
        std::multiset<QString> onButtons;
        for (int index = 0; index < 4; ++index)
            onButtons.insert(
                option(QString("optAnswer%1").arg(index).toLatin1().constData())->text());
        const int subject = session.records.CurrentSubject;
        for (const auto &level : session.bank.QuestionBank[subject].Items)
            for (const Question &question : level) {
                const std::multiset<QString> stored = {QString::fromStdString(question.Answer),
                                                       QString::fromStdString(question.Wrong1),
                                                       QString::fromStdString(question.Wrong2),
                                                       QString::fromStdString(question.Wrong3)};
                if (stored == onButtons)
                    return QString::fromStdString(question.Answer);
            }
        ADD_FAILURE() << "no stored question has these answers";
        return {};
    }

    void choose(bool right)
    {
        const QString wanted = rightChoice();
        for (int index = 0; index < 4; ++index) {
            QRadioButton *answer = option(QString("optAnswer%1").arg(index).toLatin1().constData());
            if ((answer->text() == wanted) == right) {
                QTest::mouseClick(answer, Qt::LeftButton);
                QTest::keyClick(answer, Qt::Key_Return);
                return;
            }
        }
        ADD_FAILURE() << "no answer to choose";
    }

    void tick(int times)
    {
        for (int i = 0; i < times; ++i)
            screen->Timer1_Timer();
    }

    const SubjectResults &resultsOnDisk(int subject)
    {
        m_onDisk = studentsOnDisk();
        return m_onDisk.Students.at(0).Results.at(subject);
    }

private:
    StudentRecords m_onDisk;
};

TEST_F(TimedTestTest, AnArithmeticTestRunsToTheEndOfTheClock)
{
    saveTestsWith([](TestBank &bank) { bank.Limits[ArithmeticSubject].Seconds = 5; });
    startUp();
    EXPECT_EQ(text("lblDuration"), "5 secs");

    startTest();
    EXPECT_EQ(text("lblTimeLeft"), "5");
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_TRUE(shown("fraQuestion_Math"));
    EXPECT_TRUE(shown("fraScore_Test"));
    EXPECT_TRUE(shown("cmdStop"));
    for (const char *hidden :
         {"fraStartTest", "cmdSelectStudent", "cmdTest", "cmdHelp", "cmdExit", "fraLastAnswer"})
        EXPECT_FALSE(shown(hidden)) << hidden;
    EXPECT_EQ(text("lblScoreTotal"), "0");
    EXPECT_EQ(blank(), box("txtAnswer")) << "level K asks for the answer";
    EXPECT_EQ(screen->focusWidget(), box("txtAnswer"));
    EXPECT_EQ(box("txtAnswer")->palette().color(QPalette::Base), BgrColor(Bgr::White));
    EXPECT_EQ(box("txtNum1")->palette().color(QPalette::Base), BgrColor(Bgr::Black));
    EXPECT_EQ(box("txtNum1")->palette().color(QPalette::Text), BgrColor(Bgr::White));

    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(text("lblScoreRight"), "0") << "Enter on an empty box judges nothing";
    EXPECT_FALSE(shown("fraLastAnswer"));

    const QString asked1 = box("txtNum1")->text();
    const QString asked2 = box("txtNum2")->text();
    const QString expected = QString::number(rightEntry());
    typeAnswer(true);
    EXPECT_TRUE(shown("fraLastAnswer"));
    EXPECT_EQ(text("lblRightWrong"), "Right:");
    EXPECT_EQ(textColour(label("lblRightWrong")), BgrColor(Bgr::Blue));
    EXPECT_EQ(text("lblLastQuestion_Math0"), asked1);
    EXPECT_EQ(text("lblLastQuestion_Math1"), "+");
    EXPECT_EQ(text("lblLastQuestion_Math2"), asked2);
    EXPECT_EQ(text("lblLastQuestion_Math4"), expected);
    EXPECT_FALSE(shown("lblLastQuestion_Multi1"));
    EXPECT_TRUE(box("txtAnswer")->text().isEmpty()) << "the next question is up";

    typeAnswer(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong:");
    EXPECT_EQ(textColour(label("lblRightWrong")), BgrColor(Bgr::Red));
    EXPECT_EQ(text("lblScoreTotal"), "0");
    typeAnswer(true);
    typeAnswer(true);
    EXPECT_EQ(text("lblScoreRight"), "3");
    EXPECT_EQ(text("lblScoreWrong"), "1");
    EXPECT_EQ(text("lblScoreTotal"), "2");

    tick(4);
    EXPECT_EQ(text("lblTimeLeft"), "1");
    EXPECT_TRUE(shown("fraQuestion_Math"));
    tick(1);
    EXPECT_EQ(text("lblTimeLeft"), "0");
    EXPECT_FALSE(shown("fraQuestion_Math"));
    EXPECT_FALSE(shown("cmdStop"));
    EXPECT_TRUE(shown("fraStartTest"));
    EXPECT_TRUE(shown("fraScore"));
    EXPECT_FALSE(shown("cmdStartTest")) << "held back while a key may still be down";
    for (const char *visible : {"cmdSelectStudent", "cmdTest", "cmdHelp", "cmdExit"})
        EXPECT_TRUE(shown(visible)) << visible;
    EXPECT_EQ(text("lblTestCompleted"), "***** HIGH SCORE ***** Congratulations!");
    EXPECT_EQ(textColour(label("lblTestCompleted")), BgrColor(Bgr::Green));
    EXPECT_TRUE(shown("lblTestCompleted"));
    EXPECT_EQ(text("lblLastScore"), "2");
    EXPECT_EQ(text("lblHighScore"), "2");
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).Last[0], 2);
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).High[0], 2);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 2000);

    tick(1);
    EXPECT_TRUE(shown("cmdStartTest"));
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_EQ(text("lblTimeLeft"), "0") << "the pause does not count as time";
}

TEST_F(TimedTestTest, OnlyAScoreAboveTheHighIsANewHigh)
{
    saveTestsWith([](TestBank &bank) { bank.Limits[ArithmeticSubject].Seconds = 3; });
    startUp();
    session.records.Students[0].Results[ArithmeticSubject].High[0] = 2;

    startTest();
    typeAnswer(true);
    typeAnswer(true);
    tick(3);
    EXPECT_EQ(text("lblTestCompleted"), "Test Completed");
    EXPECT_EQ(textColour(label("lblTestCompleted")), BgrColor(Bgr::Blue));
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).Last[0], 2);
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).High[0], 2);
    tick(1);

    startTest();
    EXPECT_EQ(text("lblTimeLeft"), "3");
    EXPECT_EQ(text("lblScoreTotal"), "0") << "a new test starts from nothing";
    for (int i = 0; i < 3; ++i)
        typeAnswer(true);
    tick(3);
    EXPECT_EQ(text("lblTestCompleted"), "***** HIGH SCORE ***** Congratulations!");
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).High[0], 3);
    tick(1);

    startTest();
    typeAnswer(false);
    QTest::mouseClick(button("cmdStop"), Qt::LeftButton);
    EXPECT_EQ(text("lblTestCompleted"), "Test was Stopped");
    EXPECT_EQ(text("lblLastScore"), "-1");
    EXPECT_EQ(text("lblHighScore"), "3");
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).Last[0], -1);
    EXPECT_EQ(resultsOnDisk(ArithmeticSubject).High[0], 3);
}

TEST_F(TimedTestTest, WithSwitchingBlanksOnlyTheBlankBoxTakesTheAnswer)
{
    startUp();
    chooseLevel(5); // all four operations, switching numbers and blanks, no zero
    ASSERT_TRUE(session.bank.ArithSwitch[5][SwitchBlanks]);
    startTest();

    std::set<QLineEdit *> blanks;
    for (int question = 0; question < 6; ++question) {
        QLineEdit *entry = blank();
        ASSERT_NE(entry, nullptr);
        blanks.insert(entry);
        EXPECT_EQ(screen->focusWidget(), entry);
        for (const char *name : {"txtNum1", "txtNum2", "txtAnswer"}) {
            QLineEdit *other = box(name);
            const bool isBlank = other == entry;
            EXPECT_EQ(other->palette().color(QPalette::Base),
                      BgrColor(isBlank ? Bgr::White : Bgr::Black));
            EXPECT_EQ(other->palette().color(QPalette::Text),
                      BgrColor(isBlank ? Bgr::Black : Bgr::White));
            EXPECT_EQ(other->alignment() & Qt::AlignHorizontal_Mask,
                      isBlank ? Qt::AlignLeft : Qt::AlignHCenter);
            if (!isBlank) {
                other->setFocus(Qt::MouseFocusReason);
                EXPECT_EQ(QApplication::focusWidget(), entry) << name << " passes the focus on";
            }
        }
        const int blankPosition = entry == box("txtNum1") ? 0 : entry == box("txtNum2") ? 2 : 4;
        typeAnswer(true);
        EXPECT_EQ(text("lblRightWrong"), "Right:");
        for (int part : {0, 2, 4})
            EXPECT_EQ(textColour(label(
                          QString("lblLastQuestion_Math%1").arg(part).toLatin1().constData())) ==
                          BgrColor(Bgr::Blue),
                      part == blankPosition)
                << "question " << question << " label " << part;
    }
    EXPECT_EQ(blanks.size(), 3u) << "the blank moves through all three boxes";
    EXPECT_EQ(text("lblScoreRight"), "6");
}

TEST_F(TimedTestTest, AnswersAreJudgedByTheEquationOnTheScreen)
{
    saveTestsWith([](TestBank &bank) { bank.ArithOps[0] = "/"; });
    startUp();
    startTest();
    EXPECT_EQ(text("lblOp"), "/");

    // Any numbers that make the equation true are right, whatever was asked.
    box("txtNum1")->setText("12");
    box("txtNum2")->setText("4");
    QTest::keyClicks(box("txtAnswer"), "3");
    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), "Right:");

    // Only the leading number of a text counts.
    box("txtNum1")->setText("6");
    box("txtNum2")->setText("2");
    QTest::keyClicks(box("txtAnswer"), "3 apples");
    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), "Right:");

    // A division by zero is wrong and the test goes on.
    box("txtNum1")->setText("0");
    box("txtNum2")->setText("0");
    QTest::keyClicks(box("txtAnswer"), "0");
    QTest::keyClick(box("txtAnswer"), Qt::Key_Return);
    EXPECT_EQ(text("lblRightWrong"), "Wrong:");
    EXPECT_EQ(text("lblScoreTotal"), "1");
    EXPECT_TRUE(shown("fraQuestion_Math"));
}

TEST_F(TimedTestTest, AMultipleChoiceTestStoppedEarlyStillRecordsTheScore)
{
    startUp();
    chooseSubject(SpellingSubject);
    chooseLevel(3);
    session.records.Students[0].Results[SpellingSubject].High[3] = 5;

    startTest();
    EXPECT_TRUE(shown("fraQuestion_Multi"));
    EXPECT_FALSE(shown("fraQuestion_Math"));
    EXPECT_EQ(text("lblInstruction_Multi"), "Select the correct spelling, and press [Enter]:");
    EXPECT_EQ(screen->focusWidget(), option("optAnswer0"));

    const QString right = rightChoice();
    choose(true);
    EXPECT_EQ(text("lblRightWrong"), "Right.");
    EXPECT_EQ(textColour(label("lblRightWrong")), BgrColor(Bgr::Blue));
    EXPECT_EQ(text("lblLastQuestion_Multi0"), "The correct spelling is:");
    EXPECT_EQ(text("lblLastQuestion_Multi1"), right);
    EXPECT_TRUE(shown("lblLastQuestion_Multi1"));
    EXPECT_FALSE(shown("lblLastQuestion_Math0"));

    choose(false);
    EXPECT_EQ(text("lblRightWrong"), "Wrong.");
    EXPECT_EQ(textColour(label("lblRightWrong")), BgrColor(Bgr::Red));
    choose(true);
    EXPECT_EQ(text("lblScoreTotal"), "1");

    QTest::mouseClick(button("cmdStop"), Qt::LeftButton);
    EXPECT_EQ(text("lblTestCompleted"), "Test was Stopped");
    EXPECT_EQ(textColour(label("lblTestCompleted")), BgrColor(Bgr::Blue));
    EXPECT_TRUE(shown("cmdStartTest")) << "no pause after Stop";
    EXPECT_FALSE(timer()->isActive());
    EXPECT_FALSE(shown("fraQuestion_Multi"));
    EXPECT_EQ(text("lblLastScore"), "1");
    EXPECT_EQ(text("lblHighScore"), "5");
    EXPECT_EQ(resultsOnDisk(SpellingSubject).Last[3], 1);
    EXPECT_EQ(resultsOnDisk(SpellingSubject).High[3], 5);
    EXPECT_EQ(studentsOnDisk().Students[0].Level, 3);
}

TEST_F(TimedTestTest, TheChosenAnswerIsMarkedGreenAndOtherSubjectsAskForTheAnswer)
{
    startUp();
    chooseSubject(2); // Geography
    startTest();
    EXPECT_EQ(text("lblInstruction_Multi"), "Select the correct answer, and press [Enter]:");

    QTest::mouseClick(option("optAnswer2"), Qt::LeftButton);
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ(textColour(option(QString("optAnswer%1").arg(index).toLatin1().constData())),
                  BgrColor(index == 2 ? Bgr::BrightGreen : Bgr::White))
            << index;
    QTest::mouseClick(option("optAnswer1"), Qt::LeftButton);
    EXPECT_EQ(textColour(option("optAnswer1")), BgrColor(Bgr::BrightGreen));
    EXPECT_EQ(textColour(option("optAnswer2")), BgrColor(Bgr::White));

    const QString right = rightChoice();
    const bool chosenRight = option("optAnswer1")->text() == right;
    QTest::keyClick(option("optAnswer1"), Qt::Key_Return);
    EXPECT_EQ(text("lblLastQuestion_Multi0"), "The correct answer is:");
    EXPECT_EQ(text("lblLastQuestion_Multi1"), right);
    EXPECT_EQ(text("lblRightWrong"), chosenRight ? "Right." : "Wrong.");
}
