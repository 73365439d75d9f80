// Progress: one student's score in each test over time, in the subject and at
// the level chosen on the Students screen, with the High as a line across the
// chart and the same figures as a table beside it for keyboard and
// screen-reader users. From here the teacher also reaches the history that
// matches no student.
#pragma once

#include "ProgressTable.h"

#include <QDialog>

#include <functional>

class QChart;
class QChartView;
class QComboBox;
class QLabel;
class QPushButton;
class QTableView;
class UnmatchedHistoryDialog;
struct Session;

class ProgressDialog : public QDialog {
    Q_OBJECT
public:
    ProgressDialog(Session &session, int student, int level, QWidget *parent = nullptr);
    ~ProgressDialog() override;

    // Opens the dialog of history that matches no student; the default runs it
    // modally, tests drive it instead.
    using NotMatchedShower = std::function<void(UnmatchedHistoryDialog &dialog)>;
    void setNotMatchedShower(NotMatchedShower show);

    // The list of spans was changed: the chart and the table show that span.
    void chooseSpan();
    void showNotMatched();

    // What the chart and the table show now: the tests, oldest first, and the High.
    const std::vector<TestSummary> &shownTests() const;
    int high() const { return m_high; }

private:
    void buildChart();
    void showTests();
    void drawChart(const std::vector<TestSummary> &tests, LocalSeconds now);
    QString noTestsSentence(ProgressSpan span) const;

    Session &m_session;
    int m_student;
    int m_subject;
    int m_level;
    int m_high = 0;
    NotMatchedShower m_showNotMatched;

    QLabel *m_heading = nullptr;
    QComboBox *m_spanList = nullptr;
    QLabel *m_noTests = nullptr;
    QWidget *m_figures = nullptr;
    QChart *m_chart = nullptr;
    QChartView *m_chartView = nullptr;
    QTableView *m_table = nullptr;
    ProgressTableModel *m_model = nullptr;
    QPushButton *m_notMatchedButton = nullptr;
    QPushButton *m_closeButton = nullptr;
};
