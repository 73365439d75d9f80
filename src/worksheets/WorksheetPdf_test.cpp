// The worksheet as a PDF file: the same bytes for the same seed, and text that
// a PDF reader reads back with each number beside its problem and each key
// entry as "N. answer".
#include "worksheets/WorksheetPdf.h"

#include "core/DefaultBank.h"
#include "testsupport/TempDataDir.h"
#include "worksheets/Worksheet.h"

#include <QBuffer>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TestBank defaultBank()
{
    TestBank bank;
    buildDefaultTests(bank);
    return bank;
}

Worksheet sheetOf(const TestBank &bank, int subject, int level, int count)
{
    WorksheetSettings settings;
    settings.count = count;
    settings.seed = 2024;
    return makeWorksheet(bank, subject, level, settings);
}

QByteArray pdfOf(const Worksheet &sheet)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(writeWorksheetPdf(buffer, sheet));
    return buffer.data();
}

// What pdftotext -layout reads from the file, or nothing when it is not installed.
std::optional<QString> textOf(const QByteArray &pdf)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (program.isEmpty())
        return std::nullopt;
    QProcess reader;
    reader.start(program, {QStringLiteral("-layout"), QStringLiteral("-"), QStringLiteral("-")});
    reader.write(pdf);
    reader.closeWriteChannel();
    EXPECT_TRUE(reader.waitForFinished(30000));
    EXPECT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().toStdString();
    return QString::fromUtf8(reader.readAllStandardOutput());
}

QString escaped(const std::string &text)
{
    return QRegularExpression::escape(QString::fromStdString(text));
}

} // namespace

TEST(WorksheetPdf, TheSameSheetGivesTheSameBytesWithoutADate)
{
    const TestBank bank = defaultBank();
    const QByteArray first = pdfOf(sheetOf(bank, ArithmeticSubject, 2, 60));
    EXPECT_TRUE(first.startsWith("%PDF-"));
    EXPECT_TRUE(first.trimmed().endsWith("%%EOF"));
    EXPECT_FALSE(first.contains("CreationDate"));
    EXPECT_EQ(pdfOf(sheetOf(bank, ArithmeticSubject, 2, 60)), first);
    EXPECT_NE(pdfOf(sheetOf(bank, ArithmeticSubject, 3, 60)), first);
}

TEST(WorksheetPdf, AReaderKeepsEachNumberWithItsProblemAndReadsTheKeyAsNumberAndAnswer)
{
    const TestBank bank = defaultBank();
    for (const auto &[subject, level] :
         {std::pair{ArithmeticSubject, 2}, std::pair{ArithmeticSubject, 12},
          std::pair{SpellingSubject, 4}, std::pair{2, 1}}) {
        const Worksheet sheet = sheetOf(bank, subject, level, 40);
        SCOPED_TRACE(worksheetHeading(sheet));
        const std::optional<QString> text = textOf(pdfOf(sheet));
        if (!text)
            GTEST_SKIP() << "pdftotext is not installed, so the PDF's text cannot be read back";
        const QString sheetText = text->section(QStringLiteral("Answer key"), 0, 0);
        const QString keyText = text->section(QStringLiteral("Answer key"), 1);
        EXPECT_TRUE(sheetText.contains(QString::fromStdString(worksheetHeading(sheet))));
        EXPECT_TRUE(sheetText.contains(QStringLiteral("Name:")));
        EXPECT_TRUE(sheetText.contains(QStringLiteral("Date:")));
        EXPECT_TRUE(text->contains(QStringLiteral("Seed 2024")));

        const std::vector<std::string> key = answerKey(sheet);
        for (int i = 0; i < sheet.count(); ++i) {
            const QString number = QStringLiteral("(^|\\s)%1\\.").arg(i + 1);
            QString problem;
            if (sheet.isArithmetic()) {
                problem = number + QStringLiteral(" +") +
                          escaped(sheetProblemText(sheet.sums[static_cast<std::size_t>(i)])) +
                          QStringLiteral("(\\s|$)");
            } else {
                // The question, then its choices A to D in order.
                const MultipleChoiceProblem &p = sheet.questions[static_cast<std::size_t>(i)];
                problem = number + QStringLiteral(" +") + escaped(p.label);
                for (int c = 0; c < 4; ++c)
                    problem += QStringLiteral("\\s+") + escaped(choiceLetter(c) + ". ") +
                               escaped(p.choices[static_cast<std::size_t>(c)]);
            }
            EXPECT_TRUE(sheetText.contains(
                QRegularExpression(problem, QRegularExpression::MultilineOption)))
                << "problem " << i + 1 << " " << problem.toStdString();
            const QString entry = number + QStringLiteral(" ") +
                                  escaped(key[static_cast<std::size_t>(i)]) +
                                  QStringLiteral("(\\s|$)");
            EXPECT_TRUE(
                keyText.contains(QRegularExpression(entry, QRegularExpression::MultilineOption)))
                << "key entry " << i + 1;
        }
    }
}

TEST(WorksheetPdf, ASaveIsWholeOrNamesTheFileItCouldNotWrite)
{
    const TestBank bank = defaultBank();
    const Worksheet sheet = sheetOf(bank, SpellingSubject, 4, 10);
    TempDataDir dir;
    const std::filesystem::path target = dir.path() / "sheet.pdf";
    EXPECT_FALSE(saveWorksheetPdf(target, sheet).has_value());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
    EXPECT_EQ(std::filesystem::file_size(target), static_cast<std::uintmax_t>(pdfOf(sheet).size()));

    const std::filesystem::path nowhere = dir.path() / "no such folder" / "sheet.pdf";
    const std::optional<std::string> problem = saveWorksheetPdf(nowhere, sheet);
    ASSERT_TRUE(problem.has_value());
    EXPECT_NE(problem->find(nowhere.string()), std::string::npos) << *problem;
}
