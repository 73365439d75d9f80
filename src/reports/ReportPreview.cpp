#include "reports/ReportPreview.h"

#include "reports/ClassReportPainter.h"
#include "reports/ReportPageSetup.h"

#include <QGuiApplication>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

void previewClassReport(QWidget *parent, const ClassReport &report)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(reportPageLayout(QLocale()));
    printer.setDocName(QString::fromStdString(report.title));

    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("frmReportPreview"));
    dialog.setWindowTitle(QStringLiteral("Class Report"));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&report](QPrinter *target) { ClassReportPainter(*target, report).paint(); });
    if (const QScreen *display = QGuiApplication::primaryScreen())
        dialog.resize(display->availableSize() * 0.8);
    dialog.exec();
}
