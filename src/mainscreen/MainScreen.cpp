#include "MainScreen.h"

#include "MainScreenPanels.h"
#include "MainScreenWidgets.h"
#include "ReadAloud.h"
#include "StartUp.h"
#include "editor/TestsScreen.h"
#include "help/HelpScreen.h"
#include "review/PracticePanel.h"
#include "review/ReviewPanel.h"
#include "students/StudentsScreen.h"
#include "ui/Accessibility.h"
#include "ui/ClassHistory.h"
#include "ui/DataFolderLock.h"
#include "ui/ProgramMode.h"
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

#include <algorithm>

namespace {

const QString Title = QStringLiteral("Tavrino");

// What a window manager adds around the window (a title bar, borders). It is
// not known before the window is shown, so the opening size leaves this much.
constexpr QSize WindowFrameRoom(16, 40);

} // namespace

MainScreen::MainScreen(Session &session, RandomSource &random, QWidget *parent)
    : QWidget(parent), m_session(session), m_random(random),
      m_ui(std::make_unique<MainScreenPanels>(this)),
      m_readAloud(std::make_unique<ReadAloud>(*m_ui->readAloudBox, m_ui->sayAgainButtons, *this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(Title);
    m_ui->mainPanel->hide();
    placeOnScreen();

    m_otherScreens.students = [this] {
        StudentsScreen screen(m_session, this);
        if (!screen.loadRoster())
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
        HelpScreen screen(HelpPage::Main, m_session.paths, m_session.mode, this);
        screen.exec();
        takeKeyboardBack();
    };

    // A missing directory is made now; telling the user about a failure has to
    // wait until the screen is up.
    m_dataDirectoryProblem = makeDataDirectory(m_session.paths.dataDir);
    connectControls();
    applyProgramMode(*this, m_session.mode);
}

MainScreen::~MainScreen() = default;

// Centred on the screen at the size the panels are laid out for, or smaller
// where the screen has less room (a small laptop): the window opens wholly on
// the screen, and what does not fit scrolls.
void MainScreen::placeOnScreen()
{
    const QScreen *display = QGuiApplication::primaryScreen();
    if (!display) {
        resize(MainScreenWidgets::LaidOutSize);
        return;
    }
    const QRect room = display->availableGeometry();
    resize(MainScreenWidgets::LaidOutSize.boundedTo(room.size() - WindowFrameRoom));
    const QSize framed = size() + WindowFrameRoom;
    move(room.x() + std::max(0, room.width() - framed.width()) / 2,
         room.y() + std::max(0, room.height() - framed.height()) / 2);
}

void MainScreen::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_ui->growWithWindow(size());
}

void MainScreen::setOtherScreens(OtherScreens screens)
{
    m_otherScreens = std::move(screens);
}

void MainScreen::setSpeaker(Speaker &speaker)
{
    m_readAloud->setSpeaker(speaker);
}

void MainScreen::setReadAloud(bool on)
{
    m_readAloud->setOn(on);
}

void MainScreen::connectControls()
{
    connect(m_ui->subjectList, &QComboBox::currentIndexChanged, this, &MainScreen::chooseSubject);
    connect(m_ui->levelGroup, &QButtonGroup::idClicked, this, &MainScreen::chooseLevel);
    connect(m_ui->studentsButton, &QPushButton::clicked, this, &MainScreen::openStudentsScreen);
    connect(m_ui->testsButton, &QPushButton::clicked, this, &MainScreen::openTestsScreen);
    connect(m_ui->helpButton, &QPushButton::clicked, this, &MainScreen::showHelp);
    connect(m_ui->worksheetButton, &QPushButton::clicked, this, &MainScreen::printWorksheet);
    connect(m_ui->exitButton, &QPushButton::clicked, this, &MainScreen::exitProgram);
    connect(m_ui->startButton, &QPushButton::clicked, this, &MainScreen::startTest);
    connect(m_ui->stopButton, &QPushButton::clicked, this, &MainScreen::stopTest);
    connect(m_ui->clock, &QTimer::timeout, this, &MainScreen::onClockTick);
    connect(m_ui->answerGroup, &QButtonGroup::idClicked, this, &MainScreen::chooseAnswer);
    connect(m_ui->reviewButton, &QPushButton::clicked, this, &MainScreen::showReview);
    connect(m_ui->reviewPanel->practiseButton(), &QPushButton::clicked, this,
            &MainScreen::startPractice);
    connect(m_ui->reviewPanel->practiseWeakButton(), &QPushButton::clicked, this,
            &MainScreen::startWeakFactsPractice);
    connect(m_ui->reviewPanel->backButton(), &QPushButton::clicked, this, &MainScreen::closeReview);
    connect(m_ui->practicePanel->stopButton(), &QPushButton::clicked, this,
            &MainScreen::stopPractice);
    for (QLineEdit *box : {m_ui->number1Box, m_ui->number2Box, m_ui->answerBox})
        box->installEventFilter(this);
    for (QRadioButton *option : m_ui->answerButtons)
        option->installEventFilter(this);
    // The answers are sized to the strip's width whenever it changes.
    m_ui->answerStrip->installEventFilter(this);
    // Enter that the subject list and the level buttons leave unused reaches the panel.
    m_ui->startPanel->installEventFilter(this);
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
        QTimer::singleShot(0, this, &MainScreen::firstActivation);
    }
}

bool MainScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->answerStrip) {
        if (event->type() == QEvent::Resize)
            m_ui->fitAnswers();
        return false;
    }
    const std::array<QLineEdit *, 3> boxes = {m_ui->number1Box, m_ui->number2Box, m_ui->answerBox};
    if (event->type() == QEvent::FocusIn) {
        for (QLineEdit *box : boxes)
            if (watched == box)
                passFocusToBlank(*box);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto key = static_cast<Qt::Key>(static_cast<QKeyEvent *>(event)->key());
    const int arrow = key == Qt::Key_Down || key == Qt::Key_Right ? 1
                      : key == Qt::Key_Up || key == Qt::Key_Left  ? -1
                                                                  : 0;
    for (int index = 0; arrow != 0 && index < 4; ++index) {
        if (watched != m_ui->answerButtons[index])
            continue;
        // The arrow keys choose the next answer as a click does. Qt would only
        // move the focus while no answer is chosen yet, and Enter would then
        // judge the first answer, not the one the child moved to.
        if (index + arrow >= 0 && index + arrow < 4) {
            m_ui->answerButtons[index + arrow]->setFocus(Qt::TabFocusReason);
            m_ui->answerButtons[index + arrow]->click();
        }
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    if (watched == m_ui->startPanel) {
        // Start Test is the panel's default button, except while it is held
        // back after a test that ran out of time.
        if (m_ui->startButton->isVisible())
            m_ui->startButton->click();
        return true;
    }
    for (QLineEdit *box : boxes)
        if (watched == box)
            onAnswerBoxKey(*box, key);
    for (QRadioButton *answer : m_ui->answerButtons)
        if (watched == answer)
            onAnswerKey(key);
    return true;
}

void MainScreen::endProgram()
{
    m_ending = true;
    m_ui->clock->stop();
    hide();
    // Queued, so that it also ends the program when start-up runs before the
    // event loop has begun.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
}

void MainScreen::bringClassFilesFrom(const std::filesystem::path &folder)
{
    m_classFilesFrom = folder;
}

// Taken before either file is read or written, and kept until the program ends:
// two copies on one folder would each save over the other's results.
std::optional<std::string> MainScreen::lockDataFolder()
{
    m_folderLock = std::make_unique<DataFolderLock>(m_session.paths.dataDir);
    if (!m_folderLock->isHeld())
        return m_folderLock->refusal().toStdString();
    removeUnfinishedSaves(m_session.paths);
    return std::nullopt;
}

void MainScreen::firstActivation()
{
    if (m_activated)
        return;
    m_activated = true;
    std::optional<std::string> problem = m_dataDirectoryProblem;
    if (!problem)
        problem = lockDataFolder();
    std::optional<std::string> moved;
    if (!problem && !m_classFilesFrom.empty())
        moved = bringClassFiles(m_classFilesFrom, m_session.paths);
    if (!problem)
        problem = prepareDataDirectory(m_session.paths);
    if (moved)
        m_session.prompt.stop(this, Title, QString::fromStdString(*moved));
    if (problem) {
        m_session.prompt.stop(this, Title, QString::fromStdString(*problem));
        endProgram();
        return;
    }
    showMainPanel();
}

void MainScreen::showMainPanel()
{
    m_ui->splash->hide();
    m_ui->mainPanel->show();
    loadQuestions();
    openHistory(m_session);
    tellHistoryTrouble(m_session, this);
    openStartPanel();
}

void MainScreen::loadQuestions()
{
    TestBankLoad loaded;
    {
        const WaitCursor wait;
        m_answerPositions = makeAnswerPositionTable();
        loaded = loadTestBank(m_session.bank, m_session.paths);
        m_session.keepTestsFile = loaded.keepFile;
        fillSubjectList();
    }
    if (loaded.message)
        m_session.prompt.stop(this, Title, QString::fromStdString(*loaded.message));
}

void MainScreen::fillSubjectList()
{
    m_loading = true;
    m_ui->subjectList->clear();
    for (const Subject &subject : m_session.bank.subjects)
        m_ui->subjectList->addItem(QString::fromStdString(subject.name));
    m_loading = false;
}

void MainScreen::openStartPanel()
{
    m_session.records.currentSubject = ArithmeticSubject;
    openStudentsScreen();
    if (m_ending)
        return;
    m_ui->startPanel->show();
    m_ui->startButton->setFocus();
}

void MainScreen::chooseSubject()
{
    const int index = m_ui->subjectList->currentIndex();
    if (m_loading || index < 0 || index > m_session.bank.subjectMax)
        return;
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    clearLastTest();
    records.currentSubject = index;
    records.currentSubjectName = m_ui->subjectList->currentText().toStdString();
    m_ui->subjectValue->setText(m_ui->subjectList->currentText());
    showTotals();
    m_session.saveStudents(this);
    enableLevelsWithQuestions();
    m_testSeconds = m_session.bank.limits[index].seconds;
    m_ui->secondsValue->setText(QStringLiteral("%1 secs").arg(m_testSeconds));
}

void MainScreen::chooseLevel(int level)
{
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    if (level != records.currentLevel)
        clearLastTest();
    records.currentLevel = level;
    if (records.currentStudent >= 0 && records.currentStudent <= records.studentMax())
        records.students[records.currentStudent].level = static_cast<int16_t>(level);
    showTotals();
    m_session.saveStudents(this);
}

void MainScreen::enableLevelsWithQuestions()
{
    for (int level = 0; level < LevelCount; ++level)
        m_ui->levelButtons[level]->setEnabled(
            levelHasQuestions(m_session.bank, m_session.records.currentSubject, level));
    updateTabStop(m_ui->levelGroup->buttons());
}

void MainScreen::showTotals()
{
    const StudentRecords &records = m_session.records;
    const int level = records.currentLevel;
    m_ui->levelValue->setText(QString::fromStdString(levelText(level)));
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
    m_ui->lastScoreValue->setNum(last);
    m_ui->highScoreValue->setNum(high);
}

void MainScreen::hideCommandButtons()
{
    for (QPushButton *button : {m_ui->studentsButton, m_ui->testsButton, m_ui->worksheetButton,
                                m_ui->helpButton, m_ui->exitButton})
        button->hide();
}

void MainScreen::showCommandButtons()
{
    for (QPushButton *button : {m_ui->studentsButton, m_ui->testsButton, m_ui->worksheetButton,
                                m_ui->helpButton, m_ui->exitButton})
        button->setVisible(!hiddenInMode(*button, m_session.mode));
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
        m_ui->levelButtons[records.currentLevel]->setChecked(true);
    m_loading = true;
    m_ui->subjectList->setCurrentIndex(records.currentSubject);
    m_loading = false;
    chooseSubject();
    m_ui->subjectValue->setText(QString::fromStdString(records.currentSubjectName));
    showTotals();
}

// The result line, the last answer, the counts and the review belong to the
// test that made them. Left beside a new choice's Last and High, they would be
// read as that choice's; a new subject, level or student takes them away.
void MainScreen::clearLastTest()
{
    forgetReview();
    m_ui->outcome->hide();
    m_ui->lastAnswerPanel->hide();
    m_ui->testScorePanel->hide();
}

void MainScreen::openStudentsScreen()
{
    clearLastTest();
    if (!m_otherScreens.students()) {
        // The Students screen has told the user what is wrong with the file,
        // which is left exactly as it is.
        endProgram();
        return;
    }
    m_ui->studentValue->setText(QString::fromStdString(m_session.records.currentStudentName));
    // A backup restored there may have brought other subjects.
    fillSubjectList();
    showSelections();
    m_ui->mainPanel->show();
    tellHistoryTrouble(m_session, this);
}

void MainScreen::openTestsScreen()
{
    clearLastTest();
    if (m_session.keepTestsFile) {
        // Every change made there would be lost, or saved over the class's bank.
        m_session.prompt.stop(
            this, Title,
            QStringLiteral("The tests cannot be changed in this run: the file \"%1\" could not "
                           "be used when Tavrino started and is kept as it is.\rClose Tavrino, "
                           "make sure the file can be read, and start Tavrino again.")
                .arg(QString::fromStdString(m_session.paths.testsPath.string())));
        return;
    }
    m_otherScreens.tests();
    fillSubjectList();
    showSelections();
    enableLevelsWithQuestions();
    tellHistoryTrouble(m_session, this);
}

void MainScreen::showHelp()
{
    m_otherScreens.help();
}

void MainScreen::exitProgram()
{
    close();
}
