// Reading the command line: what each command line asks for, the one-line
// usage errors, --help with one line per option, --version, and Qt's own
// arguments left to Qt.
#include "commandline/CommandLine.h"

#include "commandline/Jobs.h"

#include <QDir>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using Action = Invocation::Action;

Invocation read(const QStringList &arguments)
{
    return readCommandLine(QStringList{QStringLiteral("tavrino")} + arguments);
}

QStringList split(const char *arguments)
{
    return QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

TEST(CommandLine, SaysWhatEachCommandLineAsksFor)
{
    struct Case {
        const char *arguments;
        Action action;
        const char *job; // the job's option, or "" for none
        const char *value;
    };
    const std::vector<Case> cases = {
        {"", Action::Windows, "", ""},
        {"--data-dir /school/3B", Action::Windows, "", ""},
        {"--read-aloud --data-dir /school/3B", Action::Windows, "", ""},
        {"--classroom --data-dir /school/3B", Action::Windows, "", ""},
        {"--export-csv out.csv", Action::Job, "export-csv", "out.csv"},
        {"--export-csv=-", Action::Job, "export-csv", "-"},
        {"--data-dir /school/3B --report-pdf 3B.pdf", Action::Job, "report-pdf", "3B.pdf"},
        {"--worksheet w.pdf --subject Spelling --level 3 --no-key", Action::Job, "worksheet",
         "w.pdf"},
        {"--help", Action::Help, "", ""},
        {"-h --export-csv x", Action::Help, "", ""},
        {"--version", Action::Version, "", ""},
        {"-v", Action::Version, "", ""},
        // Qt's own arguments are Qt's, not mistakes.
        {"-style fusion -reverse", Action::Windows, "", ""},
        {"-platform offscreen --export-csv x", Action::Job, "export-csv", "x"},
    };
    for (const Case &c : cases) {
        const Invocation invocation = read(split(c.arguments));
        EXPECT_EQ(invocation.action, c.action)
            << c.arguments << ": " << invocation.text.toStdString();
        const bool windows = c.action == Action::Windows;
        EXPECT_EQ(runsWithoutWindows(QStringList{QStringLiteral("tavrino")} + split(c.arguments)),
                  !windows)
            << c.arguments;
        if (c.action != Action::Job)
            continue;
        ASSERT_NE(invocation.job, nullptr) << c.arguments;
        EXPECT_EQ(invocation.job->option.toStdString(), c.job) << c.arguments;
        EXPECT_EQ(invocation.jobValue.toStdString(), c.value) << c.arguments;
    }
    EXPECT_EQ(read(split("--data-dir /school/3B")).dataDir, std::filesystem::path("/school/3B"));
    EXPECT_FALSE(read({}).dataDir.has_value());
    EXPECT_TRUE(read(split("--data-dir /school/3B --read-aloud")).readAloud);
    EXPECT_FALSE(read(split("--data-dir /school/3B")).readAloud);
    EXPECT_TRUE(read(split("--classroom --data-dir /school/3B")).classroom);
    EXPECT_FALSE(read(split("--read-aloud")).classroom);
}

TEST(CommandLine, ARelativeDataFolderIsTakenFromTheCurrentFolder)
{
    const Invocation invocation = read(split("--data-dir classes/../classes/3B"));
    ASSERT_TRUE(invocation.dataDir.has_value());
    EXPECT_EQ(*invocation.dataDir, QDir::current().filesystemPath() / "classes" / "3B");
}

TEST(CommandLine, UsageErrorsAreOneLineThatNamesTheProblem)
{
    struct Case {
        const char *arguments;
        const char *named; // what the message must mention
    };
    const std::vector<Case> cases = {
        {"--colour", "colour"},
        {"--export-csv", "--export-csv"},
        {"--data-dir", "--data-dir"},
        {"--data-dir=", "--data-dir"},
        {"--export-csv a.csv --report-pdf b.pdf", "--export-csv and --report-pdf"},
        {"--export-csv a.csv --export-csv b.csv", "--export-csv"},
        {"--data-dir a --data-dir b", "--data-dir"},
        {"results.csv", "results.csv"},
        {"--version=2", "version"},
        {"--classroom=yes", "classroom"},
        // A worksheet's settings go with --worksheet, once each.
        {"--subject Spelling --level 3", "--subject goes with --worksheet"},
        {"--export-csv a.csv --no-key", "--no-key goes with --worksheet"},
        {"--worksheet a.pdf --level 3 --level 4", "--level"},
    };
    for (const Case &c : cases) {
        const Invocation invocation = read(split(c.arguments));
        EXPECT_EQ(invocation.action, Action::UsageError) << c.arguments;
        EXPECT_TRUE(runsWithoutWindows(QStringList{QStringLiteral("tavrino")} + split(c.arguments)))
            << c.arguments << ": a mistake is reported, not a window opened";

        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(runWithoutWindows(invocation, out, err), ExitUsage) << c.arguments;
        const std::string message = err.str();
        EXPECT_EQ(message.find('\n'), message.size() - 1) << message;
        EXPECT_NE(message.find(c.named), std::string::npos) << message;
        EXPECT_TRUE(out.str().empty());
    }
}

TEST(CommandLine, HelpListsEveryOptionOnOneLineAndVersionComesFromTheBuild)
{
    std::ostringstream out;
    std::ostringstream err;
    ASSERT_EQ(runWithoutWindows(read({QStringLiteral("--help")}), out, err), ExitOk);
    const QStringList lines = QString::fromStdString(out.str()).split(QLatin1Char('\n'));
    const qsizetype options = lines.indexOf(QStringLiteral("Options:"));
    ASSERT_GE(options, 0) << out.str();

    QStringList expected = {QStringLiteral("--help"),           QStringLiteral("--version"),
                            QStringLiteral("--data-dir <dir>"), QStringLiteral("--read-aloud"),
                            QStringLiteral("--classroom"),      QStringLiteral("--subject <name>"),
                            QStringLiteral("--level <level>"),  QStringLiteral("--count <n>"),
                            QStringLiteral("--seed <number>"),  QStringLiteral("--no-key")};
    for (const Job &job : jobs())
        expected.append(QStringLiteral("--%1 <%2>").arg(job.option, job.valueName));
    qsizetype listed = 0;
    for (qsizetype i = options + 1; i < lines.size() && !lines[i].isEmpty(); ++i) {
        // No description runs on to a second line.
        EXPECT_TRUE(lines[i].startsWith(QStringLiteral("  -"))) << lines[i].toStdString();
        EXPECT_LE(lines[i].size(), 79) << lines[i].toStdString();
        ++listed;
    }
    EXPECT_EQ(listed, expected.size());
    for (const QString &option : expected)
        EXPECT_EQ(lines.filter(option).size(), 1) << option.toStdString();

    out.str("");
    ASSERT_EQ(runWithoutWindows(read({QStringLiteral("--version")}), out, err), ExitOk);
    EXPECT_EQ(out.str(), "Tavrino 1.1.0\n");
    EXPECT_TRUE(err.str().empty());
}
