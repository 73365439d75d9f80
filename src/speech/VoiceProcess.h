// The program's voice, run in a helper process (tavrino-voice) that hosts Qt's
// text to speech. The audio stack under it can fail when speech is cut off in
// quick succession; in a process of its own such a failure ends the helper,
// which is started again for the next question, and never the child's test.
#pragma once

#include "Speaker.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <string>

class QProcess;

class VoiceProcess : public Speaker {
public:
    // tavrino-voice in the program's own folder.
    static QString helperBesideProgram();

    // Starts the helper with these arguments and waits for its first line,
    // which says whether it can be heard: a few hundredths of a second, and
    // never more than StartMilliseconds.
    explicit VoiceProcess(const QString &helper, const QStringList &arguments = {});
    // Closes the helper's input, on which it ends.
    ~VoiceProcess() override;
    VoiceProcess(const VoiceProcess &) = delete;
    VoiceProcess &operator=(const VoiceProcess &) = delete;

    static constexpr int StartMilliseconds = 3000;

    void say(const std::string &text) override;
    void stop() override;
    std::string unavailableReason() const override;

    // Whether the helper runs now. One that ended is started again at the
    // next text to say.
    bool helperRunning() const;

private:
    void startHelper();
    void send(const std::string &line);

    QString m_helper;
    QStringList m_arguments;
    std::unique_ptr<QProcess> m_process;
    int m_restarts = 0;
    std::string m_unavailableReason;
};
