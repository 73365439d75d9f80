#include "core/HistorySchema.h"

#include "core/RecentFacts.h"
#include "core/Sqlite.h"

#include <sqlite3.h>

#include <array>
#include <string>

namespace {

// Sizes are kept small on purpose: a year of a class's tests is millions of
// answers. Times of answers are offsets from their test's start, a multiple-choice
// question is stored once and named by its id, and Arithmetic keeps integers.
void createVersion1(SqliteDatabase &db)
{
    db.execute(R"sql(
        -- The roster as last saved. position is NULL for history that matches
        -- nobody in the roster (it is listed as "not matched").
        CREATE TABLE student (
            id INTEGER PRIMARY KEY,
            position INTEGER,
            name TEXT NOT NULL
        );
        -- The subjects of the bank. position is NULL once a subject was deleted;
        -- its history stays, under its last name.
        CREATE TABLE subject (
            id INTEGER PRIMARY KEY,
            position INTEGER,
            name TEXT NOT NULL
        );
        -- started is local seconds (LocalTime.h); ending is NULL while the test
        -- runs, then 0 ran out, 1 stopped, 2 interrupted.
        CREATE TABLE test (
            id INTEGER PRIMARY KEY,
            student_id INTEGER NOT NULL,
            subject_id INTEGER NOT NULL,
            level INTEGER NOT NULL,
            started INTEGER NOT NULL,
            seconds INTEGER NOT NULL,
            practice INTEGER NOT NULL,
            ending INTEGER,
            score INTEGER,
            rights INTEGER,
            wrongs INTEGER
        );
        CREATE INDEX test_by_student ON test (student_id, subject_id, started);
        CREATE INDEX test_running ON test (id) WHERE ending IS NULL;
        -- A multiple-choice question with its right answer first and its wrong
        -- answers in text order; hash finds it again (ChoiceQuestions.cpp).
        CREATE TABLE choice_question (
            id INTEGER PRIMARY KEY,
            hash INTEGER NOT NULL,
            question TEXT NOT NULL,
            right_choice TEXT NOT NULL,
            wrong1 TEXT NOT NULL,
            wrong2 TEXT NOT NULL,
            wrong3 TEXT NOT NULL
        );
        CREATE INDEX choice_question_by_hash ON choice_question (hash);
        -- Every answer, in the order given within its test. at_ms and took_ms are
        -- milliseconds after the test's start and since the question appeared.
        -- Arithmetic fills operation to typed (typed holds an integer when the
        -- text was one written plainly); multiple choice fills question_id to
        -- chosen, shown being the order of the choices (ChoiceQuestions.h).
        CREATE TABLE answer (
            test_id INTEGER NOT NULL,
            seq INTEGER NOT NULL,
            at_ms INTEGER NOT NULL,
            took_ms INTEGER NOT NULL,
            correct INTEGER NOT NULL,
            operation INTEGER,
            number1 INTEGER,
            number2 INTEGER,
            result INTEGER,
            blank INTEGER,
            typed,
            question_id INTEGER,
            shown INTEGER,
            chosen INTEGER,
            PRIMARY KEY (test_id, seq)
        ) WITHOUT ROWID;
    )sql");
}

void addFluencyTables(SqliteDatabase &db)
{
    db.execute(R"sql(
        -- The latest answers to each fact (RecentFacts.cpp), so that a student's
        -- grid and a class's counts read a row per fact, not every answer.
        CREATE TABLE fact_recent (
            student_id INTEGER NOT NULL,
            operation INTEGER NOT NULL,
            number1 INTEGER NOT NULL,
            number2 INTEGER NOT NULL,
            answers BLOB NOT NULL,
            PRIMARY KEY (student_id, operation, number1, number2)
        ) WITHOUT ROWID;
        -- The questions a whole class misses, by subject and level.
        CREATE INDEX test_by_subject ON test (subject_id, level);
    )sql");
    rebuildAllRecentFacts(db);
}

using Step = void (*)(SqliteDatabase &);
// Step i brings version i to version i + 1.
constexpr std::array<Step, HistorySchemaVersion> Steps = {createVersion1, addFluencyTables};

} // namespace

void upgradeHistorySchema(SqliteDatabase &db, int target)
{
    int version = static_cast<int>(db.pragmaInteger("user_version"));
    if (version == 0) {
        SqliteStatement tables = db.prepare("SELECT count(*) FROM sqlite_schema");
        if (tables.step() && tables.integer(0) != 0)
            throw SqliteError(SQLITE_NOTADB, "the file holds other tables than the history's");
    }
    for (; version < target; ++version) {
        SqliteTransaction transaction(db);
        Steps[static_cast<std::size_t>(version)](db);
        db.execute("PRAGMA user_version = " + std::to_string(version + 1));
        transaction.commit();
    }
}
