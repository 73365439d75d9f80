#include "help/HelpScreen.h"

#include "core/DataPaths.h"
#include "help/HelpPages.h"
#include "ui/DataLocation.h"

#include <QDir>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

struct PageInfo {
    QString objectName;
    QString title;
};

PageInfo infoFor(HelpPage page)
{
    switch (page) {
    case HelpPage::Main:
        return {QStringLiteral("frmHelp"), QStringLiteral("Tavrino: Help")};
    case HelpPage::Students:
        return {QStringLiteral("frmHelp_Profiles"),
                QStringLiteral("Tavrino: Students Screen Help")};
    case HelpPage::Tests:
        break;
    }
    return {QStringLiteral("frmHelp_Tests"), QStringLiteral("Tavrino: Tests Screen Help")};
}

QString pageText(HelpPage page, const DataPaths &paths, ProgramMode mode)
{
    switch (page) {
    case HelpPage::Main: {
        const QString dataDir = QDir(paths.dataDir).absolutePath();
        const bool besideProgram = dataDir == QDir(portableDataDir()).absolutePath();
        return mainHelpPage(dataDir, besideProgram, mode);
    }
    case HelpPage::Students:
        return studentsHelpPage(mode);
    case HelpPage::Tests:
        break;
    }
    return testsHelpPage();
}

} // namespace

HelpScreen::HelpScreen(HelpPage page, const DataPaths &paths, QWidget *parent)
    : HelpScreen(page, paths, ProgramMode::Normal, parent)
{
}

HelpScreen::HelpScreen(HelpPage page, const DataPaths &paths, ProgramMode mode, QWidget *parent)
    : QDialog(parent)
{
    const PageInfo info = infoFor(page);
    setObjectName(info.objectName);
    setWindowTitle(info.title);
    setModal(true);

    // The page is handed to the viewer directly: it needs no file on disk.
    auto *viewer = new QTextBrowser(this);
    viewer->setObjectName(QStringLiteral("WB"));
    viewer->setAccessibleName(info.title);
    viewer->setOpenLinks(false);
    // One point above the desktop's own size and a wider margin: this is text
    // to be read through, not a form to be scanned.
    QFont readingFont = viewer->font();
    readingFont.setPointSizeF(readingFont.pointSizeF() + 1);
    viewer->setFont(readingFont);
    viewer->document()->setDocumentMargin(12);
    viewer->setHtml(pageText(page, paths, mode));

    auto *closeButton = new QPushButton(QStringLiteral("Close"), this);
    closeButton->setObjectName(QStringLiteral("cmdClose"));
    closeButton->setDefault(true);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::accept);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(closeButton);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(viewer);
    layout->addLayout(buttons);

    // Wide and tall enough to read a section without scrolling sideways, but
    // never larger than the screen it opens on.
    const QRect available = screen()->availableGeometry();
    resize(QSize(760, 600).boundedTo(available.size()));
    move(available.center() - rect().center());
    viewer->setFocus();
}
