#include "commandline/Jobs.h"

#include "commandline/ClassData.h"
#include "commandline/CommandLine.h"
#include "commandline/HistoryExport.h"
#include "reports/ClassReport.h"
#include "reports/ClassReportPdf.h"
#include "reports/ClassResultsCsv.h"

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

// Reads the class, or says on err why it cannot be read. A target inside the data
// folder is refused before anything is read: the jobs never write there.
std::optional<ClassData> classFor(const JobContext &context, const QString &option, int &status)
{
    if (context.value != StandardOutput &&
        inside(QDir(QFileInfo(context.value).absoluteFilePath()).filesystemPath(),
               context.dataDir)) {
        context.err << "tavrino: --" << option.toStdString()
                    << " would write into the data folder \"" << context.dataDir.string()
                    << "\"; choose a file elsewhere.\n";
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
    if (context.value != StandardOutput && inside(targetPath(context), context.dataDir)) {
        context.err << "tavrino: --export-history-csv would write into the data folder \""
                    << context.dataDir.string() << "\"; choose a file elsewhere.\n";
        return ExitUsage;
    }
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
    };
    return all;
}
