#include "worksheets/WorksheetPreview.h"

#include "worksheets/Worksheet.h"
#include "worksheets/WorksheetPainter.h"

#include <QGuiApplication>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

void previewWorksheet(QWidget *parent, const Worksheet &sheet)
{
    const QString heading = QString::fromStdString(worksheetHeading(sheet));
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(worksheetPageLayout(QLocale()));
    printer.setDocName(QStringLiteral("Worksheet: ") + heading);

    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("frmWorksheetPreview"));
    dialog.setWindowTitle(QStringLiteral("Worksheet: ") + heading);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&sheet](QPrinter *target) { paintWorksheet(*target, sheet); });
    if (const QScreen *display = QGuiApplication::primaryScreen())
        dialog.resize(display->availableSize() * 0.8);
    dialog.exec();
}
