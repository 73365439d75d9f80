// The rows of the question grid: every stored question of one subject, level
// by level, read straight from the test bank so that a large subject costs
// nothing until its rows are drawn.
#pragma once

#include "QuestionProblems.h"
#include "core/TestBank.h"

#include <QAbstractTableModel>

#include <string>
#include <vector>

// The text of a question's field 1..5 (text, answer, wrong1, wrong2, wrong3),
// which is also its grid column.
std::string &questionField(Question &question, int field);
const std::string &questionField(const Question &question, int field);

class QuestionGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // Column 0 is the level, columns 1..5 the five texts of a question.
    static constexpr int LevelColumn = 0;
    static constexpr int ColumnCount = 6;

    explicit QuestionGridModel(const TestBank &bank, QObject *parent = nullptr);

    // Lists the questions in use of the subject afresh (one model reset).
    void populate(int subject);

    int subject() const { return m_subject; }
    int levelOf(int row) const { return m_rows.at(row).level; }
    // The question's index within its level (the row's hidden data).
    int slotOf(int row) const { return m_rows.at(row).slot; }
    // The last row of the level, or -1 when the level has no question.
    int lastRowOfLevel(int level) const;

    // The bank's text of the question on the row changed: redraw that one cell,
    // and the row's marks when it became answerable or stopped being so.
    void fieldChanged(int row, int field);

    // Rows are marked (colour and tooltip) when a child could not answer their
    // question fairly. Counted apart: questions with an empty part, and the
    // others that show the same answer twice.
    const QuestionProblems &problemsOf(int row) const { return m_rows.at(row).problems; }
    int incompleteCount() const { return m_incomplete; }
    int repeatedCount() const { return m_repeated; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

signals:
    // The counts of incomplete or repeated questions may have changed.
    void problemsChanged();

private:
    struct Row {
        int level;
        int slot;
        QuestionProblems problems;
    };

    const Question &questionOn(const Row &row) const;
    void count(const QuestionProblems &problems, int sign);

    const TestBank &m_bank;
    int m_subject = -1;
    std::vector<Row> m_rows;
    int m_incomplete = 0;
    int m_repeated = 0;
};
