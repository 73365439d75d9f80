// Tavrino: timed tests for schoolchildren.
#include "core/DataPaths.h"
#include "mainscreen/MainScreen.h"
#include "quiz/Random.h"
#include "ui/DataLocation.h"
#include "ui/Prompt.h"
#include "ui/Session.h"

#include <QApplication>
#include <QIcon>

#include <filesystem>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrino"));
    // Lets the desktop match the windows to tavrino.desktop and its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("tavrino"));
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/tavrino-%1.png").arg(size), QSize(size, size));
    QApplication::setWindowIcon(icon);

    DialogPrompt prompt;
    const std::filesystem::path dataDir = dataDirForThisProgram();
    Session session(DataPaths::in(dataDir), prompt);

    RandomSource random;
    MainScreen mainScreen(session, random);
    mainScreen.bringClassFilesFrom(classFilesLeftBehind(dataDir));
    mainScreen.show();
    return app.exec();
}
