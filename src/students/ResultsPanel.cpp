#include "ResultsPanel.h"

#include "ResultsModel.h"
#include "ResultsView.h"
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
#include <QVBoxLayout>

#include <array>

namespace {

// Screen sizes are kept in twips, 1440 to an inch: fifteen to a pixel at the
// usual 96 dots per inch, more where the desktop's fonts are set larger.
constexpr int pixels(int twips, int dotsPerInch)
{
    return (twips * dotsPerInch + 720) / 1440;
}

constexpr std::array<int, ResultsModel::ColumnCount> ColumnTwips = {
    1115, 490, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517, 517};

// The name column widens for long names up to twice its width; a longer name
// is cut in the middle, where two names that start alike still differ at the
// end ("Alexander ...Smith", "Alexander ...Jones"), and its tooltip shows it whole.
constexpr int NameColumnMaxTwips = 2 * ColumnTwips[ResultsModel::NameColumn];

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
    m_heading = new QLabel(heading);
    m_heading->setObjectName(QStringLiteral("lblStudentOrSubject"));
    m_heading->setFont(captionFont(14, true));
    // The heading takes the room beside it and no more: a long name is cut off
    // at the right rather than widening the screen past the display.
    m_heading->setMinimumWidth(180);
    m_heading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // A name is shown as typed, never read as markup.
    m_heading->setTextFormat(Qt::PlainText);
    nameValueLabel(*m_heading, QStringLiteral("Scores for"));

    auto *frame = new QGroupBox(QStringLiteral("Show Scores for one"), heading);
    frame->setObjectName(QStringLiteral("fraShowScoresFor"));
    auto *frameLayout = new QHBoxLayout(frame);
    m_byStudentButton = new QRadioButton(QStringLiteral("Student"), frame);
    m_byStudentButton->setObjectName(QStringLiteral("optByStudent"));
    m_bySubjectButton = new QRadioButton(QStringLiteral("Subject"), frame);
    m_bySubjectButton->setObjectName(QStringLiteral("optBySubject"));
    frameLayout->addWidget(m_byStudentButton);
    frameLayout->addWidget(m_bySubjectButton);
    connect(m_byStudentButton, &QRadioButton::clicked, this, &ResultsPanel::showByStudent);
    connect(m_bySubjectButton, &QRadioButton::clicked, this, &ResultsPanel::showBySubject);
    tabToCheckedButton({m_byStudentButton, m_bySubjectButton});

    layout->addWidget(scoresFor, 0, Qt::AlignVCenter);
    layout->addWidget(m_heading, 1, Qt::AlignVCenter);
    layout->addWidget(frame);
    return heading;
}

void ResultsPanel::buildGrid()
{
    m_grid = new ResultsView(this);
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
    // Tab reaches the grid, whose keys scroll it; Tab then goes on past it.
    m_grid->setFocusPolicy(Qt::StrongFocus);
    m_grid->setTabKeyNavigation(false);
    m_grid->setWordWrap(false);
    m_grid->setTextElideMode(Qt::ElideMiddle);
    m_grid->setCornerButtonEnabled(false);
    // Only keepCurrentRowInView decides where the grid scrolls, not a change of the current row.
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
    shapeGrid();
    setItemsInView(ItemsInView);
    // The panel keeps room for the widest name column, so that the screen does
    // not change its size as the names change.
    setMinimumWidth(gridWidth(pixels(NameColumnMaxTwips, m_grid->logicalDpiX())));
}

QWidget *ResultsPanel::buildResetButtons()
{
    auto *buttons = new QWidget(this);
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);

    auto *note =
        new QLabel(QStringLiteral("'Last' = Most Recent Score; 'High' = Highest Score"), buttons);
    m_resetStudentButton = new QPushButton(QStringLiteral("Reset This Student's Totals"), buttons);
    m_resetStudentButton->setObjectName(QStringLiteral("cmdResetTotals_Student"));
    m_resetAllButton = new QPushButton(QStringLiteral("Reset ALL Student Totals"), buttons);
    m_resetAllButton->setObjectName(QStringLiteral("cmdResetTotals_All"));
    for (QPushButton *button : {m_resetStudentButton, m_resetAllButton})
        button->setAutoDefault(false);
    connect(m_resetStudentButton, &QPushButton::clicked, this, &ResultsPanel::resetStudentTotals);
    connect(m_resetAllButton, &QPushButton::clicked, this, &ResultsPanel::resetAllTotals);

    layout->addWidget(note);
    layout->addStretch(1);
    layout->addWidget(m_resetStudentButton);
    layout->addWidget(m_resetAllButton);
    return buttons;
}

void ResultsPanel::selectMode(bool byStudent)
{
    (byStudent ? m_byStudentButton : m_bySubjectButton)->setChecked(true);
}

void ResultsPanel::shapeGrid()
{
    QHeaderView *columns = m_grid->horizontalHeader();
    for (int column = ResultsModel::LastHighColumn; column < ResultsModel::ColumnCount; ++column)
        columns->resizeSection(column, pixels(ColumnTwips[column], m_grid->logicalDpiX()));
    fitNameColumn();
    // Row 0 is the header row; the view shows it as its fixed column header.
    m_grid->setRowHidden(0, true);
}

int ResultsPanel::gridWidth(int nameColumnWidth) const
{
    int width = 2 * m_grid->frameWidth() +
                m_grid->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + nameColumnWidth;
    for (int column = ResultsModel::LastHighColumn; column < ResultsModel::ColumnCount; ++column)
        width += pixels(ColumnTwips[column], m_grid->logicalDpiX());
    return width;
}

void ResultsPanel::fitNameColumn()
{
    // The names are bold; a cell keeps a few pixels of margin beside its text.
    QFont bold = m_grid->font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    constexpr int Margin = 8;
    int longest = 0;
    for (int row = ResultsModel::lastRowOf(0); row < m_model->rowCount(); row += 2) {
        const QString name = m_model->index(row, ResultsModel::NameColumn).data().toString();
        longest = qMax(longest, metrics.horizontalAdvance(name) + Margin);
    }
    const int dotsPerInch = m_grid->logicalDpiX();
    const int width = qBound(pixels(ColumnTwips[ResultsModel::NameColumn], dotsPerInch), longest,
                             pixels(NameColumnMaxTwips, dotsPerInch));
    m_grid->horizontalHeader()->resizeSection(ResultsModel::NameColumn, width);
    m_grid->setFixedWidth(gridWidth(width));
}

void ResultsPanel::setItemsInView(int items)
{
    m_grid->setItemsInView(qMax(MinItemsInView, items));
    // The screen measures its new size at once, not after the next layout pass.
    updateGeometry();
}

int ResultsPanel::itemHeight() const
{
    return m_grid->itemHeight();
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
    shapeGrid();
    // Lay the rows out now, not later, so that scrolling sees the new row count;
    // the rows in view stay where they were unless keepCurrentRowInView moves them.
    m_grid->doItemsLayout();
    showHeading();

    const int current = ResultsModel::lastRowOf(m_model->highlightedItem());
    if (current > 0 && current < m_model->rowCount())
        m_grid->setCurrentIndex(m_model->index(current, 0));
    keepCurrentRowInView();

    m_grid->setUpdatesEnabled(true);
}

void ResultsPanel::studentRenamed(int student)
{
    if (student != m_student)
        return;
    showHeading();
    m_model->studentRenamed(student);
    // By subject the grid lists the students by name.
    if (!m_session.records.showByStudent)
        fitNameColumn();
}

void ResultsPanel::keepCurrentRowInView()
{
    // With the grid's eighteen rows this is the rule of scrolling the Last row
    // to the top when it is over sixteen rows below the top row, or above it.
    const int current = m_grid->currentIndex().row();
    if (current > 0 && !m_grid->showsItem(current))
        m_grid->scrollToTop(current);
}

void ResultsPanel::showHeading()
{
    const StudentRecords &records = m_session.records;
    if (!records.showByStudent) {
        m_heading->setText(QString::fromStdString(records.currentSubjectName));
    } else if (m_student >= 0 && m_student < static_cast<int>(records.students.size())) {
        m_heading->setText(QString::fromStdString(trimName(records.students[m_student].name)));
    } else {
        m_heading->clear();
    }
}

void ResultsPanel::showByStudent()
{
    m_session.records.showByStudent = true;
    showHeading();
    emit refreshRequested();
}

void ResultsPanel::showBySubject()
{
    m_session.records.showByStudent = false;
    showHeading();
    emit refreshRequested();
}

void ResultsPanel::resetStudentTotals()
{
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Reset Student's Totals"),
                                  QStringLiteral("Are you sure you want to Reset this Student's "
                                                 "Totals?")))
        return;
    std::vector<Student> &students = m_session.records.students;
    if (m_student < 0 || m_student >= static_cast<int>(students.size()))
        return;
    const WaitCursor wait;
    m_session.backUpBeforeLoss({DataFile::Students}, this);
    clearResults(students[m_student]);
    emit refreshRequested();
}

void ResultsPanel::resetAllTotals()
{
    if (!m_session.prompt.confirm(this, QStringLiteral("Confirm Reset ALL Student Totals"),
                                  QStringLiteral("Are you sure you want to Reset ALL Student "
                                                 "Totals?")))
        return;
    const WaitCursor wait;
    m_session.backUpBeforeLoss({DataFile::Students}, this);
    for (Student &student : m_session.records.students)
        clearResults(student);
    emit refreshRequested();
}
