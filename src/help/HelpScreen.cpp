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

PageInfo InfoFor(HelpPage page)
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

QString PageText(HelpPage page, const DataPaths &paths)
{
    switch (page) {
    case HelpPage::Main: {
        const QString dataDir = QDir(paths.dataDir).absolutePath();
        const bool besideProgram = dataDir == QDir(portableDataDir()).absolutePath();
        return MainHelpPage(dataDir, besideProgram);
    }
    case HelpPage::Students:
        return StudentsHelpPage();
    case HelpPage::Tests:
        break;
    }
    return TestsHelpPage();
}

} // namespace

HelpScreen::HelpScreen(HelpPage page, const DataPaths &paths, QWidget *parent) : QDialog(parent)
{
    const PageInfo info = InfoFor(page);
    setObjectName(info.objectName);
    setWindowTitle(info.title);
    setModal(true);

    // The page is handed to the viewer directly: it needs no file on disk.
    auto *WB = new QTextBrowser(this);
    WB->setObjectName(QStringLiteral("WB"));
    WB->setAccessibleName(info.title);
    WB->setOpenLinks(false);
    // One point above the desktop's own size and a wider margin: this is text
    // to be read through, not a form to be scanned.
    QFont readingFont = WB->font();
    readingFont.setPointSizeF(readingFont.pointSizeF() + 1);
    WB->setFont(readingFont);
    WB->document()->setDocumentMargin(12);
    WB->setHtml(PageText(page, paths));

    auto *cmdClose = new QPushButton(QStringLiteral("Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdClose->setDefault(true);
    connect(cmdClose, &QPushButton::clicked, this, &HelpScreen::cmdClose_Click);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(WB);
    layout->addLayout(buttons);

    // Wide and tall enough to read a section without scrolling sideways, but
    // never larger than the screen it opens on.
    const QRect available = screen()->availableGeometry();
    resize(QSize(760, 600).boundedTo(available.size()));
    move(available.center() - rect().center());
    WB->setFocus();
}

void HelpScreen::cmdClose_Click()
{
    accept();
}
