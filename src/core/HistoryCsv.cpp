#include "core/HistoryCsv.h"

#include "core/ChoiceQuestions.h"
#include "core/CsvWriter.h"
#include "core/HistoryStore.h"
#include "core/Sqlite.h"
#include "core/TestBank.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace fs = std::filesystem;

namespace {

enum Column {
    TestId,
    StudentId,
    SubjectId,
    Level,
    Started,
    Practice,
    TookMs,
    Correct,
    Operation,
    Number1,
    Number2,
    Result,
    Blank,
    Typed,
    Shown,
    Chosen,
    Question,
    FirstSlot,
};

std::unordered_map<std::int64_t, std::string> namesById(SqliteDatabase &db, const char *table)
{
    std::unordered_map<std::int64_t, std::string> names;
    SqliteStatement rows = db.prepare(std::string("SELECT id, name FROM ") + table);
    while (rows.step())
        names.emplace(rows.integer(0), std::string(rows.text(1)));
    return names;
}

// Tenths of a second, rounded: what a teacher reads, and finer than a child answers.
std::string secondsText(std::int64_t milliseconds)
{
    const std::int64_t tenths = (std::max<std::int64_t>(milliseconds, 0) + 50) / 100;
    return std::to_string(tenths / 10) + '.' + char('0' + tenths % 10);
}

std::string levelName(std::int64_t level)
{
    return level == 0 ? std::string("K") : std::to_string(level);
}

// "7 x _ = 56"
void arithmeticQuestionText(const SqliteStatement &row, std::string &text)
{
    const std::array<std::int64_t, 3> boxes = {row.integer(Number1), row.integer(Number2),
                                               row.integer(Result)};
    const std::int64_t blank = row.integer(Blank);
    const auto box = [&](std::size_t i) {
        return std::int64_t(i) == blank ? std::string("_") : std::to_string(boxes[i]);
    };
    const auto operation = static_cast<std::size_t>(row.integer(Operation));
    text = box(0);
    text += ' ';
    text += operation < OpSymbols.size() ? OpSymbols[operation] : '?';
    text += ' ';
    text += box(1);
    text += " = ";
    text += box(2);
}

void writeHeader(CsvWriter &csv)
{
    csv.writeByteOrderMark();
    for (const char *title : {"Student", "Started", "Subject", "Level", "Question", "Answer",
                              "Right answer", "Correct", "Seconds", "Practice"})
        csv.field(title);
    csv.endRow();
}

void writeRows(SqliteDatabase &db, CsvWriter &csv)
{
    const auto students = namesById(db, "student");
    const auto subjects = namesById(db, "subject");
    SqliteStatement rows = db.prepare(
        "SELECT t.id, t.student_id, t.subject_id, t.level, t.started, t.practice, a.took_ms, "
        "a.correct, a.operation, a.number1, a.number2, a.result, a.blank, a.typed, a.shown, "
        "a.chosen, q.question, q.right_choice, q.wrong1, q.wrong2, q.wrong3 "
        "FROM test t JOIN answer a ON a.test_id = t.id "
        "LEFT JOIN choice_question q ON q.id = a.question_id ORDER BY t.id, a.seq");
    const auto name = [](const auto &names, std::int64_t id) {
        const auto found = names.find(id);
        return found == names.end() ? std::string() : found->second;
    };
    // What belongs to the test is formatted once for all of its answers.
    std::int64_t testId = 0;
    std::string student, started, subject, level, practice, question, answer, right;
    while (rows.step()) {
        if (rows.integer(TestId) != testId) {
            testId = rows.integer(TestId);
            student = name(students, rows.integer(StudentId));
            subject = name(subjects, rows.integer(SubjectId));
            started = isoLocalTime(rows.integer(Started));
            level = levelName(rows.integer(Level));
            practice = rows.integer(Practice) ? "yes" : "no";
        }
        if (!rows.isNull(Operation)) {
            arithmeticQuestionText(rows, question);
            answer = rows.isInteger(Typed) ? std::to_string(rows.integer(Typed))
                                           : std::string(rows.text(Typed));
            const std::int64_t blank = rows.integer(Blank);
            right = std::to_string(rows.integer(blank == 0   ? Number1
                                                : blank == 1 ? Number2
                                                             : Result));
        } else {
            question = rows.text(Question);
            const std::array<int, 4> slots = slotsShown(static_cast<int>(rows.integer(Shown)));
            const auto chosen = static_cast<std::size_t>(rows.integer(Chosen)) % slots.size();
            answer = rows.text(FirstSlot + slots[chosen]);
            right = rows.text(FirstSlot);
        }
        csv.field(student).field(started).field(subject).field(level).field(question);
        csv.field(answer).field(right).field(rows.integer(Correct) ? "yes" : "no");
        csv.field(secondsText(rows.integer(TookMs))).field(practice);
        csv.endRow();
    }
}

} // namespace

void writeHistoryCsv(SqliteDatabase &db, std::ostream &out)
{
    CsvWriter csv(out);
    writeHeader(csv);
    writeRows(db, csv);
    csv.flush();
}

std::optional<std::string> exportHistoryCsv(const fs::path &dataDir, std::ostream &out)
{
    const fs::path path = historyPath(dataDir);
    const std::string named = "The history file \"" + path.u8string() + "\"";
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        CsvWriter csv(out);
        writeHeader(csv);
        return csv.flush() ? std::nullopt
                           : std::optional<std::string>("The CSV could not be written.");
    }
    try {
        // Without a log beside the file, the file is all there is and is read
        // as it stands, so that nothing is created in the folder; with one (the
        // program is running, or was killed), the log is read too.
        fs::path log = path;
        log += "-wal";
        const auto access = fs::exists(log, ec) ? SqliteDatabase::Access::ReadOnly
                                                : SqliteDatabase::Access::Immutable;
        SqliteDatabase db(path, access);
        CsvWriter csv(out);
        writeHeader(csv);
        if (db.pragmaInteger("user_version") > 0)
            writeRows(db, csv);
        if (!csv.flush())
            return "The CSV could not be written.";
    } catch (const SqliteError &error) {
        return named + " could not be read: " + error.what() + ".";
    }
    return std::nullopt;
}
