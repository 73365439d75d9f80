// The widgets of the main screen, built in code with one helper per panel: one
// member per control, named for its role. Each widget's objectName is its
// control name (cmdStartTest, optLevel3), by which tests and inspectors find it.
#pragma once

#include "core/TestBank.h"

#include <array>

class PracticePanel;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSize;
class QTimer;
class QWidget;
class ReviewPanel;

struct MainScreenPanels {
    // Builds every panel inside the form, which owns all the widgets.
    explicit MainScreenPanels(QWidget *form);

    QFrame *splash = nullptr;
    QFrame *mainPanel = nullptr;

    QPushButton *studentsButton = nullptr;
    QPushButton *testsButton = nullptr;
    QPushButton *worksheetButton = nullptr;
    QPushButton *helpButton = nullptr;
    QPushButton *exitButton = nullptr;

    QFrame *startPanel = nullptr;
    QComboBox *subjectList = nullptr;
    std::array<QRadioButton *, LevelCount> levelButtons{};
    QButtonGroup *levelGroup = nullptr;
    QCheckBox *readAloudBox = nullptr;
    QPushButton *startButton = nullptr;
    // Beside Start Test after a test with answers to look back on.
    QPushButton *reviewButton = nullptr;
    QLabel *outcome = nullptr;

    QFrame *scorePanel = nullptr;
    QFrame *totalsPanel = nullptr;
    QLabel *studentValue = nullptr;
    QLabel *subjectValue = nullptr;
    QLabel *levelValue = nullptr;
    QLabel *secondsValue = nullptr;
    QLabel *highScoreValue = nullptr;
    QLabel *lastScoreValue = nullptr;
    QFrame *testScorePanel = nullptr;
    QLabel *timeLeft = nullptr;
    QLabel *rightCount = nullptr;
    QLabel *wrongCount = nullptr;
    QLabel *score = nullptr;
    QPushButton *stopButton = nullptr;
    // In the place of the test's clock and score while the child practises.
    PracticePanel *practicePanel = nullptr;

    QFrame *arithmeticPanel = nullptr;
    QLineEdit *number1Box = nullptr;
    QLabel *operationSign = nullptr;
    QLineEdit *number2Box = nullptr;
    QLabel *equalsSign = nullptr;
    QLineEdit *answerBox = nullptr;
    QLabel *arithmeticInstruction = nullptr;
    // Beside the instruction of each question panel, shown while questions are
    // read aloud: the Arithmetic one, then the multiple-choice one.
    std::array<QPushButton *, 2> sayAgainButtons{};

    QFrame *multipleChoicePanel = nullptr;
    QLabel *questionLabel = nullptr;
    QLabel *multipleChoiceInstruction = nullptr;
    std::array<QRadioButton *, 4> answerButtons{};
    QButtonGroup *answerGroup = nullptr;
    // The dark strip that holds the answers; its width decides their size.
    QFrame *answerStrip = nullptr;
    // Sets the answers in the largest size at which they fit the strip.
    void fitAnswers();

    // Sets the problem, the question and the answers larger in a window with
    // more room than the screen is laid out for (a classroom projector), and
    // back to their usual size in a smaller one.
    void growWithWindow(const QSize &windowSize);

    // The review of the last test, in the place of the start panel.
    ReviewPanel *reviewPanel = nullptr;

    QFrame *lastAnswerPanel = nullptr;
    QLabel *lastAnswerCaption = nullptr;
    QLabel *verdict = nullptr;
    // The last problem: first number, sign, second number, "=", answer.
    std::array<QLabel *, 5> lastProblem{};
    // The caption of the right answer of the last question, and that answer.
    std::array<QLabel *, 2> lastRightAnswer{};

    // Ticks once a second while a test runs.
    QTimer *clock = nullptr;

private:
    // How much larger than usual the problem, the question and the answers are set.
    double m_growth = 1.0;
    void setAnswerStyle(QRadioButton &option) const;

    QFrame *buildSplash(QWidget *parent);
    QWidget *buildButtonBar();
    QFrame *buildStartPanel();
    QFrame *buildScorePanel();
    QFrame *buildScoreTotals();
    QFrame *buildTestScore();
    QFrame *buildArithmeticPanel();
    QFrame *buildMultipleChoicePanel();
    QFrame *buildLastAnswerPanel();
};

// A number shown to the child: white on black, no border, centred.
void setDisplayStyle(QLineEdit &box);
// The box the child types into: black on white, no border, left-aligned.
void setEntryStyle(QLineEdit &box);
// A label or button caption in one of the screen's colours (blue-green-red numbers).
void setTextColour(QWidget &widget, int bgr);
