#include "core/CsvWriter.h"
#include "core/HistoryFixture_test.h"

#include <algorithm>
#include <fstream>

namespace fs = std::filesystem;

namespace {

using HistoryCsv = HistoryTest;

const std::string Header = "\xEF\xBB\xBF"
                           "Student,Started,Subject,Level,Question,Answer,Right answer,Correct,"
                           "Seconds,Practice\r\n";

std::vector<std::string> entriesOf(const fs::path &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(CsvWriter, QuotesOnlyWhatMustBeQuoted)
{
    std::ostringstream out;
    {
        CsvWriter csv(out);
        csv.writeByteOrderMark();
        for (const char *text : {"plain", "", "a,b", "say \"hi\"", "two\r\nlines", "cr\ronly",
                                 "lf\nonly", " blanks kept ", "Zo\u00EB"})
            csv.field(text);
        csv.endRow();
        csv.field("last");
        csv.endRow();
    }
    EXPECT_EQ(out.str(), "\xEF\xBB\xBF"
                         "plain,,\"a,b\",\"say \"\"hi\"\"\",\"two\r\nlines\",\"cr\ronly\","
                         "\"lf\nonly\", blanks kept ,Zo\u00EB\r\nlast\r\n");
}

TEST_F(HistoryCsv, EveryAnswerIsARowInTheExportFormat)
{
    open({"Smith, \"Jo\"\nJr", "Zo\u00EB"});
    HistoryRecorder &recorder = history->recorder();
    clock.setLocalTime({2026, 1, 5, 8, 4, 9});
    recorder.beginTest({0, 0, 0, 30, false});
    clock.advance(2049);
    recorder.recordArithmetic({15, 7, 8, 1, 0, " 15", true});
    clock.advance(12951);
    recorder.recordArithmetic({56, 8, 7, 3, 1, "", false});
    recorder.endTest({0, 1, 1, false});
    clock.advance(60000);
    recorder.beginTest({1, 2, 12, 60, true});
    clock.advance(950);
    recorder.recordChoice(
        {"Capital of France", {"Lyon", "Paris", "Nice", "Brest, \"the port\""}, 1, 3});
    recorder.endTest({-1, 0, 1, true});

    std::ostringstream out;
    EXPECT_TRUE(history->exportCsv(out));
    EXPECT_EQ(out.str(), Header + "\"Smith, \"\"Jo\"\"\nJr\",2026-01-05T08:04:09,Arithmetic,K,"
                                  "_ - 7 = 8, 15,15,yes,2.0,no\r\n"
                                  "\"Smith, \"\"Jo\"\"\nJr\",2026-01-05T08:04:09,Arithmetic,K,"
                                  "56 / _ = 7,,8,no,13.0,no\r\n"
                                  "Zo\u00EB,2026-01-05T08:05:24,Geography,12,Capital of France,"
                                  "\"Brest, \"\"the port\"\"\",Paris,no,1.0,yes\r\n");
}

TEST_F(HistoryCsv, TheCommandLineExportReadsWithoutWritingIntoTheFolder)
{
    std::ostringstream empty;
    EXPECT_EQ(exportHistoryCsv(folder(), empty), std::nullopt);
    EXPECT_EQ(empty.str(), Header);
    EXPECT_TRUE(entriesOf(folder()).empty());

    open();
    takeTest(0, 0, 0, {true, true});
    history.reset();
    const std::vector<std::string> closed = entriesOf(folder());
    EXPECT_EQ(closed, std::vector<std::string>{"Tavrino_History.db"});
    std::ostringstream out;
    EXPECT_EQ(exportHistoryCsv(folder(), out), std::nullopt);
    const std::string text = out.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3);
    EXPECT_EQ(entriesOf(folder()), closed);

    std::ofstream(file(), std::ios::binary | std::ios::trunc) << "garbage, not a database";
    std::ostringstream refused;
    const std::optional<std::string> message = exportHistoryCsv(folder(), refused);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->find('\n'), std::string::npos);
    EXPECT_NE(message->find("Tavrino_History.db\" could not be read"), std::string::npos)
        << *message;
    EXPECT_EQ(entriesOf(folder()), closed);
}
