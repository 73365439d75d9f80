#include "commandline/Jobs.h"

#include "commandline/ClassData.h"
#include "commandline/CommandLine.h"
#include "commandline/HistoryExport.h"
#include "commandline/WorksheetOptions.h"
#include "reports/ClassReport.h"
#include "reports/ClassReportPdf.h"
#include "reports/ClassResultsCsv.h"
#include "worksheets/WorksheetPdf.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>

#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

const QString StandardOutput = QStringLiteral("-");

bool inside(const fs::path &file, const fs::path &folder)
{
    const fs::path parent = fs::weakly_canonical(file).parent_path();
    const fs::path dir = fs::weakly_canonical(folder);
    auto d = dir.begin();
    auto p = parent.begin();
    for (; d != dir.end(); ++d, ++p)
        if (p == parent.end() || *p != *d)
            return false;
    return true;
}

// A target inside the data folder is refused before anything is read: the jobs
// never write there. True, with the reason on err, when it is.
bool writesIntoDataFolder(const JobContext &context, const QString &option)
{
    if (context.value == StandardOutput ||
        !inside(QDir(QFileInfo(context.value).absoluteFilePath()).filesystemPath(),
                context.dataDir))
        return false;
    context.err << "tavrino: --" << option.toStdString() << " would write into the data folder \""
                << context.dataDir.string() << "\"; choose a file elsewhere.\n";
    return true;
}

// Reads the class, or says on err why it cannot be read.
std::optional<ClassData> classFor(const JobContext &context, const QString &option, int &status)
{
    if (writesIntoDataFolder(context, option)) {
        status = ExitUsage;
        return std::nullopt;
    }
    ClassData data;
    if (const std::optional<std::string> problem = readClassData(context.dataDir, data)) {
        context.err << "tavrino: " << *problem << '\n';
        status = ExitFailed;
        return std::nullopt;
    }
    return data;
}

fs::path targetPath(const JobContext &context)
{
    return QDir(QFileInfo(context.value).absoluteFilePath()).filesystemPath();
}

int exportCsv(const JobContext &context)
{
    int status = ExitOk;
    const std::optional<ClassData> data = classFor(context, QStringLiteral("export-csv"), status);
    if (!data)
        return status;
    if (context.value == StandardOutput) {
        if (!writeClassResultsCsv(context.out, data->bank, data->records) || !context.out.flush()) {
            context.err << "tavrino: The results could not be written to standard output.\n";
            return ExitFailed;
        }
        return ExitOk;
    }
    if (const std::optional<FileError> error =
            saveClassResultsCsv(targetPath(context), data->bank, data->records)) {
        context.err << "tavrino: " << error->message() << '\n';
        return ExitFailed;
    }
    return ExitOk;
}

int reportPdf(const JobContext &context)
{
    int status = ExitOk;
    const std::optional<ClassData> data = classFor(context, QStringLiteral("report-pdf"), status);
    if (!data)
        return status;
    const ClassReport report = makeTodaysClassReport(data->bank, data->records, context.dataDir);
    if (context.value == StandardOutput) {
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        const bool painted = writeClassReportPdf(pdf, report);
        context.out.write(pdf.data().constData(), pdf.data().size());
        if (!painted || !context.out.flush()) {
            context.err << "tavrino: The report could not be written to standard output.\n";
            return ExitFailed;
        }
        return ExitOk;
    }
    if (const std::optional<std::string> problem =
            saveClassReportPdf(targetPath(context), report)) {
        context.err << "tavrino: " << *problem << '\n';
        return ExitFailed;
    }
    return ExitOk;
}

// Every recorded answer. Only the history is read, so a class whose data files
// cannot be read still gives its history.
int exportHistory(const JobContext &context)
{
    if (writesIntoDataFolder(context, QStringLiteral("export-history-csv")))
        return ExitUsage;
    const std::optional<std::string> problem =
        context.value == StandardOutput ? exportHistoryReadOnly(context.dataDir, context.out)
                                        : saveHistoryCsv(context.dataDir, targetPath(context));
    if (problem) {
        context.err << "tavrino: " << *problem << '\n';
        return ExitFailed;
    }
    if (context.value == StandardOutput && !context.out.flush()) {
        context.err << "tavrino: The history could not be written to standard output.\n";
        return ExitFailed;
    }
    return ExitOk;
}

// The options are checked before anything is read; the subject and the level
// once the bank is read, against it.
int worksheet(const JobContext &context)
{
    const QString option = QStringLiteral("worksheet");
    WorksheetOptions options;
    if (const std::optional<QString> problem = readWorksheetOptions(context.values, options)) {
        context.err << "tavrino: " << problem->toStdString() << '\n';
        return ExitUsage;
    }
    if (writesIntoDataFolder(context, option))
        return ExitUsage;
    TestBank bank;
    if (const std::optional<std::string> problem = readBankOnly(context.dataDir, bank)) {
        context.err << "tavrino: " << *problem << '\n';
        return ExitFailed;
    }
    const std::optional<int> subject = findSubject(bank, options.subjectName);
    if (!subject) {
        context.err << "tavrino: " << unknownSubject(bank, options.subjectName).toStdString()
                    << '\n';
        return ExitUsage;
    }
    if (!levelHasQuestions(bank, *subject, options.level)) {
        context.err << "tavrino: --level " << levelText(options.level) << ": "
                    << bank.subjects[static_cast<std::size_t>(*subject)].name
                    << " has no questions at that level.\n";
        return ExitUsage;
    }

    const Worksheet sheet = makeWorksheet(bank, *subject, options.level, options.settings);
    if (context.value == StandardOutput) {
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        const bool painted = writeWorksheetPdf(pdf, sheet);
        context.out.write(pdf.data().constData(), pdf.data().size());
        if (!painted || !context.out.flush()) {
            context.err << "tavrino: The worksheet could not be written to standard output.\n";
            return ExitFailed;
        }
        return ExitOk;
    }
    if (const std::optional<std::string> problem = saveWorksheetPdf(targetPath(context), sheet)) {
        context.err << "tavrino: " << *problem << '\n';
        return ExitFailed;
    }
    return ExitOk;
}

} // namespace

const std::vector<Job> &jobs()
{
    static const std::vector<Job> all = {
        {QStringLiteral("export-csv"), QStringLiteral("file"),
         QStringLiteral("Write the results as CSV to FILE (- for stdout)."), exportCsv},
        {QStringLiteral("report-pdf"), QStringLiteral("file"),
         QStringLiteral("Write the report as PDF to FILE (- for stdout)."), reportPdf},
        {QStringLiteral("export-history-csv"), QStringLiteral("file"),
         QStringLiteral("Write all answers as CSV to FILE (- for stdout)."), exportHistory},
        {QStringLiteral("worksheet"), QStringLiteral("file"),
         QStringLiteral("Write a worksheet as PDF to FILE (- for stdout)."), worksheet},
    };
    return all;
}
