// The Students screen's Report… and Export…: the class's results as a printed
// report (in a preview, or as a PDF file when too long for one) and as CSV.
#include "StudentsScreen.h"

#include "core/History.h"
#include "reports/ClassHistoryLists.h"
#include "reports/ClassReport.h"
#include "reports/ClassReportPdf.h"
#include "reports/ClassResultsCsv.h"
#include "ui/ClassHistory.h"
#include "ui/Prompt.h"
#include "ui/Session.h"
#include "ui/WaitCursor.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <optional>
#include <string>

namespace {

// The file to save to, asked with a name for the class in the user's documents
// suggested; with the suffix added when the name has none. Empty when cancelled.
QString askSavePath(Session &session, QWidget *parent, const QString &title, const QString &name,
                    const QString &suffix, const QString &filter)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString suggested =
        QDir(documents).filePath(QString::fromStdString(className(session.paths.dataDir)) +
                                 QLatin1Char(' ') + name + QLatin1Char('.') + suffix);
    QString chosen = session.prompt.saveFileName(parent, title, suggested, filter);
    if (!chosen.isEmpty() && QFileInfo(chosen).suffix().isEmpty())
        chosen += QLatin1Char('.') + suffix;
    return chosen;
}

void tellFailure(Session &session, QWidget *parent, const std::optional<std::string> &problem)
{
    if (problem)
        session.prompt.stop(parent, QStringLiteral("Tavrino"), QString::fromStdString(*problem));
}

} // namespace

void StudentsScreen::setReportPreviewer(ReportPreviewer previewer)
{
    m_previewReport = std::move(previewer);
}

void StudentsScreen::showReport()
{
    std::optional<WaitCursor> wait(std::in_place);
    ClassReport report =
        makeTodaysClassReport(m_session.bank, m_session.records, m_session.paths.dataDir);
    // With a history, who needs help and the questions the class misses most follow.
    if (m_session.history && m_session.history->isOn()) {
        addHistoryLists(report, m_session.history->queries(), m_session.bank,
                        studentNames(m_session.records), [](LocalSeconds seconds) {
                            const CivilTime time = toCivilTime(seconds);
                            return QLocale()
                                .toString(QDate(time.year, time.month, time.day),
                                          QLocale::ShortFormat)
                                .toStdString();
                        });
    }
    const int pages = classReportPageCount(report);
    wait.reset();
    if (pages > MaxPreviewPages) {
        saveLongReport(report, pages);
    } else if (m_previewReport) {
        m_previewReport(this, report);
    }
    // A bare X session (a kiosk) has no window manager to hand the keyboard
    // back when the preview or the file dialog closes.
    activateWindow();
}

void StudentsScreen::saveLongReport(const ClassReport &report, int pages)
{
    // The preview keeps every page it shows in memory, a few gigabytes for a
    // report of thousands of pages; a PDF file is written a page at a time.
    if (!m_session.prompt.confirm(
            this, QStringLiteral("Class Report"),
            QStringLiteral("The report has %1 pages, too many to show in a preview.\rSave it as a "
                           "PDF file instead, to open or print from there?")
                .arg(QLocale().toString(pages))))
        return;
    const QString chosen =
        askSavePath(m_session, this, QStringLiteral("Save Class Report"), QStringLiteral("report"),
                    QStringLiteral("pdf"), QStringLiteral("PDF files (*.pdf)"));
    if (chosen.isEmpty())
        return;
    std::optional<std::string> problem;
    {
        const WaitCursor wait;
        problem = saveClassReportPdf(QDir(chosen).filesystemPath(), report);
    }
    tellFailure(m_session, this, problem);
}

void StudentsScreen::exportResults()
{
    const QString chosen =
        askSavePath(m_session, this, QStringLiteral("Export Results"), QStringLiteral("results"),
                    QStringLiteral("csv"), QStringLiteral("CSV files (*.csv)"));
    activateWindow();
    if (chosen.isEmpty())
        return;
    std::optional<FileError> error;
    {
        const WaitCursor wait;
        error =
            saveClassResultsCsv(QDir(chosen).filesystemPath(), m_session.bank, m_session.records);
    }
    tellFailure(m_session, this,
                error ? std::optional<std::string>(error->message()) : std::nullopt);
}
