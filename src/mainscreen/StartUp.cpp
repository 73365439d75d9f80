#include "StartUp.h"

#include "core/AtomicFile.h"
#include "core/DefaultBank.h"
#include "core/ReadFile.h"
#include "core/TestsFile.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

std::string quoted(const fs::path &path)
{
    return "\"" + path.string() + "\"";
}

std::string unusableDirectory(const fs::path &dataDir, const std::string &what,
                              const std::string &cause)
{
    return "The data directory " + quoted(dataDir) + " " + what + ": " + cause + ".\r" +
           "Tavrino keeps its tests and results there and cannot run without it.";
}

// Creating and removing a file is the one sure test that the directory takes
// new files: permissions alone do not tell about read-only mounts or quotas.
std::optional<std::string> probeWritable(const fs::path &dataDir)
{
    const fs::path probe = dataDir / "Tavrino_write_check.tmp";
    errno = 0;
    std::FILE *file = std::fopen(probe.string().c_str(), "wb");
    if (!file) {
        const int error = errno ? errno : EACCES;
        return std::generic_category().message(error);
    }
    std::fclose(file);
    std::error_code ec;
    fs::remove(probe, ec);
    return std::nullopt;
}

} // namespace

std::optional<std::string> makeDataDirectory(const fs::path &dataDir)
{
    std::error_code ec;
    if (fs::is_directory(dataDir, ec))
        return std::nullopt;
    if (fs::exists(dataDir, ec))
        return unusableDirectory(dataDir, "could not be created",
                                 "a file of that name is in the way");
    fs::create_directories(dataDir, ec);
    if (ec)
        return unusableDirectory(dataDir, "could not be created", ec.message());
    return std::nullopt;
}

std::optional<std::string> prepareDataDirectory(const DataPaths &paths)
{
    std::error_code ec;
    if (!fs::exists(paths.blankPagePath, ec)) {
        std::ofstream page(paths.blankPagePath, std::ios::binary);
        page << "<HTML></HTML>";
        page.close();
        if (!page) {
            const std::string cause = probeWritable(paths.dataDir).value_or("the write failed");
            return unusableDirectory(paths.dataDir, "cannot be written to", cause);
        }
    }
    if (const auto cause = probeWritable(paths.dataDir))
        return unusableDirectory(paths.dataDir, "cannot be written to", *cause);
    return std::nullopt;
}

fs::path freeDamagedCopyPath(const fs::path &dataDir)
{
    std::error_code ec;
    fs::path candidate = dataDir / "Tavrino_Tests.damaged.dat";
    for (int number = 2; fs::exists(candidate, ec); ++number)
        candidate = dataDir / ("Tavrino_Tests.damaged." + std::to_string(number) + ".dat");
    return candidate;
}

void removeUnfinishedSaves(const DataPaths &paths)
{
    removeStaleTemporaries(paths.testsPath);
    removeStaleTemporaries(paths.studentsPath);
}

namespace {

// Copied in pieces and saved as the data files are, so that a copy cut short
// never leaves half a file behind.
std::optional<FileError> copyDataFile(const fs::path &from, const fs::path &to)
{
    FileReader in(from);
    if (in.missing())
        return std::nullopt;
    if (in.error())
        return in.error();
    try {
        return writeFileAtomically(to, [&in](const std::function<void(std::string_view)> &write) {
            std::string piece(SavePieceBytes, '\0');
            while (const std::size_t got = in.read(piece.data(), piece.size()))
                write(std::string_view(piece.data(), got));
        });
    } catch (const FileReadFailed &failure) {
        return FileError{FileError::Kind::Unreadable, from.string(), failure.what(), {}};
    }
}

} // namespace

std::optional<std::string> bringClassFiles(const fs::path &from, const DataPaths &paths)
{
    // Once the files are in the new folder they are the class's, and the teacher was
    // told when they were brought: saying it again at every start would only nag.
    std::error_code ec;
    if (fs::exists(paths.testsPath, ec) || fs::exists(paths.studentsPath, ec))
        return std::nullopt;

    std::string message = "The data folder beside Tavrino, " + quoted(from) +
                          ", holds a class's files but cannot be changed, so Tavrino keeps its "
                          "data in " +
                          quoted(paths.dataDir) + " instead.";

    const DataPaths old = DataPaths::in(from);
    for (const auto &[source, target] : {std::pair{old.testsPath, paths.testsPath},
                                         std::pair{old.studentsPath, paths.studentsPath}}) {
        if (const std::optional<FileError> error = copyDataFile(source, target)) {
            // Half of the pair would be taken for the class's next time: none is.
            fs::remove(paths.testsPath, ec);
            fs::remove(paths.studentsPath, ec);
            return message + "\rThe class's files could not be copied there. " + error->message();
        }
    }
    return message +
           "\rThe class's tests and students were copied there and are used from now "
           "on; the files in " +
           quoted(from) + " are left as they are.";
}

TestBankLoad loadTestBank(TestBank &bank, const DataPaths &paths)
{
    const LoadResult result = loadTests(bank, paths.testsPath);
    if (result.ok())
        return {};

    buildDefaultTests(bank);
    std::string message = result.error
                              ? result.error->message()
                              : "The file " + quoted(paths.testsPath) + " could not be read.";
    const std::string defaults = "\rThe default tests are used instead";
    const std::string kept = ", and Tavrino will not save over it while it runs; the tests "
                             "cannot be changed until Tavrino is started again.";
    if (!result.error || result.error->kind != FileError::Kind::Damaged) {
        // Not read is not damaged: once it can be read again it is the class's bank.
        return {message + "\rIt is left where it is" + kept + defaults + ".", true};
    }
    const fs::path copy = freeDamagedCopyPath(paths.dataDir);
    std::error_code ec;
    fs::rename(paths.testsPath, copy, ec);
    if (ec)
        return {message + "\rIt could not be moved aside (" + ec.message() +
                    "). It stays where it is" + kept + defaults + ".",
                true};
    return {message + "\rThe damaged file was moved to " + quoted(copy) + "." + defaults + ".",
            false};
}
