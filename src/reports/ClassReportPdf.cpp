#include "reports/ClassReportPdf.h"

#include "reports/ClassReport.h"
#include "reports/ClassReportPainter.h"
#include "reports/ReportPageSetup.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QSaveFile>

namespace {

void setUp(QPdfWriter &writer, const ClassReport &report)
{
    writer.setPageLayout(reportPageLayout(QLocale()));
    writer.setTitle(QString::fromStdString(report.title));
    writer.setCreator(QStringLiteral("Tavrino"));
}

} // namespace

bool writeClassReportPdf(QIODevice &device, const ClassReport &report)
{
    QPdfWriter writer(&device);
    setUp(writer, report);
    return ClassReportPainter(writer, report).paint();
}

std::optional<std::string> saveClassReportPdf(const std::filesystem::path &path,
                                              const ClassReport &report)
{
    QSaveFile file(QString::fromStdString(path.string()));
    if (file.open(QIODevice::WriteOnly) && writeClassReportPdf(file, report) && file.commit())
        return std::nullopt;
    return "The file \"" + path.string() +
           "\" could not be saved: " + file.errorString().toStdString() + ".";
}

int classReportPageCount(const ClassReport &report)
{
    QBuffer nowhere;
    QPdfWriter writer(&nowhere);
    setUp(writer, report);
    return ClassReportPainter(writer, report).pageCount();
}
