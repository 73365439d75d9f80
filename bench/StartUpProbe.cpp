// The program's start-up as main.cpp performs it, on a given data directory,
// up to the Students screen shown; then the time is reported and it ends.
// Only the way the Students screen is opened differs: it carries the reporter.
#include "ReportWhenShown.h"
#include "core/DataPaths.h"
#include "mainscreen/MainScreen.h"
#include "quiz/Random.h"
#include "students/StudentsScreen.h"
#include "ui/Prompt.h"
#include "ui/Session.h"

#include <QApplication>
#include <QIcon>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s DATA_DIR\n", argv[0]);
        return 2;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrino"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tavrino"));
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/tavrino-%1.png").arg(size), QSize(size, size));
    QApplication::setWindowIcon(icon);

    DialogPrompt prompt;
    Session session(DataPaths::in(argv[1]), prompt);

    RandomSource random;
    MainScreen mainScreen(session, random);
    mainScreen.setOtherScreens({[&] {
                                    StudentsScreen screen(session, &mainScreen);
                                    if (!screen.loadRoster())
                                        return false;
                                    const ReportWhenShown report(screen);
                                    screen.exec();
                                    return true;
                                },
                                [] {}, [] {}});
    mainScreen.show();
    return app.exec();
}
