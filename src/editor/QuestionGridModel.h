// The rows of the question grid: every stored question of one subject, level
// by level, read straight from the test bank so that a large subject costs
// nothing until its rows are drawn.
#pragma once

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

    // The bank's text of the question on the row changed: redraw that one cell.
    void fieldChanged(int row, int field);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Row {
        int level;
        int slot;
    };

    const TestBank &m_bank;
    int m_subject = -1;
    std::vector<Row> m_rows;
};
