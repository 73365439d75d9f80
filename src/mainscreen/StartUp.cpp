#include "StartUp.h"

#include "core/DefaultBank.h"
#include "core/TestsFile.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <system_error>

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
        page << "<HTML></HTML>\n";
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

std::optional<std::string> loadTestBank(TestBank &bank, const DataPaths &paths)
{
    const LoadResult result = loadTests(bank, paths.testsPath);
    if (result.ok())
        return std::nullopt;

    buildDefaultTests(bank);
    std::string message = result.error
                              ? result.error->message()
                              : "The file " + quoted(paths.testsPath) + " could not be read.";
    const fs::path copy = freeDamagedCopyPath(paths.dataDir);
    std::error_code ec;
    fs::rename(paths.testsPath, copy, ec);
    if (ec)
        message += "\rIt could not be moved aside (" + ec.message() + ") and stays where it is.";
    else
        message += "\rThe damaged file was moved to " + quoted(copy) + ".";
    message += "\rThe default tests are used instead.";
    return message;
}
