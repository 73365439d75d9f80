// tavrino-voice: reads the questions aloud for Tavrino, in a process of its own.
// Standard input carries "say <text>" and "stop", one to a line; the first line
// out is "ready", or "unavailable <why>". It ends when its input closes.
// Arguments, if any, name the text-to-speech engines to try, in order.
#include "QtSpeaker.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QMetaObject>

#include <iostream>
#include <string>
#include <thread>

namespace {

// Only the speech log is shown, when it is asked for: whatever else Qt's
// audio stack prints would reach a classroom's terminal as noise.
void showSpeechLogOnly(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    if (context.category && QByteArrayView(context.category) == "tavrino.speech")
        std::cerr << context.category << ": " << message.toStdString() << std::endl;
}

void obey(QtSpeaker &speaker, const std::string &line)
{
    if (line == "stop")
        speaker.stop();
    else if (line.rfind("say ", 0) == 0)
        speaker.say(line.substr(4));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    qInstallMessageHandler(showSpeechLogOnly);
    const QStringList engines = app.arguments().mid(1);
    QtSpeaker speaker(engines.isEmpty() ? QtSpeaker::preferredEngines() : engines);
    std::cout << (speaker.available() ? std::string("ready")
                                      : "unavailable " + speaker.unavailableReason())
              << std::endl;

    // Standard input is read on a thread of its own, so that the engine's
    // events go on between lines; each line is handled on the main thread.
    std::thread reader([&app, &speaker] {
        std::string line;
        while (std::getline(std::cin, line))
            QMetaObject::invokeMethod(
                &app, [&speaker, line] { obey(speaker, line); }, Qt::QueuedConnection);
        QMetaObject::invokeMethod(
            &app, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    });
    const int result = app.exec();
    reader.join();
    return result;
}
