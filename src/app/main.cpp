// Tavrino: timed tests for schoolchildren. Reads the command line, then either
// runs one job without windows or opens the windows.
#include "commandline/CommandLine.h"
#include "core/DataPaths.h"
#include "mainscreen/MainScreen.h"
#include "quiz/Random.h"
#include "speech/VoiceProcess.h"
#include "ui/DataLocation.h"
#include "ui/Prompt.h"
#include "ui/Session.h"

#include <QApplication>
#include <QHashFunctions>
#include <QIcon>

#include <filesystem>
#include <iostream>

namespace {

QStringList argumentList(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

// Qt's own notes (a missing runtime folder, a font substituted) would come
// between a job's output and its one line of error; only a fatal one is shown.
void keepQtQuiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg)
        std::cerr << "tavrino: " << message.toStdString() << std::endl;
}

// A job needs no display: unless the caller chose a platform, it draws offscreen.
int runHeadless(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(keepQtQuiet);
    // Qt's hash tables order their entries by a seed drawn afresh in every
    // process, and the PDF writer lists a file's fonts in that order: fixed,
    // the same job writes the same bytes every time it runs.
    QHashSeed::setDeterministicGlobalSeed();
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Tavrino"));
    return runWithoutWindows(readCommandLine(QGuiApplication::arguments()), std::cout, std::cerr);
}

int runWindows(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrino"));
    // Lets the desktop match the windows to tavrino.desktop and its icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("tavrino"));
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/tavrino-%1.png").arg(size), QSize(size, size));
    QApplication::setWindowIcon(icon);

    // A folder named on the command line is used as it is; only the folder
    // chosen here may have had the class's files left behind elsewhere.
    const Invocation invocation = readCommandLine(QApplication::arguments());
    const std::filesystem::path dataDir = invocation.dataDir.value_or(dataDirForThisProgram());
    DialogPrompt prompt;
    Session session(DataPaths::in(dataDir), prompt);
    session.mode = invocation.classroom ? ProgramMode::Classroom : ProgramMode::Normal;

    RandomSource random;
    // Asked before the window shows whether it can be heard (a few hundredths
    // of a second with flite), so the Read aloud box is right from the start.
    VoiceProcess voice(VoiceProcess::helperBesideProgram());
    MainScreen mainScreen(session, random);
    mainScreen.setSpeaker(voice);
    mainScreen.setReadAloud(invocation.readAloud);
    if (!invocation.dataDir)
        mainScreen.bringClassFilesFrom(classFilesLeftBehind(dataDir));
    mainScreen.show();
    return app.exec();
}

} // namespace

int main(int argc, char *argv[])
{
    if (runsWithoutWindows(argumentList(argc, argv)))
        return runHeadless(argc, argv);
    return runWindows(argc, argv);
}
