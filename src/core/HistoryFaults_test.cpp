#include "core/FaultyVfs_test.h"
#include "core/HistoryFixture_test.h"
#include "core/HistorySchema.h"
#include "core/Sqlite.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using HistoryFaults = HistoryTest;

std::string bytesOf(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void overwrite(const fs::path &path, std::streamoff offset, const std::string &bytes)
{
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(offset);
    file.write(bytes.data(), std::streamsize(bytes.size()));
}

std::vector<std::string> entriesOf(const fs::path &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// Runs work as a user the folder's permissions apply to: as is, or, for root
// (whom they do not stop), in a child process that became "nobody".
std::string runUnprivileged(const std::function<std::string()> &work)
{
    if (::geteuid() != 0)
        return work();
    int pipe[2];
    if (::pipe(pipe) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(pipe[0]);
        std::string result = "could not become nobody";
        if (::setgid(65534) == 0 && ::setuid(65534) == 0)
            result = work();
        ssize_t written = ::write(pipe[1], result.data(), result.size());
        ::_exit(written == ssize_t(result.size()) ? 0 : 1);
    }
    ::close(pipe[1]);
    std::string result;
    char buffer[512];
    for (ssize_t n; (n = ::read(pipe[0], buffer, sizeof buffer)) > 0;)
        result.append(buffer, std::size_t(n));
    ::close(pipe[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return result;
}

} // namespace

TEST_F(HistoryFaults, ADamagedFileIsKeptAsideAndANewHistoryStarted)
{
    const std::string note = "Not a database: notes about the class.";
    std::ofstream(file(), std::ios::binary) << note;
    std::ofstream(folder() / "Tavrino_History.damaged.db") << "an older one";

    open();
    EXPECT_TRUE(history->isOn());
    const std::optional<std::string> message = history->takeMessage();
    ASSERT_TRUE(message);
    EXPECT_NE(message->find("is damaged (it is not a database) and was moved to"),
              std::string::npos)
        << *message;
    EXPECT_NE(message->find("Tavrino_History.damaged.2.db"), std::string::npos) << *message;
    EXPECT_EQ(history->takeMessage(), std::nullopt);
    EXPECT_EQ(bytesOf(folder() / "Tavrino_History.damaged.2.db"), note);
    takeTest(0, 0, 0, {true});
    EXPECT_EQ(csvRows().size(), 1u);

    // Damage inside a file whose header is sound shows when the answers are
    // first touched: mid-test, and the test goes on.
    history.reset();
    std::int64_t answerPage = 0;
    {
        SqliteDatabase db(file(), SqliteDatabase::Access::ReadOnly);
        SqliteStatement page =
            db.prepare("SELECT rootpage FROM sqlite_schema WHERE name = 'answer'");
        ASSERT_TRUE(page.step());
        answerPage = page.integer(0);
    }
    overwrite(file(), (answerPage - 1) * 4096, std::string(4096, '\xFF'));
    open();
    EXPECT_EQ(history->takeMessage(), std::nullopt);
    history->recorder().beginTest({1, 0, 0, 30, false});
    history->recorder().recordArithmetic({1, 1, 2, 0, 2, "2", true});
    const std::optional<std::string> later = history->takeMessage();
    ASSERT_TRUE(later);
    EXPECT_NE(later->find("Tavrino_History.damaged.3.db"), std::string::npos) << *later;
    EXPECT_TRUE(history->isOn());
    history->recorder().recordArithmetic({1, 2, 3, 0, 2, "3", true});
    takeTest(2, 0, 0, {true, false});
    EXPECT_EQ(takers(csvRows()), std::vector<std::string>{"Cy"});
    EXPECT_EQ(history->takeMessage(), std::nullopt);
}

TEST_F(HistoryFaults, AReadOnlyFolderTurnsTheHistoryOff)
{
    for (const bool fileBefore : {false, true}) {
        if (fileBefore) {
            open();
            takeTest(0, 0, 0, {true});
            history.reset();
        }
        const std::vector<std::string> before = entriesOf(folder());
        fs::permissions(folder(), fs::perms::owner_read | fs::perms::owner_exec |
                                      fs::perms::group_read | fs::perms::group_exec |
                                      fs::perms::others_read | fs::perms::others_exec);
        const std::string outcome = runUnprivileged([&] {
            open();
            takeTest(1, 0, 0, {true, false});
            std::string result = history->isOn() ? "on" : "off";
            result += "|" + history->takeMessage().value_or("no message");
            result += "|" + history->takeMessage().value_or("once");
            history.reset();
            return result;
        });
        fs::permissions(folder(), fs::perms::owner_all);
        EXPECT_EQ(outcome.substr(0, 4), "off|") << outcome;
        EXPECT_NE(outcome.find("Tests go on and scores are still saved"), std::string::npos)
            << outcome;
        EXPECT_EQ(outcome.substr(outcome.size() - 5), "|once") << outcome;
        EXPECT_EQ(entriesOf(folder()), before) << "file before: " << fileBefore;
    }
    EXPECT_EQ(csvRows().size(), 1u);
}

TEST_F(HistoryFaults, AFullDiskTurnsTheHistoryOffMidTest)
{
    FaultyVfs vfs;
    open();
    history->recorder().beginTest({0, 0, 2, 30, false});
    history->recorder().recordArithmetic({2, 2, 4, 0, 2, "4", true});
    vfs.failWritesAsDiskFull(true);
    history->recorder().recordArithmetic({2, 3, 5, 0, 2, "5", true});
    EXPECT_FALSE(history->isOn());
    const std::optional<std::string> message = history->takeMessage();
    ASSERT_TRUE(message);
    EXPECT_NE(message->find("the disk is full"), std::string::npos) << *message;
    const int failed = vfs.failedWrites();
    history->recorder().recordArithmetic({2, 4, 6, 0, 2, "6", true});
    history->recorder().endTest({3, 3, 0, false});
    EXPECT_TRUE(history->queries().tests(0, 0, 2).empty());
    EXPECT_EQ(vfs.failedWrites(), failed);
    EXPECT_EQ(history->takeMessage(), std::nullopt);

    vfs.failWritesAsDiskFull(false);
    open();
    const std::vector<TestSummary> tests = history->queries().tests(0, 0, 2);
    ASSERT_EQ(tests.size(), 1u);
    EXPECT_EQ(std::tie(tests[0].rights, tests[0].ending),
              std::make_tuple(1, TestEnding::Interrupted));
}

TEST_F(HistoryFaults, AFileFromANewerVersionIsLeftAlone)
{
    {
        SqliteDatabase db(file(), SqliteDatabase::Access::ReadWrite);
        upgradeHistorySchema(db);
        db.execute("PRAGMA user_version = 99");
    }
    const std::string bytes = bytesOf(file());
    open();
    takeTest(0, 0, 0, {true});
    EXPECT_FALSE(history->isOn());
    EXPECT_NE(history->takeMessage().value_or("").find("newer version"), std::string::npos);
    history.reset();
    EXPECT_TRUE(bytesOf(file()) == bytes);
}

TEST_F(HistoryFaults, VersionOneIsUpgradedWithEveryAnswerKept)
{
    {
        SqliteDatabase db(file(), SqliteDatabase::Access::ReadWrite);
        upgradeHistorySchema(db, 1);
        // Two answers to 6 + 7 and one to a multiple-choice question, as version 1 wrote them.
        db.execute(R"sql(
            INSERT INTO student VALUES (1, 0, 'Ann');
            INSERT INTO subject VALUES (1, 0, 'Arithmetic'), (2, 1, 'Spelling');
            INSERT INTO test VALUES (1, 1, 1, 2, 1795600000, 30, 0, 0, 0, 1, 1),
                                    (2, 1, 2, 2, 1795600100, 30, 1, 1, 1, 1, 0);
            INSERT INTO answer (test_id, seq, at_ms, took_ms, correct, operation, number1,
                                number2, result, blank, typed)
                VALUES (1, 0, 1200, 1200, 1, 0, 6, 7, 13, 2, 13),
                       (1, 1, 4000, 2800, 0, 0, 6, 7, 13, 0, '5');
            INSERT INTO choice_question VALUES (1, 42, 'Spell it', 'cat', 'catt', 'cet', 'kat');
            INSERT INTO answer (test_id, seq, at_ms, took_ms, correct, question_id, shown, chosen)
                VALUES (2, 0, 3000, 3000, 1, 1, 0, 0);
        )sql");
    }
    open({"Ann"});
    {
        SqliteDatabase db(file(), SqliteDatabase::Access::ReadOnly);
        EXPECT_EQ(db.pragmaInteger("user_version"), HistorySchemaVersion);
    }
    EXPECT_EQ(csvRows(), (std::vector<std::string>{
                             "Ann,2026-11-25T09:46:40,Arithmetic,2,6 + 7 = _,13,13,yes,1.2,no",
                             "Ann,2026-11-25T09:46:40,Arithmetic,2,_ + 7 = 13,5,6,no,2.8,no",
                             "Ann,2026-11-25T09:48:20,Spelling,2,Spell it,cat,cat,yes,3.0,yes"}));
    EXPECT_EQ(history->queries().tests(0, 0, 2).at(0).score, 0);
    // The facts of version 2 were built from the answers, and go on from there.
    history->recorder().beginTest({0, 0, 2, 30, false});
    history->recorder().recordArithmetic({6, 7, 13, 0, 1, "7", true});
    history->recorder().endTest({1, 1, 0, false});
    const std::vector<ArithmeticFact> facts = history->queries().facts(0);
    ASSERT_EQ(facts.size(), 1u);
    ASSERT_EQ(facts[0].recent.size(), 3u);
    EXPECT_EQ(std::tie(facts[0].recent[1].right, facts[0].recent[1].milliseconds),
              std::make_tuple(false, 2800));
    EXPECT_EQ(facts[0].recent[2].milliseconds, 1200);
}

TEST_F(HistoryFaults, ARestoredCopyReplacesTheHistoryOnly)
{
    open();
    takeTest(0, 0, 1, {true});
    const fs::path copy = folder() / "copy.db";
    EXPECT_EQ(history->backUpTo(copy), std::nullopt);
    EXPECT_FALSE(fs::exists(copy.string() + "-wal"));
    takeTest(1, 0, 1, {true, true});

    EXPECT_EQ(history->restoreFrom(copy), std::nullopt);
    EXPECT_EQ(takers(csvRows()), std::vector<std::string>{"Ann"});
    takeTest(1, 0, 1, {false});
    EXPECT_EQ(history->queries().tests(1, 0, 1).at(0).score, -1);

    std::ofstream(folder() / "bad.db") << "not a copy of anything";
    const std::optional<std::string> refused = history->restoreFrom(folder() / "bad.db");
    ASSERT_TRUE(refused);
    EXPECT_NE(refused->find("was not restored"), std::string::npos) << *refused;
    EXPECT_EQ(takers(csvRows()), (std::vector<std::string>{"Ann", "Bob"}));
    EXPECT_TRUE(history->isOn());
}
