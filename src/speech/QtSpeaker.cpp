#include "QtSpeaker.h"

#include <QAudioDevice>
#include <QLoggingCategory>
#include <QMediaDevices>
#include <QTextToSpeech>
#include <QTimer>
#include <QVoice>

// Off unless asked for (QT_LOGGING_RULES="tavrino.speech.debug=true"): which
// engine and voice were chosen, and what the engine does with each text.
Q_LOGGING_CATEGORY(speechLog, "tavrino.speech", QtWarningMsg)

namespace {

const QString Flite = QStringLiteral("flite");
// The clearest of flite's voices for a child: a US English voice built from
// recorded speech rather than the older diphone voices.
const QString PreferredVoice = QStringLiteral("slt");
// A text that fails this soon after it was started is started once more.
constexpr int SayAgainWithinMilliseconds = 1500;

QtMessageHandler previousHandler = nullptr;

void keepOnlyErrors(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if ((type == QtCriticalMsg || type == QtFatalMsg) && previousHandler)
        previousHandler(type, context, message);
}

// Qt's audio layer warns on the terminal when no sound server runs. On a
// server, in CI or in a muted lab that is expected, and the Read aloud box's
// tooltip already says why it is off, so its warnings are dropped while the
// sound device and the engine are looked for.
class QuietAudioWarnings {
public:
    QuietAudioWarnings() { previousHandler = qInstallMessageHandler(keepOnlyErrors); }
    ~QuietAudioWarnings() { qInstallMessageHandler(previousHandler); }
    QuietAudioWarnings(const QuietAudioWarnings &) = delete;
    QuietAudioWarnings &operator=(const QuietAudioWarnings &) = delete;
};

void chooseVoice(QTextToSpeech &engine)
{
    const QList<QVoice> voices = engine.availableVoices();
    for (const QVoice &voice : voices)
        if (voice.name() == PreferredVoice)
            engine.setVoice(voice);
}

} // namespace

QStringList QtSpeaker::preferredEngines()
{
    QStringList engines = QTextToSpeech::availableEngines();
    if (engines.removeAll(Flite) > 0)
        engines.prepend(Flite);
    return engines;
}

QtSpeaker::QtSpeaker(const QStringList &engines)
{
    findVoice(engines);
    if (!m_engine) {
        qCDebug(speechLog) << "no voice:" << m_unavailableReason.c_str();
        return;
    }
    qCDebug(speechLog) << "engine" << m_engine->engine() << "voice" << m_engine->voice().name();
    QObject::connect(m_engine.get(), &QTextToSpeech::stateChanged, m_engine.get(),
                     [](QTextToSpeech::State state) { qCDebug(speechLog) << "state" << state; });
    QObject::connect(
        m_engine.get(), &QTextToSpeech::errorOccurred, m_engine.get(),
        [this](QTextToSpeech::ErrorReason, const QString &message) { onError(message); });
}

// flite gives a text up when the sound server runs dry just after its start,
// as it does on a busy computer: the text is started once more. A sound
// device that goes away silences the voice; the test goes on either way.
void QtSpeaker::onError(const QString &message)
{
    qCDebug(speechLog) << "error" << message;
    if (m_saidAgain || m_text.isEmpty() || m_saying.elapsed() > SayAgainWithinMilliseconds)
        return;
    m_saidAgain = true;
    QTimer::singleShot(0, m_engine.get(), [this] {
        qCDebug(speechLog) << "say again" << m_text;
        m_engine->say(m_text);
    });
}

QtSpeaker::~QtSpeaker() = default;

void QtSpeaker::findVoice(const QStringList &engines)
{
    const QuietAudioWarnings quiet;
    if (QMediaDevices::audioOutputs().isEmpty()) {
        m_unavailableReason = "No sound device was found on this computer.";
        return;
    }
    const QStringList installed = QTextToSpeech::availableEngines();
    m_unavailableReason = "No voice for reading aloud is installed on this computer.";
    for (const QString &name : engines) {
        if (!installed.contains(name))
            continue;
        auto engine = std::make_unique<QTextToSpeech>(name);
        // A failed start comes with a message. The reason alone tells nothing:
        // flite reports one with no message after a start that went well.
        if (engine->state() == QTextToSpeech::Error || !engine->errorString().isEmpty()) {
            m_unavailableReason =
                "The voice could not be started: " + engine->errorString().toStdString();
            continue;
        }
        if (engine->availableVoices().isEmpty())
            continue;
        chooseVoice(*engine);
        m_engine = std::move(engine);
        m_unavailableReason.clear();
        return;
    }
}

void QtSpeaker::say(const std::string &text)
{
    if (!m_engine)
        return;
    qCDebug(speechLog) << "say" << text.c_str();
    // An engine may queue a text behind the one it is reading; the last
    // question must never wait for the one before.
    m_engine->stop(QTextToSpeech::BoundaryHint::Immediate);
    m_text = QString::fromStdString(text);
    m_saying.start();
    m_saidAgain = false;
    m_engine->say(m_text);
}

void QtSpeaker::stop()
{
    m_text.clear();
    if (m_engine)
        m_engine->stop(QTextToSpeech::BoundaryHint::Immediate);
}

std::string QtSpeaker::unavailableReason() const
{
    return m_unavailableReason;
}
