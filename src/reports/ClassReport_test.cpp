// What the class report shows before it is drawn: which subjects get a table,
// each cell's Last, High and place on the level's scale, the colour scale
// itself, the class's name and the paper the report is printed on.
#include "reports/ClassReport.h"
#include "reports/HeatScale.h"
#include "reports/ReportPageSetup.h"

#include "core/StudentsFile.h"

#include <QRectF>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TestBank bankOf(const std::vector<std::string> &names)
{
    TestBank bank;
    for (const std::string &name : names)
        bank.subjects.push_back(Subject{name, false});
    bank.subjectMax = static_cast<int32_t>(names.size()) - 1;
    return bank;
}

Student studentOf(const std::string &name, int level, std::size_t subjects)
{
    Student student;
    student.name = name;
    student.level = static_cast<int16_t>(level);
    student.results.resize(subjects);
    return student;
}

void score(Student &student, std::size_t subject, int level, int last, int high)
{
    student.results[subject].last[level] = static_cast<int16_t>(last);
    student.results[subject].high[level] = static_cast<int16_t>(high);
}

double lightness(const QColor &colour)
{
    return colour.toHsl().lightnessF();
}

} // namespace

TEST(ClassReport, TablesForSubjectsWithResultsShadedOnEachLevelsRange)
{
    const TestBank bank = bankOf({"Arithmetic", "Spelling", "Music"});
    StudentRecords records;
    records.students = {studentOf(" Ann ", 2, 3), studentOf("Bo", 5, 3), studentOf("Cy", 0, 3),
                        studentOf("Di", 1, 3)};
    // Level 2 of Arithmetic: Highs 4, 10 and 7; Di has no result there.
    score(records.students[0], 0, 2, 3, 4);
    score(records.students[1], 0, 2, 10, 10);
    score(records.students[2], 0, 2, -2, 7);
    // Level 5: one result only. Level 12: a Last without a High counts as a result.
    score(records.students[1], 0, 5, 6, 6);
    score(records.students[3], 0, 12, -4, 0);
    // Music: two equal Highs. Spelling has no results at all.
    score(records.students[0], 2, 0, 5, 8);
    score(records.students[3], 2, 0, 8, 8);

    const ClassReport report = makeClassReport(bank, records, "Class results: 3B", "1 May 2026");
    EXPECT_EQ(report.title, "Class results: 3B");
    EXPECT_EQ(report.studentCount, 4u);
    ASSERT_EQ(report.tables.size(), 2u);
    const SubjectTable &arithmetic = report.tables[0];
    EXPECT_EQ(arithmetic.subject, "Arithmetic");
    EXPECT_EQ(report.tables[1].subject, "Music");

    // Every student has a row, in roster order, named as shown, at their own level.
    ASSERT_EQ(arithmetic.rows.size(), 4u);
    EXPECT_EQ(arithmetic.rows[0].name, "Ann");
    EXPECT_EQ(arithmetic.rows[1].level, 5);

    const LevelRange &two = arithmetic.ranges[2];
    EXPECT_TRUE(two.any);
    EXPECT_EQ(two.lowest, 4);
    EXPECT_EQ(two.highest, 10);
    EXPECT_DOUBLE_EQ(arithmetic.rows[0].cells[2].shade, 0.0);
    EXPECT_DOUBLE_EQ(arithmetic.rows[1].cells[2].shade, 1.0);
    EXPECT_DOUBLE_EQ(arithmetic.rows[2].cells[2].shade, 0.5);
    EXPECT_EQ(arithmetic.rows[2].cells[2].last, -2);
    EXPECT_FALSE(arithmetic.rows[3].cells[2].hasResult);
    EXPECT_FALSE(arithmetic.ranges[3].any);

    EXPECT_DOUBLE_EQ(arithmetic.rows[1].cells[5].shade, 0.5) << "alone at the level";
    EXPECT_TRUE(arithmetic.rows[3].cells[12].hasResult);
    EXPECT_EQ(arithmetic.ranges[12].highest, 0);
    EXPECT_DOUBLE_EQ(report.tables[1].rows[0].cells[0].shade, 0.5) << "equal Highs";
    EXPECT_DOUBLE_EQ(report.tables[1].rows[3].cells[0].shade, 0.5);
}

TEST(ClassReport, ShowsTheBanksSubjectsWhateverTheStudentsFileHolds)
{
    const TestBank bank = bankOf({"Arithmetic", "Spelling"});
    // Saved with three subjects, and with one: read with the bank's two.
    StudentRecords wide;
    wide.students = {studentOf("Wide", 0, 3)};
    score(wide.students[0], 2, 0, 9, 9); // a subject the bank no longer has
    score(wide.students[0], 1, 4, 1, 2);
    StudentRecords narrow;
    narrow.students = {studentOf("Narrow", 0, 1)};
    score(narrow.students[0], 0, 4, 1, 2);
    StudentRecords records;
    for (const StudentRecords *saved : {&wide, &narrow}) {
        std::string bytes;
        ASSERT_FALSE(encodeStudentsFile(*saved, "Tavrino_Students.dat", bytes).has_value());
        StudentRecords read;
        ASSERT_TRUE(decodeStudentsFile(read, bank, bytes, "Tavrino_Students.dat").ok());
        records.students.push_back(read.students.at(0));
    }

    const ClassReport report = makeClassReport(bank, records, "t", "d");
    ASSERT_EQ(report.tables.size(), 2u);
    EXPECT_EQ(report.tables[1].subject, "Spelling");
    ASSERT_EQ(report.tables[1].rows.size(), 2u);
    EXPECT_TRUE(report.tables[1].rows[0].cells[4].hasResult);
    EXPECT_FALSE(report.tables[1].rows[1].cells[4].hasResult) << "no results for Spelling yet";

    EXPECT_TRUE(makeClassReport(bank, StudentRecords(), "t", "d").tables.empty());
}

TEST(HeatScale, DarkensSteadilySoThatGreyPrintKeepsTheOrder)
{
    double previous = 2;
    for (int step = 0; step <= 100; ++step) {
        const QColor colour = heatColour(step / 100.0);
        EXPECT_LT(lightness(colour), previous) << step;
        previous = lightness(colour);
        // The number on a cell stays readable at every shade.
        EXPECT_GE(contrastRatio(colour, textColourOn(colour)), 4.5) << step;
        EXPECT_GT(colour.blue(), colour.red()) << "blue throughout, " << step;
    }
    // The lowest is still clearly tinted, apart from an empty white cell.
    EXPECT_LT(lightness(heatColour(0)), 0.9);
    EXPECT_GT(lightness(heatColour(0)) - lightness(heatColour(1)), 0.5);
    EXPECT_EQ(heatColour(-1), heatColour(0));
    EXPECT_EQ(heatColour(2), heatColour(1));
    EXPECT_EQ(textColourOn(heatColour(0)), QColor(Qt::black));
    EXPECT_EQ(textColourOn(heatColour(1)), QColor(Qt::white));
}

TEST(ClassReport, NamesTheClassAfterItsFolder)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"/home/kim/classes/3B", "3B"},
        {"/home/kim/classes/3B/", "3B"},
        {"/media/stick/Class 4A/data", "Class 4A"},
        {"/home/kim/.local/share/Tavrino/data/", "Tavrino"},
        {"/data", "data"},
    };
    for (const auto &[folder, name] : cases)
        EXPECT_EQ(className(folder), name) << folder;
}

TEST(ReportPageSetup, LandscapeInTheLocalesPaperSize)
{
    const std::vector<std::pair<QLocale, QPageSize::PageSizeId>> cases = {
        {QLocale(QLocale::English, QLocale::UnitedStates), QPageSize::Letter},
        {QLocale(QLocale::French, QLocale::Canada), QPageSize::Letter},
        {QLocale(QLocale::Spanish, QLocale::Mexico), QPageSize::Letter},
        {QLocale(QLocale::English, QLocale::UnitedKingdom), QPageSize::A4},
        {QLocale(QLocale::German, QLocale::Germany), QPageSize::A4},
        {QLocale(QLocale::English, QLocale::Australia), QPageSize::A4},
    };
    for (const auto &[locale, size] : cases) {
        EXPECT_EQ(localePaperSize(locale), size) << locale.name().toStdString();
        const QPageLayout layout = reportPageLayout(locale);
        EXPECT_EQ(layout.orientation(), QPageLayout::Landscape);
        EXPECT_EQ(layout.pageSize().id(), size);
        EXPECT_GT(layout.paintRect(QPageLayout::Point).width(),
                  layout.paintRect(QPageLayout::Point).height());
    }
}
