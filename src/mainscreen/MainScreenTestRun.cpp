// The timed test of the main screen: starting it, the clock, judging the
// answers as they come and recording the score at the end.
#include "MainScreen.h"

#include "MainScreenPanels.h"
#include "quiz/Judge.h"
#include "ui/Colours.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QButtonGroup>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace {

constexpr int Enter = 13;
constexpr int TickMilliseconds = 1000;
constexpr int StartPauseMilliseconds = 2000;

void addOne(QLabel &counter)
{
    counter.setNum(counter.text().toInt() + 1);
}

// An operation sign as a screen reader should say it.
QString SpokenOperation(char symbol)
{
    switch (symbol) {
    case '-':
        return QStringLiteral("minus");
    case 'x':
        return QStringLiteral("times");
    case '/':
        return QStringLiteral("divided by");
    default:
        return QStringLiteral("plus");
    }
}

QString SpokenNumber(const QLineEdit &box)
{
    return box.text().isEmpty() ? QStringLiteral("blank") : box.text();
}

} // namespace

void MainScreen::cmdStartTest_Click()
{
    const StudentRecords &records = m_session.records;
    const TestBank &bank = m_session.bank;
    ButtonsInvisible();
    m_ui->fraStartTest->hide();
    m_ui->fraLastAnswer->hide();

    if (records.currentSubject != ArithmeticSubject) {
        m_ui->lblInstruction_Multi->setText(
            records.currentSubject == SpellingSubject
                ? QStringLiteral("Select the correct spelling, and press [Enter]:")
                : QStringLiteral("Select the correct answer, and press [Enter]:"));
        m_ui->fraQuestion_Multi->show();
        m_sequence.startMultipleChoice(bank);
        m_ui->optAnswer[0]->setFocus();
    } else {
        m_ui->fraQuestion_Math->show();
        m_sequence.startArithmetic(bank, records.currentLevel);
        if (!bank.arithSwitch[records.currentLevel][SwitchBlanks]) {
            SetDisplayStyle(*m_ui->txtNum1);
            SetDisplayStyle(*m_ui->txtNum2);
            SetEntryStyle(*m_ui->txtAnswer);
        }
    }

    for (QLabel *counter : {m_ui->lblScoreRight, m_ui->lblScoreWrong, m_ui->lblScoreTotal})
        counter->setNum(0);
    m_ui->lblTimeLeft->setNum(m_testSeconds);
    m_ui->fraScore_Test->show();

    m_timeLeft = m_testSeconds;
    m_ui->Timer1->setInterval(TickMilliseconds);
    m_ui->Timer1->start();
    m_stopRequested = false;
    m_ui->cmdStop->show();

    ChangeQuestion();
}

void MainScreen::Timer1_Timer()
{
    if (m_startPause) {
        m_ui->Timer1->stop();
        m_startPause = false;
        m_ui->Timer1->setInterval(TickMilliseconds);
        m_ui->cmdStartTest->show();
        return;
    }
    // The tick returns to the event loop at once, so key presses are handled
    // between ticks without processing events here.
    --m_timeLeft;
    m_ui->lblTimeLeft->setNum(m_timeLeft);
    if (m_timeLeft > 0 && !m_stopRequested)
        return;
    endTest();
}

void MainScreen::endTest()
{
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    m_ui->Timer1->stop();
    m_ui->cmdStop->hide();
    m_ui->fraQuestion_Math->hide();
    m_ui->fraQuestion_Multi->hide();
    m_ui->fraStartTest->show();
    m_ui->fraScore->show();
    if (records.currentLevel >= 0 && records.currentLevel < LevelCount)
        m_ui->optLevel[records.currentLevel]->setFocus();

    if (records.currentStudent >= 0 && records.currentStudent <= records.studentMax())
        records.students[records.currentStudent].level = static_cast<int16_t>(records.currentLevel);
    const bool timeRanOut = m_timeLeft <= 0;
    if (recordScore(records, m_ui->lblScoreTotal->text().toInt())) {
        SetTextColour(*m_ui->lblTestCompleted, Bgr::Green);
        m_ui->lblTestCompleted->setText(QStringLiteral("***** HIGH SCORE ***** Congratulations!"));
    } else {
        SetTextColour(*m_ui->lblTestCompleted, Bgr::Blue);
        m_ui->lblTestCompleted->setText(timeRanOut ? QStringLiteral("Test Completed")
                                                   : QStringLiteral("Test was Stopped"));
    }

    if (timeRanOut) {
        // A key still held from the last answer must not start the next test.
        m_ui->cmdStartTest->hide();
        m_startPause = true;
        m_ui->Timer1->setInterval(StartPauseMilliseconds);
        m_ui->Timer1->start();
    }

    m_session.saveStudents(this);
    DisplayTotals();
    m_ui->lblTestCompleted->show();
    ButtonsVisible();
}

void MainScreen::cmdStop_Click()
{
    m_stopRequested = true;
    Timer1_Timer();
}

void MainScreen::ChangeQuestion()
{
    const StudentRecords &records = m_session.records;
    const TestBank &bank = m_session.bank;
    if (records.currentSubject != ArithmeticSubject) {
        m_multipleChoice = m_sequence.nextMultipleChoice(
            bank, records.currentSubject, records.currentLevel, m_random, m_answerPositions);
        m_ui->lblQuestion_Multi->setText(QString::fromStdString(m_multipleChoice.label));
        // Spelling questions above the first levels have no clue to show.
        m_ui->lblQuestion_Multi->setVisible(!m_ui->lblQuestion_Multi->text().isEmpty());
        // Only the answers take the focus, so each carries the question for a
        // screen reader.
        const QString question = m_ui->lblQuestion_Multi->text().isEmpty()
                                     ? m_ui->lblInstruction_Multi->text()
                                     : m_ui->lblQuestion_Multi->text();
        for (int index = 0; index < 4; ++index) {
            QRadioButton &option = *m_ui->optAnswer[index];
            // An ampersand in an answer is shown, not taken for a shortcut key.
            option.setText(QString::fromStdString(m_multipleChoice.choices[index])
                               .replace(QLatin1Char('&'), QStringLiteral("&&")));
            option.setAccessibleDescription(question);
        }
        m_ui->fitAnswers();
        return;
    }

    m_arithmetic = m_sequence.nextArithmetic(bank, records.currentLevel, m_random);
    m_ui->lblOp->setText(QString(QLatin1Char(m_arithmetic.symbol)));
    m_ui->txtNum1->setText(QString::number(m_arithmetic.number1));
    m_ui->txtNum2->setText(QString::number(m_arithmetic.number2));
    m_ui->txtAnswer->setText(QString::number(m_arithmetic.answer));
    if (m_arithmetic.switchBlanks) {
        for (QLineEdit *box : {m_ui->txtNum1, m_ui->txtNum2, m_ui->txtAnswer})
            SetDisplayStyle(*box);
        SetEntryStyle(*blankBox());
    }
    blankBox()->clear();
    // Whichever box has the focus, a screen reader can read the whole problem.
    m_ui->lblOp->setAccessibleName(SpokenOperation(m_arithmetic.symbol));
    const QString problem = QStringLiteral("%1 %2 %3 equals %4")
                                .arg(SpokenNumber(*m_ui->txtNum1), m_ui->lblOp->accessibleName(),
                                     SpokenNumber(*m_ui->txtNum2), SpokenNumber(*m_ui->txtAnswer));
    // Tab stops only at the box to type into. A number on show is not for
    // typing, and with a moving blank it would hand the focus straight back,
    // so that Tab could never reach Stop Test.
    for (QLineEdit *box : {m_ui->txtNum1, m_ui->txtNum2, m_ui->txtAnswer}) {
        box->setAccessibleDescription(problem);
        box->setFocusPolicy(box == blankBox() ? Qt::StrongFocus : Qt::ClickFocus);
    }
    blankBox()->setFocus();
}

QLineEdit *MainScreen::blankBox() const
{
    switch (m_arithmetic.blank) {
    case MathBox::Number1:
        return m_ui->txtNum1;
    case MathBox::Number2:
        return m_ui->txtNum2;
    case MathBox::Answer:
        break;
    }
    return m_ui->txtAnswer;
}

void MainScreen::txtNum1_KeyPress(int keyAscii)
{
    boxKeyPress(*m_ui->txtNum1, keyAscii);
}

void MainScreen::txtNum2_KeyPress(int keyAscii)
{
    boxKeyPress(*m_ui->txtNum2, keyAscii);
}

void MainScreen::txtAnswer_KeyPress(int keyAscii)
{
    boxKeyPress(*m_ui->txtAnswer, keyAscii);
}

void MainScreen::boxKeyPress(const QLineEdit &box, int keyAscii)
{
    if (keyAscii == Enter && !box.text().isEmpty())
        CheckAnswer();
}

void MainScreen::txtNum1_GotFocus()
{
    passFocusToBlank(*m_ui->txtNum1);
}

void MainScreen::txtNum2_GotFocus()
{
    passFocusToBlank(*m_ui->txtNum2);
}

void MainScreen::txtAnswer_GotFocus()
{
    passFocusToBlank(*m_ui->txtAnswer);
}

// With the blank moving from box to box, only the blank box may be typed into.
void MainScreen::passFocusToBlank(const QLineEdit &box)
{
    QLineEdit *blank = blankBox();
    if (m_arithmetic.switchBlanks && &box != blank && blank->isVisible())
        blank->setFocus();
}

void MainScreen::showLastAnswer(bool arithmetic)
{
    for (QLabel *part : m_ui->lblLastQuestion_Math)
        part->setVisible(arithmetic);
    for (QLabel *part : m_ui->lblLastQuestion_Multi)
        part->setVisible(!arithmetic);
    m_ui->fraLastAnswer->show();
}

void MainScreen::countAnswer(bool right, const QString &rightText, const QString &wrongText)
{
    SetTextColour(*m_ui->lblRightWrong, right ? Bgr::Blue : Bgr::Red);
    m_ui->lblRightWrong->setText(right ? rightText : wrongText);
    addOne(right ? *m_ui->lblScoreRight : *m_ui->lblScoreWrong);
    m_ui->lblScoreTotal->setNum(m_ui->lblScoreRight->text().toInt() -
                                m_ui->lblScoreWrong->text().toInt());
}

void MainScreen::CheckAnswer()
{
    showLastAnswer(true);
    const std::array<QLabel *, 5> &parts = m_ui->lblLastQuestion_Math;
    parts[0]->setNum(m_arithmetic.number1);
    parts[1]->setText(m_ui->lblOp->text());
    parts[2]->setNum(m_arithmetic.number2);
    parts[4]->setNum(m_arithmetic.answer);
    if (m_arithmetic.switchBlanks) {
        const QColor buttonText = palette().color(QPalette::ButtonText);
        for (QLabel *number : {parts[0], parts[2], parts[4]}) {
            QPalette colours = number->palette();
            colours.setColor(QPalette::WindowText, buttonText);
            number->setPalette(colours);
        }
        SetTextColour(*parts[2 * static_cast<int>(m_arithmetic.blank)], Bgr::Blue);
    }

    const std::string op = m_ui->lblOp->text().toStdString();
    const bool right = isRightArithmetic(
        m_ui->txtNum1->text().toStdString(), op.empty() ? '+' : op.front(),
        m_ui->txtNum2->text().toStdString(), m_ui->txtAnswer->text().toStdString());
    countAnswer(right, QStringLiteral("Right:"), QStringLiteral("Wrong:"));
    ChangeQuestion();
}

void MainScreen::optAnswer_Click(int index)
{
    for (QRadioButton *option : m_ui->optAnswer)
        SetTextColour(*option, Bgr::White);
    SetTextColour(*m_ui->optAnswer[index], Bgr::BrightGreen);
}

void MainScreen::optAnswer_KeyPress(int, int keyAscii)
{
    if (keyAscii != Enter)
        return;
    showLastAnswer(false);
    m_ui->lblLastQuestion_Multi[0]->setText(m_session.records.currentSubject == SpellingSubject
                                                ? QStringLiteral("The correct spelling is:")
                                                : QStringLiteral("The correct answer is:"));
    m_ui->lblLastQuestion_Multi[1]->setText(QString::fromStdString(m_multipleChoice.rightAnswer));
    int chosen = 0;
    for (int index = 0; index < 4; ++index)
        if (m_ui->optAnswer[index]->isChecked())
            chosen = index;
    countAnswer(chosen == m_multipleChoice.answerPosition, QStringLiteral("Right."),
                QStringLiteral("Wrong."));
    ChangeQuestion();
}
