#include "MainScreenPanels.h"

#include "MainScreenWidgets.h"
#include "review/PracticePanel.h"
#include "review/ReviewPanel.h"
#include "ui/Accessibility.h"
#include "ui/Colours.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include <array>
#include <utility>
#include <vector>

using namespace MainScreenWidgets;

void setDisplayStyle(QLineEdit &box)
{
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, bgrColor(Bgr::Black));
    palette.setColor(QPalette::Text, bgrColor(Bgr::White));
    box.setPalette(palette);
    box.setFrame(false);
    box.setAlignment(Qt::AlignCenter);
}

void setEntryStyle(QLineEdit &box)
{
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, bgrColor(Bgr::White));
    palette.setColor(QPalette::Text, bgrColor(Bgr::Black));
    box.setPalette(palette);
    box.setFrame(false);
    box.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void setTextColour(QWidget &widget, int bgr)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, bgrColor(bgr));
    palette.setColor(QPalette::ButtonText, bgrColor(bgr));
    widget.setPalette(palette);
}

MainScreenPanels::MainScreenPanels(QWidget *form)
{
    // Everything sits in a scroll area, so that a window smaller than the
    // panels need (a small laptop set to large fonts) cuts nothing off. Its
    // scroll bars show only then.
    auto *scrollArea = new QScrollArea(form);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setWidgetResizable(true);
    // Tab goes through the controls, which the area scrolls into view; the
    // area itself is no stop.
    scrollArea->setFocusPolicy(Qt::NoFocus);
    auto *content = new QWidget;
    auto *contentLayout = new QVBoxLayout(content);
    contentLayout->setContentsMargins(0, 0, 0, 0);
    contentLayout->addWidget(buildSplash(content));
    scrollArea->setWidget(content);
    auto *formLayout = new QVBoxLayout(form);
    formLayout->setContentsMargins(0, 0, 0, 0);
    formLayout->addWidget(scrollArea);

    mainPanel = named(new QFrame(content), "Frame1");
    mainPanel->setFont(arial(CaptionPoints));
    contentLayout->addWidget(mainPanel);

    // The start panel, the two question panels and the review of the last
    // test take turns in one place.
    auto *questionArea = new QWidget;
    auto *questionLayout = new QGridLayout(questionArea);
    questionLayout->setContentsMargins(0, 0, 0, 0);
    questionLayout->addWidget(buildStartPanel(), 0, 0);
    questionLayout->addWidget(buildArithmeticPanel(), 0, 0);
    questionLayout->addWidget(buildMultipleChoicePanel(), 0, 0);
    reviewPanel = new ReviewPanel;
    questionLayout->addWidget(reviewPanel, 0, 0);

    auto *left = new QVBoxLayout;
    left->addWidget(questionArea);
    left->addWidget(buildLastAnswerPanel());
    left->addStretch();

    auto *body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addWidget(buildScorePanel(), 0, Qt::AlignTop);

    auto *frameLayout = new QVBoxLayout(mainPanel);
    frameLayout->setContentsMargins(12, 8, 12, 12);
    frameLayout->setSpacing(12);
    frameLayout->addWidget(buildButtonBar());
    frameLayout->addLayout(body, 1);

    clock = named(new QTimer(form), "Timer1");
    clock->setInterval(1000);

    // Tab follows the screen from the top: the command buttons, the start
    // panel, whichever question is showing, and Stop. Hidden controls are skipped.
    std::vector<QWidget *> tabChain = {studentsButton, testsButton, worksheetButton,
                                       helpButton,     exitButton,  subjectList};
    tabChain.insert(tabChain.end(), levelButtons.begin(), levelButtons.end());
    tabChain.insert(tabChain.end(),
                    {readAloudBox, startButton, reviewButton, reviewPanel->list(),
                     reviewPanel->practiseButton(), reviewPanel->practiseWeakButton(),
                     reviewPanel->backButton(), number1Box, number2Box, answerBox});
    tabChain.insert(tabChain.end(), answerButtons.begin(), answerButtons.end());
    tabChain.insert(tabChain.end(), {stopButton, practicePanel->stopButton()});
    setTabChain(tabChain);
}

QFrame *MainScreenPanels::buildSplash(QWidget *parent)
{
    splash = named(new QFrame(parent), "fraSplash");
    auto *layout = new QVBoxLayout(splash);
    layout->addStretch();
    for (const QString &text :
         {QStringLiteral("Please Wait ..."), QStringLiteral("Loading Program,")}) {
        QLabel *line = caption(text, QuestionPoints, true);
        line->setAlignment(Qt::AlignCenter);
        layout->addWidget(line);
    }
    layout->addStretch();
    return splash;
}

QWidget *MainScreenPanels::buildButtonBar()
{
    studentsButton = button("cmdSelectStudent", QStringLiteral("Students"));
    testsButton = button("cmdTest", QStringLiteral("Tests"));
    worksheetButton = button("cmdWorksheet", QStringLiteral("&Worksheet\u2026"));
    worksheetButton->setAccessibleName(QStringLiteral("Print a worksheet"));
    helpButton = button("cmdHelp", QStringLiteral("Help"));
    exitButton = button("cmdExit", QStringLiteral("E&xit"));

    auto *bar = new QWidget;
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton *push : {studentsButton, testsButton, worksheetButton, helpButton}) {
        push->setMinimumWidth(130);
        layout->addWidget(push);
    }
    layout->addStretch();
    exitButton->setMinimumWidth(130);
    layout->addWidget(exitButton);
    // Keeps the bar's height while its buttons are hidden during a test, so the
    // question does not move up when the test starts.
    bar->setMinimumHeight(qMax(exitButton->sizeHint().height(), exitButton->minimumHeight()));
    return bar;
}

QFrame *MainScreenPanels::buildStartPanel()
{
    startPanel = panel("fraStartTest");

    subjectList = named(new QComboBox, "cmbSubject");
    subjectList->setFont(arial(16));
    subjectList->setMinimumWidth(280);
    QLabel *subjectCaption = caption(QStringLiteral("Subject:"), 16, true);
    subjectCaption->setBuddy(subjectList);
    auto *subjectRow = new QHBoxLayout;
    subjectRow->addWidget(subjectCaption);
    subjectRow->addWidget(subjectList);
    subjectRow->addStretch();

    levelGroup = new QButtonGroup(startPanel);
    auto *levelRow = new QHBoxLayout;
    levelRow->setSpacing(4);
    for (int level = 0; level < LevelCount; ++level) {
        auto *option = new QRadioButton(QString::fromStdString(levelText(level)));
        option->setObjectName(QStringLiteral("optLevel%1").arg(level));
        option->setFont(arial(14, true));
        option->setAccessibleName(QStringLiteral("Level ") + option->text());
        levelGroup->addButton(option, level);
        levelRow->addWidget(option);
        levelButtons[level] = option;
    }
    tabToCheckedButton(levelGroup->buttons());
    levelRow->addStretch();

    // Off at every start; it is kept in neither data file.
    readAloudBox = named(new QCheckBox(QStringLiteral("&Read aloud")), "chkReadAloud");
    readAloudBox->setFont(arial(14, true));

    startButton = button("cmdStartTest", QStringLiteral("Start Test"), 20);
    startButton->setMinimumSize(260, 64);
    // While the button is held back after a test, the message under it stays put.
    QSizePolicy keepPlace = startButton->sizePolicy();
    keepPlace.setRetainSizeWhenHidden(true);
    startButton->setSizePolicy(keepPlace);

    reviewButton = button("cmdReview", QStringLiteral("Review"), 16);
    reviewButton->hide();
    // Start Test keeps the middle of the panel; the review stands beside it.
    auto *startRow = new QGridLayout;
    startRow->setColumnStretch(0, 1);
    startRow->setColumnStretch(2, 1);
    startRow->addWidget(startButton, 0, 1);
    startRow->addWidget(reviewButton, 0, 2, Qt::AlignLeft | Qt::AlignVCenter);

    outcome = namedLabel("lblTestCompleted", ScorePoints, true);
    outcome->setAlignment(Qt::AlignCenter);
    outcome->setWordWrap(true);
    outcome->hide();

    auto *layout = new QVBoxLayout(startPanel);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(14);
    layout->addLayout(subjectRow);
    layout->addWidget(caption(QStringLiteral("Level:"), 16, true));
    layout->addLayout(levelRow);
    layout->addWidget(readAloudBox);
    layout->addSpacing(8);
    layout->addLayout(startRow);
    layout->addWidget(outcome);
    layout->addStretch();
    startPanel->hide();
    return startPanel;
}

QFrame *MainScreenPanels::buildScorePanel()
{
    scorePanel = named(new QFrame, "fraScore");
    // 300 pixels at the usual 96 dots per inch, wider where the desktop's fonts
    // are set larger, so that captions and scores keep their room.
    scorePanel->setFixedWidth(300 * scorePanel->logicalDpiX() / 96);
    auto *layout = new QVBoxLayout(scorePanel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(buildScoreTotals());
    layout->addWidget(buildTestScore());
    practicePanel = new PracticePanel;
    layout->addWidget(practicePanel);
    layout->addStretch();
    return scorePanel;
}

QFrame *MainScreenPanels::buildScoreTotals()
{
    totalsPanel = panel("fraScore_Totals");
    studentValue = namedLabel("lblStudent", 14, true);
    subjectValue = namedLabel("lblSubject", 14, true);
    levelValue = namedLabel("lblLevel", 14, true);
    secondsValue = namedLabel("lblDuration", 14, true);
    highScoreValue = namedLabel("lblHighScore", 14, true);
    lastScoreValue = namedLabel("lblLastScore", 14, true);

    auto *layout = new QGridLayout(totalsPanel);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setVerticalSpacing(8);
    const std::array<std::pair<QString, QLabel *>, 6> rows = {{
        {QStringLiteral("Student:"), studentValue},
        {QStringLiteral("Subject:"), subjectValue},
        {QStringLiteral("Level:"), levelValue},
        {QStringLiteral("Seconds:"), secondsValue},
        {QStringLiteral("High Score:"), highScoreValue},
        {QStringLiteral("Last Score:"), lastScoreValue},
    }};
    int row = 0;
    for (const auto &[text, value] : rows) {
        layout->addWidget(caption(text, 14), row, 0, Qt::AlignRight);
        value->setWordWrap(true);
        nameValueLabel(*value, text.chopped(1));
        layout->addWidget(value, row, 1);
        ++row;
    }
    layout->setColumnStretch(1, 1);
    return totalsPanel;
}

QFrame *MainScreenPanels::buildTestScore()
{
    testScorePanel = panel("fraScore_Test");
    timeLeft = namedLabel("lblTimeLeft", ScorePoints, true);
    rightCount = namedLabel("lblScoreRight", ScorePoints, true);
    wrongCount = namedLabel("lblScoreWrong", ScorePoints, true);
    score = namedLabel("lblScoreTotal", ScorePoints, true);
    stopButton = button("cmdStop", QStringLiteral("Stop Test"), 16);

    auto *layout = new QGridLayout(testScorePanel);
    layout->setContentsMargins(14, 12, 14, 12);
    const std::array<std::pair<QString, QLabel *>, 4> columns = {{
        {QStringLiteral("Time"), timeLeft},
        {QStringLiteral("Right"), rightCount},
        {QStringLiteral("Wrong"), wrongCount},
        {QStringLiteral("Score"), score},
    }};
    int column = 0;
    for (const auto &[text, value] : columns) {
        layout->addWidget(caption(text, 13), 0, column, Qt::AlignHCenter);
        value->setAlignment(Qt::AlignCenter);
        value->setMinimumWidth(56);
        nameValueLabel(*value, value == timeLeft ? QStringLiteral("Time left") : text);
        layout->addWidget(value, 1, column);
        ++column;
    }
    layout->addWidget(stopButton, 2, 0, 1, 4);
    testScorePanel->hide();
    return testScorePanel;
}
