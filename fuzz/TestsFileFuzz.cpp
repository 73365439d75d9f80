// Any bytes given as the Tests file either load, and then save to bytes that load
// to the same bank, or are refused as damaged at an offset inside them; from
// memory and from the disk alike.
#include "FuzzBanks.h"

#include "core/TestsFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::filesystem::path path = "Tavrino_Tests.dat";
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    TestBank bank;
    const LoadResult result = decodeTestsFile(bank, bytes, path);
    TestBank fromDisk;
    requireSameOutcome(result, loadTests(fromDisk, onDisk(bytes, "Tavrino_Tests.dat")));
    if (result.status != LoadResult::Status::Loaded) {
        require(result.status == LoadResult::Status::Failed && result.error &&
                    result.error->kind == FileError::Kind::Damaged && result.error->offset &&
                    *result.error->offset <= size,
                "a refused file is reported as damaged at an offset inside it");
        return 0;
    }
    // A bank as loaded writes its questions back as the file held them; decoded,
    // they are encoded anew. Both ways must give the same bytes.
    for (const SubjectQuestions &questions : bank.questionBank) {
        questions.items();
    }
    std::string saved;
    require(!encodeTestsFile(bank, path, saved), "a loaded bank can be saved");
    require(saved.size() <= size,
            "a loaded bank saves to no more bytes than it was read from (the ones after the data "
            "are not kept)");
    // Every field of a bank is written and decoded texts encode back exactly, so
    // equal bytes after a second round mean an equal bank.
    TestBank again;
    std::string savedAgain;
    require(decodeTestsFile(again, saved, path).status == LoadResult::Status::Loaded &&
                !encodeTestsFile(again, path, savedAgain) && savedAgain == saved,
            "a saved bank loads back unchanged");
    std::string savedFromDisk;
    require(!encodeTestsFile(fromDisk, path, savedFromDisk) && savedFromDisk == saved,
            "the bank read from the disk, saved as loaded, is the bank read from memory");
    return 0;
}
