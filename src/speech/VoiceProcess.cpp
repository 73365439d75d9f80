#include "VoiceProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QLoggingCategory>
#include <QProcess>

// The same category as the helper's: with it on, the helper's log is shown too.
Q_LOGGING_CATEGORY(voiceLog, "tavrino.speech", QtWarningMsg)

namespace {

const QString HelperName = QStringLiteral("tavrino-voice");
// A helper that ended is started again for the next text, but not for ever:
// one that cannot run at all is not started for every question of the day.
constexpr int MostRestarts = 20;
constexpr int EndMilliseconds = 1000;

} // namespace

QString VoiceProcess::helperBesideProgram()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(HelperName);
}

VoiceProcess::VoiceProcess(const QString &helper, const QStringList &arguments)
    : m_helper(helper), m_arguments(arguments)
{
    startHelper();
    if (!m_process->waitForStarted(StartMilliseconds)) {
        m_unavailableReason = "The voice program " + HelperName.toStdString() +
                              " could not be started beside Tavrino.";
        return;
    }
    const QDeadlineTimer deadline(StartMilliseconds);
    while (!m_process->canReadLine() && !deadline.hasExpired() &&
           m_process->state() == QProcess::Running)
        m_process->waitForReadyRead(static_cast<int>(deadline.remainingTime()));
    const QString first = QString::fromUtf8(m_process->readLine()).trimmed();
    qCDebug(voiceLog) << "helper says" << first;
    if (first == QStringLiteral("ready"))
        return;
    if (first.startsWith(QStringLiteral("unavailable ")))
        m_unavailableReason = first.mid(12).toStdString();
    else
        m_unavailableReason = "The voice program " + HelperName.toStdString() + " did not start.";
}

VoiceProcess::~VoiceProcess()
{
    if (m_process->state() == QProcess::NotRunning)
        return;
    m_process->closeWriteChannel();
    if (!m_process->waitForFinished(EndMilliseconds)) {
        m_process->kill();
        m_process->waitForFinished(EndMilliseconds);
    }
}

void VoiceProcess::startHelper()
{
    m_process = std::make_unique<QProcess>();
    // What the helper's audio stack prints is noise in a classroom; it is
    // shown only while the speech log is asked for.
    if (voiceLog().isDebugEnabled())
        m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    else
        m_process->setStandardErrorFile(QProcess::nullDevice());
    m_process->start(m_helper, m_arguments);
}

bool VoiceProcess::helperRunning() const
{
    return m_process->state() != QProcess::NotRunning;
}

void VoiceProcess::say(const std::string &text)
{
    if (!available())
        return;
    if (m_process->state() == QProcess::NotRunning) {
        if (m_restarts == MostRestarts)
            return;
        ++m_restarts;
        qCDebug(voiceLog) << "helper ended with" << m_process->exitCode() << "- started again";
        startHelper();
    }
    std::string line = text;
    for (char &c : line)
        if (c == '\n' || c == '\r')
            c = ' ';
    send("say " + line);
}

void VoiceProcess::stop()
{
    if (available() && m_process->state() != QProcess::NotRunning)
        send("stop");
}

void VoiceProcess::send(const std::string &line)
{
    // Buffered by QProcess and written as the event loop runs: nothing waits.
    m_process->write(QByteArray::fromStdString(line + '\n'));
}

std::string VoiceProcess::unavailableReason() const
{
    return m_unavailableReason;
}
