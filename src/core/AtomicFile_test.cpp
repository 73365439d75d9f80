#include "core/AtomicFile.h"

#include "core/CoreTesting.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

const std::vector<std::string> OnlyTarget = {"data.dat"};

} // namespace

TEST(AtomicFile, ReplacesTheFileWithExactlyTheNewBytes)
{
    const ScratchDir dir;
    const auto path = dir / "data.dat";
    ASSERT_FALSE(WriteFileAtomically(path, std::string(3 * AtomicWriteChunk + 5, 'a')));
    EXPECT_EQ(ReadBytes(path), std::string(3 * AtomicWriteChunk + 5, 'a'));

    ASSERT_FALSE(WriteFileAtomically(path, "short"));
    EXPECT_EQ(ReadBytes(path), "short");
    ASSERT_FALSE(WriteFileAtomically(path, ""));
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(dir.entries(), OnlyTarget);
}

TEST(AtomicFile, AFailureAtAnyStepLeavesTheOldFileAndNoTemporaryFile)
{
    const ScratchDir dir;
    const auto path = dir / "data.dat";
    const std::string old = "the previous contents";
    const std::string replacement(2 * AtomicWriteChunk + 100, 'n');

    const std::vector<SaveFault> faults = {
        {SaveStep::Create, EACCES, 0}, {SaveStep::Write, EIO, 0}, {SaveStep::Write, ENOSPC, 2},
        {SaveStep::Flush, EIO, 0},     {SaveStep::Close, EIO, 0}, {SaveStep::Rename, EXDEV, 0},
    };
    for (const SaveFault &fault : faults) {
        SCOPED_TRACE(static_cast<int>(fault.step));
        WriteBytes(path, old);
        std::optional<FileError> error;
        {
            const InjectedSaveFault inject(fault);
            error = WriteFileAtomically(path, replacement);
        }
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
        EXPECT_EQ(error->path, path.string());
        EXPECT_NE(error->cause.find(std::strerror(fault.error)), std::string::npos) << error->cause;
        EXPECT_NE(error->message().find(path.string()), std::string::npos);
        EXPECT_EQ(ReadBytes(path), old);
        EXPECT_EQ(dir.entries(), OnlyTarget);
    }

    // A write fault past the last chunk never triggers: the save goes through.
    const InjectedSaveFault late({SaveStep::Write, EIO, 3});
    EXPECT_FALSE(WriteFileAtomically(path, replacement));
    EXPECT_EQ(ReadBytes(path), replacement);
}

TEST(AtomicFile, AMissingDirectoryIsReportedNotCreated)
{
    const ScratchDir dir;
    const auto path = dir / "absent" / "data.dat";
    const std::optional<FileError> error = WriteFileAtomically(path, "x");
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
    EXPECT_NE(error->cause.find(std::strerror(ENOENT)), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir / "absent"));
}

TEST(AtomicFile, ContentMadeInPiecesArrivesWholeAndAnyFailureKeepsTheOldFile)
{
    const ScratchDir dir;
    const auto path = dir / "data.dat";
    const std::vector<std::string> pieces = {std::string(AtomicWriteChunk + 7, 'a'), "b",
                                             std::string(2 * AtomicWriteChunk, 'c')};
    std::string whole;
    for (const std::string &piece : pieces)
        whole += piece;
    const ContentMaker make = [&](const std::function<void(std::string_view)> &write) {
        for (const std::string &piece : pieces)
            write(piece);
    };
    ASSERT_FALSE(WriteFileAtomically(path, make));
    EXPECT_EQ(ReadBytes(path), whole);

    // Every piece of the file can fail, whichever of the made pieces it lies in.
    for (std::size_t index = 0; index * AtomicWriteChunk < whole.size(); ++index) {
        SCOPED_TRACE(index);
        WriteBytes(path, "old");
        std::optional<FileError> error;
        {
            const InjectedSaveFault inject({SaveStep::Write, EIO, index});
            error = WriteFileAtomically(path, make);
        }
        ASSERT_TRUE(error);
        EXPECT_NE(error->cause.find(std::strerror(EIO)), std::string::npos) << error->cause;
        EXPECT_EQ(ReadBytes(path), "old");
        EXPECT_EQ(dir.entries(), OnlyTarget);
    }

    // A failure of the maker's own passes on, and nothing of its content stays.
    WriteBytes(path, "old");
    const ContentMaker failing = [](const std::function<void(std::string_view)> &write) {
        write("part of it");
        throw std::runtime_error("the content could not be made");
    };
    EXPECT_THROW(WriteFileAtomically(path, failing), std::runtime_error);
    EXPECT_EQ(ReadBytes(path), "old");
    EXPECT_EQ(dir.entries(), OnlyTarget);
}
