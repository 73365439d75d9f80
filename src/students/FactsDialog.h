// The Facts view of one student: a fluency grid for each operation the student
// has answered, coloured and marked by how well each fact is known, and the
// multiple-choice questions the student misses most; to print or save as PDF.
#pragma once

#include "reports/FactsReport.h"

#include <QDialog>

#include <functional>

class HistoryQueries;
class Prompt;
class QTabWidget;
struct TestBank;

class FactsDialog : public QDialog {
    Q_OBJECT
public:
    // The questions listed per subject.
    static constexpr int MissedListed = 10;

    FactsDialog(HistoryQueries &queries, const TestBank &bank, int student, const QString &name,
                Prompt &prompt, QWidget *parent = nullptr);

    const FactsReport &report() const { return m_report; }
    QTabWidget *tabs() const { return m_tabs; }

    // Print… and Save as PDF…; public so that tests can drive them.
    void printReport();
    void saveReport();
    // Tests replace the print preview so that nothing blocks.
    using Previewer = std::function<void(QWidget *parent, const FactsReport &report)>;
    void setPreviewer(Previewer previewer) { m_preview = std::move(previewer); }

private:
    QWidget *buildGridTab(const FactGrid &grid);
    QWidget *buildMissedTab();
    QWidget *buildLegend(QWidget *parent);

    Prompt &m_prompt;
    FactsReport m_report;
    Previewer m_preview = previewFactsReport;
    QTabWidget *m_tabs = nullptr;
};

// The report of a student's facts, as the view and its printout show it.
FactsReport makeFactsReport(HistoryQueries &queries, const TestBank &bank, int student,
                            const std::string &name, int missedListed);
