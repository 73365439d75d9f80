// The widgets of the main screen, one member per control and named as the
// controls are, built in code with one helper per panel.
#pragma once

#include "core/TestBank.h"

#include <array>

class QButtonGroup;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTimer;
class QWidget;

struct MainScreenPanels {
    // Builds every panel inside the form, which owns all the widgets.
    explicit MainScreenPanels(QWidget *form);

    QFrame *fraSplash = nullptr;
    QFrame *Frame1 = nullptr;

    QPushButton *cmdSelectStudent = nullptr;
    QPushButton *cmdTest = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdExit = nullptr;

    QFrame *fraStartTest = nullptr;
    QComboBox *cmbSubject = nullptr;
    std::array<QRadioButton *, LevelCount> optLevel{};
    QButtonGroup *levelButtons = nullptr;
    QPushButton *cmdStartTest = nullptr;
    QLabel *lblTestCompleted = nullptr;

    QFrame *fraScore = nullptr;
    QFrame *fraScore_Totals = nullptr;
    QLabel *lblStudent = nullptr;
    QLabel *lblSubject = nullptr;
    QLabel *lblLevel = nullptr;
    QLabel *lblDuration = nullptr;
    QLabel *lblHighScore = nullptr;
    QLabel *lblLastScore = nullptr;
    QFrame *fraScore_Test = nullptr;
    QLabel *lblTimeLeft = nullptr;
    QLabel *lblScoreRight = nullptr;
    QLabel *lblScoreWrong = nullptr;
    QLabel *lblScoreTotal = nullptr;
    QPushButton *cmdStop = nullptr;

    QFrame *fraQuestion_Math = nullptr;
    QLineEdit *txtNum1 = nullptr;
    QLabel *lblOp = nullptr;
    QLineEdit *txtNum2 = nullptr;
    QLabel *lblEqual = nullptr;
    QLineEdit *txtAnswer = nullptr;
    QLabel *lblInstruction = nullptr;

    QFrame *fraQuestion_Multi = nullptr;
    QLabel *lblQuestion_Multi = nullptr;
    QLabel *lblInstruction_Multi = nullptr;
    std::array<QRadioButton *, 4> optAnswer{};
    QButtonGroup *answerButtons = nullptr;
    // The dark strip that holds the answers; its width decides their size.
    QFrame *answerStrip = nullptr;
    // Sets the answers in the largest size at which they fit the strip.
    void fitAnswers();

    QFrame *fraLastAnswer = nullptr;
    QLabel *lblLastAnswer = nullptr;
    QLabel *lblRightWrong = nullptr;
    std::array<QLabel *, 5> lblLastQuestion_Math{};
    std::array<QLabel *, 2> lblLastQuestion_Multi{};

    QTimer *Timer1 = nullptr;

private:
    QFrame *buildSplash(QWidget *form);
    QWidget *buildButtonBar();
    QFrame *buildStartPanel();
    QFrame *buildScorePanel();
    QFrame *buildScoreTotals();
    QFrame *buildScoreTest();
    QFrame *buildMathPanel();
    QFrame *buildMultiPanel();
    QFrame *buildLastAnswerPanel();
};

// A number shown to the child: white on black, no border, centred.
void SetDisplayStyle(QLineEdit &box);
// The box the child types into: black on white, no border, left-aligned.
void SetEntryStyle(QLineEdit &box);
// A label or button caption in one of the screen's colours (blue-green-red numbers).
void SetTextColour(QWidget &widget, int bgr);
