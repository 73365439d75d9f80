#include "reports/ClassResultsCsv.h"

#include "core/AtomicFile.h"
#include "core/CsvWriter.h"
#include "core/PieceStream.h"

#include <charconv>
#include <functional>
#include <string_view>

namespace {

std::string_view scoreText(int16_t score, char (&buffer)[8])
{
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, score).ptr;
    return std::string_view(buffer, static_cast<std::size_t>(end - buffer));
}

} // namespace

bool writeClassResultsCsv(std::ostream &out, const TestBank &bank, const StudentRecords &records)
{
    CsvWriter csv(out);
    csv.writeByteOrderMark();
    csv.field("Student").field("Subject").field("Level").field("Last").field("High");
    csv.endRow();

    std::array<std::string, LevelCount> levels;
    for (int level = 0; level < LevelCount; ++level)
        levels[level] = levelText(level);
    const SubjectResults none{};
    char last[8];
    char high[8];
    for (const Student &student : records.students) {
        const std::string name = trimName(student.name);
        for (std::size_t subject = 0; subject < bank.subjects.size(); ++subject) {
            const SubjectResults &results =
                subject < student.results.size() ? student.results[subject] : none;
            for (int level = 0; level < LevelCount; ++level) {
                csv.field(name).field(bank.subjects[subject].name).field(levels[level]);
                csv.field(scoreText(results.last[level], last));
                csv.field(scoreText(results.high[level], high));
                csv.endRow();
            }
        }
    }
    return csv.flush();
}

std::optional<FileError> saveClassResultsCsv(const std::filesystem::path &path,
                                             const TestBank &bank, const StudentRecords &records)
{
    return writeFileAtomically(path, [&](const std::function<void(std::string_view)> &write) {
        PieceStreamBuf pieces(write);
        std::ostream out(&pieces);
        // A failed write throws from the writer; the stream passes it on rather
        // than swallowing it, so the save stops at once and reports why.
        out.exceptions(std::ios::badbit);
        writeClassResultsCsv(out, bank, records);
    });
}
