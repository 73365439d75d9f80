// The program's voice: Qt's text to speech, with the offline flite voice
// preferred. Whether it can be heard is decided once, when it is made.
#pragma once

#include "Speaker.h"

#include <QElapsedTimer>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>

class QTextToSpeech;

class QtSpeaker : public Speaker {
public:
    // flite first, then the other engines Qt has, in Qt's order.
    static QStringList preferredEngines();

    // Keeps the first of these engines that starts without an error and has a
    // voice. Nothing is tried where no sound device is found: an engine would
    // speak into nothing, and some start a service that outlives the program.
    explicit QtSpeaker(const QStringList &engines = preferredEngines());
    ~QtSpeaker() override;

    void say(const std::string &text) override;
    void stop() override;
    std::string unavailableReason() const override;

private:
    void findVoice(const QStringList &engines);
    void onError(const QString &message);

    std::unique_ptr<QTextToSpeech> m_engine;
    std::string m_unavailableReason;
    // The text being said, since when, and whether it was started again.
    QString m_text;
    QElapsedTimer m_saying;
    bool m_saidAgain = false;
};
