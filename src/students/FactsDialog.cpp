#include "FactsDialog.h"

#include "FactGridModel.h"
#include "core/HistoryQueries.h"
#include "core/TestBank.h"
#include "reports/ClassHistoryLists.h"
#include "reports/MasteryLook.h"
#include "ui/Prompt.h"

#include <QDate>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QString text(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

QString capitalised(const std::string &word)
{
    QString result = text(word);
    if (!result.isEmpty())
        result[0] = result[0].toUpper();
    return result;
}

} // namespace

FactsReport makeFactsReport(HistoryQueries &queries, const TestBank &bank, int student,
                            const std::string &name, int missedListed)
{
    FactsReport report;
    report.title = "Facts: " + name;
    report.date = QLocale().toString(QDate::currentDate(), QLocale::LongFormat).toStdString();
    report.grids = makeFactGrids(bank, queries.facts(student));
    for (std::size_t subject = 0; subject < bank.subjects.size(); ++subject) {
        if (int(subject) == ArithmeticSubject)
            continue;
        const std::vector<MissedQuestion> missed =
            queries.missedQuestions(student, int(subject), std::nullopt, missedListed);
        if (missed.empty())
            continue;
        report.lists.push_back(missedQuestionsList(
            bank.subjects[subject].name + ": the questions missed most", missed));
    }
    return report;
}

FactsDialog::FactsDialog(HistoryQueries &queries, const TestBank &bank, int student,
                         const QString &name, Prompt &prompt, QWidget *parent)
    : QDialog(parent), m_prompt(prompt),
      m_report(makeFactsReport(queries, bank, student, name.toStdString(), MissedListed))
{
    setObjectName(QStringLiteral("frmFacts"));
    setWindowTitle(text(m_report.title));
    setFont(QFont(QStringLiteral("Arial"), 10));

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabFacts"));
    m_tabs->setAccessibleName(QStringLiteral("Facts by operation"));
    for (const FactGrid &grid : m_report.grids)
        m_tabs->addTab(buildGridTab(grid), capitalised(operationName(grid.operation)));
    m_tabs->addTab(buildMissedTab(), QStringLiteral("Questions Missed"));

    auto *buttons = new QDialogButtonBox(this);
    auto *print = buttons->addButton(QStringLiteral("&Print\u2026"), QDialogButtonBox::ActionRole);
    print->setObjectName(QStringLiteral("cmdPrint"));
    print->setAccessibleName(QStringLiteral("Print the facts"));
    auto *save =
        buttons->addButton(QStringLiteral("Save as P&DF\u2026"), QDialogButtonBox::ActionRole);
    save->setObjectName(QStringLiteral("cmdSavePdf"));
    save->setAccessibleName(QStringLiteral("Save the facts as a PDF file"));
    auto *close = buttons->addButton(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(print, &QPushButton::clicked, this, &FactsDialog::printReport);
    connect(save, &QPushButton::clicked, this, &FactsDialog::saveReport);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    auto *title = new QLabel(text(m_report.title), this);
    QFont big = title->font();
    big.setPointSize(14);
    big.setBold(true);
    title->setFont(big);
    layout->addWidget(title);
    layout->addWidget(buildLegend(this));
    layout->addWidget(m_tabs, 1);
    layout->addWidget(buttons);
    resize(640, 560);
}

QWidget *FactsDialog::buildLegend(QWidget *parent)
{
    auto *legend = new QWidget(parent);
    legend->setObjectName(QStringLiteral("legend"));
    auto *layout = new QHBoxLayout(legend);
    layout->setContentsMargins(0, 0, 0, 0);
    QStringList words;
    for (const Mastery mastery : MasteryLegend) {
        auto *swatch = new QLabel(masteryMark(mastery), legend);
        swatch->setAlignment(Qt::AlignCenter);
        swatch->setFixedSize(22, 22);
        swatch->setStyleSheet(
            QStringLiteral("background: %1; color: black; border: 1px solid #aaa;")
                .arg(masteryFill(mastery).name()));
        layout->addWidget(swatch);
        layout->addWidget(new QLabel(text(masteryName(mastery)), legend));
        layout->addSpacing(12);
        words << masteryMark(mastery) + QLatin1Char(' ') + text(masteryName(mastery));
    }
    layout->addStretch(1);
    legend->setAccessibleName(QStringLiteral("Key: ") + words.join(QStringLiteral(", ")));
    return legend;
}

QWidget *FactsDialog::buildGridTab(const FactGrid &grid)
{
    auto *page = new QWidget(m_tabs);
    auto *layout = new QVBoxLayout(page);
    auto *summary = new QLabel(text(grid.summary()), page);
    summary->setObjectName(QStringLiteral("lblSummary"));
    layout->addWidget(summary);
    if (grid.table && (grid.operation == 1 || grid.operation == 3)) {
        layout->addWidget(
            new QLabel(grid.operation == 1
                           ? QStringLiteral("Rows: the number taken away. Columns: the answer.")
                           : QStringLiteral("Rows: the number divided by. Columns: the answer."),
                       page));
    }

    auto *view = new QTableView(page);
    view->setObjectName(QStringLiteral("grdFacts"));
    view->setModel(new FactGridModel(grid, view));
    view->setAccessibleName(capitalised(operationName(grid.operation)) +
                            QStringLiteral(" facts. ") + text(grid.summary()));
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false);
    QFont marks = view->font();
    marks.setBold(true);
    view->setFont(marks);
    const int side = grid.table ? 30 : 84;
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->horizontalHeader()->setDefaultSectionSize(side);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(26);
    if (!grid.table)
        view->horizontalHeader()->hide();
    layout->addWidget(view, 1);
    return page;
}

QWidget *FactsDialog::buildMissedTab()
{
    auto *page = new QWidget(m_tabs);
    auto *layout = new QVBoxLayout(page);
    auto *table = new QTableWidget(page);
    table->setObjectName(QStringLiteral("grdMissed"));
    table->setAccessibleName(QStringLiteral("Multiple-choice questions missed most"));
    table->setColumnCount(5);
    table->setHorizontalHeaderLabels({QStringLiteral("Subject"), QStringLiteral("Question"),
                                      QStringLiteral("Right answer"), QStringLiteral("Missed"),
                                      QStringLiteral("Asked")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    for (const ReportList &list : m_report.lists) {
        const QString subject = text(list.heading.substr(0, list.heading.find(':')));
        for (const std::vector<std::string> &row : list.rows) {
            const int at = table->rowCount();
            table->insertRow(at);
            table->setItem(at, 0, new QTableWidgetItem(subject));
            for (int column = 0; column < 4; ++column)
                table->setItem(at, column + 1,
                               new QTableWidgetItem(text(row[std::size_t(column)])));
        }
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    if (table->rowCount() == 0)
        layout->addWidget(new QLabel(QStringLiteral("No multiple-choice questions missed."), page));
    layout->addWidget(table, 1);
    return page;
}

void FactsDialog::printReport()
{
    if (m_preview)
        m_preview(this, m_report);
    activateWindow();
}

void FactsDialog::saveReport()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString chosen = m_prompt.saveFileName(
        this, QStringLiteral("Save Facts"),
        QDir(documents).filePath(text(m_report.title).remove(QLatin1Char(':')) +
                                 QStringLiteral(".pdf")),
        QStringLiteral("PDF files (*.pdf)"));
    activateWindow();
    if (chosen.isEmpty())
        return;
    if (!chosen.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
        chosen += QStringLiteral(".pdf");
    if (const auto problem = saveFactsReportPdf(QDir(chosen).filesystemPath(), m_report))
        m_prompt.stop(this, QStringLiteral("Tavrino"), text(*problem));
}
