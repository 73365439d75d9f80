// Any bytes given as the Students file, read against the default bank and a grown
// one, either load, and then save to bytes that load to the same records, or are
// refused as damaged at an offset inside them.
#include "FuzzBanks.h"

#include "core/StudentsFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

namespace {

bool SameRecords(const StudentRecords &a, const StudentRecords &b)
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
            x.results.size() != y.results.size()) {
            return false;
        }
        for (std::size_t s = 0; s < x.results.size(); ++s) {
            if (x.results[s].last != y.results[s].last || x.results[s].high != y.results[s].high) {
                return false;
            }
        }
    }
    return true;
}

void Check(std::string_view bytes, const TestBank &bank)
{
    const std::filesystem::path path = "Tavrino_Students.dat";
    StudentRecords records;
    const LoadResult result = decodeStudentsFile(records, bank, bytes, path);
    StudentRecords fromDisk;
    RequireSameOutcome(result, loadStudents(fromDisk, bank, OnDisk(bytes, "Tavrino_Students.dat")));
    Require(SameRecords(fromDisk, records), "the records read from the disk are those from memory");
    if (result.status != LoadResult::Status::Loaded) {
        Require(result.status == LoadResult::Status::Failed && result.error &&
                    result.error->kind == FileError::Kind::Damaged && result.error->offset &&
                    *result.error->offset <= bytes.size() && records.students.empty(),
                "a refused file is reported as damaged at an offset inside it");
        return;
    }
    std::string saved;
    Require(!encodeStudentsFile(records, path, saved), "loaded records can be saved");
    Require(saved.size() == bytes.size(), "loaded records save to as many bytes as were read");
    StudentRecords again;
    Require(decodeStudentsFile(again, bank, saved, path).status == LoadResult::Status::Loaded &&
                SameRecords(again, records),
            "saved records load back unchanged");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const TestBank defaults = DefaultBank();
    static const TestBank grown = GrownBank();
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    Check(bytes, defaults);
    Check(bytes, grown);
    return 0;
}
