// The history among the backups: copied while open, listed by its answers,
// restored on its own and undoable like the data files.
#include "core/HistoryBackups.h"

#include "core/HistoryFixture_test.h"
#include "core/HistoryStore.h"
#include "core/Sqlite.h"

#include <fstream>

namespace fs = std::filesystem;

namespace {

class HistoryBackups : public HistoryTest {
protected:
    // The backups of the open history, as the session keeps them.
    Backups &backups()
    {
        if (!m_backups) {
            m_backups = std::make_unique<Backups>(folder() / "backups", clock);
            addHistorySource(*m_backups, *history, folder());
        }
        return *m_backups;
    }

    std::vector<std::string> summaries()
    {
        std::vector<std::string> texts;
        for (const Backup &copy : backups().list())
            texts.push_back(backups().summarise(copy).text);
        return texts;
    }

private:
    std::unique_ptr<Backups> m_backups;
};

TEST_F(HistoryBackups, ACopyOfTheOpenHistoryHoldsEveryAnswerAndIsMadeOnlyWhenItChanged)
{
    open();
    takeTest(0, 0, 1, {true, false});
    // The answers are in the log, not yet in the file: a plain copy would miss them.
    ASSERT_TRUE(fs::exists(file().string() + "-wal"));
    EXPECT_EQ(backups().backUp(DataFile::History).status, BackupOutcome::Status::Made);
    clock.advance(1000);
    EXPECT_EQ(backups().backUp(DataFile::History).status, BackupOutcome::Status::Unchanged);

    takeTest(1, 2, 3, {true});
    clock.advance(1000);
    EXPECT_EQ(backups().backUp(DataFile::History).status, BackupOutcome::Status::Made);
    const std::vector<Backup> copies = backups().list();
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(copies[0].path.filename().string().rfind("Tavrino_History 2026-11-25 ", 0), 0u);
    EXPECT_EQ(copies[0].path.extension(), ".db");
    EXPECT_EQ(summaries(), (std::vector<std::string>{"3 answers", "2 answers"}));
    // Each copy is one file, readable without the history.
    for (const Backup &copy : copies)
        EXPECT_FALSE(fs::exists(copy.path.string() + "-wal"));
}

TEST_F(HistoryBackups, ARestoreReplacesTheHistoryAloneAfterCopyingItAndCanBeUndone)
{
    open();
    takeTest(0, 0, 1, {true});
    ASSERT_EQ(backups().backUp(DataFile::History).status, BackupOutcome::Status::Made);
    const Backup annsOnly = backups().list().front();
    takeTest(1, 1, 2, {true, true});
    std::ofstream(folder() / "Tavrino_Students.dat") << "roster";

    clock.advance(1000);
    EXPECT_EQ(backups().restore(annsOnly), std::nullopt);
    EXPECT_EQ(takers(csvRows()), std::vector<std::string>{"Ann"});
    // The history as it was before the restore is the newest copy.
    const std::vector<Backup> copies = backups().list();
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(backups().summarise(copies.front()).text, "3 answers");
    // Students are still told apart by the roster in memory.
    takeTest(2, 0, 1, {false});
    EXPECT_EQ(takers(csvRows()), (std::vector<std::string>{"Ann", "Cy"}));

    clock.advance(1000);
    EXPECT_EQ(backups().restore(copies.front()), std::nullopt);
    EXPECT_EQ(takers(csvRows()), (std::vector<std::string>{"Ann", "Bob"}));
    std::ifstream roster(folder() / "Tavrino_Students.dat");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(roster), {}), "roster");
}

TEST_F(HistoryBackups, CopiesThatAreNotAHistoryThisVersionReadsAreListedAsDamaged)
{
    open();
    {
        const History::Batch batch(*history);
        for (int i = 0; i < 41; ++i)
            takeTest(i % 3, 0, 1, std::vector<bool>(30, true));
    }
    backups().backUp(DataFile::History);
    EXPECT_EQ(summaries(), std::vector<std::string>{"1,230 answers"});

    const fs::path newer = folder() / "backups" / "Tavrino_History 2026-11-26 08-00-00.db";
    fs::copy_file(backups().list().front().path, newer);
    SqliteDatabase(newer, SqliteDatabase::Access::ReadWrite).execute("PRAGMA user_version = 99");
    std::ofstream(folder() / "backups" / "Tavrino_History 2026-11-27 08-00-00.db")
        << std::string(8192, 'x');
    std::ofstream(folder() / "backups" / "Tavrino_History 2026-11-28 08-00-00.db");

    const std::vector<Backup> copies = backups().list();
    ASSERT_EQ(copies.size(), 4u);
    for (std::size_t i = 0; i < 3; ++i) {
        const BackupSummary summary = backups().summarise(copies[i]);
        EXPECT_FALSE(summary.readable) << copies[i].path;
        EXPECT_NE(summary.text.find(copies[i].path.string()), std::string::npos) << summary.text;
    }
    // Summaries only read: no log, no shared memory beside the copies.
    for (const auto &entry : fs::directory_iterator(folder() / "backups"))
        EXPECT_EQ(entry.path().extension(), ".db") << entry.path();
    const std::optional<std::string> refused = backups().restore(copies[1]);
    ASSERT_TRUE(refused);
    EXPECT_EQ(history->queries().tests(0, 0, 1).size(), 14u);
}

} // namespace
