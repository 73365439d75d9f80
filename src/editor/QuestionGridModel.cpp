#include "QuestionGridModel.h"

#include <QStringList>

#include <array>

namespace {

const QStringList &headings()
{
    static const QStringList headings = {
        QStringLiteral("Level"),         QStringLiteral("Question"),
        QStringLiteral("Right Answer"),  QStringLiteral("Wrong Answer1"),
        QStringLiteral("Wrong Answer2"), QStringLiteral("Wrong Answer3"),
    };
    return headings;
}

constexpr std::array<std::string Question::*, 5> QuestionFields = {
    &Question::text, &Question::answer, &Question::wrong1, &Question::wrong2, &Question::wrong3,
};

} // namespace

std::string &questionField(Question &question, int field)
{
    return question.*QuestionFields.at(field - 1);
}

const std::string &questionField(const Question &question, int field)
{
    return question.*QuestionFields.at(field - 1);
}

QuestionGridModel::QuestionGridModel(const TestBank &bank, QObject *parent)
    : QAbstractTableModel(parent), m_bank(bank)
{
}

void QuestionGridModel::populate(int subject)
{
    beginResetModel();
    m_subject = subject;
    m_rows.clear();
    if (subject >= 0 && static_cast<std::size_t>(subject) < m_bank.limits.size()) {
        const SubjectLimits &limits = m_bank.limits[subject];
        for (int level = 0; level < LevelCount; ++level) {
            for (int slot = 0; slot <= limits.lastQuestion[level]; ++slot)
                m_rows.push_back({level, slot});
        }
    }
    endResetModel();
}

int QuestionGridModel::lastRowOfLevel(int level) const
{
    for (int row = static_cast<int>(m_rows.size()) - 1; row >= 0; --row) {
        if (m_rows[row].level == level)
            return row;
    }
    return -1;
}

void QuestionGridModel::fieldChanged(int row, int field)
{
    const QModelIndex cell = index(row, field);
    emit dataChanged(cell, cell, {Qt::DisplayRole});
}

int QuestionGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int QuestionGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant QuestionGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row &row = m_rows[index.row()];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        if (index.column() == LevelColumn)
            return role == Qt::DisplayRole ? QString::fromStdString(levelText(row.level))
                                           : QVariant();
        const Question &question = m_bank.questionBank[m_subject].items()[row.level][row.slot];
        return QString::fromStdString(questionField(question, index.column()));
    }
    if (role == Qt::TextAlignmentRole && index.column() == LevelColumn)
        return int(Qt::AlignCenter);
    return {};
}

QVariant QuestionGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < ColumnCount)
        return headings().at(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}
