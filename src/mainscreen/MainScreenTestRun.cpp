// The timed test of the main screen: starting it, the clock, showing the
// questions and judging the answers as they come (a practice round shows and
// judges its questions the same way), recording the score at the end, and
// closing the window while a test runs.
#include "MainScreen.h"

#include "MainScreenPanels.h"
#include "ReadAloud.h"
#include "quiz/Judge.h"
#include "speech/SpokenQuestion.h"
#include "ui/ClassHistory.h"
#include "ui/Colours.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace {

constexpr int TickMilliseconds = 1000;
constexpr int StartPauseMilliseconds = 2000;

void addOne(QLabel &counter)
{
    counter.setNum(counter.text().toInt() + 1);
}

// An operation sign as a screen reader should say it.
QString spokenOperation(char symbol)
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

// An operation sign as it is drawn. A hyphen is a short dash, hard to tell
// from nothing at a distance; the minus sign is as wide as "+". The bank and
// the judging keep the hyphen.
QString shownOperation(char symbol)
{
    return symbol == '-' ? QString(QChar(0x2212)) : QString(QLatin1Char(symbol));
}

QString spokenNumber(const QLineEdit &box)
{
    return box.text().isEmpty() ? QStringLiteral("blank") : box.text();
}

bool isEnter(Qt::Key key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

void MainScreen::startTest()
{
    const StudentRecords &records = m_session.records;
    const TestBank &bank = m_session.bank;
    forgetReview();
    m_testRecord.start(records.currentSubject);
    if (records.currentSubject != ArithmeticSubject)
        m_sequence.startMultipleChoice(bank);
    else
        m_sequence.startArithmetic(bank, records.currentLevel);
    showQuestionPanel();

    for (QLabel *counter : {m_ui->rightCount, m_ui->wrongCount, m_ui->score})
        counter->setNum(0);
    m_ui->timeLeft->setNum(m_testSeconds);
    m_ui->testScorePanel->show();

    m_timeLeft = m_testSeconds;
    m_ui->clock->setInterval(TickMilliseconds);
    m_ui->clock->start();
    m_stopRequested = false;
    m_ui->stopButton->show();

    m_answerRecording.begin(m_testSeconds, false);
    showNextQuestion();
}

// The question panel of the current subject in the place of the start panel,
// for a test or a practice round.
void MainScreen::showQuestionPanel()
{
    const StudentRecords &records = m_session.records;
    hideCommandButtons();
    m_ui->startPanel->hide();
    m_ui->lastAnswerPanel->hide();
    if (records.currentSubject != ArithmeticSubject) {
        m_ui->multipleChoiceInstruction->setText(
            records.currentSubject == SpellingSubject
                ? QStringLiteral("Select the correct spelling, and press [Enter]:")
                : QStringLiteral("Select the correct answer, and press [Enter]:"));
        m_ui->multipleChoicePanel->show();
        return;
    }
    m_ui->arithmeticPanel->show();
    if (!m_session.bank.arithSwitch[records.currentLevel][SwitchBlanks]) {
        setDisplayStyle(*m_ui->number1Box);
        setDisplayStyle(*m_ui->number2Box);
        setEntryStyle(*m_ui->answerBox);
    }
}

void MainScreen::onClockTick()
{
    if (m_startPause) {
        m_ui->clock->stop();
        m_startPause = false;
        m_ui->clock->setInterval(TickMilliseconds);
        m_ui->startButton->show();
        return;
    }
    // The tick returns to the event loop at once, so key presses are handled
    // between ticks without processing events here.
    --m_timeLeft;
    m_ui->timeLeft->setNum(m_timeLeft);
    if (m_timeLeft > 0 && !m_stopRequested)
        return;
    endTest();
}

void MainScreen::endTest()
{
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    m_ui->clock->stop();
    m_readAloud->endTest();
    m_ui->stopButton->hide();
    m_ui->arithmeticPanel->hide();
    m_ui->multipleChoicePanel->hide();
    m_ui->startPanel->show();
    m_ui->scorePanel->show();
    if (records.currentLevel >= 0 && records.currentLevel < LevelCount)
        m_ui->levelButtons[records.currentLevel]->setFocus();

    if (records.currentStudent >= 0 && records.currentStudent <= records.studentMax())
        records.students[records.currentStudent].level = static_cast<int16_t>(records.currentLevel);
    const bool timeRanOut = m_timeLeft <= 0;
    m_answerRecording.end(!timeRanOut);
    if (recordScore(records, m_ui->score->text().toInt())) {
        setTextColour(*m_ui->outcome, Bgr::Green);
        m_ui->outcome->setText(QStringLiteral("***** HIGH SCORE ***** Congratulations!"));
    } else {
        setTextColour(*m_ui->outcome, Bgr::Blue);
        m_ui->outcome->setText(timeRanOut ? QStringLiteral("Test Completed")
                                          : QStringLiteral("Test was Stopped"));
    }

    if (timeRanOut) {
        // A key still held from the last answer must not start the next test.
        m_ui->startButton->hide();
        m_startPause = true;
        m_ui->clock->setInterval(StartPauseMilliseconds);
        m_ui->clock->start();
    }

    m_session.saveStudents(this);
    showTotals();
    m_ui->outcome->show();
    showCommandButtons();
    offerReview();
    tellHistoryTrouble(m_session, this);
}

void MainScreen::closeEvent(QCloseEvent *event)
{
    if (!isTestRunning()) {
        // In a classroom a stray click on Exit would leave the next child
        // without the program; a test already asks below.
        if (m_session.mode == ProgramMode::Classroom && !m_ending &&
            !m_session.prompt.confirm(this, QStringLiteral("Exit"),
                                      QStringLiteral("Do you want to close Tavrino?"))) {
            takeKeyboardBack();
            event->ignore();
            return;
        }
        QWidget::closeEvent(event);
        return;
    }
    // The clock waits while the child decides: a Cancel costs no time, and the
    // test cannot run out behind the question.
    m_ui->clock->stop();
    if (!m_session.prompt.confirm(this, windowTitle(),
                                  QStringLiteral("A test is running. Stop it and quit?"))) {
        m_ui->clock->start();
        takeKeyboardBack();
        event->ignore();
        return;
    }
    stopTest();
    // Should Stop have used the test's last second, the pause that follows is
    // over at once: no key can start a test in a window that is going.
    if (m_startPause)
        onClockTick();
    event->accept();
}

bool MainScreen::isTestRunning() const
{
    return m_ui->clock->isActive() && !m_startPause;
}

void MainScreen::stopTest()
{
    m_stopRequested = true;
    onClockTick();
}

void MainScreen::showNextQuestion()
{
    const StudentRecords &records = m_session.records;
    const TestBank &bank = m_session.bank;
    if (records.currentSubject != ArithmeticSubject)
        m_multipleChoice = m_sequence.nextMultipleChoice(
            bank, records.currentSubject, records.currentLevel, m_random, m_answerPositions);
    else
        m_arithmetic = m_sequence.nextArithmetic(bank, records.currentLevel, m_random);
    showQuestion();
}

// Puts the current problem or question on the screen. Every question a child
// sees, in a test or in a practice round, is shown here.
void MainScreen::showQuestion()
{
    if (m_session.records.currentSubject != ArithmeticSubject) {
        m_ui->questionLabel->setText(QString::fromStdString(m_multipleChoice.label));
        // Spelling questions above the first levels have no clue to show.
        m_ui->questionLabel->setVisible(!m_ui->questionLabel->text().isEmpty());
        // Only the answers take the focus, so each carries the question for a
        // screen reader.
        const QString question = m_ui->questionLabel->text().isEmpty()
                                     ? m_ui->multipleChoiceInstruction->text()
                                     : m_ui->questionLabel->text();
        for (int index = 0; index < 4; ++index) {
            QRadioButton &option = *m_ui->answerButtons[index];
            // An ampersand in an answer is shown, not taken for a shortcut key.
            option.setText(QString::fromStdString(m_multipleChoice.choices[index])
                               .replace(QLatin1Char('&'), QStringLiteral("&&")));
            option.setAccessibleDescription(question);
        }
        m_ui->fitAnswers();
        clearChosenAnswer();
        questionShown();
        m_readAloud->askQuestion(m_session.records.currentSubject == SpellingSubject
                                     ? spokenSpelling(m_multipleChoice)
                                     : spokenChoices(m_multipleChoice));
        return;
    }

    m_ui->operationSign->setText(shownOperation(m_arithmetic.symbol));
    m_ui->number1Box->setText(QString::number(m_arithmetic.number1));
    m_ui->number2Box->setText(QString::number(m_arithmetic.number2));
    m_ui->answerBox->setText(QString::number(m_arithmetic.answer));
    if (m_arithmetic.switchBlanks) {
        for (QLineEdit *box : {m_ui->number1Box, m_ui->number2Box, m_ui->answerBox})
            setDisplayStyle(*box);
        setEntryStyle(*blankBox());
    }
    blankBox()->clear();
    // Whichever box has the focus, a screen reader can read the whole problem.
    m_ui->operationSign->setAccessibleName(spokenOperation(m_arithmetic.symbol));
    const QString problem =
        QStringLiteral("%1 %2 %3 equals %4")
            .arg(spokenNumber(*m_ui->number1Box), m_ui->operationSign->accessibleName(),
                 spokenNumber(*m_ui->number2Box), spokenNumber(*m_ui->answerBox));
    // Only the blank box takes typing and the focus, at every level. A number
    // on show typed over would make an equation of the child's own, judged
    // right; and Tab or a click stopping on it would leave the child typing
    // into nothing.
    for (QLineEdit *box : {m_ui->number1Box, m_ui->number2Box, m_ui->answerBox}) {
        const bool isBlank = box == blankBox();
        box->setAccessibleDescription(problem);
        box->setReadOnly(!isBlank);
        box->setFocusPolicy(isBlank ? Qt::StrongFocus : Qt::NoFocus);
    }
    blankBox()->setFocus();
    questionShown();
    m_readAloud->askQuestion(spokenArithmetic(m_arithmetic));
}

QLineEdit *MainScreen::blankBox() const
{
    switch (m_arithmetic.blank) {
    case MathBox::Number1:
        return m_ui->number1Box;
    case MathBox::Number2:
        return m_ui->number2Box;
    case MathBox::Answer:
        break;
    }
    return m_ui->answerBox;
}

void MainScreen::onAnswerBoxKey(const QLineEdit &box, Qt::Key key)
{
    if (isEnter(key) && !box.text().isEmpty())
        checkArithmeticAnswer();
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
    for (QLabel *part : m_ui->lastProblem)
        part->setVisible(arithmetic);
    for (QLabel *part : m_ui->lastRightAnswer)
        part->setVisible(!arithmetic);
    m_ui->lastAnswerPanel->show();
}

void MainScreen::showVerdict(bool right, const QString &rightText, const QString &wrongText)
{
    setTextColour(*m_ui->verdict, right ? Bgr::Blue : Bgr::Red);
    m_ui->verdict->setText(right ? rightText : wrongText);
}

void MainScreen::countAnswer(bool right)
{
    addOne(right ? *m_ui->rightCount : *m_ui->wrongCount);
    m_ui->score->setNum(m_ui->rightCount->text().toInt() - m_ui->wrongCount->text().toInt());
}

void MainScreen::checkArithmeticAnswer()
{
    showLastAnswer(true);
    const std::array<QLabel *, 5> &parts = m_ui->lastProblem;
    parts[0]->setNum(m_arithmetic.number1);
    parts[1]->setText(m_ui->operationSign->text());
    parts[2]->setNum(m_arithmetic.number2);
    parts[4]->setNum(m_arithmetic.answer);
    // Where the blank moves, the number that was asked is drawn in blue. All
    // three are set back first on every answer, so that a blue mark from an
    // earlier test never shows in one where the blank stays put.
    const QColor buttonText = palette().color(QPalette::ButtonText);
    for (QLabel *number : {parts[0], parts[2], parts[4]}) {
        QPalette colours = number->palette();
        colours.setColor(QPalette::WindowText, buttonText);
        number->setPalette(colours);
    }
    if (m_arithmetic.switchBlanks)
        setTextColour(*parts[2 * static_cast<int>(m_arithmetic.blank)], Bgr::Blue);

    // The operation of the problem is the one its sign shows.
    const bool right = isRightArithmetic(
        m_ui->number1Box->text().toStdString(), m_arithmetic.symbol,
        m_ui->number2Box->text().toStdString(), m_ui->answerBox->text().toStdString());
    showVerdict(right, QStringLiteral("Right:"), QStringLiteral("Wrong:"));
    GivenAnswer given;
    given.typed = blankBox()->text().toStdString();
    given.right = right;
    questionAnswered(given);
}

void MainScreen::chooseAnswer(int index)
{
    for (QRadioButton *option : m_ui->answerButtons)
        setTextColour(*option, Bgr::White);
    setTextColour(*m_ui->answerButtons[index], Bgr::BrightGreen);
}

// Each question starts with nothing chosen and the first answer focused: an
// answer left checked from the last question (or the last test) would be
// judged by an Enter the child meant for the new one. Enter alone still
// answers with the first button.
void MainScreen::clearChosenAnswer()
{
    // An exclusive group keeps one button checked; it lets go only while it is
    // not exclusive.
    m_ui->answerGroup->setExclusive(false);
    for (QRadioButton *option : m_ui->answerButtons) {
        option->setChecked(false);
        setTextColour(*option, Bgr::White);
    }
    m_ui->answerGroup->setExclusive(true);
    m_ui->answerButtons[0]->setFocus();
}

void MainScreen::onAnswerKey(Qt::Key key)
{
    if (!isEnter(key))
        return;
    showLastAnswer(false);
    m_ui->lastRightAnswer[0]->setText(m_session.records.currentSubject == SpellingSubject
                                          ? QStringLiteral("The correct spelling is:")
                                          : QStringLiteral("The correct answer is:"));
    m_ui->lastRightAnswer[1]->setText(QString::fromStdString(m_multipleChoice.rightAnswer));
    int chosen = 0;
    for (int index = 0; index < 4; ++index)
        if (m_ui->answerButtons[index]->isChecked())
            chosen = index;
    GivenAnswer given;
    given.chosen = chosen;
    given.right = chosen == m_multipleChoice.answerPosition;
    showVerdict(given.right, QStringLiteral("Right."), QStringLiteral("Wrong."));
    questionAnswered(given);
}
