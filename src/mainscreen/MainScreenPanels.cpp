#include "MainScreenPanels.h"

#include "MainScreenParts.h"
#include "ui/Accessibility.h"
#include "ui/Colours.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

#include <array>
#include <utility>
#include <vector>

using namespace MainScreenParts;

void SetDisplayStyle(QLineEdit &box)
{
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, bgrColor(Bgr::Black));
    palette.setColor(QPalette::Text, bgrColor(Bgr::White));
    box.setPalette(palette);
    box.setFrame(false);
    box.setAlignment(Qt::AlignCenter);
}

void SetEntryStyle(QLineEdit &box)
{
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, bgrColor(Bgr::White));
    palette.setColor(QPalette::Text, bgrColor(Bgr::Black));
    box.setPalette(palette);
    box.setFrame(false);
    box.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void SetTextColour(QWidget &widget, int bgr)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, bgrColor(bgr));
    palette.setColor(QPalette::ButtonText, bgrColor(bgr));
    widget.setPalette(palette);
}

MainScreenPanels::MainScreenPanels(QWidget *form)
{
    auto *formLayout = new QVBoxLayout(form);
    formLayout->setContentsMargins(0, 0, 0, 0);
    formLayout->addWidget(buildSplash(form));

    Frame1 = named(new QFrame(form), "Frame1");
    Frame1->setFont(arial(CaptionPoints));
    formLayout->addWidget(Frame1);

    // The start panel and the two question panels take turns in one place.
    auto *questionArea = new QWidget;
    auto *questionLayout = new QGridLayout(questionArea);
    questionLayout->setContentsMargins(0, 0, 0, 0);
    questionLayout->addWidget(buildStartPanel(), 0, 0);
    questionLayout->addWidget(buildMathPanel(), 0, 0);
    questionLayout->addWidget(buildMultiPanel(), 0, 0);

    auto *left = new QVBoxLayout;
    left->addWidget(questionArea);
    left->addWidget(buildLastAnswerPanel());
    left->addStretch();

    auto *body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addWidget(buildScorePanel(), 0, Qt::AlignTop);

    auto *frameLayout = new QVBoxLayout(Frame1);
    frameLayout->setContentsMargins(12, 8, 12, 12);
    frameLayout->setSpacing(12);
    frameLayout->addWidget(buildButtonBar());
    frameLayout->addLayout(body, 1);

    Timer1 = named(new QTimer(form), "Timer1");
    Timer1->setInterval(1000);

    // Tab follows the screen from the top: the command buttons, the start
    // panel, whichever question is showing, and Stop. Hidden controls are skipped.
    std::vector<QWidget *> tabChain = {cmdSelectStudent, cmdTest, cmdHelp, cmdExit, cmbSubject};
    tabChain.insert(tabChain.end(), optLevel.begin(), optLevel.end());
    tabChain.insert(tabChain.end(), {cmdStartTest, txtNum1, txtNum2, txtAnswer});
    tabChain.insert(tabChain.end(), optAnswer.begin(), optAnswer.end());
    tabChain.push_back(cmdStop);
    setTabChain(tabChain);
}

QFrame *MainScreenPanels::buildSplash(QWidget *form)
{
    fraSplash = named(new QFrame(form), "fraSplash");
    auto *layout = new QVBoxLayout(fraSplash);
    layout->addStretch();
    for (const QString &text :
         {QStringLiteral("Please Wait ..."), QStringLiteral("Loading Program,")}) {
        QLabel *line = caption(text, QuestionPoints, true);
        line->setAlignment(Qt::AlignCenter);
        layout->addWidget(line);
    }
    layout->addStretch();
    return fraSplash;
}

QWidget *MainScreenPanels::buildButtonBar()
{
    cmdSelectStudent = button("cmdSelectStudent", QStringLiteral("Students"));
    cmdTest = button("cmdTest", QStringLiteral("Tests"));
    cmdHelp = button("cmdHelp", QStringLiteral("Help"));
    cmdExit = button("cmdExit", QStringLiteral("E&xit"));

    auto *bar = new QWidget;
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton *push : {cmdSelectStudent, cmdTest, cmdHelp}) {
        push->setMinimumWidth(130);
        layout->addWidget(push);
    }
    layout->addStretch();
    cmdExit->setMinimumWidth(130);
    layout->addWidget(cmdExit);
    // Keeps the bar's height while its buttons are hidden during a test, so the
    // question does not move up when the test starts.
    bar->setMinimumHeight(qMax(cmdExit->sizeHint().height(), cmdExit->minimumHeight()));
    return bar;
}

QFrame *MainScreenPanels::buildStartPanel()
{
    fraStartTest = panel("fraStartTest");

    cmbSubject = named(new QComboBox, "cmbSubject");
    cmbSubject->setFont(arial(16));
    cmbSubject->setMinimumWidth(280);
    QLabel *subjectCaption = caption(QStringLiteral("Subject:"), 16, true);
    subjectCaption->setBuddy(cmbSubject);
    auto *subjectRow = new QHBoxLayout;
    subjectRow->addWidget(subjectCaption);
    subjectRow->addWidget(cmbSubject);
    subjectRow->addStretch();

    levelButtons = new QButtonGroup(fraStartTest);
    auto *levelRow = new QHBoxLayout;
    levelRow->setSpacing(4);
    for (int level = 0; level < LevelCount; ++level) {
        auto *option = new QRadioButton(QString::fromStdString(levelText(level)));
        option->setObjectName(QStringLiteral("optLevel%1").arg(level));
        option->setFont(arial(14, true));
        option->setAccessibleName(QStringLiteral("Level ") + option->text());
        levelButtons->addButton(option, level);
        levelRow->addWidget(option);
        optLevel[level] = option;
    }
    tabToCheckedButton(levelButtons->buttons());
    levelRow->addStretch();

    cmdStartTest = button("cmdStartTest", QStringLiteral("Start Test"), 20);
    cmdStartTest->setMinimumSize(260, 64);
    // While the button is held back after a test, the message under it stays put.
    QSizePolicy keepPlace = cmdStartTest->sizePolicy();
    keepPlace.setRetainSizeWhenHidden(true);
    cmdStartTest->setSizePolicy(keepPlace);

    lblTestCompleted = namedLabel("lblTestCompleted", ScorePoints, true);
    lblTestCompleted->setAlignment(Qt::AlignCenter);
    lblTestCompleted->setWordWrap(true);
    lblTestCompleted->hide();

    auto *layout = new QVBoxLayout(fraStartTest);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(14);
    layout->addLayout(subjectRow);
    layout->addWidget(caption(QStringLiteral("Level:"), 16, true));
    layout->addLayout(levelRow);
    layout->addSpacing(8);
    layout->addWidget(cmdStartTest, 0, Qt::AlignHCenter);
    layout->addWidget(lblTestCompleted);
    layout->addStretch();
    fraStartTest->hide();
    return fraStartTest;
}

QFrame *MainScreenPanels::buildScorePanel()
{
    fraScore = named(new QFrame, "fraScore");
    // 300 pixels at the usual 96 dots per inch, wider where the desktop's fonts
    // are set larger, so that captions and scores keep their room.
    fraScore->setFixedWidth(300 * fraScore->logicalDpiX() / 96);
    auto *layout = new QVBoxLayout(fraScore);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(buildScoreTotals());
    layout->addWidget(buildScoreTest());
    layout->addStretch();
    return fraScore;
}

QFrame *MainScreenPanels::buildScoreTotals()
{
    fraScore_Totals = panel("fraScore_Totals");
    lblStudent = namedLabel("lblStudent", 14, true);
    lblSubject = namedLabel("lblSubject", 14, true);
    lblLevel = namedLabel("lblLevel", 14, true);
    lblDuration = namedLabel("lblDuration", 14, true);
    lblHighScore = namedLabel("lblHighScore", 14, true);
    lblLastScore = namedLabel("lblLastScore", 14, true);

    auto *layout = new QGridLayout(fraScore_Totals);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setVerticalSpacing(8);
    const std::array<std::pair<QString, QLabel *>, 6> rows = {{
        {QStringLiteral("Student:"), lblStudent},
        {QStringLiteral("Subject:"), lblSubject},
        {QStringLiteral("Level:"), lblLevel},
        {QStringLiteral("Seconds:"), lblDuration},
        {QStringLiteral("High Score:"), lblHighScore},
        {QStringLiteral("Last Score:"), lblLastScore},
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
    return fraScore_Totals;
}

QFrame *MainScreenPanels::buildScoreTest()
{
    fraScore_Test = panel("fraScore_Test");
    lblTimeLeft = namedLabel("lblTimeLeft", ScorePoints, true);
    lblScoreRight = namedLabel("lblScoreRight", ScorePoints, true);
    lblScoreWrong = namedLabel("lblScoreWrong", ScorePoints, true);
    lblScoreTotal = namedLabel("lblScoreTotal", ScorePoints, true);
    cmdStop = button("cmdStop", QStringLiteral("Stop Test"), 16);

    auto *layout = new QGridLayout(fraScore_Test);
    layout->setContentsMargins(14, 12, 14, 12);
    const std::array<std::pair<QString, QLabel *>, 4> columns = {{
        {QStringLiteral("Time"), lblTimeLeft},
        {QStringLiteral("Right"), lblScoreRight},
        {QStringLiteral("Wrong"), lblScoreWrong},
        {QStringLiteral("Score"), lblScoreTotal},
    }};
    int column = 0;
    for (const auto &[text, value] : columns) {
        layout->addWidget(caption(text, 13), 0, column, Qt::AlignHCenter);
        value->setAlignment(Qt::AlignCenter);
        value->setMinimumWidth(56);
        nameValueLabel(*value, value == lblTimeLeft ? QStringLiteral("Time left") : text);
        layout->addWidget(value, 1, column);
        ++column;
    }
    layout->addWidget(cmdStop, 2, 0, 1, 4);
    fraScore_Test->hide();
    return fraScore_Test;
}
