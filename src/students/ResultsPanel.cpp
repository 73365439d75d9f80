#include "ResultsPanel.h"

#include "ResultsModel.h"
#include "ui/Accessibility.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>

#include <array>

namespace {

// Screen sizes are kept in twips, 1440 to an inch: fifteen to a pixel at the
// usual 96 dots per inch, more where the desktop's fonts are set larger.
constexpr int Pixels(int twips, int dotsPerInch)
{
    return (twips * dotsPerInch + 720) / 1440;
}

constexpr std::array<int, ResultsModel::ColumnCount> ColumnTwips = {
    1115, 490, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517};

// The current row may sit this many rows below the top row before the grid scrolls.
constexpr int RowsBelowTop = 17;

// The columns are as narrow as the scores need; a thinner margin beside the text
// lets "High" and the subject names fit them whole.
class NarrowCellStyle : public QProxyStyle {
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        if (metric == PM_FocusFrameHMargin)
            return 1;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

QFont captionFont(int pointSize, bool bold)
{
    QFont font(QStringLiteral("Arial"), pointSize);
    font.setBold(bold);
    return font;
}

void clearScores(Student &student)
{
    for (SubjectResults &results : student.results) {
        results.last.fill(0);
        results.high.fill(0);
    }
}

} // namespace

ResultsPanel::ResultsPanel(Session &session, QWidget *parent)
    : QWidget(parent), m_session(session),
      m_model(new ResultsModel(session.records, session.bank, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(buildHeading());
    buildGrid();
    layout->addWidget(m_grid, 0, Qt::AlignLeft);
    layout->addWidget(buildResetButtons());
}

QWidget *ResultsPanel::buildHeading()
{
    auto *heading = new QWidget(this);
    auto *layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);

    auto *scoresFor = new QLabel(QStringLiteral("SCORES FOR:"), heading);
    scoresFor->setFont(captionFont(11, true));
    m_lblStudentOrSubject = new QLabel(heading);
    m_lblStudentOrSubject->setObjectName(QStringLiteral("lblStudentOrSubject"));
    m_lblStudentOrSubject->setFont(captionFont(14, true));
    // The heading takes the room beside it and no more: a long name is cut off
    // at the right rather than widening the screen past the display.
    m_lblStudentOrSubject->setMinimumWidth(180);
    m_lblStudentOrSubject->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // A name is shown as typed, never read as markup.
    m_lblStudentOrSubject->setTextFormat(Qt::PlainText);
    nameValueLabel(*m_lblStudentOrSubject, QStringLiteral("Scores for"));

    auto *frame = new QGroupBox(QStringLiteral("Show Scores for one"), heading);
    frame->setObjectName(QStringLiteral("fraShowScoresFor"));
    auto *frameLayout = new QHBoxLayout(frame);
    m_optByStudent = new QRadioButton(QStringLiteral("Student"), frame);
    m_optByStudent->setObjectName(QStringLiteral("optByStudent"));
    m_optBySubject = new QRadioButton(QStringLiteral("Subject"), frame);
    m_optBySubject->setObjectName(QStringLiteral("optBySubject"));
    frameLayout->addWidget(m_optByStudent);
    frameLayout->addWidget(m_optBySubject);
    connect(m_optByStudent, &QRadioButton::clicked, this, &ResultsPanel::optByStudent_Click);
    connect(m_optBySubject, &QRadioButton::clicked, this, &ResultsPanel::optBySubject_Click);
    tabToCheckedButton({m_optByStudent, m_optBySubject});

    layout->addWidget(scoresFor, 0, Qt::AlignVCenter);
    layout->addWidget(m_lblStudentOrSubject, 1, Qt::AlignVCenter);
    layout->addWidget(frame);
    return heading;
}

void ResultsPanel::buildGrid()
{
    m_grid = new QTableView(this);
    m_grid->setObjectName(QStringLiteral("Grid1"));
    m_grid->setAccessibleName(QStringLiteral("Scores"));
    auto *style = new NarrowCellStyle;
    style->setParent(m_grid);
    m_grid->setStyle(style);
    const QFont font(QStringLiteral("Arial"), 9);
    m_grid->setFont(font);
    m_model->setFont(font);
    m_grid->setModel(m_model);
    m_grid->setSelectionMode(QAbstractItemView::NoSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setFocusPolicy(Qt::NoFocus);
    m_grid->setWordWrap(false);
    m_grid->setCornerButtonEnabled(false);
    m_grid->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    // Only SetTopRow decides where the grid scrolls, not a change of the current row.
    m_grid->setAutoScroll(false);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setMinimumSectionSize(1);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->horizontalHeader()->setHighlightSections(false);
    m_grid->horizontalHeader()->setSectionsClickable(false);
    InitGrid();

    // Wide enough for every column and tall enough for the current row and the
    // rows that may follow it before the grid scrolls.
    int width = 2 * m_grid->frameWidth() + m_grid->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    for (const int twips : ColumnTwips)
        width += Pixels(twips, m_grid->logicalDpiX());
    const int height = 2 * m_grid->frameWidth() + m_grid->horizontalHeader()->sizeHint().height() +
                       (RowsBelowTop + 1) * m_grid->verticalHeader()->defaultSectionSize();
    m_grid->setFixedSize(width, height);
}

QWidget *ResultsPanel::buildResetButtons()
{
    auto *buttons = new QWidget(this);
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);

    auto *note =
        new QLabel(QStringLiteral("'Last' = Most Recent Score; 'High' = Highest Score"), buttons);
    m_cmdResetTotals_Student =
        new QPushButton(QStringLiteral("Reset This Student's Totals"), buttons);
    m_cmdResetTotals_Student->setObjectName(QStringLiteral("cmdResetTotals_Student"));
    m_cmdResetTotals_All = new QPushButton(QStringLiteral("Reset ALL Student Totals"), buttons);
    m_cmdResetTotals_All->setObjectName(QStringLiteral("cmdResetTotals_All"));
    for (QPushButton *button : {m_cmdResetTotals_Student, m_cmdResetTotals_All})
        button->setAutoDefault(false);
    connect(m_cmdResetTotals_Student, &QPushButton::clicked, this,
            &ResultsPanel::cmdResetTotals_Student_Click);
    connect(m_cmdResetTotals_All, &QPushButton::clicked, this,
            &ResultsPanel::cmdResetTotals_All_Click);

    layout->addWidget(note);
    layout->addStretch(1);
    layout->addWidget(m_cmdResetTotals_Student);
    layout->addWidget(m_cmdResetTotals_All);
    return buttons;
}

void ResultsPanel::selectMode(bool byStudent)
{
    (byStudent ? m_optByStudent : m_optBySubject)->setChecked(true);
}

void ResultsPanel::InitGrid()
{
    QHeaderView *columns = m_grid->horizontalHeader();
    for (int column = 0; column < ResultsModel::ColumnCount; ++column)
        columns->resizeSection(column, Pixels(ColumnTwips[column], m_grid->logicalDpiX()));
    // Row 0 is the header row; the view shows it as its fixed column header.
    m_grid->setRowHidden(0, true);
}

void ResultsPanel::fill(int student)
{
    m_student = student;
    m_grid->setUpdatesEnabled(false);

    ResultsModel::Selection selection;
    selection.byStudent = m_session.records.showByStudent;
    selection.student = student;
    selection.subject = m_session.records.currentSubject;
    m_model->show(selection);
    InitGrid();
    // Lay the rows out now, not later, so that scrolling sees the new row count;
    // the rows in view stay where they were unless SetTopRow moves them.
    m_grid->doItemsLayout();
    showHeading();

    const int current = ResultsModel::lastRowOf(m_model->highlightedItem());
    if (current > 0 && current < m_model->rowCount())
        m_grid->setCurrentIndex(m_model->index(current, 0));
    SetTopRow();

    m_grid->setUpdatesEnabled(true);
}

void ResultsPanel::studentRenamed(int student)
{
    if (student != m_student)
        return;
    showHeading();
    m_model->studentRenamed(student);
}

int ResultsPanel::topRow() const
{
    return m_grid->rowAt(0);
}

void ResultsPanel::SetTopRow()
{
    const int current = m_grid->currentIndex().row();
    const int top = topRow();
    if (current < 0)
        return;
    if (current - RowsBelowTop > top || current < top)
        m_grid->scrollTo(m_model->index(current, 0), QAbstractItemView::PositionAtTop);
}

void ResultsPanel::showHeading()
{
    const StudentRecords &records = m_session.records;
    if (!records.showByStudent) {
        m_lblStudentOrSubject->setText(QString::fromStdString(records.currentSubjectName));
    } else if (m_student >= 0 && m_student < static_cast<int>(records.students.size())) {
        m_lblStudentOrSubject->setText(
            QString::fromStdString(trimName(records.students[m_student].name)));
    } else {
        m_lblStudentOrSubject->clear();
    }
}

void ResultsPanel::optByStudent_Click()
{
    m_session.records.showByStudent = true;
    showHeading();
    emit refreshRequested();
}

void ResultsPanel::optBySubject_Click()
{
    m_session.records.showByStudent = false;
    showHeading();
    emit refreshRequested();
}

void ResultsPanel::cmdResetTotals_Student_Click()
{
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Reset Student's Totals"),
                                  QStringLiteral("Are you sure you want to Reset this Student's "
                                                 "Totals?")))
        return;
    std::vector<Student> &students = m_session.records.students;
    if (m_student < 0 || m_student >= static_cast<int>(students.size()))
        return;
    const WaitCursor wait;
    clearScores(students[m_student]);
    emit refreshRequested();
}

void ResultsPanel::cmdResetTotals_All_Click()
{
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Reset ALL Student Totals"),
                                  QStringLiteral("Are you sure you want to Reset ALL Student "
                                                 "Totals?")))
        return;
    const WaitCursor wait;
    for (Student &student : m_session.records.students)
        clearScores(student);
    emit refreshRequested();
}
