#include "TestsScreen.h"

#include "ArithmeticSettings.h"
#include "ListWheel.h"
#include "QuestionEditor.h"
#include "core/DefaultBank.h"
#include "help/HelpScreen.h"
#include "ui/FileText.h"
#include "ui/Prompt.h"
#include "ui/ScreenFit.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
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
std::optional<int32_t> testLength(const QString &text)
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
std::string subjectName(const QString &answer)
{
    return fileText(answer).left(SubjectNameLength).toStdString();
}

QPushButton *commandButton(const QString &caption, const QString &name, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    // Enter closes the screen (see the Close button); no other button may take it.
    button->setAutoDefault(false);
    return button;
}

} // namespace

TestsScreen::TestsScreen(Session &session, QWidget *parent) : QDialog(parent), m_session(session)
{
    buildScreen();
}

TestsScreen::~TestsScreen() = default;

void TestsScreen::setHelpOpener(HelpOpener opener)
{
    m_helpOpener = std::move(opener);
}

void TestsScreen::buildScreen()
{
    WaitCursor wait;
    setObjectName(QStringLiteral("frmTests"));
    setWindowTitle(QStringLiteral("Tests"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);
    QFont arial = font();
    arial.setFamily(QStringLiteral("Arial"));
    setFont(arial);

    auto *content = new QWidget(this);
    auto *layout = new QVBoxLayout(content);
    // Narrow margins leave the frames room on a display 1024 pixels wide.
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(buildSubjectBar());
    layout->addLayout(buildFrames(), 1);
    layout->addLayout(buildCommandBar());
    m_scrollArea = scrollWhenTooSmall(*this, content);
    for (QComboBox *list : content->findChildren<QComboBox *>())
        changeByWheelOnlyWhenFocused(*list);

    fitInto(roomOnScreen(*this));
    fillSubjectList();
}

void TestsScreen::fitInto(const QSize &room)
{
    // Room for twenty questions in the grid where the display has it; a smaller
    // display shows fewer, and scrolls when even the smallest grid does not fit.
    const QSize wanted = wholeContentSize(*this, *m_scrollArea).expandedTo(QSize(1000, 720));
    ::fitInto(*this, wanted, room);
}

QLayout *TestsScreen::buildSubjectBar()
{
    auto *subjectLabel = new QLabel(QStringLiteral("Subject:"), this);
    subjectLabel->setObjectName(QStringLiteral("lblSubject"));
    m_subjectList = new QComboBox(this);
    m_subjectList->setObjectName(QStringLiteral("cmbSubject"));
    m_subjectList->setMinimumContentsLength(SubjectNameLength);
    m_subjectList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    subjectLabel->setBuddy(m_subjectList);

    m_addSubjectButton =
        commandButton(QStringLiteral("Add Subject"), QStringLiteral("cmdAddSubject"), this);
    m_renameSubjectButton =
        commandButton(QStringLiteral("Edit Subject"), QStringLiteral("cmdEditSubject"), this);
    m_deleteSubjectButton =
        commandButton(QStringLiteral("Delete Subject"), QStringLiteral("cmdDeleteSubject"), this);

    auto *durationLabel = new QLabel(QStringLiteral("Time (in Seconds):"), this);
    durationLabel->setObjectName(QStringLiteral("lblDuration"));
    m_secondsBox = new QLineEdit(this);
    m_secondsBox->setObjectName(QStringLiteral("txtDuration"));
    m_secondsBox->setMaximumWidth(
        m_secondsBox->fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
    durationLabel->setBuddy(m_secondsBox);

    connect(m_subjectList, &QComboBox::currentIndexChanged, this, &TestsScreen::chooseSubject);
    connect(m_addSubjectButton, &QPushButton::clicked, this, &TestsScreen::addSubject);
    connect(m_renameSubjectButton, &QPushButton::clicked, this, &TestsScreen::renameSubject);
    connect(m_deleteSubjectButton, &QPushButton::clicked, this, &TestsScreen::deleteSubject);
    // Emitted when the box loses the focus (and on Enter).
    connect(m_secondsBox, &QLineEdit::editingFinished, this, &TestsScreen::storeTestLength);

    auto *bar = new QHBoxLayout;
    bar->addWidget(subjectLabel);
    bar->addWidget(m_subjectList);
    bar->addSpacing(8);
    bar->addWidget(m_addSubjectButton);
    bar->addWidget(m_renameSubjectButton);
    bar->addWidget(m_deleteSubjectButton);
    bar->addStretch(1);
    bar->addWidget(durationLabel);
    bar->addWidget(m_secondsBox);
    return bar;
}

QLayout *TestsScreen::buildFrames()
{
    m_arithmeticSettings = new ArithmeticSettings(m_session, this);
    m_questionEditor = new QuestionEditor(m_session, this);
    connect(m_arithmeticSettings, &ArithmeticSettings::reverted, this, &TestsScreen::chooseSubject);
    connect(m_questionEditor, &QuestionEditor::reverted, this, &TestsScreen::chooseSubject);

    // One frame at a time, in the same place; the screen keeps the size of the larger.
    m_frames = new QStackedLayout;
    m_frames->addWidget(m_arithmeticSettings);
    m_frames->addWidget(m_questionEditor);
    return m_frames;
}

QLayout *TestsScreen::buildCommandBar()
{
    m_revertAllButton = commandButton(QStringLiteral("Revert ALL to Default"),
                                      QStringLiteral("cmdRevertAll"), this);
    m_helpButton = commandButton(QStringLiteral("Help"), QStringLiteral("cmdHelp"), this);
    m_closeButton = commandButton(QStringLiteral("Close"), QStringLiteral("cmdClose"), this);
    // Enter anywhere on the screen closes it, as its help page says.
    m_closeButton->setDefault(true);

    connect(m_revertAllButton, &QPushButton::clicked, this, &TestsScreen::revertAll);
    connect(m_helpButton, &QPushButton::clicked, this, &TestsScreen::showHelp);
    connect(m_closeButton, &QPushButton::clicked, this, &TestsScreen::closeScreen);

    auto *bar = new QHBoxLayout;
    bar->addWidget(m_revertAllButton);
    bar->addStretch(1);
    bar->addWidget(m_helpButton);
    bar->addWidget(m_closeButton);
    return bar;
}

void TestsScreen::fillSubjectList()
{
    m_populating = true;
    m_subjectList->clear();
    for (const Subject &subject : m_session.bank.subjects)
        m_subjectList->addItem(QString::fromStdString(subject.name));
    m_subjectList->setCurrentIndex(
        qBound(0, m_session.records.currentSubject, m_session.bank.subjectMax));
    m_populating = false;
    chooseSubject();
}

void TestsScreen::saveAndRefill()
{
    StudentRecords &records = m_session.records;
    if (records.currentSubject > m_session.bank.subjectMax)
        records.currentSubject = m_session.bank.subjectMax;
    // The Tests file first. It is the larger one, the likelier to fail, and when
    // it does nothing is written: the pair on disk stays as it was. When the
    // Students file fails after it, the pair still loads (its records are
    // widened, or keep their extra results), and the next test writes it anew.
    if (m_session.saveTests(this))
        m_session.saveStudents(this);
    fillSubjectList();
}

void TestsScreen::chooseSubject()
{
    if (m_populating || m_subjectList->currentIndex() < 0)
        return;
    WaitCursor wait;
    StudentRecords &records = m_session.records;
    records.currentSubjectName = m_subjectList->currentText().toStdString();
    records.currentSubject = m_subjectList->currentIndex();

    if (records.currentSubject > ArithmeticSubject) {
        m_frames->setCurrentWidget(m_questionEditor);
        m_questionEditor->showSubject();
    } else {
        m_frames->setCurrentWidget(m_arithmeticSettings);
        m_arithmeticSettings->refreshGrid();
        m_arithmeticSettings->showLevel(records.currentLevel);
    }

    m_secondsBox->setText(QString::number(m_session.bank.limits[records.currentSubject].seconds));

    const bool builtIn = records.currentSubject < FirstAddedSubject;
    m_renameSubjectButton->setEnabled(!builtIn);
    m_deleteSubjectButton->setEnabled(!builtIn);
    m_questionEditor->setRevertVisible(builtIn);
}

void TestsScreen::addSubject()
{
    const QString answer =
        m_session.prompt.input(this, QStringLiteral("Add New Subject"),
                               QStringLiteral("Enter a name for the new Subject:"));
    if (answer.isEmpty())
        return;

    WaitCursor wait;
    TestBank &bank = m_session.bank;
    ::addSubject(bank, subjectName(answer));
    m_session.records.currentSubject = bank.subjectMax;
    addSubjectResults(m_session.records, bank.subjectMax);

    saveAndRefill();
}

void TestsScreen::renameSubject()
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
    m_session.bank.subjects[records.currentSubject].name = subjectName(answer);
    fillSubjectList();
}

void TestsScreen::deleteSubject()
{
    const int32_t deleted = m_session.records.currentSubject;
    if (deleted < FirstAddedSubject)
        return;
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Delete Subject"),
                                  QStringLiteral("Are you sure you want to Delete this Subject?")))
        return;

    WaitCursor wait;
    // The subject's questions go from the Tests file, its results from the Students file.
    m_session.backUpBeforeLoss({DataFile::Tests, DataFile::Students}, this);
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

    saveAndRefill();
}

void TestsScreen::storeTestLength()
{
    const int32_t subject = m_session.records.currentSubject;
    if (subject < 0 || subject > m_session.bank.subjectMax)
        return;
    // Out of range, or not a number at all: silently the default length.
    const int32_t seconds = testLength(m_secondsBox->text()).value_or(DefaultSeconds);
    m_session.bank.limits[subject].seconds = seconds;
    m_secondsBox->setText(QString::number(seconds));
}

void TestsScreen::revertAll()
{
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Confirm Revert ALL to Default"),
            QStringLiteral("Are you sure you want to Revert ALL Subjects to their Original, "
                           "Default state?") +
                QLatin1Char('\r') + QStringLiteral("(All customized Subjects will be Deleted.)")))
        return;

    WaitCursor wait;
    m_session.backUpBeforeLoss({DataFile::Tests, DataFile::Students}, this);
    buildDefaultTests(m_session.bank);
    resizeResults(m_session.records, m_session.bank.subjectMax);
    saveAndRefill();
}

void TestsScreen::showHelp()
{
    if (m_helpOpener) {
        m_helpOpener(this);
        return;
    }
    HelpScreen help(HelpPage::Tests, m_session.paths, this);
    help.exec();
}

void TestsScreen::closeScreen()
{
    accept();
}

void TestsScreen::saveOnClose()
{
    WaitCursor wait;
    storeTestLength();
    m_session.saveTests(this);
}

void TestsScreen::done(int result)
{
    saveOnClose();
    QDialog::done(result);
}
