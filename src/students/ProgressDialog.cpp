#include "ProgressDialog.h"

#include "UnmatchedHistoryDialog.h"
#include "core/History.h"
#include "core/HistoryClock.h"
#include "ui/Accessibility.h"
#include "ui/Session.h"

#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QDateTimeAxis>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLegend>
#include <QLineSeries>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>

namespace {

constexpr qint64 DayMs = 24 * 60 * 60 * 1000;

// The order of the span list.
constexpr ProgressSpan Spans[] = {ProgressSpan::LastMonth, ProgressSpan::LastYear,
                                  ProgressSpan::All};

QString subjectName(const Session &session, int subject)
{
    return subject >= 0 && subject < static_cast<int>(session.bank.subjects.size())
               ? QString::fromStdString(session.bank.subjects[subject].name)
               : QString();
}

} // namespace

ProgressDialog::ProgressDialog(Session &session, int student, int level, QWidget *parent)
    : QDialog(parent), m_session(session), m_student(student),
      m_subject(session.records.currentSubject), m_level(level)
{
    setObjectName(QStringLiteral("frmProgress"));
    setModal(true);
    const Student &shown = session.records.students.at(static_cast<std::size_t>(student));
    const QString name = QString::fromStdString(trimName(shown.name));
    setWindowTitle(QStringLiteral("Progress of %1").arg(name));
    if (m_subject >= 0 && static_cast<std::size_t>(m_subject) < shown.results.size() &&
        level >= 0 && level < LevelCount)
        m_high = shown.results[static_cast<std::size_t>(m_subject)].high[level];

    m_showNotMatched = [](UnmatchedHistoryDialog &dialog) { dialog.exec(); };

    m_heading =
        new QLabel(QStringLiteral("<b>%1</b>: %2, Level %3")
                       .arg(name.toHtmlEscaped(), subjectName(session, m_subject).toHtmlEscaped(),
                            QString::fromStdString(levelText(level))),
                   this);
    m_heading->setObjectName(QStringLiteral("lblProgressOf"));

    m_spanList = new QComboBox(this);
    m_spanList->setObjectName(QStringLiteral("cmbSpan"));
    m_spanList->addItems(
        {QStringLiteral("Last month"), QStringLiteral("Last year"), QStringLiteral("All tests")});
    m_spanList->setAccessibleName(QStringLiteral("Tests shown"));
    auto *spanCaption = new QLabel(QStringLiteral("&Show:"), this);
    spanCaption->setBuddy(m_spanList);

    m_noTests = new QLabel(this);
    m_noTests->setObjectName(QStringLiteral("lblNoTests"));
    m_noTests->setWordWrap(true);

    m_figures = new QWidget(this);
    buildChart();
    m_model = new ProgressTableModel(this);
    m_table = new QTableView(m_figures);
    m_table->setObjectName(QStringLiteral("grdProgress"));
    m_table->setModel(m_model);
    m_table->setAccessibleName(QStringLiteral("Scores of each test"));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->verticalHeader()->hide();
    auto *tableCaption = new QLabel(QStringLiteral("T&ests:"), m_figures);
    tableCaption->setBuddy(m_table);

    auto *figuresLayout = new QGridLayout(m_figures);
    figuresLayout->setContentsMargins(0, 0, 0, 0);
    figuresLayout->addWidget(m_chartView, 0, 0, 2, 1);
    figuresLayout->addWidget(tableCaption, 0, 1);
    figuresLayout->addWidget(m_table, 1, 1);
    figuresLayout->setColumnStretch(0, 3);
    figuresLayout->setColumnStretch(1, 2);
    figuresLayout->setRowStretch(1, 1);

    m_notMatchedButton = new QPushButton(QStringLiteral("&Not matched\u2026"), this);
    m_notMatchedButton->setObjectName(QStringLiteral("cmdNotMatched"));
    m_notMatchedButton->setAccessibleName(QStringLiteral("History not matched"));
    m_notMatchedButton->setAccessibleDescription(
        QStringLiteral("Tests kept in the history whose student is not in the list, to give "
                       "to a student or to delete"));
    m_notMatchedButton->setAutoDefault(false);
    m_closeButton = new QPushButton(QStringLiteral("Close"), this);
    m_closeButton->setObjectName(QStringLiteral("cmdClose"));
    m_closeButton->setDefault(true);

    auto *top = new QHBoxLayout;
    top->addWidget(m_heading, 1);
    top->addWidget(spanCaption);
    top->addWidget(m_spanList);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_notMatchedButton);
    buttons->addStretch(1);
    buttons->addWidget(m_closeButton);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_noTests);
    layout->addWidget(m_figures, 1);
    layout->addLayout(buttons);
    setTabChain({m_spanList, m_table, m_notMatchedButton, m_closeButton});

    connect(m_spanList, &QComboBox::currentIndexChanged, this, &ProgressDialog::chooseSpan);
    connect(m_notMatchedButton, &QPushButton::clicked, this, &ProgressDialog::showNotMatched);
    connect(m_closeButton, &QPushButton::clicked, this, &QDialog::accept);

    resize(940, 540);
    // A school year at a glance; the month is one choice away.
    m_spanList->setCurrentIndex(1);
    m_notMatchedButton->setVisible(session.history != nullptr);
    m_notMatchedButton->setEnabled(session.history &&
                                   !session.history->roster().unmatchedStudents().empty());
    m_spanList->setFocus();
}

ProgressDialog::~ProgressDialog() = default;

void ProgressDialog::setNotMatchedShower(NotMatchedShower show)
{
    m_showNotMatched = std::move(show);
}

const std::vector<TestSummary> &ProgressDialog::shownTests() const
{
    return m_model->tests();
}

void ProgressDialog::buildChart()
{
    m_chart = new QChart;
    m_chart->legend()->setAlignment(Qt::AlignBottom);
    m_chart->setMargins(QMargins(4, 4, 4, 4));
    m_chartView = new QChartView(m_chart, m_figures);
    m_chartView->setObjectName(QStringLiteral("chtProgress"));
    m_chartView->setRenderHint(QPainter::Antialiasing);
    m_chartView->setMinimumSize(480, 320);
    // The table beside it holds the same figures and is where the keyboard goes.
    m_chartView->setFocusPolicy(Qt::NoFocus);
    m_chartView->setAccessibleName(QStringLiteral("Chart of the scores over time"));
    m_chartView->setAccessibleDescription(
        QStringLiteral("Each point is a test's score; the dashed line is the High. The table "
                       "of tests holds the same figures."));
}

void ProgressDialog::chooseSpan()
{
    showTests();
}

void ProgressDialog::showTests()
{
    const ProgressSpan span = Spans[std::clamp(m_spanList->currentIndex(), 0, 2)];
    const LocalSeconds now = m_session.clock.localMilliseconds() / 1000;
    const DateRange range = progressRange(span, now);
    std::vector<TestSummary> tests;
    if (m_session.history)
        tests =
            scoredTests(m_session.history->queries().tests(m_student, m_subject, m_level, range));
    m_model->show(tests);

    m_noTests->setVisible(tests.empty());
    m_figures->setVisible(!tests.empty());
    if (tests.empty()) {
        m_noTests->setText(noTestsSentence(span));
        return;
    }
    drawChart(tests, now);
    m_table->scrollToBottom();
}

QString ProgressDialog::noTestsSentence(ProgressSpan span) const
{
    if (!m_session.history || !m_session.history->isOn())
        return QStringLiteral("Tavrino could not keep the history of tests in the data folder, "
                              "so there is no progress to show.");
    const QString name =
        QString::fromStdString(trimName(m_session.records.students[m_student].name));
    const QString what =
        QStringLiteral("%1 has taken no %2 tests at Level %3")
            .arg(name.isEmpty() ? QStringLiteral("This student") : name,
                 subjectName(m_session, m_subject), QString::fromStdString(levelText(m_level)));
    switch (span) {
    case ProgressSpan::LastMonth:
        return what + QStringLiteral(" in the last month.");
    case ProgressSpan::LastYear:
        return what + QStringLiteral(" in the last year.");
    case ProgressSpan::All:
        break;
    }
    return what + QStringLiteral(" yet.");
}

void ProgressDialog::drawChart(const std::vector<TestSummary> &tests, LocalSeconds now)
{
    m_chart->removeAllSeries();
    for (QAbstractAxis *axis : m_chart->axes()) {
        m_chart->removeAxis(axis);
        delete axis;
    }

    auto *scores = new QLineSeries(m_chart);
    scores->setName(QStringLiteral("Score"));
    scores->setPointsVisible(true);
    scores->setMarkerSize(9);
    int lowest = std::min(0, m_high);
    int highest = m_high;
    for (const TestSummary &test : tests) {
        scores->append(static_cast<qreal>(localDateTime(test.started).toMSecsSinceEpoch()),
                       test.score);
        lowest = std::min(lowest, test.score);
        highest = std::max(highest, test.score);
    }

    // The axis fits the tests the span chose, from the first to now, so that a
    // few recent tests are not squeezed against the edge of a year; a little room
    // either side keeps the first and last points off the frame.
    qint64 from = localDateTime(tests.front().started).toMSecsSinceEpoch();
    qint64 until = localDateTime(std::max(now, tests.back().started)).toMSecsSinceEpoch();
    const qint64 room = std::max(DayMs / 2, (until - from) / 20);
    from -= room;
    until += room;

    auto *high = new QLineSeries(m_chart);
    high->setName(QStringLiteral("High (%1)").arg(m_high));
    QPen dashed(QColor(200, 30, 30));
    dashed.setWidth(2);
    dashed.setStyle(Qt::DashLine);
    high->setPen(dashed);
    high->append(static_cast<qreal>(from), m_high);
    high->append(static_cast<qreal>(until), m_high);

    m_chart->addSeries(scores);
    m_chart->addSeries(high);

    auto *dates = new QDateTimeAxis;
    // Days while the axis spans a few months, months beyond.
    dates->setFormat(until - from <= 120 * DayMs ? QStringLiteral("d MMM")
                                                 : QStringLiteral("MMM yyyy"));
    dates->setTickCount(6);
    dates->setRange(QDateTime::fromMSecsSinceEpoch(from), QDateTime::fromMSecsSinceEpoch(until));
    dates->setTitleText(QStringLiteral("Date"));
    auto *values = new QValueAxis;
    // Headroom above the High so that its line and the best scores stay clear of the frame.
    values->setRange(lowest, highest + std::max(1, (highest - lowest) / 8));
    values->applyNiceNumbers();
    values->setLabelFormat(QStringLiteral("%d"));
    values->setTitleText(QStringLiteral("Score"));
    m_chart->addAxis(dates, Qt::AlignBottom);
    m_chart->addAxis(values, Qt::AlignLeft);
    for (QLineSeries *series : {scores, high}) {
        series->attachAxis(dates);
        series->attachAxis(values);
    }
}

void ProgressDialog::showNotMatched()
{
    if (!m_session.history)
        return;
    UnmatchedHistoryDialog dialog(m_session, this);
    m_showNotMatched(dialog);
    // History given away may now be this student's.
    showTests();
    m_notMatchedButton->setEnabled(!m_session.history->roster().unmatchedStudents().empty());
    if (!m_notMatchedButton->isEnabled())
        m_closeButton->setFocus();
}
