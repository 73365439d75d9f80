// A worksheet laid out on the pages of a paged device: every text and writing
// line placed, so that the PDF of the command line and the print preview (and
// so the printer) show the same pages, and tests can read what lands where.
#pragma once

#include <QFont>
#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <array>
#include <vector>

class QPaintDevice;
struct Worksheet;

struct PlacedText {
    enum class Role {
        Heading,     // subject and level, or "Answer key"
        Label,       // "Name:" and "Date:"
        Instruction, // what to do, under the heading
        Number,      // "12." before a problem
        Problem,     // an Arithmetic problem
        Question,    // a line of a multiple-choice question
        Choice,      // "B. Paris", or a further line of a long one
        KeyEntry,    // "12. 7" or "12. C"
        Footer,
    };
    static constexpr int RoleCount = 9;

    Role role = Role::Problem;
    QString text;
    QPointF baseline; // points from the printable area's top left
    QRectF bounds;    // the text's box, in points
};

struct WorksheetPage {
    bool key = false; // a page of the answer key
    std::vector<PlacedText> texts;
    std::vector<QLineF> writingLines; // in points
};

class WorksheetLayout {
public:
    // Lays the sheet out on the device's printable area, measuring text with its
    // fonts. The sheet must outlive the layout.
    WorksheetLayout(const QPaintDevice &device, const Worksheet &sheet);

    const std::vector<WorksheetPage> &pages() const { return m_pages; }
    const QFont &font(PlacedText::Role role) const
    {
        return m_fonts[static_cast<std::size_t>(role)];
    }
    // How many Arithmetic problems stand side by side (1 for multiple choice).
    int columns() const { return m_columns; }
    // The printable area in points.
    double width() const { return m_width; }
    double height() const { return m_height; }

private:
    // A line of a multiple-choice question: what goes on it, relative to its top.
    struct RowText {
        PlacedText::Role role;
        QString text;
        double x = 0;
        double baseline = 0;
    };
    struct Row {
        double height = 0;
        std::vector<RowText> texts;
    };
    struct Metrics {
        double ascent = 0;
        double descent = 0;
        double lineSpacing = 0;
    };
    Metrics metrics(PlacedText::Role role) const;
    double textWidth(PlacedText::Role role, const QString &text) const;
    QStringList wrapped(PlacedText::Role role, const QString &text, double width) const;

    WorksheetPage &newPage(bool key);
    PlacedText placed(PlacedText::Role role, const QString &text, double x, double baseline) const;
    // On the newest page.
    void place(PlacedText::Role role, const QString &text, double x, double baseline);
    void placeRight(PlacedText::Role role, const QString &text, double right, double baseline);
    double placeHeading(const QString &heading);
    double placeHeader();
    void layOutArithmetic();
    void layOutQuestions();
    std::vector<Row> questionRows(int index) const;
    void layOutKey();
    void placeFooters();

    const QPaintDevice &m_device;
    const Worksheet &m_sheet;
    double m_scale = 1; // device pixels per point
    double m_width = 0;
    double m_height = 0;
    double m_bodyBottom = 0;  // where the footer's room begins
    double m_numberWidth = 0; // the right-aligned problem numbers' column
    int m_columns = 1;
    std::array<QFont, PlacedText::RoleCount> m_fonts;
    std::vector<WorksheetPage> m_pages;
};
