#include "core/RecentFacts.h"

#include "core/Sqlite.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

namespace {

// An answer packed in 6 bytes: its milliseconds (little-endian, 4 bytes), its
// level, and a byte of flags. The latest answer comes first.
constexpr std::size_t EntryBytes = 6;
constexpr unsigned RightFlag = 1;
constexpr unsigned PracticeFlag = 2;

std::string encodeAnswers(const std::vector<FactAnswer> &answers)
{
    std::string bytes;
    bytes.reserve(answers.size() * EntryBytes);
    for (const FactAnswer &answer : answers) {
        const auto ms = static_cast<std::uint32_t>(std::max(answer.milliseconds, 0));
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>((ms >> shift) & 0xFF);
        bytes += static_cast<char>(answer.level);
        bytes += static_cast<char>((answer.right ? RightFlag : 0) |
                                   (answer.practice ? PracticeFlag : 0));
    }
    return bytes;
}

std::vector<FactAnswer> decodeAnswers(std::string_view bytes)
{
    std::vector<FactAnswer> answers;
    for (std::size_t at = 0; at + EntryBytes <= bytes.size(); at += EntryBytes) {
        std::uint32_t ms = 0;
        for (int i = 3; i >= 0; --i)
            ms = (ms << 8) | static_cast<unsigned char>(bytes[at + std::size_t(i)]);
        FactAnswer answer;
        answer.milliseconds =
            static_cast<int>(std::min<std::uint32_t>(ms, std::numeric_limits<int>::max()));
        answer.level = static_cast<unsigned char>(bytes[at + 4]);
        const auto flags = static_cast<unsigned char>(bytes[at + 5]);
        answer.right = (flags & RightFlag) != 0;
        answer.practice = (flags & PracticeFlag) != 0;
        answers.push_back(answer);
    }
    return answers;
}

void writeFact(SqliteDatabase &db, std::int64_t studentId, const ArithmeticFact &fact,
               const std::vector<FactAnswer> &answers)
{
    const std::string bytes = encodeAnswers(answers);
    SqliteStatement &insert = db.cached(
        "INSERT OR REPLACE INTO fact_recent (student_id, operation, number1, number2, answers) "
        "VALUES (?, ?, ?, ?, ?)");
    insert.bindAll(studentId, fact.operation, fact.number1, fact.number2);
    insert.bindBlob(5, bytes);
    insert.run();
}

} // namespace

void addRecentFactAnswer(SqliteDatabase &db, std::int64_t studentId, const ArithmeticFact &fact,
                         const FactAnswer &answer)
{
    SqliteStatement &select =
        db.cached("SELECT answers FROM fact_recent "
                  "WHERE student_id = ? AND operation = ? AND number1 = ? AND number2 = ?");
    select.bindAll(studentId, fact.operation, fact.number1, fact.number2);
    std::vector<FactAnswer> answers;
    if (select.step())
        answers = decodeAnswers(select.blob(0));
    select.reset();
    answers.insert(answers.begin(), answer);
    if (answers.size() > std::size_t(RecentAnswersPerFact))
        answers.resize(std::size_t(RecentAnswersPerFact));
    writeFact(db, studentId, fact, answers);
}

void rebuildRecentFacts(SqliteDatabase &db, std::int64_t studentId)
{
    using Key = std::tuple<int, std::int64_t, std::int64_t>;
    std::map<Key, std::vector<FactAnswer>> facts;
    SqliteStatement answers = db.prepare(
        "SELECT a.operation, a.number1, a.number2, a.took_ms, a.correct, t.level, t.practice "
        "FROM test t JOIN answer a ON a.test_id = t.id "
        "WHERE t.student_id = ? AND a.operation IS NOT NULL "
        "ORDER BY t.started DESC, t.id DESC, a.seq DESC");
    answers.bindAll(studentId);
    while (answers.step()) {
        std::vector<FactAnswer> &recent = facts[Key(static_cast<int>(answers.integer(0)),
                                                    answers.integer(1), answers.integer(2))];
        if (recent.size() < std::size_t(RecentAnswersPerFact)) {
            recent.push_back({answers.integer(4) != 0, static_cast<int>(answers.integer(3)),
                              static_cast<int>(answers.integer(5)), answers.integer(6) != 0});
        }
    }
    db.cached("DELETE FROM fact_recent WHERE student_id = ?").bindAll(studentId).run();
    for (const auto &[key, recent] : facts) {
        const auto &[operation, number1, number2] = key;
        writeFact(db, studentId, {operation, number1, number2, {}}, recent);
    }
}

void rebuildAllRecentFacts(SqliteDatabase &db)
{
    SqliteStatement students = db.prepare("SELECT DISTINCT student_id FROM test");
    while (students.step())
        rebuildRecentFacts(db, students.integer(0));
}

std::vector<ArithmeticFact> readRecentFacts(SqliteDatabase &db, std::int64_t studentId)
{
    std::vector<ArithmeticFact> facts;
    SqliteStatement &select = db.cached(
        "SELECT operation, number1, number2, answers FROM fact_recent WHERE student_id = ? "
        "ORDER BY operation, number1, number2");
    select.bindAll(studentId);
    while (select.step()) {
        facts.push_back({static_cast<int>(select.integer(0)), select.integer(1), select.integer(2),
                         decodeAnswers(select.blob(3))});
    }
    return facts;
}
