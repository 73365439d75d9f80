#include "ArithmeticGridModel.h"

#include "core/TestBank.h"

#include <QBrush>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPalette>
#include <QTableView>

#include <algorithm>

namespace {

const char *const OperationNames[OperationCount] = {"Addition", "Subtraction", "Multiplication",
                                                    "Division"};

// Subtraction and division are generated backwards from the second number and
// the result, so their ranges are named after those.
const char *const ForwardNumbers[4] = {"Number 1", "Number 1", "Number 2", "Number 2"};
const char *const BackwardNumbers[4] = {"2nd Number", "2nd Number", "Result", "Result"};

// The operation a range column belongs to, or -1 for the level and switch columns.
int operationOfColumn(int column)
{
    return column >= 1 && column <= 4 * OperationCount ? (column - 1) / 4 : -1;
}

bool isOn(const TestBank &bank, int level, int operation)
{
    return bank.arithOps[level].find(OpSymbols[operation]) != std::string::npos;
}

} // namespace

ArithmeticGridModel::ArithmeticGridModel(const TestBank &bank, QObject *parent)
    : QAbstractTableModel(parent), m_bank(bank)
{
}

void ArithmeticGridModel::refresh()
{
    emit dataChanged(index(HeadingRows, 0), index(rowCount() - 1, ColumnCount - 1));
}

int ArithmeticGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : HeadingRows + LevelCount;
}

int ArithmeticGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ArithmeticGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const int row = index.row();
    const int column = index.column();
    const bool heading = row < HeadingRows;
    const int level = row - HeadingRows;

    switch (role) {
    case Qt::DisplayRole:
        return heading ? headingText(row, column) : levelRowText(level, column);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignCenter);
    case Qt::FontRole:
        // Operation names and the ranges of operations that are on stand out.
        if ((row == 0 && operationOfColumn(column) >= 0) ||
            (!heading && isOperationCell(level, column))) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    case Qt::BackgroundRole:
        // Headings and the level column look like the fixed parts of a grid.
        if (heading || column == 0) {
            return QBrush(QGuiApplication::palette().color(QPalette::Button).darker(106));
        }
        return {};
    case Qt::ForegroundRole:
        if (heading) {
            // Heading cells are disabled so they cannot be chosen; keep their text dark.
            return QGuiApplication::palette().brush(QPalette::ButtonText);
        }
        if (operationOfColumn(column) >= 0 && !isOperationCell(level, column)) {
            return QBrush(Qt::gray);
        }
        return {};
    default:
        return {};
    }
}

Qt::ItemFlags ArithmeticGridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() < HeadingRows) {
        return Qt::NoItemFlags;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

QString ArithmeticGridModel::headingText(int row, int column) const
{
    if (column == 0) {
        return QStringLiteral("Level");
    }
    const int operation = operationOfColumn(column);
    if (operation >= 0) {
        const int within = (column - 1) % 4;
        switch (row) {
        case 0:
            return QString::fromLatin1(OperationNames[operation]);
        case 1: {
            const bool backward = operation == 1 || operation == 3;
            return QString::fromLatin1(backward ? BackwardNumbers[within] : ForwardNumbers[within]);
        }
        default:
            return within % 2 == 0 ? QStringLiteral("Low") : QStringLiteral("High");
        }
    }
    switch (row) {
    case 0:
        return QStringLiteral("Alternate position of");
    case 1:
        return column == SwitchNumbersColumn ? QStringLiteral("Numbers?")
                                             : QStringLiteral("'Blank'?");
    default:
        return QStringLiteral(" ");
    }
}

QString ArithmeticGridModel::levelRowText(int level, int column) const
{
    if (column == 0) {
        return QString::fromStdString(levelText(level));
    }
    if (column == SwitchNumbersColumn || column == SwitchBlanksColumn) {
        const int which = column == SwitchNumbersColumn ? SwitchNumbers : SwitchBlanks;
        return m_bank.arithSwitch[level][which] ? QStringLiteral("Yes") : QStringLiteral("No");
    }
    const int operation = operationOfColumn(column);
    if (!isOn(m_bank, level, operation)) {
        return QStringLiteral("Off");
    }
    const RangeTable *const tables[4] = {&m_bank.arithLow1, &m_bank.arithHigh1, &m_bank.arithLow2,
                                         &m_bank.arithHigh2};
    const RangeTable &table = *tables[(column - 1) % 4];
    return QString::number(table[level][operation]);
}

bool ArithmeticGridModel::isOperationCell(int level, int column) const
{
    const int operation = operationOfColumn(column);
    return operation >= 0 && isOn(m_bank, level, operation);
}

void shapeArithmeticGrid(QTableView &view)
{
    const QAbstractItemModel *model = view.model();
    view.horizontalHeader()->hide();
    view.verticalHeader()->hide();
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setWordWrap(false);

    // Headings that repeat over neighbouring cells are drawn once across them.
    view.setSpan(0, 0, ArithmeticGridModel::HeadingRows, 1);
    for (int operation = 0; operation < OperationCount; ++operation) {
        const int first = ArithmeticGridModel::firstColumn(operation);
        view.setSpan(0, first, 1, 4);
        view.setSpan(1, first, 1, 2);
        view.setSpan(1, first + 2, 1, 2);
    }
    view.setSpan(0, ArithmeticGridModel::SwitchNumbersColumn, 1, 2);
    view.setSpan(1, ArithmeticGridModel::SwitchNumbersColumn, 2, 1);
    view.setSpan(1, ArithmeticGridModel::SwitchBlanksColumn, 2, 1);

    // Columns as narrow as their texts allow; a spanned heading decides the
    // width of the columns beneath it.
    const QFontMetrics plain(view.font());
    QFont boldFont = view.font();
    boldFont.setBold(true);
    const QFontMetrics bold(boldFont);
    const int padding = plain.horizontalAdvance(QLatin1Char('0')) + 4;
    auto width = [&](const char *text) { return plain.horizontalAdvance(QLatin1String(text)); };

    int rangeWidth = std::max({width("High"), width("Off"), bold.horizontalAdvance("30")});
    rangeWidth = std::max({rangeWidth, width("2nd Number") / 2, width("Multiplication") / 4});
    rangeWidth += padding;
    int switchWidth = std::max({width("Numbers?"), width("'Blank'?"), bold.horizontalAdvance("Yes"),
                                width("Alternate position of") / 2});
    switchWidth += padding;

    view.setColumnWidth(0, width("Level") + padding);
    for (int column = 1; column < ArithmeticGridModel::SwitchNumbersColumn; ++column) {
        view.setColumnWidth(column, rangeWidth);
    }
    view.setColumnWidth(ArithmeticGridModel::SwitchNumbersColumn, switchWidth);
    view.setColumnWidth(ArithmeticGridModel::SwitchBlanksColumn, switchWidth);
    // No lower than the header allows, or the rows would come out taller than
    // the grid's fixed height counts them.
    const int rowHeight = std::max(plain.height() + 4, view.verticalHeader()->minimumSectionSize());
    for (int row = 0; row < model->rowCount(); ++row) {
        view.setRowHeight(row, rowHeight);
    }

    // Every row and column is shown at once: nothing scrolls the headings away.
    int gridWidth = 2 * view.frameWidth();
    for (int column = 0; column < model->columnCount(); ++column) {
        gridWidth += view.columnWidth(column);
    }
    view.setFixedSize(gridWidth, 2 * view.frameWidth() + rowHeight * model->rowCount());
}
