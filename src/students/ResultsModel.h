// The contents of the results grid: a header row, then a Last row and a High row
// for every subject of one student or for every student in one subject.
#pragma once

#include <QAbstractTableModel>
#include <QFont>

struct StudentRecords;
struct TestBank;

class ResultsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int ColumnCount = 15;
    static constexpr int NameColumn = 0;
    static constexpr int LastHighColumn = 1;
    static constexpr int FirstLevelColumn = 2;

    // What the grid shows; the scores themselves are read from the records.
    struct Selection {
        bool byStudent = true;
        int student = -1; // the selected student (list index)
        int subject = 0;  // the current subject
    };

    ResultsModel(const StudentRecords &records, const TestBank &bank, QObject *parent = nullptr);

    // Shows the scores for a new selection, in one reset of the whole model.
    void show(const Selection &selection);
    void setFont(const QFont &font);
    // A student's name changed; only the subject mode lists students by name.
    void studentRenamed(int student);

    // Item i (a subject or a student) takes rows 2i + 1 (Last) and 2i + 2 (High).
    static int lastRowOf(int item) { return 2 * item + 1; }
    // The subject (by student) or the student (by subject) painted yellow.
    int highlightedItem() const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    // The view shows row 0 as its fixed column header.
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    int itemCount() const;
    QString text(int row, int column) const;
    bool isBold(int row, int column) const;
    int score(int item, bool high, int level) const;

    const StudentRecords &m_records;
    const TestBank &m_bank;
    Selection m_selection;
    int m_items = 0;
    int m_boldColumn = -1;
    QFont m_font;
    QFont m_boldFont;
};
