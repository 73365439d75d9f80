// Any bytes given as the Students file, read against the default bank and a grown
// one, either load, and then save to bytes that load to the same records (widened
// to the bank, extra results kept), or are refused as damaged at an offset inside them.
#include "FuzzBanks.h"

#include "core/StudentsFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

namespace {

bool sameRecords(const StudentRecords &a, const StudentRecords &b)
{
    if (std::tie(a.showByStudent, a.currentSubject, a.currentSubjectName) !=
            std::tie(b.showByStudent, b.currentSubject, b.currentSubjectName) ||
        a.students.size() != b.students.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.students.size(); ++i) {
        const Student &x = a.students[i];
        const Student &y = b.students[i];
        if (std::tie(x.name, x.level, x.current) != std::tie(y.name, y.level, y.current) ||
            x.results.size() != y.results.size() ||
            x.extraResults.size() != y.extraResults.size()) {
            return false;
        }
        const auto same = [](const SubjectResults &p, const SubjectResults &q) {
            return p.last == q.last && p.high == q.high;
        };
        if (!std::equal(x.results.begin(), x.results.end(), y.results.begin(), same) ||
            !std::equal(x.extraResults.begin(), x.extraResults.end(), y.extraResults.begin(),
                        same)) {
            return false;
        }
    }
    return true;
}

void check(std::string_view bytes, const TestBank &bank)
{
    const std::filesystem::path path = "Tavrino_Students.dat";
    StudentRecords records;
    const LoadResult result = decodeStudentsFile(records, bank, bytes, path);
    StudentRecords fromDisk;
    requireSameOutcome(result, loadStudents(fromDisk, bank, onDisk(bytes, "Tavrino_Students.dat")));
    require(sameRecords(fromDisk, records), "the records read from the disk are those from memory");
    if (result.status != LoadResult::Status::Loaded) {
        require(result.status == LoadResult::Status::Failed && result.error &&
                    result.error->kind == FileError::Kind::Damaged && result.error->offset &&
                    *result.error->offset <= bytes.size() && records.students.empty(),
                "a refused file is reported as damaged at an offset inside it");
        return;
    }
    std::string saved;
    require(!encodeStudentsFile(records, path, saved), "loaded records can be saved");
    StudentRecords again;
    require(decodeStudentsFile(again, bank, saved, path).status == LoadResult::Status::Loaded &&
                sameRecords(again, records),
            "saved records load back unchanged");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const TestBank defaults = defaultBank();
    static const TestBank grown = grownBank();
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    check(bytes, defaults);
    check(bytes, grown);
    return 0;
}
