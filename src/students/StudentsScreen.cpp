#include "StudentsScreen.h"

#include "LevelButtons.h"
#include "ResultsPanel.h"
#include "RosterList.h"
#include "backups/BackupsDialog.h"
#include "core/HistoryRoster.h"
#include "core/StudentsFile.h"
#include "help/HelpScreen.h"
#include "ui/ClassHistory.h"
#include "ui/FileText.h"
#include "ui/ProgramMode.h"
#include "ui/Prompt.h"
#include "ui/ScreenFit.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <filesystem>
#include <memory>
#include <optional>

namespace {

// Marks the screen busy while it fills its own controls, so that the change and
// click handlers those changes trigger do nothing.
class BusyScope {
public:
    explicit BusyScope(bool &busy) : m_busy(busy), m_was(busy) { m_busy = true; }
    ~BusyScope() { m_busy = m_was; }
    BusyScope(const BusyScope &) = delete;
    BusyScope &operator=(const BusyScope &) = delete;

private:
    bool &m_busy;
    bool m_was;
};

QLabel *caption(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QPushButton *button(const QString &name, const QString &text, QWidget *parent)
{
    auto *pushButton = new QPushButton(text, parent);
    pushButton->setObjectName(name);
    // Enter closes the screen whichever control has the focus.
    pushButton->setAutoDefault(false);
    pushButton->setMinimumHeight(30);
    return pushButton;
}

} // namespace

StudentsScreen::StudentsScreen(Session &session, QWidget *parent)
    : QDialog(parent), m_session(session)
{
    setObjectName(QStringLiteral("frmProfiles"));
    setWindowTitle(QStringLiteral("Students"));
    setModal(true);
    setFont(QFont(QStringLiteral("Arial"), 10));

    m_openHelp = [&paths = m_session.paths, mode = m_session.mode](QWidget *owner) {
        HelpScreen help(HelpPage::Students, paths, mode, owner);
        help.exec();
    };
    m_showBackups = [](BackupsDialog &dialog) { dialog.exec(); };

    // Built in the order Tab should visit them: the roster, the selected
    // student, the results, then Help and Close.
    auto *content = new QWidget(this);
    QWidget *roster = buildRoster(content);
    QWidget *details = buildStudentDetails(content);
    m_results = new ResultsPanel(session, content);
    connect(m_results, &ResultsPanel::refreshRequested, this, &StudentsScreen::selectStudent);

    auto *layout = new QGridLayout(content);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setHorizontalSpacing(18);
    layout->setVerticalSpacing(12);
    layout->addWidget(roster, 0, 0, 2, 1);
    layout->addWidget(details, 0, 1);
    layout->addWidget(m_results, 1, 1);
    layout->addWidget(buildFooter(content), 2, 0, 1, 2);
    m_scrollArea = scrollWhenTooSmall(*this, content);
}

StudentsScreen::~StudentsScreen() = default;

QWidget *StudentsScreen::buildRoster(QWidget *parent)
{
    auto *roster = new QWidget(parent);
    auto *layout = new QVBoxLayout(roster);
    layout->setContentsMargins(0, 0, 0, 0);

    m_studentList = new RosterList(roster);
    m_studentList->setObjectName(QStringLiteral("List1"));
    m_studentList->setFont(QFont(QStringLiteral("Arial"), 11));
    m_studentList->setMinimumWidth(210);
    m_studentList->setAccessibleName(QStringLiteral("Students"));
    m_studentList->installEventFilter(this);
    connect(m_studentList, &QListWidget::currentRowChanged, this, &StudentsScreen::selectStudent);

    m_addButton = button(QStringLiteral("cmdAddStudent"), QStringLiteral("Add Student"), roster);
    m_deleteButton = button(QStringLiteral("cmdDelete"), QStringLiteral("Delete Student"), roster);
    connect(m_addButton, &QPushButton::clicked, this, &StudentsScreen::addStudent);
    connect(m_deleteButton, &QPushButton::clicked, this, &StudentsScreen::deleteStudent);

    // Beside Add Student, and next after it for Tab. Add Class starts from this
    // button alone, so hiding the button takes the whole feature away.
    m_addClassButton =
        button(QStringLiteral("cmdAddClass"), QStringLiteral("Add &Class\u2026"), roster);
    m_addClassButton->setAccessibleName(QStringLiteral("Add Class"));
    setTabOrder(m_addButton, m_addClassButton);
    connect(m_addClassButton, &QPushButton::clicked, this, &StudentsScreen::addClass);
    auto *addButtons = new QHBoxLayout;
    addButtons->addWidget(m_addButton, 1);
    addButtons->addWidget(m_addClassButton, 1);

    layout->addWidget(caption(QStringLiteral("Select a Student"), roster));
    layout->addWidget(m_studentList, 1);
    layout->addLayout(addButtons);
    layout->addWidget(m_deleteButton);
    return roster;
}

QWidget *StudentsScreen::buildStudentDetails(QWidget *parent)
{
    auto *details = new QWidget(parent);
    auto *layout = new QGridLayout(details);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setVerticalSpacing(8);

    m_nameBox = new QLineEdit(details);
    m_nameBox->setObjectName(QStringLiteral("txtStudent"));
    m_nameBox->setFont(QFont(QStringLiteral("Arial"), 12));
    m_nameBox->setMinimumWidth(260);
    // The name is shown as the Students file will keep it, and no longer.
    m_nameBox->setMaxLength(FileTextMaxLength);
    m_nameBox->setValidator(new FileTextValidator(m_nameBox));
    m_nameBox->setAccessibleName(QStringLiteral("Student name"));
    connect(m_nameBox, &QLineEdit::textChanged, this, &StudentsScreen::renameStudent);

    m_levels = new LevelButtons(details);
    connect(m_levels, &LevelButtons::levelClicked, this, &StudentsScreen::chooseLevel);

    m_subjectList = new QComboBox(details);
    m_subjectList->setObjectName(QStringLiteral("cmbSubject"));
    m_subjectList->setMinimumWidth(200);
    m_subjectList->setAccessibleName(QStringLiteral("Current subject"));
    connect(m_subjectList, &QComboBox::currentIndexChanged, this, &StudentsScreen::chooseSubject);

    // The captions label their boxes for a screen reader too.
    QLabel *studentCaption = caption(QStringLiteral("Student:"), details);
    studentCaption->setBuddy(m_nameBox);
    QLabel *subjectCaption = caption(QStringLiteral("Current Subject:"), details);
    subjectCaption->setBuddy(m_subjectList);
    layout->addWidget(studentCaption, 0, 0);
    layout->addWidget(m_nameBox, 0, 1, Qt::AlignLeft);
    layout->addWidget(caption(QStringLiteral("Level:"), details), 1, 0);
    layout->addWidget(m_levels, 1, 1);
    layout->addWidget(subjectCaption, 2, 0);
    // The student's own tools beside the subject they show, taking no extra height.
    auto *subjectRow = new QHBoxLayout;
    subjectRow->addWidget(m_subjectList);
    subjectRow->addSpacing(24);
    subjectRow->addWidget(buildStudentTools(details));
    subjectRow->addStretch(1);
    layout->addLayout(subjectRow, 2, 1);
    layout->setColumnStretch(1, 1);
    return details;
}

QWidget *StudentsScreen::buildFooter(QWidget *parent)
{
    auto *footer = new QWidget(parent);
    auto *layout = new QHBoxLayout(footer);
    layout->setContentsMargins(0, 0, 0, 0);

    auto *notes = new QWidget(footer);
    auto *notesLayout = new QVBoxLayout(notes);
    notesLayout->setContentsMargins(0, 0, 0, 0);
    notesLayout->setSpacing(2);
    notesLayout->addWidget(
        caption(QStringLiteral("When you are finished using this screen, press [Esc]"), notes));
    notesLayout->addWidget(
        new QLabel(QStringLiteral("(All changes are automatically stored)"), notes));

    m_reportButton = button(QStringLiteral("cmdReport"), QStringLiteral("&Report\u2026"), footer);
    m_reportButton->setAccessibleName(QStringLiteral("Class report"));
    m_reportButton->setAccessibleDescription(
        QStringLiteral("Every student's results by subject and level, to print or save as PDF"));
    m_exportButton = button(QStringLiteral("cmdExport"), QStringLiteral("E&xport\u2026"), footer);
    m_exportButton->setAccessibleName(QStringLiteral("Export results"));
    m_exportButton->setAccessibleDescription(
        QStringLiteral("Every student's results saved as a CSV file for spreadsheets"));
    m_classButton =
        button(QStringLiteral("cmdClassView"), QStringLiteral("&Who Needs Help\u2026"), footer);
    m_classButton->setAccessibleName(QStringLiteral("Who needs help"));
    m_classButton->setAccessibleDescription(
        QStringLiteral("Every student's trend, facts not yet known and last test, by subject"));
    connect(m_reportButton, &QPushButton::clicked, this, &StudentsScreen::showReport);
    connect(m_exportButton, &QPushButton::clicked, this, &StudentsScreen::exportResults);
    connect(m_classButton, &QPushButton::clicked, this, &StudentsScreen::showClassView);
    // A button of its own, so that a classroom setting can hide it.
    m_backupsButton =
        button(QStringLiteral("cmdBackups"), QStringLiteral("&Backups\u2026"), footer);
    m_backupsButton->setAccessibleName(QStringLiteral("Backups"));
    m_helpButton = button(QStringLiteral("cmdHelp"), QStringLiteral("Help"), footer);
    m_closeButton = button(QStringLiteral("cmdClose"), QStringLiteral("Close"), footer);
    m_closeButton->setDefault(true);
    for (QPushButton *pushButton : {m_reportButton, m_exportButton, m_classButton, m_backupsButton,
                                    m_helpButton, m_closeButton})
        pushButton->setMinimumWidth(100);
    connect(m_backupsButton, &QPushButton::clicked, this, &StudentsScreen::openBackups);
    connect(m_helpButton, &QPushButton::clicked, this, &StudentsScreen::showHelp);
    connect(m_closeButton, &QPushButton::clicked, this, &StudentsScreen::closeScreen);

    layout->addWidget(notes, 1);
    layout->addWidget(m_reportButton);
    layout->addWidget(m_exportButton);
    layout->addWidget(m_classButton);
    layout->addWidget(m_backupsButton);
    layout->addWidget(m_helpButton);
    layout->addWidget(m_closeButton);
    return footer;
}

void StudentsScreen::setHelpOpener(HelpOpener openHelp)
{
    m_openHelp = std::move(openHelp);
}

void StudentsScreen::fitInto(const QSize &room)
{
    // On a small display the results grid gives up rows first; only when it
    // cannot give up enough does the screen scroll.
    m_results->setItemsInView(ResultsPanel::ItemsInView);
    const int over = wholeContentSize(*this, *m_scrollArea).height() - room.height();
    if (over > 0) {
        const int fewer = (over + m_results->itemHeight() - 1) / m_results->itemHeight();
        m_results->setItemsInView(ResultsPanel::ItemsInView - fewer);
    }
    const QSize wanted = wholeContentSize(*this, *m_scrollArea);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    ::fitInto(*this, wanted, room);
    // The screen never grows past its content; made smaller, it scrolls.
    setMaximumSize(size().expandedTo(wanted));
}

bool StudentsScreen::loadRoster()
{
    std::optional<WaitCursor> wait(std::in_place);
    fitInto(roomOnScreen(*this));

    // A file that is there but cannot be read is never replaced by a new roster.
    std::error_code ignored;
    const bool firstRun = !std::filesystem::exists(m_session.paths.studentsPath, ignored);
    const LoadResult loaded =
        loadStudents(m_session.records, m_session.bank, m_session.paths.studentsPath);
    if (!loaded.ok() && !firstRun) {
        wait.reset();
        const QString problem = loaded.error
                                    ? QString::fromStdString(loaded.error->message())
                                    : QStringLiteral("The Students file could not be read.");
        m_session.prompt.stop(this, QStringLiteral("Tavrino"),
                              problem + QStringLiteral("\rThe program will now end. The file has "
                                                       "been left exactly as it was."));
        return false;
    }
    m_loaded = true;
    // The file may have changed outside the program (a copy from another
    // computer): the history finds its students by name, then by place.
    if (HistoryRoster *history = historyRoster(m_session))
        history->matchRoster(studentNames(m_session.records));
    if (!loaded.ok()) {
        // The first roster could not be written; the session tells the user why.
        wait.reset();
        m_session.saveStudents(this);
        wait.emplace();
    }

    fillControls();
    m_deleteButton->setEnabled(m_studentList->count() > 1);
    applyProgramMode(*this, m_session.mode);
    // Naming the class is the teacher's: in classroom mode the first student
    // stays nameless until the teacher's copy names it.
    if (m_session.mode == ProgramMode::Normal && m_studentList->count() == 1 &&
        m_studentList->currentItem() && m_studentList->currentItem()->text().isEmpty()) {
        wait.reset();
        askFirstName();
        wait.emplace();
    }
    selectCurrentSubject();
    selectStudent();
    // Arrow keys choose the student at once; Enter then closes the screen.
    m_studentList->setFocus();
    return true;
}

void StudentsScreen::fillControls()
{
    const BusyScope busy(m_busy);
    const StudentRecords &records = m_session.records;
    m_results->selectMode(records.showByStudent);

    m_subjectList->clear();
    for (const Subject &subject : m_session.bank.subjects)
        m_subjectList->addItem(QString::fromStdString(subject.name));

    m_studentList->clear();
    int current = -1;
    for (std::size_t i = 0; i < records.students.size(); ++i) {
        m_studentList->addItem(QString::fromStdString(trimName(records.students[i].name)));
        if (records.students[i].current)
            current = static_cast<int>(i);
    }
    // A roster without a current student still opens on a selected line, so
    // that every handler has a student to work on.
    m_studentList->setCurrentRow(current >= 0 ? current : 0);
}

void StudentsScreen::askFirstName()
{
    const QString answer = m_session.prompt.input(
        this, QStringLiteral("Welcome to the Tavrino program"),
        QStringLiteral("Please enter the first Student's name:\r(You can add additional Students, "
                       "by clicking\rthe [Add Student] button on the next screen.)"));
    // Set as text, the answer bypasses the box's validator.
    m_nameBox->setText(fileText(answer));
}

void StudentsScreen::selectCurrentSubject()
{
    const int subject = m_session.records.currentSubject;
    if (m_subjectList->currentIndex() == subject)
        chooseSubject();
    else
        m_subjectList->setCurrentIndex(subject);
}

int StudentsScreen::selectedStudent() const
{
    const int row = m_studentList->currentRow();
    return row >= 0 && row < static_cast<int>(m_session.records.students.size()) ? row : -1;
}

void StudentsScreen::selectStudent()
{
    const int student = selectedStudent();
    if (m_busy || student < 0)
        return;
    const BusyScope busy(m_busy);
    const Student &selected = m_session.records.students[student];
    m_nameBox->setText(QString::fromStdString(trimName(selected.name)));
    m_levels->select(selected.level);
    m_results->fill(student);
    enableLevelButtons();
}

void StudentsScreen::enableLevelButtons()
{
    // Only the button moves; the student's stored Level stays as it was.
    const BusyScope busy(m_busy);
    m_levels->enableFor(m_session.bank, m_session.records.currentSubject);
}

void StudentsScreen::onStudentListKey(Qt::Key key)
{
    // The key does what the button does, and nothing where the button is hidden.
    if (key == Qt::Key_Delete && m_deleteButton->isVisibleTo(this) && m_deleteButton->isEnabled())
        deleteStudent();
}

bool StudentsScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_studentList && event->type() == QEvent::KeyPress)
        onStudentListKey(static_cast<Qt::Key>(static_cast<QKeyEvent *>(event)->key()));
    return QDialog::eventFilter(watched, event);
}

void StudentsScreen::renameStudent()
{
    const int student = selectedStudent();
    if (m_busy || student < 0)
        return;
    const std::string name = trimName(m_nameBox->text().toStdString());
    m_session.records.students[student].name = name;
    if (HistoryRoster *history = historyRoster(m_session))
        history->studentRenamed(student, name);
    m_studentList->item(student)->setText(QString::fromStdString(name));
    m_results->studentRenamed(student);
}

void StudentsScreen::addStudent()
{
    m_deleteButton->setEnabled(true);
    {
        const BusyScope busy(m_busy);
        m_nameBox->clear();
    }
    m_session.records.students.push_back(newStudent(m_session.bank.subjectMax));
    if (HistoryRoster *history = historyRoster(m_session))
        history->studentAdded();
    m_studentList->addItem(QString());
    // Selecting the new line runs the selecting step.
    m_studentList->setCurrentRow(m_studentList->count() - 1);
    m_nameBox->setFocus();
}

void StudentsScreen::deleteStudent()
{
    // The last student is never deleted.
    if (!m_deleteButton->isEnabled())
        return;
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Delete Student"),
                                  QStringLiteral("Are you sure you want to Delete this Student?")))
        return;
    const int student = selectedStudent();
    if (student < 0)
        return;
    // The history is erased with the student: both are copied first.
    m_session.backUpBeforeLoss({DataFile::Students, DataFile::History}, this);
    {
        const BusyScope busy(m_busy);
        std::unique_ptr<QListWidgetItem> line(m_studentList->takeItem(student));
        std::vector<Student> &students = m_session.records.students;
        students.erase(students.begin() + student);
        // Its history goes when the roster without it is saved.
        if (HistoryRoster *history = historyRoster(m_session))
            history->studentDeleted(student);
        m_deleteButton->setEnabled(students.size() > 1);
        m_studentList->setCurrentRow(0);
    }
    selectStudent();
}

void StudentsScreen::chooseLevel(int level)
{
    const int student = selectedStudent();
    if (m_busy || student < 0 || level < 0 || level >= LevelCount)
        return;
    m_session.records.students[student].level = static_cast<int16_t>(level);
    selectStudent();
}

void StudentsScreen::chooseSubject()
{
    const int subject = m_subjectList->currentIndex();
    if (m_busy || subject < 0)
        return;
    m_session.records.currentSubjectName = m_subjectList->currentText().toStdString();
    m_session.records.currentSubject = subject;
    selectStudent();
}

void StudentsScreen::showHelp()
{
    if (m_openHelp)
        m_openHelp(this);
}

void StudentsScreen::closeScreen()
{
    accept();
}

void StudentsScreen::done(int result)
{
    saveOnClose();
    QDialog::done(result);
}

void StudentsScreen::saveOnClose()
{
    // A roster that was never read must not overwrite the file it came from.
    const int student = selectedStudent();
    if (!m_loaded || student < 0)
        return;
    const WaitCursor wait;
    StudentRecords &records = m_session.records;
    records.currentStudent = student;
    for (Student &each : records.students)
        each.current = false;
    Student &current = records.students[student];
    current.current = true;
    records.currentStudentName = trimName(current.name);
    records.currentLevel = current.level;
    m_session.saveStudents(this);
}
