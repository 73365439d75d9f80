// The main screen: where the current student picks a subject and a level and
// takes a timed test, and from where the other screens are opened.
#pragma once

#include "AnswerRecording.h"
#include "quiz/AnswerPositions.h"
#include "quiz/QuestionSequence.h"
#include "review/PracticeRound.h"
#include "review/TestRecord.h"
#include "worksheets/WorksheetDialog.h"
#include "worksheets/WorksheetPreview.h"

#include <QWidget>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class DataFolderLock;
class QLineEdit;
class RandomSource;
class ReadAloud;
class Speaker;
struct MainScreenPanels;
struct Session;

class MainScreen : public QWidget {
    Q_OBJECT
public:
    // Centres the screen and makes sure the data directory exists; everything
    // that may need a dialog waits for the first activation. Questions are
    // drawn from random, which tests seed for repeatable runs.
    MainScreen(Session &session, RandomSource &random, QWidget *parent = nullptr);
    ~MainScreen() override;

    // How the other screens are opened. The defaults show the real screens
    // modally; tests put their own steps here so that nothing blocks.
    struct OtherScreens {
        std::function<bool()> students; // false: the roster could not be read
        std::function<void()> tests;
        std::function<void()> help;
    };
    void setOtherScreens(OtherScreens screens);

    // The voice that reads the questions aloud. Without one, or with one that
    // cannot be heard, the Read aloud box is off and says why.
    void setSpeaker(Speaker &speaker);
    // Ticks the Read aloud box, as --read-aloud does at start-up; it stays
    // off where no voice can be heard.
    void setReadAloud(bool on);
    // How a worksheet is asked for and shown. The defaults open the dialog and
    // the print preview; tests put their own steps here so that nothing blocks.
    struct WorksheetSteps {
        WorksheetAsker ask = askWorksheetSettings;
        WorksheetPreviewer preview = previewWorksheet;
    };
    void setWorksheetSteps(WorksheetSteps steps);

    // True once start-up has failed and the program is closing.
    bool isEnding() const { return m_ending; }

    // Before the first activation: the class's files are in folder, a data
    // folder that cannot be written. Start-up brings them along and tells the user.
    void bringClassFilesFrom(const std::filesystem::path &folder);

    // The first activation: the data folder's lock, blank page, test bank,
    // subject list, then the Students screen. Later calls do nothing.
    void firstActivation();

    // Between tests.
    void chooseSubject();
    void chooseLevel(int level);
    void openStudentsScreen();
    void openTestsScreen();
    void showHelp();
    void exitProgram();
    // A worksheet of the current subject and level, to print or save as a PDF.
    void printWorksheet();

    // The timed test. One tick of the clock is one second of the test.
    void startTest();
    void onClockTick();
    void stopTest();
    // A key pressed in one of the three boxes of an Arithmetic problem: Enter
    // judges what was typed, unless the box is empty.
    void onAnswerBoxKey(const QLineEdit &box, Qt::Key key);
    // An answer of a multiple-choice question was clicked or reached with the arrow keys.
    void chooseAnswer(int index);
    // A key pressed on an answer: Enter judges the chosen one.
    void onAnswerKey(Qt::Key key);

    // After a test: its questions as they were shown and answered, the review
    // of them, and an untimed practice round of the missed ones that leaves
    // the scores and both files alone.
    const TestRecord &testRecord() const { return m_testRecord; }
    void showReview();
    void closeReview();
    void startPractice();
    // An untimed round of the student's weakest Arithmetic facts at the level.
    void startWeakFactsPractice();
    void stopPractice();

protected:
    void showEvent(QShowEvent *event) override;
    // Closing the window (the close box, Alt+F4, the window manager, Exit)
    // during a test asks first; quitting ends the test as Stop does, so its
    // score is kept. In classroom mode it asks between tests too.
    void closeEvent(QCloseEvent *event) override;
    // The problem, the question and the answers grow with the window.
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void placeOnScreen();
    void connectControls();
    void takeKeyboardBack();
    void endProgram();
    std::optional<std::string> lockDataFolder();

    void showMainPanel();
    void loadQuestions();
    void fillSubjectList();
    void openStartPanel();
    void enableLevelsWithQuestions();
    void showTotals();
    void hideCommandButtons();
    void showCommandButtons();
    void showSelections();
    void clearLastTest();

    bool isTestRunning() const;
    void showQuestionPanel();
    void showNextQuestion();
    void showQuestion();
    void questionShown();
    void questionAnswered(const GivenAnswer &answer);
    void checkArithmeticAnswer();
    void endTest();
    void passFocusToBlank(const QLineEdit &box);
    QLineEdit *blankBox() const;
    void clearChosenAnswer();
    void showLastAnswer(bool arithmetic);
    void showVerdict(bool right, const QString &rightText, const QString &wrongText);
    void countAnswer(bool right);

    void offerReview();
    void forgetReview();
    void openReview(const QString &heading, bool praise);
    void showNextPracticeQuestion();
    void runPractice(PracticeRound round);
    bool canPractiseWeakFacts() const;
    void endPractice(bool finished);

    Session &m_session;
    RandomSource &m_random;
    std::unique_ptr<MainScreenPanels> m_ui;
    std::unique_ptr<ReadAloud> m_readAloud;
    OtherScreens m_otherScreens;
    WorksheetSteps m_worksheetSteps;

    std::optional<std::string> m_dataDirectoryProblem;
    std::filesystem::path m_classFilesFrom;
    // Held from the first activation until the program ends.
    std::unique_ptr<DataFolderLock> m_folderLock;
    bool m_activationQueued = false;
    bool m_activated = false;
    bool m_ending = false;
    bool m_loading = false; // the screen is filling its own subject list

    AnswerPositionTable m_answerPositions{};
    QuestionSequence m_sequence;
    ArithmeticProblem m_arithmetic;
    MultipleChoiceProblem m_multipleChoice;
    int m_testSeconds = 0;
    int m_timeLeft = 0;
    bool m_stopRequested = false;
    bool m_startPause = false;

    TestRecord m_testRecord;
    // Set while the child practises the missed questions.
    std::optional<PracticeRound> m_practice;
    AnswerRecording m_answerRecording{m_session};
};
