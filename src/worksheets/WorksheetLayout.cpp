#include "worksheets/WorksheetLayout.h"

#include "reports/PrintStyle.h"
#include "worksheets/Worksheet.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

using PrintStyle::text;

using Role = PlacedText::Role;

// Sizes in points. Children read the problems at their desks and write the
// answers by hand: large type, and room above every writing line.
constexpr std::array<double, PlacedText::RoleCount> Points = {
    22, // Heading
    14, // Label
    13, // Instruction
    18, // Number (set to the question's size for multiple choice)
    18, // Problem
    16, // Question
    15, // Choice
    14, // KeyEntry
    8,  // Footer
};
constexpr int MaxColumns = 3;
constexpr int MaxKeyColumns = 10;
constexpr double ProblemPitchLines = 1.9; // an Arithmetic row, in lines of its type
constexpr double ChoicePitchLines = 1.5;  // room to circle a letter
constexpr double BlockGapLines = 0.8;     // between multiple-choice questions
constexpr double KeyPitchLines = 1.4;
constexpr qsizetype KeyRun = 10; // key entries a column holds at the least
constexpr double NumberGap = 8;
constexpr double ColumnGap = 18;
constexpr double KeyColumnGap = 40;
constexpr double ChoiceGap = 14;
constexpr double HeadingGap = 10;
constexpr double LabelGap = 14;
constexpr double BodyGap = 16; // between the instruction and the first problem
constexpr double FooterGap = 8;
constexpr double LineDrop = 3;     // a writing line below the baseline of its label
constexpr double NameShare = 0.62; // of the width, for the name's line

const QString Separator = QStringLiteral("  \u00B7  ");

QString numbered(int index)
{
    return QStringLiteral("%1.").arg(index + 1);
}

} // namespace

WorksheetLayout::WorksheetLayout(const QPaintDevice &device, const Worksheet &sheet)
    : m_device(device), m_sheet(sheet)
{
    for (std::size_t role = 0; role < m_fonts.size(); ++role)
        m_fonts[role] = PrintStyle::font(Points[role]);
    m_fonts[static_cast<std::size_t>(Role::Heading)].setBold(true);
    m_fonts[static_cast<std::size_t>(Role::Instruction)].setItalic(true);
    m_fonts[static_cast<std::size_t>(Role::Number)] = PrintStyle::font(
        Points[static_cast<std::size_t>(sheet.isArithmetic() ? Role::Problem : Role::Question)],
        true);

    m_scale = std::max(1, device.logicalDpiY()) / 72.0;
    m_width = device.width() / m_scale;
    m_height = device.height() / m_scale;
    m_bodyBottom = m_height - metrics(Role::Footer).lineSpacing - FooterGap;
    m_numberWidth = textWidth(Role::Number, numbered(std::max(sheet.count() - 1, 0)));

    if (sheet.isArithmetic())
        layOutArithmetic();
    else
        layOutQuestions();
    if (sheet.answerKey)
        layOutKey();
    placeFooters();
}

WorksheetLayout::Metrics WorksheetLayout::metrics(Role role) const
{
    const QFontMetricsF measure(font(role), &m_device);
    return {measure.ascent() / m_scale, measure.descent() / m_scale,
            measure.lineSpacing() / m_scale};
}

double WorksheetLayout::textWidth(Role role, const QString &words) const
{
    return QFontMetricsF(font(role), &m_device).horizontalAdvance(words) / m_scale;
}

// Broken at word boundaries where there are any, anywhere in a word too long
// for a line; always at least one line.
QStringList WorksheetLayout::wrapped(Role role, const QString &words, double width) const
{
    QStringList lines;
    QTextLayout layout(words, font(role), &m_device);
    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapping);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1.0) * m_scale);
        lines.append(words.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    if (lines.isEmpty())
        lines.append(QString());
    return lines;
}

WorksheetPage &WorksheetLayout::newPage(bool key)
{
    WorksheetPage &page = m_pages.emplace_back();
    page.key = key;
    return page;
}

PlacedText WorksheetLayout::placed(Role role, const QString &words, double x, double baseline) const
{
    const Metrics m = metrics(role);
    return {role,
            words,
            {x, baseline},
            QRectF(x, baseline - m.ascent, textWidth(role, words), m.ascent + m.descent)};
}

void WorksheetLayout::place(Role role, const QString &words, double x, double baseline)
{
    m_pages.back().texts.push_back(placed(role, words, x, baseline));
}

void WorksheetLayout::placeRight(Role role, const QString &words, double right, double baseline)
{
    place(role, words, right - textWidth(role, words), baseline);
}

// A page's heading, shortened on paper too narrow for it; returns what is below it.
double WorksheetLayout::placeHeading(const QString &heading)
{
    const QFontMetricsF measure(font(Role::Heading), &m_device);
    place(Role::Heading, measure.elidedText(heading, Qt::ElideRight, m_width * m_scale), 0,
          measure.ascent() / m_scale);
    return measure.lineSpacing() / m_scale + HeadingGap;
}

// The heading, the lines for the name and the date, and what to do; returns
// where the problems begin.
double WorksheetLayout::placeHeader()
{
    double y = placeHeading(text(worksheetHeading(m_sheet)));

    const Metrics label = metrics(Role::Label);
    const double baseline = y + label.ascent;
    const QString name = QStringLiteral("Name:");
    const QString date = QStringLiteral("Date:");
    const double dateLeft = std::round(m_width * NameShare);
    place(Role::Label, name, 0, baseline);
    place(Role::Label, date, dateLeft, baseline);
    const double gap = textWidth(Role::Label, QStringLiteral(" "));
    WorksheetPage &page = m_pages.back();
    page.writingLines.emplace_back(textWidth(Role::Label, name) + gap, baseline + LineDrop,
                                   dateLeft - 3 * gap, baseline + LineDrop);
    page.writingLines.emplace_back(dateLeft + textWidth(Role::Label, date) + gap,
                                   baseline + LineDrop, m_width, baseline + LineDrop);
    y = baseline + label.descent + LabelGap;

    const Metrics instruction = metrics(Role::Instruction);
    for (const QString &line :
         wrapped(Role::Instruction, text(worksheetInstruction(m_sheet)), m_width)) {
        place(Role::Instruction, line, 0, y + instruction.ascent);
        y += instruction.lineSpacing;
    }
    return y + BodyGap;
}

// Row by row, as many columns as the widest problem leaves room for (up to
// three), each row tall enough to write a number above its line.
void WorksheetLayout::layOutArithmetic()
{
    newPage(false);
    double rowTop = placeHeader();

    QStringList problems;
    double widest = 0;
    for (const ArithmeticProblem &sum : m_sheet.sums) {
        problems.append(text(sheetProblemText(sum)));
        widest = std::max(widest, textWidth(Role::Problem, problems.back()));
    }
    const double cell = m_numberWidth + NumberGap + widest;
    m_columns =
        std::clamp(static_cast<int>((m_width + ColumnGap) / (cell + ColumnGap)), 1, MaxColumns);
    const double columnWidth = m_width / m_columns;
    const Metrics m = metrics(Role::Problem);
    const double pitch = m.lineSpacing * ProblemPitchLines;

    for (int i = 0; i < problems.size(); ++i) {
        const int column = i % m_columns;
        if (column == 0 && i > 0)
            rowTop += pitch;
        if (column == 0 && rowTop + pitch > m_bodyBottom && i > 0) {
            newPage(false);
            rowTop = 0;
        }
        const double baseline = rowTop + pitch - m.descent - LineDrop;
        const double left = column * columnWidth;
        placeRight(Role::Number, numbered(i), left + m_numberWidth, baseline);
        place(Role::Problem, problems[i], left + m_numberWidth + NumberGap, baseline);
    }
}

// One question after another, never split over two pages unless taller than a
// page: the question's lines, then its choices four to a row, two to a row, or
// one to a line, as they fit.
void WorksheetLayout::layOutQuestions()
{
    newPage(false);
    double y = placeHeader();
    bool pageHasQuestions = false;
    for (int i = 0; i < static_cast<int>(m_sheet.questions.size()); ++i) {
        const std::vector<Row> rows = questionRows(i);
        double height = 0;
        for (const Row &row : rows)
            height += row.height;
        if (pageHasQuestions && y + height > m_bodyBottom) {
            newPage(false);
            y = 0;
        }
        pageHasQuestions = true;
        for (const Row &row : rows) {
            if (y > 0 && y + row.height > m_bodyBottom) {
                newPage(false);
                y = 0;
            }
            for (const RowText &piece : row.texts)
                place(piece.role, piece.text, piece.x, y + piece.baseline);
            y += row.height;
        }
        y += metrics(Role::Question).lineSpacing * BlockGapLines;
    }
}

std::vector<WorksheetLayout::Row> WorksheetLayout::questionRows(int index) const
{
    const MultipleChoiceProblem &problem = m_sheet.questions[static_cast<std::size_t>(index)];
    const Metrics question = metrics(Role::Question);
    const Metrics choice = metrics(Role::Choice);
    const double left = m_numberWidth + NumberGap;
    const double room = m_width - left;
    std::vector<Row> rows;

    const QString number = numbered(index);
    for (const QString &line : wrapped(Role::Question, text(problem.label), room)) {
        Row &row = rows.emplace_back(Row{question.lineSpacing, {}});
        if (rows.size() == 1)
            row.texts.push_back({Role::Number, number,
                                 m_numberWidth - textWidth(Role::Number, number), question.ascent});
        row.texts.push_back({Role::Question, line, left, question.ascent});
    }

    std::array<QString, 4> letters;
    std::array<QString, 4> choices;
    double widest = 0;
    double indent = 0;
    for (std::size_t k = 0; k < choices.size(); ++k) {
        letters[k] = text(choiceLetter(static_cast<int>(k))) + QStringLiteral(". ");
        choices[k] = text(problem.choices[k]);
        widest = std::max(widest, textWidth(Role::Choice, letters[k] + choices[k]));
        indent = std::max(indent, textWidth(Role::Choice, letters[k]));
    }
    // Each choice has room above and below to circle it.
    const double pitch = choice.lineSpacing * ChoicePitchLines;
    const double pad = (pitch - choice.lineSpacing) / 2;
    const int perRow = widest <= room / 4 - ChoiceGap ? 4 : widest <= room / 2 - ChoiceGap ? 2 : 1;
    if (perRow > 1) {
        const double columnWidth = room / perRow;
        for (std::size_t k = 0; k < choices.size(); ++k) {
            const auto column = static_cast<int>(k % static_cast<std::size_t>(perRow));
            if (column == 0)
                rows.push_back(Row{pitch, {}});
            rows.back().texts.push_back({Role::Choice, letters[k] + choices[k],
                                         left + column * columnWidth, pad + choice.ascent});
        }
        return rows;
    }
    // One to a line, a long choice going on under its first word.
    for (std::size_t k = 0; k < choices.size(); ++k) {
        const QStringList lines = wrapped(Role::Choice, choices[k], room - indent);
        for (qsizetype n = 0; n < lines.size(); ++n) {
            const bool first = n == 0;
            const bool last = n + 1 == lines.size();
            Row &row = rows.emplace_back(
                Row{choice.lineSpacing + (first ? pad : 0) + (last ? pad : 0), {}});
            row.texts.push_back({Role::Choice, first ? letters[k] + lines[n] : lines[n],
                                 first ? left : left + indent, (first ? pad : 0) + choice.ascent});
        }
    }
    return rows;
}

// "N. answer" down each column and then across, on pages of their own.
void WorksheetLayout::layOutKey()
{
    QStringList entries;
    double widest = 0;
    const std::vector<std::string> answers = answerKey(m_sheet);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        entries.append(numbered(static_cast<int>(i)) + QLatin1Char(' ') + text(answers[i]));
        widest = std::max(widest, textWidth(Role::KeyEntry, entries.back()));
    }
    const int columns = std::clamp(
        static_cast<int>((m_width + KeyColumnGap) / (widest + KeyColumnGap)), 1, MaxKeyColumns);
    const double columnWidth = m_width / columns;
    const Metrics instruction = metrics(Role::Instruction);
    const Metrics entry = metrics(Role::KeyEntry);
    const double pitch = entry.lineSpacing * KeyPitchLines;

    qsizetype done = 0;
    do {
        newPage(true);
        double y = placeHeading(done == 0 ? QStringLiteral("Answer key")
                                          : QStringLiteral("Answer key (continued)"));
        place(Role::Instruction, text(worksheetHeading(m_sheet)), 0, y + instruction.ascent);
        y += instruction.lineSpacing + BodyGap;

        const auto rowsHere =
            std::max<qsizetype>(1, static_cast<qsizetype>((m_bodyBottom - y) / pitch));
        const qsizetype taken = std::min(rowsHere * columns, entries.size() - done);
        // Columns of ten, 1 to 10, 11 to 20, as a teacher marks, or longer
        // where ten would need more columns than fit.
        const qsizetype even = (taken + columns - 1) / columns;
        const qsizetype rows = std::min(rowsHere, (even + KeyRun - 1) / KeyRun * KeyRun);
        for (qsizetype j = 0; j < taken; ++j)
            place(Role::KeyEntry, entries[done + j], (j / rows) * columnWidth,
                  y + (j % rows) * pitch + entry.ascent);
        done += taken;
    } while (done < entries.size());
}

// Small, at the foot of every page: what the sheet is, the seed that makes it
// again, and the page.
void WorksheetLayout::placeFooters()
{
    const Metrics footer = metrics(Role::Footer);
    const double baseline = m_height - footer.descent;
    const QString heading = text(worksheetHeading(m_sheet));
    const QString seed = QStringLiteral("Seed %1").arg(m_sheet.seed);
    const QString about =
        QStringLiteral("Tavrino worksheet") + Separator + heading + Separator + seed;
    const QFontMetricsF measure(font(Role::Footer), &m_device);
    const auto total = static_cast<int>(m_pages.size());
    for (int index = 0; index < total; ++index) {
        std::vector<PlacedText> &texts = m_pages[static_cast<std::size_t>(index)].texts;
        const QString page = QStringLiteral("Page %1 of %2").arg(index + 1).arg(total);
        const double pageLeft = m_width - textWidth(Role::Footer, page);
        // On narrow paper the seed is kept and the subject shortened.
        const double room = (pageLeft - ColumnGap) * m_scale;
        QString left = measure.elidedText(about, Qt::ElideMiddle, room);
        if (left != about)
            left = measure.elidedText(seed + Separator + heading, Qt::ElideRight, room);
        texts.push_back(placed(Role::Footer, left, 0, baseline));
        texts.push_back(placed(Role::Footer, page, pageLeft, baseline));
    }
}
