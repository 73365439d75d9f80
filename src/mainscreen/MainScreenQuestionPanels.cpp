// The panels of a running test: the Arithmetic problem, the multiple-choice
// question with its answers, and the last answer with its verdict; and how
// the problem, the question and the answers grow with the window.
#include "MainScreenPanels.h"

#include "AnswerFit.h"
#include "MainScreenWidgets.h"
#include "ui/Colours.h"

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using namespace MainScreenWidgets;

namespace {

constexpr int InstructionPoints = 16;
// The least height of an answer and the size of its round mark, at the usual size.
constexpr int AnswerHeight = 44;
constexpr int AnswerMarkSize = 22;
// However large the window, the text of a test grows no further than this.
constexpr double LargestGrowth = 2.5;

int grown(int points, double growth)
{
    return qRound(points * growth);
}

// The panel's instruction, with "Say it again" at the other end of its row.
// The button takes no focus: a click leaves the child in the blank or on the
// answers, and F2 does the same from the keyboard.
QHBoxLayout *instructionRow(QLabel *instruction, QPushButton *sayAgain)
{
    sayAgain->setFocusPolicy(Qt::NoFocus);
    sayAgain->setToolTip(QStringLiteral("Reads the question aloud again (F2)"));
    auto *row = new QHBoxLayout;
    row->addWidget(instruction, 1);
    row->addWidget(sayAgain, 0, Qt::AlignTop);
    return row;
}

} // namespace

QFrame *MainScreenPanels::buildArithmeticPanel()
{
    arithmeticPanel = panel("fraQuestion_Math");
    number1Box = problemBox("txtNum1");
    operationSign = problemSign("lblOp", QStringLiteral("+"));
    number2Box = problemBox("txtNum2");
    equalsSign = problemSign("lblEqual", QStringLiteral("="));
    answerBox = problemBox("txtAnswer");
    setEntryStyle(*answerBox);
    number1Box->setAccessibleName(QStringLiteral("First number"));
    number2Box->setAccessibleName(QStringLiteral("Second number"));
    answerBox->setAccessibleName(QStringLiteral("Answer"));
    equalsSign->setAccessibleName(QStringLiteral("equals"));

    arithmeticInstruction = namedLabel("lblInstruction", InstructionPoints, false);
    arithmeticInstruction->setText(QStringLiteral("Type your answer, and press [Enter]:"));

    QFrame *strip = darkStrip();
    auto *problem = new QHBoxLayout(strip);
    problem->setContentsMargins(16, 16, 16, 16);
    problem->addStretch();
    problem->addWidget(number1Box);
    problem->addWidget(operationSign);
    problem->addWidget(number2Box);
    problem->addWidget(equalsSign);
    problem->addWidget(answerBox);
    problem->addStretch();

    auto *layout = new QVBoxLayout(arithmeticPanel);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(14);
    sayAgainButtons[0] = button("cmdSayAgain_Math", QStringLiteral("Say it again (F2)"));
    layout->addLayout(instructionRow(arithmeticInstruction, sayAgainButtons[0]));
    layout->addWidget(strip);
    layout->addStretch();
    arithmeticPanel->hide();
    return arithmeticPanel;
}

QFrame *MainScreenPanels::buildMultipleChoicePanel()
{
    multipleChoicePanel = panel("fraQuestion_Multi");
    questionLabel = namedLabel("lblQuestion_Multi", QuestionPoints, true);
    questionLabel->setWordWrap(true);
    multipleChoiceInstruction = namedLabel("lblInstruction_Multi", InstructionPoints, false);

    answerStrip = darkStrip();
    auto *answers = new QVBoxLayout(answerStrip);
    answers->setContentsMargins(20, 12, 20, 12);
    answers->setSpacing(6);
    answerGroup = new QButtonGroup(multipleChoicePanel);
    for (int index = 0; index < 4; ++index) {
        auto *option = new QRadioButton;
        option->setObjectName(QStringLiteral("optAnswer%1").arg(index));
        option->setFont(arial(QuestionPoints, true));
        setAnswerStyle(*option);
        setTextColour(*option, Bgr::White);
        answerGroup->addButton(option, index);
        // As wide as its text, so that a click beside the text is not taken
        // for a choice the child cannot see; but never wider than the strip,
        // however long the answer (fitAnswers sets a smaller size first).
        option->setMinimumWidth(1);
        answers->addWidget(option, 0, Qt::AlignLeft);
        answerButtons[index] = option;
    }

    auto *layout = new QVBoxLayout(multipleChoicePanel);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(12);
    layout->addWidget(questionLabel);
    sayAgainButtons[1] = button("cmdSayAgain_Multi", QStringLiteral("Say it again (F2)"));
    layout->addLayout(instructionRow(multipleChoiceInstruction, sayAgainButtons[1]));
    layout->addWidget(answerStrip);
    layout->addStretch();
    multipleChoicePanel->hide();
    return multipleChoicePanel;
}

void MainScreenPanels::setAnswerStyle(QRadioButton &option) const
{
    option.setMinimumHeight(qRound(AnswerHeight * m_growth));
    // A new style sheet puts back the palette the answer first had: the green
    // of a chosen answer is kept across it.
    const QPalette colours = option.palette();
    // The answer with the keyboard focus is framed in white: the style's own
    // focus mark hardly shows on the dark strip.
    option.setStyleSheet(
        QStringLiteral("QRadioButton { border: 2px solid transparent; padding: 0 6px; }"
                       "QRadioButton:focus { border-color: white; }"
                       "QRadioButton::indicator { width: %1px; height: %1px; }")
            .arg(qRound(AnswerMarkSize * m_growth)));
    option.setPalette(colours);
}

void MainScreenPanels::fitAnswers()
{
    const QMargins margins = answerStrip->layout()->contentsMargins();
    const int width = answerStrip->contentsRect().width() - margins.left() - margins.right();
    ::fitAnswers(answerButtons, width, grown(QuestionPoints, m_growth), SmallestAnswerPoints);
}

void MainScreenPanels::growWithWindow(const QSize &windowSize)
{
    const double room = std::min(static_cast<double>(windowSize.width()) / LaidOutSize.width(),
                                 static_cast<double>(windowSize.height()) / LaidOutSize.height());
    // In steps of a twentieth, so that dragging the window's edge does not set
    // every font again at each pixel.
    const double growth = std::round(std::clamp(room, 1.0, LargestGrowth) * 20) / 20;
    if (growth == m_growth)
        return;
    m_growth = growth;
    for (QLineEdit *box : {number1Box, number2Box, answerBox})
        setProblemPoints(*box, grown(ProblemPoints, growth));
    for (QLabel *sign : {operationSign, equalsSign})
        setProblemPoints(*sign, grown(ProblemPoints, growth));
    for (QLabel *instruction : {arithmeticInstruction, multipleChoiceInstruction})
        instruction->setFont(arial(grown(InstructionPoints, growth)));
    questionLabel->setFont(arial(grown(QuestionPoints, growth), true));
    for (QRadioButton *option : answerButtons)
        setAnswerStyle(*option);
    fitAnswers();
}

QFrame *MainScreenPanels::buildLastAnswerPanel()
{
    lastAnswerPanel = panel("fraLastAnswer");
    lastAnswerCaption = namedLabel("lblLastAnswer", 16, false);
    lastAnswerCaption->setText(QStringLiteral("Your last answer was"));
    verdict = namedLabel("lblRightWrong", ScorePoints, true);

    auto *verdictRow = new QHBoxLayout;
    verdictRow->addWidget(lastAnswerCaption);
    verdictRow->addWidget(verdict);
    verdictRow->addStretch();

    auto *problem = new QHBoxLayout;
    problem->setSpacing(10);
    for (int index = 0; index < 5; ++index) {
        QLabel *part = new QLabel;
        part->setObjectName(QStringLiteral("lblLastQuestion_Math%1").arg(index));
        part->setFont(arial(ScorePoints, true));
        problem->addWidget(part);
        lastProblem[index] = part;
    }
    lastProblem[3]->setText(QStringLiteral("="));
    lastRightAnswer[0] = namedLabel("lblLastQuestion_Multi0", 16, false);
    lastRightAnswer[1] = namedLabel("lblLastQuestion_Multi1", ScorePoints, true);
    lastRightAnswer[1]->setWordWrap(true);
    problem->addWidget(lastRightAnswer[0]);
    problem->addWidget(lastRightAnswer[1], 1);
    problem->addStretch();

    auto *layout = new QVBoxLayout(lastAnswerPanel);
    layout->setContentsMargins(16, 10, 16, 10);
    layout->addLayout(verdictRow);
    layout->addLayout(problem);
    lastAnswerPanel->hide();
    return lastAnswerPanel;
}
