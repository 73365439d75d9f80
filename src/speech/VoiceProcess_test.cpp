#include "VoiceProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <string>

namespace {

const QString Shell = QStringLiteral("/bin/sh");

QString fileText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

// The real helper, asked for an engine that is not installed: on any computer
// it cannot be heard, and says why.
TEST(VoiceProcess, TheHelperWithNoEngineToUseSaysWhyAndTheVoiceIsOff)
{
    VoiceProcess voice(QStringLiteral(TAVRINO_VOICE_HELPER), {QStringLiteral("no-such-engine")});
    const std::string reason = voice.unavailableReason();
    EXPECT_TRUE(reason == "No sound device was found on this computer." ||
                reason == "No voice for reading aloud is installed on this computer.")
        << reason;
    voice.say("Spell: people.");
    voice.stop();
}

// The helper's audio stack can fail when speech is cut off quickly; the next
// question starts it again and is said.
TEST(VoiceProcess, AHelperThatEndsIsStartedAgainForTheNextText)
{
    QTemporaryDir dir;
    const QString log = dir.filePath(QStringLiteral("heard.txt"));
    // Writes down each line it reads, and ends at "say crash".
    const QString helper =
        QStringLiteral("echo ready; while IFS= read -r line; do echo \"$line\" >> \"$0\";"
                       " [ \"$line\" = 'say crash' ] && exit 3; done");
    VoiceProcess voice(Shell, {QStringLiteral("-c"), helper, log});
    ASSERT_TRUE(voice.available()) << voice.unavailableReason();

    voice.say("Seven plus what\nequals twelve?");
    voice.stop();
    voice.say("crash");
    ASSERT_TRUE(QTest::qWaitFor([&voice] { return !voice.helperRunning(); }, 5000));
    voice.say("Spell: cat.");
    EXPECT_TRUE(QTest::qWaitFor(
        [&log] { return fileText(log).endsWith(QStringLiteral("say Spell: cat.\n")); }, 5000));
    EXPECT_EQ(fileText(log), QStringLiteral("say Seven plus what equals twelve?\nstop\nsay "
                                            "crash\nsay Spell: cat.\n"));
}

TEST(VoiceProcess, AHelperThatCannotStartOrNeverSaysReadyLeavesTheVoiceOff)
{
    const VoiceProcess missing(QStringLiteral("/nonexistent/tavrino-voice"));
    EXPECT_EQ(missing.unavailableReason(),
              "The voice program tavrino-voice could not be started beside Tavrino.");
    const VoiceProcess silent(Shell, {QStringLiteral("-c"), QStringLiteral("exit 0")});
    EXPECT_EQ(silent.unavailableReason(), "The voice program tavrino-voice did not start.");
    const VoiceProcess refusing(
        Shell, {QStringLiteral("-c"), QStringLiteral("echo 'unavailable No sound device.'")});
    EXPECT_EQ(refusing.unavailableReason(), "No sound device.");
}
