#include "worksheets/WorksheetPdf.h"

#include "worksheets/Worksheet.h"
#include "worksheets/WorksheetPainter.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QSaveFile>

namespace {

// Qt's PDF writer dates every file with the moment it was written, and offers
// no way to set another date. The entry is blanked with spaces of the same
// length, so that every offset the file's cross-reference table gives still holds.
void removeCreationDate(QByteArray &pdf)
{
    const QByteArray key("/CreationDate (");
    const qsizetype start = pdf.indexOf(key);
    if (start < 0)
        return;
    const qsizetype end = pdf.indexOf(')', start + key.size());
    if (end < 0)
        return;
    pdf.replace(start, end + 1 - start, QByteArray(end + 1 - start, ' '));
}

} // namespace

bool writeWorksheetPdf(QIODevice &device, const Worksheet &sheet)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageLayout(worksheetPageLayout(QLocale()));
        writer.setTitle(QStringLiteral("Worksheet: ") +
                        QString::fromStdString(worksheetHeading(sheet)));
        writer.setCreator(QStringLiteral("Tavrino"));
        if (!paintWorksheet(writer, sheet))
            return false;
    }
    QByteArray pdf = buffer.buffer();
    removeCreationDate(pdf);
    return device.write(pdf) == pdf.size();
}

std::optional<std::string> saveWorksheetPdf(const std::filesystem::path &path,
                                            const Worksheet &sheet)
{
    QSaveFile file(QString::fromStdString(path.string()));
    if (file.open(QIODevice::WriteOnly) && writeWorksheetPdf(file, sheet) && file.commit())
        return std::nullopt;
    return "The file \"" + path.string() +
           "\" could not be saved: " + file.errorString().toStdString() + ".";
}
