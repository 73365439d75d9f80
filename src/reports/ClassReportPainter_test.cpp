// The report drawn with real fonts: long names wrapped to the name column and
// never cut, the pages the layout plans are the pages the PDF holds, a device
// that cannot be written is reported, and scores drawn as runs of glyphs land
// where their text would.
#include "reports/ClassReportPainter.h"
#include "reports/ReportPageSetup.h"
#include "reports/ScoreGlyphs.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

ClassReport reportOf(const std::vector<std::string> &names, std::size_t subjects)
{
    TestBank bank;
    StudentRecords records;
    for (std::size_t s = 0; s < subjects; ++s)
        bank.subjects.push_back(Subject{"Subject " + std::to_string(s), false});
    bank.subjectMax = static_cast<int32_t>(subjects) - 1;
    for (std::size_t i = 0; i < names.size(); ++i) {
        Student student;
        student.name = names[i];
        student.level = static_cast<int16_t>(i % LevelCount);
        student.results.resize(subjects);
        for (SubjectResults &results : student.results)
            for (int level = 0; level < LevelCount; ++level) {
                results.last[level] = static_cast<int16_t>((i * 7 + level) % 40);
                results.high[level] = static_cast<int16_t>((i * 7 + level) % 40 + 5);
            }
        records.students.push_back(student);
    }
    return makeClassReport(bank, records, "Class results: 3B", "1 May 2026");
}

QString withoutSpaces(QString text)
{
    return text.remove(QLatin1Char(' '));
}

// Pages in a PDF Qt wrote: one "/Type /Page" object each, beside one "/Type /Pages".
int pdfPages(const QByteArray &pdf)
{
    return static_cast<int>(pdf.count("/Type /Page")) - static_cast<int>(pdf.count("/Type /Pages"));
}

} // namespace

TEST(ClassReportPainter, LongNamesWrapInTheNameColumnAndAreNeverCut)
{
    const std::vector<std::string> names = {
        "Ann",
        "Maximiliana Genoveva Wolfeschlegelsteinhausen-Bergerdorff de la Cruz",
        std::string(90, 'W'), // one word longer than the column
        "",
    };
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter writer(&pdf);
    writer.setPageLayout(reportPageLayout(QLocale(QLocale::English, QLocale::UnitedKingdom)));
    const ClassReport report = reportOf(names, 1);
    const ClassReportPainter painter(writer, report);

    QFont nameFont(QStringLiteral("Arial"));
    nameFont.setPointSizeF(9);
    const QFontMetricsF metrics(nameFont, &writer);
    const double scale = writer.logicalDpiY() / 72.0;
    const double column = painter.nameColumnWidth() * scale;
    const std::vector<double> &heights = painter.pagination().rowHeights;

    EXPECT_EQ(painter.nameLines(0), QStringList{QStringLiteral("Ann")});
    for (std::size_t i = 1; i < 3; ++i) {
        const QStringList &lines = painter.nameLines(i);
        EXPECT_GE(lines.size(), 2) << i;
        for (const QString &line : lines)
            EXPECT_LE(metrics.horizontalAdvance(line), column) << line.toStdString();
        EXPECT_EQ(withoutSpaces(lines.join(QString())),
                  withoutSpaces(QString::fromStdString(names[i])));
        // The row grows to hold every line.
        EXPECT_GE(heights[i] * scale, lines.size() * metrics.lineSpacing()) << i;
        EXPECT_GT(heights[i], heights[0]) << i;
    }
    EXPECT_EQ(heights[3], heights[0]) << "a nameless student keeps an ordinary row";
}

TEST(ClassReportPainter, DrawsThePagesItPlansOnThePapersOfTheLocale)
{
    // 60 students with long names over six subjects: tables run over pages.
    std::vector<std::string> names;
    for (int i = 0; i < 60; ++i)
        names.push_back("Student " + std::to_string(i) +
                        (i % 3 ? "" : " Alexandra-Josephine van Rensburg"));
    const ClassReport report = reportOf(names, 6);

    std::vector<double> widths;
    for (const QLocale &locale : {QLocale(QLocale::English, QLocale::UnitedKingdom),
                                  QLocale(QLocale::English, QLocale::UnitedStates)}) {
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        {
            QPdfWriter writer(&pdf);
            writer.setPageLayout(reportPageLayout(locale));
            ClassReportPainter painter(writer, report);
            EXPECT_GT(painter.pageCount(), 6);
            // Each subject's table continues on the pages after its first.
            std::size_t continued = 0;
            for (const ReportPage &page : painter.pagination().pages)
                for (const TableSegment &segment : page.segments)
                    continued += segment.continued;
            EXPECT_GE(continued, 6u);
            ASSERT_TRUE(painter.paint());
            EXPECT_EQ(pdfPages(pdf.data()), painter.pageCount());
            widths.push_back(writer.width() / (writer.logicalDpiX() / 72.0));
        }
        EXPECT_TRUE(pdf.data().startsWith("%PDF"));
    }
    // A4 is the longer page: 297 mm against Letter's 279 mm, less the same margins.
    EXPECT_NEAR(widths[0] - widths[1], (297.0 - 279.4) / 25.4 * 72, 1.0);
}

TEST(ClassReportPainter, ANoteInsteadOfTablesWhenThereAreNoResults)
{
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter writer(&pdf);
    const ClassReport report = reportOf({"Ann", "Bo"}, 0);
    ClassReportPainter painter(writer, report);
    EXPECT_EQ(painter.pageCount(), 1);
    EXPECT_TRUE(painter.paint());
    EXPECT_EQ(pdfPages(pdf.data()), 1);
}

TEST(ClassReportPainter, FailsWhenTheFileCannotBeWritten)
{
    QPdfWriter writer(QStringLiteral("/nonexistent-folder-of-tavrino/report.pdf"));
    const ClassReport report = reportOf({"Ann"}, 1);
    EXPECT_FALSE(ClassReportPainter(writer, report).paint());
}

TEST(ScoreGlyphs, RunsOfScoresLandWhereTheirTextWould)
{
    // The same scores drawn one text at a time and as one run of glyphs.
    QImage asText(400, 120, QImage::Format_RGB32);
    QImage asRun(asText.size(), asText.format());
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(20);
    const std::vector<std::pair<int, QPointF>> scores = {
        {7, {10, 30}}, {-12, {60, 30}}, {105, {150, 30}}, {0, {10, 90}}, {-32768, {200, 90}}};

    for (QImage *image : {&asText, &asRun}) {
        image->fill(Qt::white);
        ScoreGlyphs glyphs(font, *image);
        QPainter painter(image);
        painter.setPen(Qt::black);
        painter.setFont(font);
        ScoreGlyphs::Line line(glyphs);
        for (const auto &[score, origin] : scores) {
            if (image == &asText)
                painter.drawText(origin, glyphs.text(score));
            else
                line.add(score, origin);
        }
        line.draw(painter);
    }
    auto ink = [](const QImage &image) {
        QRect bounds;
        int dark = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qGray(image.pixel(x, y)) < 128) {
                    bounds |= QRect(x, y, 1, 1);
                    ++dark;
                }
        return std::make_pair(bounds, dark);
    };
    const auto [textBounds, textDark] = ink(asText);
    const auto [runBounds, runDark] = ink(asRun);
    EXPECT_GT(textDark, 200);
    EXPECT_LE((textBounds.topLeft() - runBounds.topLeft()).manhattanLength(), 1);
    EXPECT_LE((textBounds.bottomRight() - runBounds.bottomRight()).manhattanLength(), 1);
    EXPECT_NEAR(runDark, textDark, textDark * 0.03);

    ScoreGlyphs glyphs(font, asText);
    EXPECT_NEAR(glyphs.width(-12), QFontMetricsF(font, &asText).horizontalAdvance("-12"), 0.5);
}
