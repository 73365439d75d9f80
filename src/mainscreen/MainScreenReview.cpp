// What the main screen does with a test once it is over: it remembers every
// question as it was shown and answered, offers the review of them, and runs a
// practice round of the missed ones in the test's own question panels, with no
// clock, no score and nothing saved. Every question and every answer, in a test
// or in practice, passes the two points below, questionShown and
// questionAnswered.
#include "MainScreen.h"

#include "MainScreenPanels.h"
#include "ReadAloud.h"
#include "core/History.h"
#include "fluency/WeakFacts.h"
#include "review/PracticePanel.h"
#include "review/ReviewLines.h"
#include "review/ReviewPanel.h"
#include "ui/ClassHistory.h"
#include "ui/Session.h"

#include <QFrame>
#include <QListWidget>
#include <QPushButton>

// A question is on the screen. A test remembers it for the review; a practice
// round shows questions the test remembered already.
void MainScreen::questionShown()
{
    m_answerRecording.questionShown();
    if (m_practice)
        return;
    if (m_session.records.currentSubject != ArithmeticSubject)
        m_testRecord.questionShown(m_multipleChoice);
    else
        m_testRecord.questionShown(m_arithmetic);
}

// An answer has been judged and its verdict shown. A test counts it and
// remembers it; a practice round only decides what comes next.
void MainScreen::questionAnswered(const GivenAnswer &answer)
{
    if (m_session.records.currentSubject != ArithmeticSubject)
        m_answerRecording.answered(m_multipleChoice, answer);
    else
        m_answerRecording.answered(m_arithmetic, answer);
    if (m_practice) {
        m_practice->answer(answer.right);
        showNextPracticeQuestion();
        return;
    }
    countAnswer(answer.right);
    m_testRecord.questionAnswered(answer);
    showNextQuestion();
}

// After a test with at least one answer, Review stands beside Start Test with
// the number of wrong answers.
void MainScreen::offerReview()
{
    if (m_testRecord.answeredCount() == 0)
        return;
    m_ui->reviewButton->setText(QString::fromStdString(reviewCaption(m_testRecord)));
    m_ui->reviewButton->show();
}

// A new test, student, subject or level: the review belonged to the last test.
void MainScreen::forgetReview()
{
    m_practice.reset();
    m_ui->practicePanel->hide();
    m_testRecord.clear();
    m_ui->reviewButton->hide();
    if (!m_ui->reviewPanel->isHidden())
        closeReview();
}

void MainScreen::showReview()
{
    openReview(QString::fromStdString(reviewHeading(m_testRecord)), false);
}

void MainScreen::openReview(const QString &heading, bool praise)
{
    m_ui->startPanel->hide();
    // The list says it all again; its room matters more on a small screen.
    m_ui->lastAnswerPanel->hide();
    m_ui->reviewPanel->showRecord(m_testRecord, heading, praise);
    m_ui->reviewPanel->practiseWeakButton()->setVisible(canPractiseWeakFacts());
    m_ui->reviewPanel->show();
    m_ui->reviewPanel->list()->setFocus();
}

void MainScreen::closeReview()
{
    m_ui->reviewPanel->hide();
    m_ui->startPanel->show();
    if (!m_ui->reviewButton->isHidden())
        m_ui->reviewButton->setFocus();
    else
        m_ui->startButton->setFocus();
}

// The practice round takes the place of the test: the question panel where the
// test asked, the round's progress and its Stop where the clock and score were.
void MainScreen::startPractice()
{
    runPractice(PracticeRound(m_testRecord));
}

// The facts of the test's level the child knows least, chosen from the history:
// not yet known first, then being learnt, then never tried.
void MainScreen::startWeakFactsPractice()
{
    const StudentRecords &records = m_session.records;
    if (!canPractiseWeakFacts())
        return;
    const std::vector<ArithmeticProblem> problems =
        weakFactsProblems(m_session.bank, records.currentLevel,
                          m_session.history->queries().facts(records.currentStudent), m_random);
    if (problems.empty()) {
        openReview(QStringLiteral("Every fact of this level is known. Well done!"), true);
        return;
    }
    runPractice(PracticeRound(std::vector<AskedQuestion>(problems.begin(), problems.end())));
}

bool MainScreen::canPractiseWeakFacts() const
{
    const StudentRecords &records = m_session.records;
    return m_session.history && m_session.history->isOn() &&
           records.currentSubject == ArithmeticSubject && records.currentLevel >= 0 &&
           records.currentLevel < LevelCount && records.currentStudent >= 0 &&
           records.currentStudent <= records.studentMax();
}

void MainScreen::runPractice(PracticeRound round)
{
    if (round.isOver())
        return;
    m_practice.emplace(std::move(round));
    m_ui->reviewPanel->hide();
    m_ui->testScorePanel->hide();
    m_ui->practicePanel->show();
    m_answerRecording.begin(0, true);
    showQuestionPanel();
    showNextPracticeQuestion();
}

void MainScreen::showNextPracticeQuestion()
{
    if (m_practice->isOver()) {
        endPractice(true);
        return;
    }
    m_ui->practicePanel->showProgress(QString::fromStdString(m_practice->progressText()));
    const AskedQuestion &asked = m_practice->current();
    if (const auto *problem = std::get_if<ArithmeticProblem>(&asked))
        m_arithmetic = *problem;
    else
        m_multipleChoice = std::get<MultipleChoiceProblem>(asked);
    showQuestion();
}

void MainScreen::stopPractice()
{
    if (m_practice)
        endPractice(false);
}

// Back to the review: with a word of praise when every question was answered
// right in the end, as it was before when the round was stopped.
void MainScreen::endPractice(bool finished)
{
    const QString heading =
        QString::fromStdString(finished ? m_practice->praise() : reviewHeading(m_testRecord));
    m_answerRecording.end(!finished);
    m_practice.reset();
    m_readAloud->endTest();
    m_ui->arithmeticPanel->hide();
    m_ui->multipleChoicePanel->hide();
    m_ui->practicePanel->hide();
    m_ui->testScorePanel->show();
    showCommandButtons();
    openReview(heading, finished);
    tellHistoryTrouble(m_session, this);
}
