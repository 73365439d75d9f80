#include "commandline/CommandLine.h"

#include "commandline/Jobs.h"
#include "commandline/Version.h"
#include "core/DataPaths.h"
#include "ui/DataLocation.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <system_error>
#include <vector>

namespace {

// Options that are not jobs: the program's own, and the settings of a job.
struct OptionEntry {
    QStringList names;
    QString valueName; // empty for a switch
    QString description;
    QString job; // the job whose setting it is, if any
};

const QString DataDirOption = QStringLiteral("data-dir");
const QString HelpOption = QStringLiteral("help");
const QString VersionOption = QStringLiteral("version");
const QString ReadAloudOption = QStringLiteral("read-aloud");
const QString ClassroomOption = QStringLiteral("classroom");
const QString WorksheetOption = QStringLiteral("worksheet");

const std::vector<OptionEntry> &otherOptions()
{
    static const std::vector<OptionEntry> options = {
        {{QStringLiteral("h"), HelpOption}, {}, QStringLiteral("Show this help and exit."), {}},
        {{QStringLiteral("v"), VersionOption},
         {},
         QStringLiteral("Show the version and exit."),
         {}},
        {{DataDirOption},
         QStringLiteral("dir"),
         QStringLiteral("Use DIR as the data folder, windows included."),
         {}},
        {{ReadAloudOption}, {}, QStringLiteral("Start with Read aloud on."), {}},
        {{ClassroomOption},
         {},
         QStringLiteral("Open the windows in classroom mode (see above)."),
         {}},
        {{QStringLiteral("subject")},
         QStringLiteral("name"),
         QStringLiteral("The worksheet's subject, by name (any case)."),
         WorksheetOption},
        {{QStringLiteral("level")},
         QStringLiteral("level"),
         QStringLiteral("The worksheet's level: K or 1 to 12."),
         WorksheetOption},
        {{QStringLiteral("count")},
         QStringLiteral("n"),
         QStringLiteral("How many problems, 1 to 200 (30 if not given)."),
         WorksheetOption},
        {{QStringLiteral("seed")},
         QStringLiteral("number"),
         QStringLiteral("Draw the sheet from this seed (printed on it)."),
         WorksheetOption},
        {{QStringLiteral("no-key")},
         {},
         QStringLiteral("Leave the answer key off the worksheet."),
         WorksheetOption},
    };
    return options;
}

// Shown under the usage line; Qt does not wrap it, so the lines are broken here.
const QString Description =
    QStringLiteral("Timed tests for schoolchildren.\n"
                   "\n"
                   "Without a job, Tavrino opens its windows. A job runs without a window or a\n"
                   "display: it reads the data folder, never changes it, and takes a missing\n"
                   "Students file for a class without students. Exit status: 0 done, 1 a data\n"
                   "file could not be read or the output not written, 2 a wrong command line.\n"
                   "\n"
                   "In classroom mode the windows are for children: they choose their name,\n"
                   "subject and level, take tests and see results. The Tests screen,\n"
                   "worksheets, adding, renaming and deleting students, resets and backups\n"
                   "are left to the teacher's copy, and Exit asks first.");

void declareOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(Description);
    const auto declare = [&parser](bool settings) {
        for (const OptionEntry &entry : otherOptions())
            if (entry.job.isEmpty() != settings)
                parser.addOption(
                    QCommandLineOption(entry.names, entry.description, entry.valueName));
    };
    // The program's own options, the jobs, then the jobs' settings under them.
    declare(false);
    for (const Job &job : jobs())
        parser.addOption(QCommandLineOption(job.option, job.description, job.valueName));
    declare(true);
}

QString dashed(const QString &option)
{
    return QStringLiteral("--") + option;
}

// Arguments that Qt's application objects take for themselves, with the number
// of values each takes. They are not this program's options, so a command line
// that holds them is judged without them.
const QHash<QString, int> &qtArguments()
{
    static const QHash<QString, int> arguments = {
        {QStringLiteral("platform"), 1},
        {QStringLiteral("platformpluginpath"), 1},
        {QStringLiteral("platformtheme"), 1},
        {QStringLiteral("plugin"), 1},
        {QStringLiteral("qwindowgeometry"), 1},
        {QStringLiteral("qwindowtitle"), 1},
        {QStringLiteral("qwindowicon"), 1},
        {QStringLiteral("session"), 1},
        {QStringLiteral("display"), 1},
        {QStringLiteral("geometry"), 1},
        {QStringLiteral("style"), 1},
        {QStringLiteral("stylesheet"), 1},
        {QStringLiteral("reverse"), 0},
        {QStringLiteral("widgetcount"), 0},
        {QStringLiteral("nograb"), 0},
        {QStringLiteral("dograb"), 0},
        {QStringLiteral("sync"), 0},
    };
    return arguments;
}

QStringList withoutQtArguments(const QStringList &arguments)
{
    QStringList kept;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (i > 0 && argument.startsWith(QLatin1Char('-'))) {
            const QString name = argument.mid(argument.startsWith(QStringLiteral("--")) ? 2 : 1);
            const auto known = qtArguments().constFind(name);
            if (known != qtArguments().constEnd()) {
                i += *known;
                continue;
            }
        }
        kept.append(argument);
    }
    return kept;
}

// A usage error, or nothing when the parsed command line holds together.
std::optional<QString> usageProblem(const QCommandLineParser &parser, bool parsed)
{
    if (!parsed)
        return parser.errorText();
    const QStringList extra = parser.positionalArguments();
    if (!extra.isEmpty())
        return QStringLiteral("Unexpected argument '%1'.").arg(extra.first());
    QStringList given;
    for (const Job &job : jobs()) {
        if (parser.isSet(job.option))
            given.append(dashed(job.option));
        if (parser.values(job.option).size() > 1)
            return QStringLiteral("%1 is given more than once.").arg(dashed(job.option));
    }
    if (given.size() > 1)
        return QStringLiteral("%1 cannot be given together; run one job at a time.")
            .arg(given.join(QStringLiteral(" and ")));
    for (const OptionEntry &entry : otherOptions()) {
        const QString &name = entry.names.last();
        if (!entry.valueName.isEmpty() && parser.values(name).size() > 1)
            return QStringLiteral("%1 is given more than once.").arg(dashed(name));
        if (!entry.job.isEmpty() && parser.isSet(name) && !parser.isSet(entry.job))
            return QStringLiteral("%1 goes with %2.").arg(dashed(name), dashed(entry.job));
    }
    if (parser.isSet(DataDirOption) && parser.value(DataDirOption).isEmpty())
        return QStringLiteral("%1 needs a folder.").arg(dashed(DataDirOption));
    return std::nullopt;
}

// The folder the windows would use, found without creating or probing anything:
// the one beside the program when it may be written to (or may be made), else
// the user's own; but when the user's holds neither file and the class's files
// were left beside the program, those, which start-up would bring over. A
// packaged program only ever uses the user's own.
std::filesystem::path dataDirForJobs()
{
    const QDir user(QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
                        .filePath(QStringLiteral("data")));
    if (!mayKeepDataBesideProgram())
        return user.filesystemPath();
    const QString programDir = QCoreApplication::applicationDirPath();
    const QFileInfo portable(portableDataDir());
    const bool portableUsable = portable.exists() ? portable.isDir() && portable.isWritable()
                                                  : QFileInfo(programDir).isWritable();
    if (portableUsable)
        return QDir(portable.filePath()).filesystemPath();
    const DataPaths userPaths = DataPaths::in(user.filesystemPath());
    std::error_code ec;
    const bool userHasClass = std::filesystem::exists(userPaths.testsPath, ec) ||
                              std::filesystem::exists(userPaths.studentsPath, ec);
    const QString leftBehind = classFilesLeftBehind(programDir, user.path());
    if (!userHasClass && !leftBehind.isEmpty())
        return QDir(leftBehind).filesystemPath();
    return user.filesystemPath();
}

} // namespace

bool runsWithoutWindows(const QStringList &arguments)
{
    QCommandLineParser parser;
    declareOptions(parser);
    if (!parser.parse(withoutQtArguments(arguments)))
        return true;
    if (parser.isSet(HelpOption) || parser.isSet(VersionOption))
        return true;
    for (const Job &job : jobs())
        if (parser.isSet(job.option))
            return true;
    return usageProblem(parser, true).has_value();
}

Invocation readCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    declareOptions(parser);
    const bool parsed = parser.parse(withoutQtArguments(arguments));

    Invocation invocation;
    if (const std::optional<QString> problem = usageProblem(parser, parsed)) {
        invocation.action = Invocation::Action::UsageError;
        invocation.text = *problem;
        return invocation;
    }
    if (parser.isSet(HelpOption)) {
        invocation.action = Invocation::Action::Help;
        invocation.text = parser.helpText();
        return invocation;
    }
    if (parser.isSet(VersionOption)) {
        invocation.action = Invocation::Action::Version;
        invocation.text = QStringLiteral("Tavrino %1\n").arg(QLatin1String(TavrinoVersion));
        return invocation;
    }
    for (const QString &name : parser.optionNames())
        invocation.values.insert(name, parser.value(name));
    invocation.readAloud = parser.isSet(ReadAloudOption);
    invocation.classroom = parser.isSet(ClassroomOption);
    if (parser.isSet(DataDirOption)) {
        const QString folder = QFileInfo(parser.value(DataDirOption)).absoluteFilePath();
        invocation.dataDir = QDir(folder).filesystemPath();
    }
    for (const Job &job : jobs()) {
        if (parser.isSet(job.option)) {
            invocation.action = Invocation::Action::Job;
            invocation.job = &job;
            invocation.jobValue = parser.value(job.option);
        }
    }
    return invocation;
}

int runWithoutWindows(const Invocation &invocation, std::ostream &out, std::ostream &err)
{
    switch (invocation.action) {
    case Invocation::Action::Help:
    case Invocation::Action::Version:
        out << invocation.text.toStdString() << std::flush;
        return ExitOk;
    case Invocation::Action::UsageError:
        err << "tavrino: " << invocation.text.toStdString() << " See 'tavrino --help'.\n"
            << std::flush;
        return ExitUsage;
    case Invocation::Action::Job: {
        const JobContext context{invocation.dataDir.value_or(dataDirForJobs()), invocation.jobValue,
                                 invocation.values, out, err};
        return invocation.job->run(context);
    }
    case Invocation::Action::Windows:
        break;
    }
    return ExitUsage;
}
