#include "QuestionGridModel.h"

#include <QColor>
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

// A soft red behind a row that a child could not answer fairly.
const QColor FlaggedRowColour(255, 214, 214);

const std::array<const char *, QuestionProblems::AnswerCount> AnswerNames = {
    "the right answer", "wrong answer 1", "wrong answer 2", "wrong answer 3"};

QString capitalised(QString text)
{
    if (!text.isEmpty())
        text[0] = text[0].toUpper();
    return text;
}

// "a", "a and b", "a, b and c".
QString listed(const QStringList &items)
{
    if (items.size() < 2)
        return items.join(QString());
    return QStringList(items.mid(0, items.size() - 1)).join(QStringLiteral(", ")) +
           QStringLiteral(" and ") + items.last();
}

// Why a row is marked, one line per kind of problem.
QString describe(const QuestionProblems &problems)
{
    QStringList lines;
    if (problems.emptyText)
        lines << QStringLiteral("The question is empty: children would see only \"?\".");
    QStringList empty;
    for (int i = 0; i < QuestionProblems::AnswerCount; ++i)
        if (problems.emptyAnswers[i])
            empty << QString::fromLatin1(AnswerNames[i]);
    if (empty.size() == QuestionProblems::AnswerCount)
        lines << QStringLiteral("All four answers are empty: children would see empty buttons.");
    else if (empty.size() == 1)
        lines << capitalised(empty.first()) +
                     QStringLiteral(" is empty: children would see an empty button.");
    else if (!empty.isEmpty())
        lines << capitalised(listed(empty)) +
                     QStringLiteral(" are empty: children would see empty buttons.");
    for (int i = 0; i < QuestionProblems::AnswerCount; ++i)
        if (problems.repeats[i] >= 0)
            lines << capitalised(QString::fromLatin1(AnswerNames[i])) +
                         QStringLiteral(" is the same as %1: children would see two buttons alike.")
                             .arg(QString::fromLatin1(AnswerNames[problems.repeats[i]]));
    return lines.join(QLatin1Char('\n'));
}

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
    m_incomplete = 0;
    m_repeated = 0;
    if (subject >= 0 && static_cast<std::size_t>(subject) < m_bank.limits.size()) {
        const SubjectLimits &limits = m_bank.limits[subject];
        for (int level = 0; level < LevelCount; ++level) {
            for (int slot = 0; slot <= limits.lastQuestion[level]; ++slot) {
                Row row{level, slot, {}};
                row.problems = findProblems(questionOn(row), subject);
                count(row.problems, +1);
                m_rows.push_back(row);
            }
        }
    }
    endResetModel();
    emit problemsChanged();
}

const Question &QuestionGridModel::questionOn(const Row &row) const
{
    return m_bank.questionBank[m_subject].items()[row.level][row.slot];
}

void QuestionGridModel::count(const QuestionProblems &problems, int sign)
{
    if (problems.incomplete())
        m_incomplete += sign;
    else if (problems.repeated())
        m_repeated += sign;
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
    Row &changed = m_rows.at(row);
    const QuestionProblems problems = findProblems(questionOn(changed), m_subject);
    // A marked row may be marked for other reasons now, or no longer.
    const bool marksChanged = problems.any() || changed.problems.any();
    count(changed.problems, -1);
    changed.problems = problems;
    count(changed.problems, +1);
    if (marksChanged) {
        // The colour and tooltip of the whole row follow.
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
        emit problemsChanged();
    } else {
        const QModelIndex cell = index(row, field);
        emit dataChanged(cell, cell, {Qt::DisplayRole});
    }
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
    const bool text = index.column() != LevelColumn;
    switch (role) {
    case Qt::DisplayRole:
        return text ? QString::fromStdString(questionField(questionOn(row), index.column()))
                    : QString::fromStdString(levelText(row.level));
    case Qt::ToolTipRole: {
        // A marked row says why first, then, as every row, the cell's whole text.
        QStringList tip;
        if (row.problems.any())
            tip << describe(row.problems);
        if (text)
            tip << QString::fromStdString(questionField(questionOn(row), index.column()));
        tip.removeAll(QString());
        return tip.isEmpty() ? QVariant() : QVariant(tip.join(QStringLiteral("\n\n")));
    }
    case Qt::AccessibleDescriptionRole:
        return row.problems.any() ? QVariant(describe(row.problems)) : QVariant();
    case Qt::BackgroundRole:
        return row.problems.any() ? QVariant(FlaggedRowColour) : QVariant();
    case Qt::TextAlignmentRole:
        return text ? QVariant() : QVariant(int(Qt::AlignCenter));
    default:
        return {};
    }
}

QVariant QuestionGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < ColumnCount)
        return headings().at(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}
