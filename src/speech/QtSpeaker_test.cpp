#include "QtSpeaker.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <string>

namespace {

QStringList printed;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    printed << message;
}

} // namespace

// On a computer without a sound device (CI, a server) or without the engine
// asked for, the speaker is quiet in every sense: it says why it cannot be
// heard, ignores what it is asked to say, and puts nothing on the terminal.
TEST(QtSpeaker, AnEngineThatIsNotInstalledLeavesASilentSpeakerThatSaysWhy)
{
    printed.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepMessage);
    {
        QtSpeaker speaker(QStringList{QStringLiteral("no-such-engine")});
        EXPECT_FALSE(speaker.available());
        const std::string reason = speaker.unavailableReason();
        EXPECT_TRUE(reason == "No sound device was found on this computer." ||
                    reason == "No voice for reading aloud is installed on this computer.")
            << reason;
        speaker.say("Seven plus what equals twelve?");
        speaker.stop();
    }
    qInstallMessageHandler(previous);
    EXPECT_TRUE(printed.isEmpty()) << printed.join('\n').toStdString();
}

// scripts/setup.sh installs the offline flite voice; Qt lists its engines in
// no fixed order, and another one is tried only after it.
TEST(QtSpeaker, TheFliteVoiceIsInstalledAndTriedFirst)
{
    const QStringList engines = QtSpeaker::preferredEngines();
    ASSERT_FALSE(engines.isEmpty());
    EXPECT_EQ(engines.front(), QStringLiteral("flite"));
    EXPECT_EQ(engines.count(QStringLiteral("flite")), 1);
}
