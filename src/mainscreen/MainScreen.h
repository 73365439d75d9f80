// The main screen: where the current student picks a subject and a level and
// takes a timed test, and from where the other screens are opened.
#pragma once

#include "quiz/AnswerPositions.h"
#include "quiz/QuestionSequence.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class RandomSource;
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

    // True once start-up has failed and the program is closing.
    bool isEnding() const { return m_ending; }

    // The first activation: blank page, test bank, subject list, then the
    // Students screen. Later calls do nothing.
    void Form_Activate();

    // Between tests.
    void cmbSubject_Click();
    void optLevel_Click(int level);
    void cmdSelectStudent_Click();
    void cmdTest_Click();
    void cmdHelp_Click();
    void cmdExit_Click();

    // The timed test. Key codes are character codes: 13 is Enter.
    void cmdStartTest_Click();
    void Timer1_Timer();
    void cmdStop_Click();
    void txtNum1_KeyPress(int keyAscii);
    void txtNum2_KeyPress(int keyAscii);
    void txtAnswer_KeyPress(int keyAscii);
    void txtNum1_GotFocus();
    void txtNum2_GotFocus();
    void txtAnswer_GotFocus();
    void optAnswer_Click(int index);
    void optAnswer_KeyPress(int index, int keyAscii);

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectControls();
    void takeKeyboardBack();
    void endProgram();

    void DisplayMainForm();
    void InitQuestions();
    void PopulateSubjectCombo();
    void PreStartTest();
    void DisableLevelButtons();
    void DisplayTotals();
    void ButtonsInvisible();
    void ButtonsVisible();
    void showSelections();

    void ChangeQuestion();
    void CheckAnswer();
    void endTest();
    void boxKeyPress(const QLineEdit &box, int keyAscii);
    void passFocusToBlank(const QLineEdit &box);
    QLineEdit *blankBox() const;
    void showLastAnswer(bool arithmetic);
    void countAnswer(bool right, const QString &rightText, const QString &wrongText);

    Session &m_session;
    RandomSource &m_random;
    std::unique_ptr<MainScreenPanels> m_ui;
    OtherScreens m_otherScreens;

    std::optional<std::string> m_dataDirectoryProblem;
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
};
