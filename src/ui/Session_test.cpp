// A save that fails reaches the user: a stop message naming the file and the
// cause, a false return so the caller keeps its data, and the old file intact.
#include "ui/Session.h"

#include "core/AtomicFile.h"
#include "core/DefaultBank.h"
#include "testsupport/ScriptedPrompt.h"
#include "testsupport/TempDataDir.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <vector>

TEST(Session, AFailedSaveShowsAStopMessageAndKeepsTheOldFile)
{
    const TempDataDir dir;
    ScriptedPrompt prompt;
    Session session(dir.paths(), prompt);
    buildDefaultTests(session.bank);
    session.records.students = {newStudent(session.bank.subjectMax)};
    session.records.students[0].current = true;
    ASSERT_TRUE(session.saveTests(nullptr));
    ASSERT_TRUE(session.saveStudents(nullptr));
    ASSERT_TRUE(prompt.shown().empty());

    const struct {
        std::filesystem::path path;
        std::function<bool()> save;
        SaveFault fault;
    } saves[] = {
        {dir.paths().testsPath,
         [&] { return session.saveTests(nullptr); },
         {SaveStep::Write, ENOSPC, 1}},
        {dir.paths().studentsPath,
         [&] { return session.saveStudents(nullptr); },
         {SaveStep::Rename, EACCES, 0}},
    };
    for (const auto &save : saves) {
        SCOPED_TRACE(save.path.string());
        const std::vector<unsigned char> old = readFileBytes(save.path);
        session.bank.subjects[2].name = "Changed";
        session.records.students.front().name = "Changed";
        prompt.clear();
        {
            const InjectedSaveFault fault(save.fault);
            EXPECT_FALSE(save.save());
        }
        ASSERT_EQ(prompt.shown().size(), 1u);
        const ScriptedPrompt::Shown &shown = prompt.shown().front();
        EXPECT_EQ(shown.kind, ScriptedPrompt::Shown::Kind::Stop);
        EXPECT_TRUE(shown.text.contains(QString::fromStdString(save.path.string())) &&
                    shown.text.contains(QString::fromLocal8Bit(std::strerror(save.fault.error))))
            << shown.text.toStdString();
        EXPECT_EQ(readFileBytes(save.path), old);
        // What was in memory is kept, so the next save can still write it.
        EXPECT_TRUE(save.save());
        EXPECT_NE(readFileBytes(save.path), old);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()),
                            std::filesystem::directory_iterator()),
              2);
}
