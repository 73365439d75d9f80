// The jobs on real data folders: what they write, their exit statuses and
// messages, and that the data folder is left exactly as it was, byte for byte,
// even beside a history the program is writing or left with its log.
#include "commandline/CommandLine.h"

#include "core/DefaultBank.h"
#include "core/History.h"
#include "core/HistoryClock.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"
#include "reports/ClassResultsCsv.h"
#include "testsupport/TempDataDir.h"
#include "worksheets/Worksheet.h"
#include "worksheets/WorksheetPdf.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// Every entry below the folder with its bytes (folders as "<dir>").
std::map<std::string, std::string> snapshot(const fs::path &folder)
{
    std::map<std::string, std::string> entries;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = fs::relative(entry.path(), folder).string();
        if (entry.is_directory()) {
            entries[name] = "<dir>";
            continue;
        }
        std::ifstream in(entry.path(), std::ios::binary);
        entries[name] = std::string(std::istreambuf_iterator<char>(in), {});
    }
    return entries;
}

std::string contentOf(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

class JobsTest : public ::testing::Test {
protected:
    JobsTest()
    {
        buildDefaultTests(bank);
        records.currentSubject = 0;
        for (const char *name : {"Ann", "Bo, the 2nd"}) {
            Student &student = records.students.emplace_back(newStudent(bank.subjectMax));
            student.name = name;
            student.results[1].high[3] = 12;
            student.results[1].last[3] = 9;
        }
        records.students.front().current = true;
    }

    void writeClass()
    {
        ASSERT_FALSE(saveTests(bank, dir.paths().testsPath).has_value());
        ASSERT_FALSE(saveStudents(records, dir.paths().studentsPath).has_value());
    }

    // Runs the command line (without the program's name) on the temporary data
    // folder, checking that the folder is the same afterwards.
    Outcome run(const QStringList &arguments, const fs::path &dataDir)
    {
        const auto before = fs::exists(dataDir) ? snapshot(dataDir) : decltype(snapshot(dataDir))();
        const Invocation invocation =
            readCommandLine(QStringList{QStringLiteral("tavrino"), QStringLiteral("--data-dir"),
                                        QString::fromStdString(dataDir.string())} +
                            arguments);
        std::ostringstream out;
        std::ostringstream err;
        Outcome outcome;
        outcome.status = runWithoutWindows(invocation, out, err);
        outcome.out = out.str();
        outcome.err = err.str();
        if (fs::exists(dataDir))
            EXPECT_EQ(snapshot(dataDir), before) << "the data folder changed";
        else
            EXPECT_TRUE(before.empty());
        return outcome;
    }
    Outcome run(const QStringList &arguments) { return run(arguments, dir.path()); }

    // A file beside the data folder, where the jobs may write.
    QString outside(const char *name) const
    {
        return QString::fromStdString((dir.path().parent_path() / name).string());
    }

    TempDataDir dir;
    TestBank bank;
    StudentRecords records;
};

} // namespace

TEST_F(JobsTest, ExportWritesTheClassToAFileOrStandardOutput)
{
    writeClass();
    std::ostringstream expected;
    ASSERT_TRUE(writeClassResultsCsv(expected, bank, records));

    const Outcome toStdout = run({QStringLiteral("--export-csv"), QStringLiteral("-")});
    EXPECT_EQ(toStdout.status, ExitOk) << toStdout.err;
    EXPECT_EQ(toStdout.out, expected.str());
    EXPECT_NE(toStdout.out.find("\r\n\"Bo, the 2nd\",Spelling,3,9,12\r\n"), std::string::npos);
    EXPECT_TRUE(toStdout.err.empty());

    const Outcome toFile = run({QStringLiteral("--export-csv"), outside("class.csv")});
    EXPECT_EQ(toFile.status, ExitOk) << toFile.err;
    EXPECT_TRUE(toFile.out.empty());
    EXPECT_EQ(contentOf(outside("class.csv").toStdString()), expected.str());
}

TEST_F(JobsTest, ReportWritesAPdf)
{
    writeClass();
    const Outcome outcome = run({QStringLiteral("--report-pdf"), outside("class.pdf")});
    EXPECT_EQ(outcome.status, ExitOk) << outcome.err;
    const std::string pdf = contentOf(outside("class.pdf").toStdString());
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    EXPECT_NE(pdf.find("%%EOF"), std::string::npos);
    // No temporary file is left beside it.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path().parent_path()), {}), 2);
}

TEST_F(JobsTest, MissingFilesMeanTheBuiltInBankAndNoStudentsAndStayMissing)
{
    // Nothing is created: no Students file, no page, no lock, no probe.
    const Outcome csv = run({QStringLiteral("--export-csv"), QStringLiteral("-")});
    EXPECT_EQ(csv.status, ExitOk) << csv.err;
    EXPECT_EQ(csv.out, "\xEF\xBB\xBFStudent,Subject,Level,Last,High\r\n");
    const Outcome pdf = run({QStringLiteral("--report-pdf"), outside("empty.pdf")});
    EXPECT_EQ(pdf.status, ExitOk) << pdf.err;
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST_F(JobsTest, UnreadableDataEndsWithStatusOneAndTheProgramsMessage)
{
    writeClass();
    std::string students = contentOf(dir.paths().studentsPath);
    students.resize(students.size() - 5);
    {
        std::ofstream(dir.paths().studentsPath, std::ios::binary) << students;
    }
    StudentRecords ignored;
    const LoadResult damage = decodeStudentsFile(ignored, bank, students, dir.paths().studentsPath);
    ASSERT_FALSE(damage.ok());

    for (const char *job : {"--export-csv", "--report-pdf"}) {
        const Outcome outcome = run({QString::fromLatin1(job), outside("out")});
        EXPECT_EQ(outcome.status, ExitFailed) << job;
        EXPECT_EQ(outcome.err, "tavrino: " + damage.error->message() + "\n") << job;
        EXPECT_FALSE(fs::exists(outside("out").toStdString())) << job;
    }

    // A damaged Tests file is named, and is not moved aside as start-up would.
    {
        std::ofstream(dir.paths().testsPath, std::ios::binary) << "not a bank";
    }
    const Outcome tests = run({QStringLiteral("--export-csv"), QStringLiteral("-")});
    EXPECT_EQ(tests.status, ExitFailed);
    EXPECT_NE(tests.err.find(dir.paths().testsPath.string()), std::string::npos) << tests.err;
    EXPECT_EQ(std::count(tests.err.begin(), tests.err.end(), '\n'), 1);
    EXPECT_TRUE(tests.out.empty());

    const fs::path nowhere = dir.path() / "no such class";
    const Outcome missing = run({QStringLiteral("--export-csv"), QStringLiteral("-")}, nowhere);
    EXPECT_EQ(missing.status, ExitFailed);
    EXPECT_NE(missing.err.find(nowhere.string()), std::string::npos) << missing.err;
    EXPECT_FALSE(fs::exists(nowhere));
}

TEST_F(JobsTest, OutputIntoTheDataFolderOrThatCannotBeWrittenIsRefused)
{
    writeClass();
    const QString inside = QString::fromStdString((dir.path() / "class.csv").string());
    const Outcome refused = run({QStringLiteral("--export-csv"), inside});
    EXPECT_EQ(refused.status, ExitUsage);
    EXPECT_NE(refused.err.find("data folder"), std::string::npos) << refused.err;
    const Outcome viaDots =
        run({QStringLiteral("--report-pdf"),
             QString::fromStdString((dir.path() / ".." / "data" / "r.pdf").string())});
    EXPECT_EQ(viaDots.status, ExitUsage);

    const QString nowhere = outside("no such folder/class.csv");
    for (const char *job : {"--export-csv", "--report-pdf"}) {
        const Outcome failed = run({QString::fromLatin1(job), nowhere});
        EXPECT_EQ(failed.status, ExitFailed) << job;
        EXPECT_NE(failed.err.find(nowhere.toStdString()), std::string::npos) << failed.err;
        EXPECT_EQ(std::count(failed.err.begin(), failed.err.end(), '\n'), 1) << failed.err;
    }
}

TEST_F(JobsTest, AStudentsFileWiderThanTheBankGivesTheBanksSubjects)
{
    // Saved after a subject was added, with the Tests file gone since: the
    // built-in bank is read, and the added subject's results stay in the file.
    addSubject(bank, "Latin");
    addSubjectResults(records, bank.subjectMax);
    records.students[0].results[bank.subjectMax].high[0] = 7;
    ASSERT_FALSE(saveStudents(records, dir.paths().studentsPath).has_value());

    const Outcome outcome = run({QStringLiteral("--export-csv"), QStringLiteral("-")});
    EXPECT_EQ(outcome.status, ExitOk) << outcome.err;
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'),
              1 + 2 * (bank.subjectMax) * LevelCount);
    EXPECT_EQ(outcome.out.find("Latin"), std::string::npos);
}

TEST_F(JobsTest, HistoryExportReadsEveryAnswerAndLeavesTheFolderAloneWithOrWithoutALog)
{
    writeClass();
    const std::string header = "\xEF\xBB\xBF"
                               "Student,Started,Subject,Level,Question,Answer,Right answer,"
                               "Correct,Seconds,Practice\r\n";
    // No history yet: the header alone, and no history file made.
    const Outcome none = run({QStringLiteral("--export-history-csv"), QStringLiteral("-")});
    EXPECT_EQ(none.status, ExitOk) << none.err;
    EXPECT_EQ(none.out, header);

    ManualClock clock;
    const auto testOf = [&](History &history, int student, const std::string &typed) {
        history.recorder().beginTest({student, 1, 3, 30, false});
        history.recorder().questionShown();
        clock.advance(2500);
        history.recorder().recordChoice(
            {"Spell \"cat\"", {"cat", "kat", "catt", "cta"}, 0, typed == "cat" ? 0 : 1});
        history.recorder().endTest({1, 1, 0, true});
    };
    const auto openOn = [&](History &history) {
        history.roster().matchRoster({"Ann", "Bo, the 2nd"});
        std::vector<std::string> subjects;
        for (const Subject &subject : bank.subjects)
            subjects.push_back(subject.name);
        history.subjects().matchSubjects(subjects);
    };
    {
        History closed(dir.path(), clock);
        openOn(closed);
        testOf(closed, 0, "cat");
    }
    ASSERT_FALSE(fs::exists(dir.path() / "Tavrino_History.db-wal"));
    const std::string annsRow = "Ann,2026-11-25T10:15:00,Spelling,3,\"Spell \"\"cat\"\"\",cat,cat,"
                                "yes,2.5,no\r\n";
    const Outcome closedOut = run({QStringLiteral("--export-history-csv"), QStringLiteral("-")});
    EXPECT_EQ(closedOut.status, ExitOk) << closedOut.err;
    EXPECT_EQ(closedOut.out, header + annsRow);

    // The program running: its second test is in the log so far.
    History running(dir.path(), clock);
    openOn(running);
    clock.setLocalTime({2026, 11, 26, 8, 5, 9});
    testOf(running, 1, "kat");
    ASSERT_TRUE(fs::exists(dir.path() / "Tavrino_History.db-wal"));
    const std::string bosRow = "\"Bo, the 2nd\",2026-11-26T08:05:09,Spelling,3,"
                               "\"Spell \"\"cat\"\"\",kat,cat,no,2.5,no\r\n";
    const Outcome live = run({QStringLiteral("--export-history-csv"), outside("live.csv")});
    EXPECT_EQ(live.status, ExitOk) << live.err;
    EXPECT_EQ(contentOf(outside("live.csv").toStdString()), header + annsRow + bosRow);

    // As a killed program leaves it: the file and its log, no shared memory.
    const fs::path left = dir.path().parent_path() / "left";
    fs::create_directory(left);
    for (const char *name : {"Tavrino_History.db", "Tavrino_History.db-wal"})
        fs::copy_file(dir.path() / name, left / name);
    const Outcome killed = run({QStringLiteral("--export-history-csv"), QStringLiteral("-")}, left);
    EXPECT_EQ(killed.status, ExitOk) << killed.err;
    EXPECT_EQ(killed.out, header + annsRow + bosRow);

    // Into the data folder: refused. A damaged history: named, and left where it is.
    const Outcome inside = run(
        {QStringLiteral("--export-history-csv"), QString::fromStdString((left / "h.csv").string())},
        left);
    EXPECT_EQ(inside.status, ExitUsage);
    fs::remove(left / "Tavrino_History.db-wal");
    {
        std::ofstream(left / "Tavrino_History.db", std::ios::binary) << std::string(4096, 'x');
    }
    const Outcome damaged =
        run({QStringLiteral("--export-history-csv"), outside("damaged.csv")}, left);
    EXPECT_EQ(damaged.status, ExitFailed);
    EXPECT_NE(damaged.err.find((left / "Tavrino_History.db").string()), std::string::npos)
        << damaged.err;
    EXPECT_EQ(std::count(damaged.err.begin(), damaged.err.end(), '\n'), 1) << damaged.err;
    EXPECT_FALSE(fs::exists(outside("damaged.csv").toStdString()));
}

namespace {

// The PDF the job should write for that sheet.
std::string worksheetPdf(const TestBank &bank, int subject, int level, int count, bool key,
                         std::uint32_t seed)
{
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    EXPECT_TRUE(writeWorksheetPdf(pdf, makeWorksheet(bank, subject, level, {count, key, seed})));
    return pdf.data().toStdString();
}

QStringList split(const char *arguments)
{
    return QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

TEST_F(JobsTest, AWorksheetIsTheSubjectAndLevelAskedForAndTheSameSeedGivesTheSameFile)
{
    // No data files yet: the built-in bank, and still nothing created.
    const Outcome arithmetic =
        run(split("--worksheet - --subject arithmetic --level k --count 5 --seed 3 --no-key"));
    EXPECT_EQ(arithmetic.status, ExitOk) << arithmetic.err;
    EXPECT_EQ(arithmetic.out, worksheetPdf(bank, ArithmeticSubject, 0, 5, false, 3));
    EXPECT_TRUE(fs::is_empty(dir.path()));

    // The class's own bank, the subject's name trimmed and in any case.
    bank.subjects[2].name = "Geography ";
    bank.limits[2].lastQuestion[1] = 2;
    writeClass();
    const QStringList geography = {QStringLiteral("--subject"), QStringLiteral("  GEOGRAPHY"),
                                   QStringLiteral("--level"),   QStringLiteral("1"),
                                   QStringLiteral("--seed"),    QStringLiteral("4294967295")};
    const Outcome first =
        run(QStringList{QStringLiteral("--worksheet"), outside("a.pdf")} + geography);
    const Outcome again =
        run(QStringList{QStringLiteral("--worksheet"), outside("b.pdf")} + geography);
    EXPECT_EQ(first.status, ExitOk) << first.err;
    EXPECT_EQ(again.status, ExitOk) << again.err;
    EXPECT_TRUE(first.out.empty() && first.err.empty());
    const std::string pdf = contentOf(outside("a.pdf").toStdString());
    EXPECT_EQ(pdf, worksheetPdf(bank, 2, 1, DefaultWorksheetCount, true, 4294967295u));
    EXPECT_EQ(contentOf(outside("b.pdf").toStdString()), pdf);
}

TEST_F(JobsTest, AWorksheetThatCannotBeMadeSaysWhichValueIsWrong)
{
    bank.limits[SpellingSubject].lastQuestion[7] = -1;
    writeClass();
    struct Case {
        const char *arguments;
        int status;
        const char *named; // what the one line must mention
    };
    const std::vector<Case> cases = {
        {"--level 3", ExitUsage, "--subject"},
        {"--subject Spelling", ExitUsage, "--level"},
        {"--subject Latin --level 3", ExitUsage, "'Latin'"},
        {"--subject Spelling --level 13", ExitUsage, "'13'"},
        {"--subject Spelling --level 0", ExitUsage, "'0'"},
        {"--subject Spelling --level 7", ExitUsage, "level 7"},
        {"--subject Spelling --level 3 --count 0", ExitUsage, "'0'"},
        {"--subject Spelling --level 3 --count 201", ExitUsage, "'201'"},
        {"--subject Spelling --level 3 --count ten", ExitUsage, "'ten'"},
        {"--subject Spelling --level 3 --seed=-1", ExitUsage, "'-1'"},
        {"--subject Spelling --level 3 --seed 4294967296", ExitUsage, "'4294967296'"},
    };
    for (const Case &c : cases) {
        const Outcome outcome =
            run(QStringList{QStringLiteral("--worksheet"), outside("w.pdf")} + split(c.arguments));
        EXPECT_EQ(outcome.status, c.status) << c.arguments;
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
        EXPECT_NE(outcome.err.find(c.named), std::string::npos) << outcome.err;
        EXPECT_FALSE(fs::exists(outside("w.pdf").toStdString())) << c.arguments;
    }

    // Only the Tests file is read: a damaged Students file is no matter, a
    // damaged Tests file ends with status 1, naming it.
    {
        std::ofstream(dir.paths().studentsPath, std::ios::binary) << "not a roster";
    }
    const QStringList spelling = split("--worksheet - --subject Spelling --level 3");
    EXPECT_EQ(run(spelling).status, ExitOk);
    {
        std::ofstream(dir.paths().testsPath, std::ios::binary) << "not a bank";
    }
    const Outcome damaged = run(spelling);
    EXPECT_EQ(damaged.status, ExitFailed);
    EXPECT_NE(damaged.err.find(dir.paths().testsPath.string()), std::string::npos) << damaged.err;
    EXPECT_TRUE(damaged.out.empty());
}
