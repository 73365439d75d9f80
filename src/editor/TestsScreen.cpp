#include "TestsScreen.h"

#include "ArithmeticSettings.h"
#include "QuestionEditor.h"
#include "core/DefaultBank.h"
#include "help/HelpScreen.h"
#include "ui/FileText.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <cmath>
#include <optional>
#include <utility>

namespace {

constexpr int MinSeconds = 5;
constexpr int MaxSeconds = 999;
constexpr int SubjectNameLength = 20;

// The seconds a typed test length stands for, or nothing when the text is not
// wholly a number of 5..999 (a decimal exponent, as in "1e1", is part of a
// number). A fraction rounds to the nearest second, a half to the even neighbour.
std::optional<int32_t> TestLength(const QString &text)
{
    static const QRegularExpression number(
        QStringLiteral("^\\s*[+-]?(\\d+(\\.\\d*)?|\\.\\d+)([eE][+-]?\\d+)?\\s*$"));
    if (!number.match(text).hasMatch())
        return std::nullopt;
    const double value = text.trimmed().toDouble();
    if (value < MinSeconds || value > MaxSeconds)
        return std::nullopt;
    return static_cast<int32_t>(std::nearbyint(value));
}

// A subject name as the file will hold it, cut to the length the list allows.
std::string SubjectName(const QString &answer)
{
    return fileText(answer).left(SubjectNameLength).toStdString();
}

QPushButton *CommandButton(const QString &caption, const QString &name, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    // Enter closes the screen (see cmdClose); no other button may take it.
    button->setAutoDefault(false);
    return button;
}

} // namespace

TestsScreen::TestsScreen(Session &session, QWidget *parent) : QDialog(parent), m_session(session)
{
    Form_Load();
}

TestsScreen::~TestsScreen() = default;

void TestsScreen::setHelpOpener(HelpOpener opener)
{
    m_helpOpener = std::move(opener);
}

void TestsScreen::Form_Load()
{
    WaitCursor wait;
    setObjectName(QStringLiteral("frmTests"));
    setWindowTitle(QStringLiteral("Tests"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    QFont arial = font();
    arial.setFamily(QStringLiteral("Arial"));
    setFont(arial);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(buildSubjectBar());
    layout->addLayout(buildFrames(), 1);
    layout->addLayout(buildCommandBar());

    // Room for twenty questions in the grid, within the screen.
    QSize size = sizeHint().expandedTo(QSize(1000, 720));
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        size = size.boundedTo(screen->availableGeometry().size() - QSize(0, 40));
    resize(size);
    centreOnScreen();
    PopulateSubjectList();
}

QLayout *TestsScreen::buildSubjectBar()
{
    auto *subjectLabel = new QLabel(QStringLiteral("Subject:"), this);
    subjectLabel->setObjectName(QStringLiteral("lblSubject"));
    m_cmbSubject = new QComboBox(this);
    m_cmbSubject->setObjectName(QStringLiteral("cmbSubject"));
    m_cmbSubject->setMinimumContentsLength(SubjectNameLength);
    m_cmbSubject->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    subjectLabel->setBuddy(m_cmbSubject);

    m_cmdAddSubject =
        CommandButton(QStringLiteral("Add Subject"), QStringLiteral("cmdAddSubject"), this);
    m_cmdEditSubject =
        CommandButton(QStringLiteral("Edit Subject"), QStringLiteral("cmdEditSubject"), this);
    m_cmdDeleteSubject =
        CommandButton(QStringLiteral("Delete Subject"), QStringLiteral("cmdDeleteSubject"), this);

    auto *durationLabel = new QLabel(QStringLiteral("Time (in Seconds):"), this);
    durationLabel->setObjectName(QStringLiteral("lblDuration"));
    m_txtDuration = new QLineEdit(this);
    m_txtDuration->setObjectName(QStringLiteral("txtDuration"));
    m_txtDuration->setMaximumWidth(
        m_txtDuration->fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
    durationLabel->setBuddy(m_txtDuration);

    connect(m_cmbSubject, &QComboBox::currentIndexChanged, this, &TestsScreen::cmbSubject_Click);
    connect(m_cmdAddSubject, &QPushButton::clicked, this, &TestsScreen::cmdAddSubject_Click);
    connect(m_cmdEditSubject, &QPushButton::clicked, this, &TestsScreen::cmdEditSubject_Click);
    connect(m_cmdDeleteSubject, &QPushButton::clicked, this, &TestsScreen::cmdDeleteSubject_Click);
    // Emitted when the box loses the focus (and on Enter).
    connect(m_txtDuration, &QLineEdit::editingFinished, this, &TestsScreen::txtDuration_LostFocus);

    auto *bar = new QHBoxLayout;
    bar->addWidget(subjectLabel);
    bar->addWidget(m_cmbSubject);
    bar->addSpacing(8);
    bar->addWidget(m_cmdAddSubject);
    bar->addWidget(m_cmdEditSubject);
    bar->addWidget(m_cmdDeleteSubject);
    bar->addStretch(1);
    bar->addWidget(durationLabel);
    bar->addWidget(m_txtDuration);
    return bar;
}

QLayout *TestsScreen::buildFrames()
{
    m_fraMath = new ArithmeticSettings(m_session, this);
    m_fraMulti = new QuestionEditor(m_session, this);
    connect(m_fraMath, &ArithmeticSettings::reverted, this, &TestsScreen::cmbSubject_Click);
    connect(m_fraMulti, &QuestionEditor::reverted, this, &TestsScreen::cmbSubject_Click);

    // One frame at a time, in the same place; the screen keeps the size of the larger.
    m_frames = new QStackedLayout;
    m_frames->addWidget(m_fraMath);
    m_frames->addWidget(m_fraMulti);
    return m_frames;
}

QLayout *TestsScreen::buildCommandBar()
{
    m_cmdRevertAll = CommandButton(QStringLiteral("Revert ALL to Default"),
                                   QStringLiteral("cmdRevertAll"), this);
    m_cmdHelp = CommandButton(QStringLiteral("Help"), QStringLiteral("cmdHelp"), this);
    m_cmdClose = CommandButton(QStringLiteral("Close"), QStringLiteral("cmdClose"), this);
    // Enter anywhere on the screen closes it, as its help page says.
    m_cmdClose->setDefault(true);

    connect(m_cmdRevertAll, &QPushButton::clicked, this, &TestsScreen::cmdRevertAll_Click);
    connect(m_cmdHelp, &QPushButton::clicked, this, &TestsScreen::cmdHelp_Click);
    connect(m_cmdClose, &QPushButton::clicked, this, &TestsScreen::cmdClose_Click);

    auto *bar = new QHBoxLayout;
    bar->addWidget(m_cmdRevertAll);
    bar->addStretch(1);
    bar->addWidget(m_cmdHelp);
    bar->addWidget(m_cmdClose);
    return bar;
}

void TestsScreen::centreOnScreen()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    const QRect available = screen->availableGeometry();
    move(available.left() + (available.width() - width()) / 2,
         available.top() + (available.height() - height()) / 2);
}

void TestsScreen::PopulateSubjectList()
{
    m_populating = true;
    m_cmbSubject->clear();
    for (const Subject &subject : m_session.bank.subjects)
        m_cmbSubject->addItem(QString::fromStdString(subject.name));
    m_cmbSubject->setCurrentIndex(
        qBound(0, m_session.records.currentSubject, m_session.bank.subjectMax));
    m_populating = false;
    cmbSubject_Click();
}

void TestsScreen::DoSaveAndPopulate()
{
    StudentRecords &records = m_session.records;
    if (records.currentSubject > m_session.bank.subjectMax)
        records.currentSubject = m_session.bank.subjectMax;
    m_session.saveStudents(this);
    m_session.saveTests(this);
    PopulateSubjectList();
}

void TestsScreen::cmbSubject_Click()
{
    if (m_populating || m_cmbSubject->currentIndex() < 0)
        return;
    WaitCursor wait;
    StudentRecords &records = m_session.records;
    records.currentSubjectName = m_cmbSubject->currentText().toStdString();
    records.currentSubject = m_cmbSubject->currentIndex();

    if (records.currentSubject > ArithmeticSubject) {
        m_frames->setCurrentWidget(m_fraMulti);
        m_fraMulti->showSubject();
    } else {
        m_frames->setCurrentWidget(m_fraMath);
        m_fraMath->PopulateGrid2();
        m_fraMath->showLevel(records.currentLevel);
    }

    m_txtDuration->setText(QString::number(m_session.bank.limits[records.currentSubject].seconds));

    const bool builtIn = records.currentSubject < FirstAddedSubject;
    m_cmdEditSubject->setEnabled(!builtIn);
    m_cmdDeleteSubject->setEnabled(!builtIn);
    m_fraMulti->setRevertVisible(builtIn);
}

void TestsScreen::cmdAddSubject_Click()
{
    const QString answer =
        m_session.prompt.input(this, QStringLiteral("Add New Subject"),
                               QStringLiteral("Enter a name for the new Subject:"));
    if (answer.isEmpty())
        return;

    WaitCursor wait;
    TestBank &bank = m_session.bank;
    addSubject(bank, SubjectName(answer));
    m_session.records.currentSubject = bank.subjectMax;
    addSubjectResults(m_session.records, bank.subjectMax);

    DoSaveAndPopulate();
}

void TestsScreen::cmdEditSubject_Click()
{
    StudentRecords &records = m_session.records;
    if (records.currentSubject < FirstAddedSubject)
        return;
    const QString answer =
        m_session.prompt.input(this, QStringLiteral("Edit Subject"),
                               QStringLiteral("Enter the new name for this Subject:"),
                               QString::fromStdString(records.currentSubjectName));
    if (answer.isEmpty())
        return;
    m_session.bank.subjects[records.currentSubject].name = SubjectName(answer);
    PopulateSubjectList();
}

void TestsScreen::cmdDeleteSubject_Click()
{
    const int32_t deleted = m_session.records.currentSubject;
    if (deleted < FirstAddedSubject)
        return;
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Delete Subject"),
                                  QStringLiteral("Are you sure you want to Delete this Subject?")))
        return;

    WaitCursor wait;
    TestBank &bank = m_session.bank;
    // Only the names move within subjects: each adjacentLevels flag stays at its
    // index, so the subjects behind the deleted one take over their
    // predecessor's flag. This is deliberate and kept.
    for (int32_t i = deleted + 1; i <= bank.subjectMax; ++i) {
        bank.subjects[i - 1].name = bank.subjects[i].name;
        bank.limits[i - 1] = bank.limits[i];
        bank.questionBank[i - 1] = std::move(bank.questionBank[i]);
    }
    deleteSubjectResults(m_session.records, deleted);

    bank.subjectMax -= 1;
    const auto subjects = static_cast<std::size_t>(bank.subjectMax) + 1;
    bank.subjects.resize(subjects);
    bank.limits.resize(subjects);
    bank.questionBank.resize(subjects);

    DoSaveAndPopulate();
}

void TestsScreen::txtDuration_LostFocus()
{
    const int32_t subject = m_session.records.currentSubject;
    if (subject < 0 || subject > m_session.bank.subjectMax)
        return;
    // Out of range, or not a number at all: silently the default length.
    const int32_t seconds = TestLength(m_txtDuration->text()).value_or(DefaultSeconds);
    m_session.bank.limits[subject].seconds = seconds;
    m_txtDuration->setText(QString::number(seconds));
}

void TestsScreen::cmdRevertAll_Click()
{
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Confirm Revert ALL to Default"),
            QStringLiteral("Are you sure you want to Revert ALL Subjects to their Original, "
                           "Default state?") +
                QLatin1Char('\r') + QStringLiteral("(All customized Subjects will be Deleted.)")))
        return;

    WaitCursor wait;
    buildDefaultTests(m_session.bank);
    resizeResults(m_session.records, m_session.bank.subjectMax);
    DoSaveAndPopulate();
}

void TestsScreen::cmdHelp_Click()
{
    if (m_helpOpener) {
        m_helpOpener(this);
        return;
    }
    HelpScreen help(HelpPage::Tests, m_session.paths, this);
    help.exec();
}

void TestsScreen::cmdClose_Click()
{
    accept();
}

void TestsScreen::Form_QueryUnload()
{
    WaitCursor wait;
    txtDuration_LostFocus();
    m_session.saveTests(this);
}

void TestsScreen::done(int result)
{
    Form_QueryUnload();
    QDialog::done(result);
}
