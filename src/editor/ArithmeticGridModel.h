// The levels grid of the Arithmetic settings: three heading rows, then one row
// per level with every operation's ranges and the two switches, read live from the bank.
#pragma once

#include <QAbstractTableModel>

class QTableView;

struct TestBank;

class ArithmeticGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // The first level sits below the heading rows: row = level + HeadingRows.
    static constexpr int HeadingRows = 3;
    static constexpr int ColumnCount = 19;
    static constexpr int SwitchNumbersColumn = 17;
    static constexpr int SwitchBlanksColumn = 18;

    // The first of the four columns of an operation: Number 1 low, Number 1 high,
    // Number 2 low, Number 2 high.
    static constexpr int firstColumn(int operation) { return 4 * operation + 1; }

    explicit ArithmeticGridModel(const TestBank &bank, QObject *parent = nullptr);

    // Tells the views that the bank changed.
    void refresh();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QString headingText(int row, int column) const;
    QString levelRowText(int level, int column) const;
    bool isOperationCell(int level, int column) const;

    const TestBank &m_bank;
};

// Sets a view over the model up like a fixed grid: headings spanning their
// columns, narrow columns, and a size that shows every cell without scrolling.
void shapeArithmeticGrid(QTableView &view);
