#include "MainScreen.h"

#include "MainScreenPanels.h"
#include "StartUp.h"
#include "editor/TestsScreen.h"
#include "help/HelpScreen.h"
#include "students/StudentsScreen.h"
#include "ui/Accessibility.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTimer>

namespace {

const QString Title = QStringLiteral("Tavrino");

} // namespace

MainScreen::MainScreen(Session &session, RandomSource &random, QWidget *parent)
    : QWidget(parent), m_session(session), m_random(random),
      m_ui(std::make_unique<MainScreenPanels>(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(Title);
    m_ui->Frame1->hide();
    resize(1000, 700);
    if (const QScreen *display = QGuiApplication::primaryScreen())
        move(display->availableGeometry().center() - rect().center());

    m_otherScreens.students = [this] {
        StudentsScreen screen(m_session, this);
        if (!screen.Form_Load())
            return false;
        screen.exec();
        takeKeyboardBack();
        return true;
    };
    m_otherScreens.tests = [this] {
        TestsScreen screen(m_session, this);
        screen.exec();
        takeKeyboardBack();
    };
    m_otherScreens.help = [this] {
        HelpScreen screen(HelpPage::Main, m_session.paths, this);
        screen.exec();
        takeKeyboardBack();
    };

    // A missing directory is made now; telling the user about a failure has to
    // wait until the screen is up.
    m_dataDirectoryProblem = MakeDataDirectory(m_session.paths.dataDir);
    connectControls();
}

MainScreen::~MainScreen() = default;

void MainScreen::setOtherScreens(OtherScreens screens)
{
    m_otherScreens = std::move(screens);
}

void MainScreen::connectControls()
{
    connect(m_ui->cmbSubject, &QComboBox::currentIndexChanged, this, &MainScreen::cmbSubject_Click);
    connect(m_ui->levelButtons, &QButtonGroup::idClicked, this, &MainScreen::optLevel_Click);
    connect(m_ui->cmdSelectStudent, &QPushButton::clicked, this,
            &MainScreen::cmdSelectStudent_Click);
    connect(m_ui->cmdTest, &QPushButton::clicked, this, &MainScreen::cmdTest_Click);
    connect(m_ui->cmdHelp, &QPushButton::clicked, this, &MainScreen::cmdHelp_Click);
    connect(m_ui->cmdExit, &QPushButton::clicked, this, &MainScreen::cmdExit_Click);
    connect(m_ui->cmdStartTest, &QPushButton::clicked, this, &MainScreen::cmdStartTest_Click);
    connect(m_ui->cmdStop, &QPushButton::clicked, this, &MainScreen::cmdStop_Click);
    connect(m_ui->Timer1, &QTimer::timeout, this, &MainScreen::Timer1_Timer);
    connect(m_ui->answerButtons, &QButtonGroup::idClicked, this, &MainScreen::optAnswer_Click);
    for (QObject *watched :
         {static_cast<QObject *>(m_ui->txtNum1), static_cast<QObject *>(m_ui->txtNum2),
          static_cast<QObject *>(m_ui->txtAnswer)})
        watched->installEventFilter(this);
    for (QRadioButton *option : m_ui->optAnswer)
        option->installEventFilter(this);
    // The answers are sized to the strip's width whenever it changes.
    m_ui->answerStrip->installEventFilter(this);
    // Enter that the subject list and the level buttons leave unused reaches the panel.
    m_ui->fraStartTest->installEventFilter(this);
}

void MainScreen::takeKeyboardBack()
{
    // A window manager gives the keyboard back to this screen when a screen
    // opened from it closes; a bare X session (a kiosk) does not, and the child
    // would be left typing into nothing.
    activateWindow();
}

void MainScreen::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // Start-up goes on once the window is on the screen, so that its dialogs
    // have a window to sit over.
    if (!m_activationQueued) {
        m_activationQueued = true;
        QTimer::singleShot(0, this, &MainScreen::Form_Activate);
    }
}

bool MainScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->answerStrip) {
        if (event->type() == QEvent::Resize)
            m_ui->fitAnswers();
        return false;
    }
    if (event->type() == QEvent::FocusIn) {
        if (watched == m_ui->txtNum1)
            txtNum1_GotFocus();
        else if (watched == m_ui->txtNum2)
            txtNum2_GotFocus();
        else if (watched == m_ui->txtAnswer)
            txtAnswer_GotFocus();
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    const int arrow = key == Qt::Key_Down || key == Qt::Key_Right ? 1
                      : key == Qt::Key_Up || key == Qt::Key_Left  ? -1
                                                                  : 0;
    for (int index = 0; arrow != 0 && index < 4; ++index) {
        if (watched != m_ui->optAnswer[index])
            continue;
        // The arrow keys choose the next answer as a click does. Qt would only
        // move the focus while no answer is chosen yet, and Enter would then
        // judge the first answer, not the one the child moved to.
        if (index + arrow >= 0 && index + arrow < 4) {
            m_ui->optAnswer[index + arrow]->setFocus(Qt::TabFocusReason);
            m_ui->optAnswer[index + arrow]->click();
        }
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    if (watched == m_ui->fraStartTest) {
        // Start Test is the panel's default button, except while it is held
        // back after a test that ran out of time.
        if (m_ui->cmdStartTest->isVisible())
            m_ui->cmdStartTest->click();
        return true;
    }
    constexpr int Enter = 13;
    if (watched == m_ui->txtNum1)
        txtNum1_KeyPress(Enter);
    else if (watched == m_ui->txtNum2)
        txtNum2_KeyPress(Enter);
    else if (watched == m_ui->txtAnswer)
        txtAnswer_KeyPress(Enter);
    else
        for (int index = 0; index < 4; ++index)
            if (watched == m_ui->optAnswer[index])
                optAnswer_KeyPress(index, Enter);
    return true;
}

void MainScreen::endProgram()
{
    m_ending = true;
    m_ui->Timer1->stop();
    hide();
    // Queued, so that it also ends the program when start-up runs before the
    // event loop has begun.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
}

void MainScreen::Form_Activate()
{
    if (m_activated)
        return;
    m_activated = true;
    std::optional<std::string> problem = m_dataDirectoryProblem;
    if (!problem)
        problem = PrepareDataDirectory(m_session.paths);
    if (problem) {
        m_session.prompt.stop(this, Title, QString::fromStdString(*problem));
        endProgram();
        return;
    }
    DisplayMainForm();
}

void MainScreen::DisplayMainForm()
{
    m_ui->fraSplash->hide();
    m_ui->Frame1->show();
    InitQuestions();
    PreStartTest();
}

void MainScreen::InitQuestions()
{
    std::optional<std::string> problem;
    {
        const WaitCursor wait;
        m_answerPositions = makeAnswerPositionTable();
        problem = LoadTestBank(m_session.bank, m_session.paths);
        PopulateSubjectCombo();
    }
    if (problem)
        m_session.prompt.stop(this, Title, QString::fromStdString(*problem));
}

void MainScreen::PopulateSubjectCombo()
{
    m_loading = true;
    m_ui->cmbSubject->clear();
    for (const Subject &subject : m_session.bank.subjects)
        m_ui->cmbSubject->addItem(QString::fromStdString(subject.name));
    m_loading = false;
}

void MainScreen::PreStartTest()
{
    m_session.records.currentSubject = ArithmeticSubject;
    cmdSelectStudent_Click();
    if (m_ending)
        return;
    m_ui->fraStartTest->show();
    m_ui->cmdStartTest->setFocus();
}

void MainScreen::cmbSubject_Click()
{
    const int index = m_ui->cmbSubject->currentIndex();
    if (m_loading || index < 0 || index > m_session.bank.subjectMax)
        return;
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    m_ui->fraLastAnswer->hide();
    records.currentSubject = index;
    records.currentSubjectName = m_ui->cmbSubject->currentText().toStdString();
    m_ui->lblSubject->setText(m_ui->cmbSubject->currentText());
    DisplayTotals();
    m_session.saveStudents(this);
    DisableLevelButtons();
    m_testSeconds = m_session.bank.limits[index].seconds;
    m_ui->lblDuration->setText(QStringLiteral("%1 secs").arg(m_testSeconds));
}

void MainScreen::optLevel_Click(int level)
{
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    records.currentLevel = level;
    if (records.currentStudent >= 0 && records.currentStudent <= records.studentMax())
        records.students[records.currentStudent].level = static_cast<int16_t>(level);
    DisplayTotals();
    m_session.saveStudents(this);
}

void MainScreen::DisableLevelButtons()
{
    for (int level = 0; level < LevelCount; ++level)
        m_ui->optLevel[level]->setEnabled(
            levelHasQuestions(m_session.bank, m_session.records.currentSubject, level));
    updateTabStop(m_ui->levelButtons->buttons());
}

void MainScreen::DisplayTotals()
{
    const StudentRecords &records = m_session.records;
    const int level = records.currentLevel;
    m_ui->lblLevel->setText(QString::fromStdString(levelText(level)));
    int last = 0;
    int high = 0;
    if (records.currentStudent >= 0 && records.currentStudent <= records.studentMax() &&
        level >= 0 && level < LevelCount) {
        const std::vector<SubjectResults> &results =
            records.students[records.currentStudent].results;
        if (records.currentSubject >= 0 &&
            static_cast<std::size_t>(records.currentSubject) < results.size()) {
            last = results[records.currentSubject].last[level];
            high = results[records.currentSubject].high[level];
        }
    }
    m_ui->lblLastScore->setNum(last);
    m_ui->lblHighScore->setNum(high);
}

void MainScreen::ButtonsInvisible()
{
    for (QPushButton *button :
         {m_ui->cmdSelectStudent, m_ui->cmdTest, m_ui->cmdHelp, m_ui->cmdExit})
        button->hide();
}

void MainScreen::ButtonsVisible()
{
    for (QPushButton *button :
         {m_ui->cmdSelectStudent, m_ui->cmdTest, m_ui->cmdHelp, m_ui->cmdExit})
        button->show();
}

// Puts the current subject and level on the start panel after another screen
// may have changed them, then runs the subject's click step so that its level
// buttons and test length follow.
void MainScreen::showSelections()
{
    StudentRecords &records = m_session.records;
    if (records.currentSubject < 0 || records.currentSubject > m_session.bank.subjectMax)
        records.currentSubject = ArithmeticSubject;
    if (records.currentLevel >= 0 && records.currentLevel < LevelCount)
        m_ui->optLevel[records.currentLevel]->setChecked(true);
    m_loading = true;
    m_ui->cmbSubject->setCurrentIndex(records.currentSubject);
    m_loading = false;
    cmbSubject_Click();
    m_ui->lblSubject->setText(QString::fromStdString(records.currentSubjectName));
    DisplayTotals();
}

void MainScreen::cmdSelectStudent_Click()
{
    m_ui->lblTestCompleted->hide();
    m_ui->fraLastAnswer->hide();
    if (!m_otherScreens.students()) {
        // The Students screen has told the user what is wrong with the file,
        // which is left exactly as it is.
        endProgram();
        return;
    }
    m_ui->lblStudent->setText(QString::fromStdString(m_session.records.currentStudentName));
    showSelections();
    m_ui->Frame1->show();
}

void MainScreen::cmdTest_Click()
{
    m_ui->lblTestCompleted->hide();
    m_ui->fraLastAnswer->hide();
    m_otherScreens.tests();
    PopulateSubjectCombo();
    showSelections();
    DisableLevelButtons();
}

void MainScreen::cmdHelp_Click()
{
    m_otherScreens.help();
}

void MainScreen::cmdExit_Click()
{
    close();
}
