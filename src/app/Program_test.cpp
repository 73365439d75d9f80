// The program itself run from the command line, as a teacher's script runs it:
// with no display and no platform chosen, the jobs still run, and the exit
// status and the one line on standard error say how it went.
#include "core/DefaultBank.h"
#include "core/StudentsFile.h"
#include "testsupport/TempDataDir.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

struct ProgramRun {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

ProgramRun runTavrino(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_HASH_SEED"})
        environment.remove(QString::fromLatin1(name));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TAVRINO_PROGRAM), arguments);
    ProgramRun run;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return run;
    run.status = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

} // namespace

TEST(Program, RunsItsJobsWithoutADisplay)
{
    TempDataDir dir;
    TestBank bank;
    buildDefaultTests(bank);
    StudentRecords records;
    records.students.push_back(newStudent(bank.subjectMax));
    records.students[0].name = "Zoë";
    records.students[0].current = true;
    ASSERT_FALSE(saveStudents(records, dir.paths().studentsPath).has_value());
    const QString data = QString::fromStdString(dir.path().string());

    const ProgramRun version = runTavrino({QStringLiteral("--version")});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "Tavrino 1.1.0\n");

    const ProgramRun csv = runTavrino(
        {QStringLiteral("--data-dir"), data, QStringLiteral("--export-csv"), QStringLiteral("-")});
    EXPECT_EQ(csv.status, 0) << csv.err.toStdString();
    EXPECT_TRUE(csv.out.startsWith("\xEF\xBB\xBFStudent,Subject,Level,Last,High\r\nZo\xC3\xAB,"));
    EXPECT_TRUE(csv.err.isEmpty()) << csv.err.toStdString();

    const QString pdf = QString::fromStdString((dir.path().parent_path() / "r.pdf").string());
    const ProgramRun report =
        runTavrino({QStringLiteral("--report-pdf"), pdf, QStringLiteral("--data-dir"), data});
    EXPECT_EQ(report.status, 0) << report.err.toStdString();
    EXPECT_TRUE(std::filesystem::file_size(pdf.toStdString()) > 1000);

    // A mistake on the command line, and a data file that cannot be read.
    const ProgramRun usage = runTavrino({QStringLiteral("--export-cvs"), QStringLiteral("-")});
    EXPECT_EQ(usage.status, 2);
    EXPECT_EQ(usage.err.count('\n'), 1) << usage.err.toStdString();
    EXPECT_TRUE(usage.err.contains("export-cvs")) << usage.err.toStdString();
    EXPECT_TRUE(usage.out.isEmpty());

    std::filesystem::resize_file(dir.paths().studentsPath, 7);
    const ProgramRun damaged = runTavrino(
        {QStringLiteral("--data-dir"), data, QStringLiteral("--export-csv"), QStringLiteral("-")});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_EQ(damaged.err.count('\n'), 1) << damaged.err.toStdString();
    EXPECT_TRUE(damaged.err.contains("Tavrino_Students.dat")) << damaged.err.toStdString();
    EXPECT_TRUE(damaged.out.isEmpty());
}

TEST(Program, WritesTheSameWorksheetBytesEveryTimeItRuns)
{
    // Each run is a process of its own, with whatever Qt draws afresh per process.
    TempDataDir dir;
    const QString data = QString::fromStdString(dir.path().string());
    const auto sheet = [&data](const char *seed) {
        return runTavrino(
            {QStringLiteral("--data-dir"), data, QStringLiteral("--worksheet"), QStringLiteral("-"),
             QStringLiteral("--subject"), QStringLiteral("Spelling"), QStringLiteral("--level"),
             QStringLiteral("4"), QStringLiteral("--seed"), QString::fromLatin1(seed)});
    };
    const ProgramRun first = sheet("9");
    ASSERT_EQ(first.status, 0) << first.err.toStdString();
    ASSERT_TRUE(first.out.startsWith("%PDF"));
    for (int run = 0; run < 3; ++run)
        EXPECT_EQ(sheet("9").out, first.out) << "run " << run;
    EXPECT_NE(sheet("10").out, first.out);
}
