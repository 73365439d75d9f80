// The panels of a running test: the Arithmetic problem, the multiple-choice
// question with its answers, and the last answer with its verdict.
#include "MainScreenPanels.h"

#include "AnswerFit.h"
#include "MainScreenParts.h"
#include "ui/Colours.h"

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace MainScreenParts;

QFrame *MainScreenPanels::buildMathPanel()
{
    fraQuestion_Math = panel("fraQuestion_Math");
    txtNum1 = problemBox("txtNum1");
    lblOp = problemSign("lblOp", QStringLiteral("+"));
    txtNum2 = problemBox("txtNum2");
    lblEqual = problemSign("lblEqual", QStringLiteral("="));
    txtAnswer = problemBox("txtAnswer");
    SetEntryStyle(*txtAnswer);
    txtNum1->setAccessibleName(QStringLiteral("First number"));
    txtNum2->setAccessibleName(QStringLiteral("Second number"));
    txtAnswer->setAccessibleName(QStringLiteral("Answer"));
    lblEqual->setAccessibleName(QStringLiteral("equals"));

    lblInstruction = namedLabel("lblInstruction", 16, false);
    lblInstruction->setText(QStringLiteral("Type your answer, and press [Enter]:"));

    QFrame *strip = darkStrip();
    auto *problem = new QHBoxLayout(strip);
    problem->setContentsMargins(16, 16, 16, 16);
    problem->addStretch();
    problem->addWidget(txtNum1);
    problem->addWidget(lblOp);
    problem->addWidget(txtNum2);
    problem->addWidget(lblEqual);
    problem->addWidget(txtAnswer);
    problem->addStretch();

    auto *layout = new QVBoxLayout(fraQuestion_Math);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(14);
    layout->addWidget(lblInstruction);
    layout->addWidget(strip);
    layout->addStretch();
    fraQuestion_Math->hide();
    return fraQuestion_Math;
}

QFrame *MainScreenPanels::buildMultiPanel()
{
    fraQuestion_Multi = panel("fraQuestion_Multi");
    lblQuestion_Multi = namedLabel("lblQuestion_Multi", QuestionPoints, true);
    lblQuestion_Multi->setWordWrap(true);
    lblInstruction_Multi = namedLabel("lblInstruction_Multi", 16, false);

    answerStrip = darkStrip();
    auto *answers = new QVBoxLayout(answerStrip);
    answers->setContentsMargins(20, 12, 20, 12);
    answers->setSpacing(6);
    answerButtons = new QButtonGroup(fraQuestion_Multi);
    for (int index = 0; index < 4; ++index) {
        auto *option = new QRadioButton;
        option->setObjectName(QStringLiteral("optAnswer%1").arg(index));
        option->setFont(arial(QuestionPoints, true));
        option->setMinimumHeight(44);
        // The answer with the keyboard focus is framed in white: the style's own
        // focus mark hardly shows on the dark strip.
        option->setStyleSheet(
            QStringLiteral("QRadioButton { border: 2px solid transparent; padding: 0 6px; }"
                           "QRadioButton:focus { border-color: white; }"
                           "QRadioButton::indicator { width: 22px; height: 22px; }"));
        SetTextColour(*option, Bgr::White);
        answerButtons->addButton(option, index);
        // As wide as its text, so that a click beside the text is not taken
        // for a choice the child cannot see; but never wider than the strip,
        // however long the answer (fitAnswers sets a smaller size first).
        option->setMinimumWidth(1);
        answers->addWidget(option, 0, Qt::AlignLeft);
        optAnswer[index] = option;
    }

    auto *layout = new QVBoxLayout(fraQuestion_Multi);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(12);
    layout->addWidget(lblQuestion_Multi);
    layout->addWidget(lblInstruction_Multi);
    layout->addWidget(answerStrip);
    layout->addStretch();
    fraQuestion_Multi->hide();
    return fraQuestion_Multi;
}

void MainScreenPanels::fitAnswers()
{
    const QMargins margins = answerStrip->layout()->contentsMargins();
    const int width = answerStrip->contentsRect().width() - margins.left() - margins.right();
    FitAnswers(optAnswer, width, QuestionPoints, SmallestAnswerPoints);
}

QFrame *MainScreenPanels::buildLastAnswerPanel()
{
    fraLastAnswer = panel("fraLastAnswer");
    lblLastAnswer = namedLabel("lblLastAnswer", 16, false);
    lblLastAnswer->setText(QStringLiteral("Your last answer was"));
    lblRightWrong = namedLabel("lblRightWrong", ScorePoints, true);

    auto *verdict = new QHBoxLayout;
    verdict->addWidget(lblLastAnswer);
    verdict->addWidget(lblRightWrong);
    verdict->addStretch();

    auto *problem = new QHBoxLayout;
    problem->setSpacing(10);
    for (int index = 0; index < 5; ++index) {
        QLabel *part = new QLabel;
        part->setObjectName(QStringLiteral("lblLastQuestion_Math%1").arg(index));
        part->setFont(arial(ScorePoints, true));
        problem->addWidget(part);
        lblLastQuestion_Math[index] = part;
    }
    lblLastQuestion_Math[3]->setText(QStringLiteral("="));
    lblLastQuestion_Multi[0] = namedLabel("lblLastQuestion_Multi0", 16, false);
    lblLastQuestion_Multi[1] = namedLabel("lblLastQuestion_Multi1", ScorePoints, true);
    lblLastQuestion_Multi[1]->setWordWrap(true);
    problem->addWidget(lblLastQuestion_Multi[0]);
    problem->addWidget(lblLastQuestion_Multi[1], 1);
    problem->addStretch();

    auto *layout = new QVBoxLayout(fraLastAnswer);
    layout->setContentsMargins(16, 10, 16, 10);
    layout->addLayout(verdict);
    layout->addLayout(problem);
    fraLastAnswer->hide();
    return fraLastAnswer;
}
