// The figures of the Progress view: which of a student's tests it shows, over
// which span of time, and the table that lists them beside the chart for
// keyboard and screen-reader users.
#pragma once

#include "core/HistoryTypes.h"

#include <QAbstractTableModel>
#include <QDateTime>

#include <vector>

enum class ProgressSpan { LastMonth, LastYear, All };

// The tests started from the same day and time a month (or a year) before now,
// or all of them.
DateRange progressRange(ProgressSpan span, LocalSeconds now);

// The tests that count as the scores of the Students screen do: those that ran
// out or were stopped. Practice rounds score nothing, and a test the program
// never finished had no score.
std::vector<TestSummary> scoredTests(const std::vector<TestSummary> &tests);

// A history date on the local wall clock, as Qt shows and plots dates.
QDateTime localDateTime(LocalSeconds seconds);

class ProgressTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { DateColumn, ScoreColumn, RightColumn, WrongColumn, EndColumn, ColumnCount };

    explicit ProgressTableModel(QObject *parent = nullptr);

    void show(std::vector<TestSummary> tests);
    const std::vector<TestSummary> &tests() const { return m_tests; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    std::vector<TestSummary> m_tests;
};
