#include "core/AtomicFile.h"

#include "core/UniqueFd.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

std::optional<SaveFault> g_fault;

// errno for an injected failure of this step, or 0 when the step should run normally.
int InjectedError(SaveStep step, std::size_t writeIndex = 0)
{
    if (!g_fault || g_fault->step != step) {
        return 0;
    }
    if (step == SaveStep::Write && g_fault->writeIndex != writeIndex) {
        return 0;
    }
    return g_fault->error;
}

// Removes the temporary file unless the save got as far as renaming it.
class TemporaryFile {
public:
    explicit TemporaryFile(std::filesystem::path path) : m_path(std::move(path)) {}
    ~TemporaryFile()
    {
        if (!m_kept) {
            ::unlink(m_path.c_str());
        }
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    void keep() { m_kept = true; }

private:
    std::filesystem::path m_path;
    bool m_kept = false;
};

std::filesystem::path TemporaryName(const std::filesystem::path &target)
{
    // Unique within the process; O_EXCL guards against a leftover of another run.
    static std::atomic<unsigned> counter{0};
    std::filesystem::path name = target;
    name += ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(counter++);
    return name;
}

FileError Unwritable(const std::filesystem::path &path, const std::string &step, int error)
{
    return FileError{
        FileError::Kind::Unwritable, path.string(), step + ": " + std::strerror(error), {}};
}

// Writes every byte, retrying short writes and interruptions; 0 or the errno.
int WriteAll(int fd, std::string_view bytes)
{
    std::size_t writeIndex = 0;
    while (!bytes.empty()) {
        const std::size_t chunk = std::min(bytes.size(), AtomicWriteChunk);
        if (const int injected = InjectedError(SaveStep::Write, writeIndex++)) {
            return injected;
        }
        const ssize_t written = ::write(fd, bytes.data(), chunk);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

// Makes the rename itself durable; a failure here loses nothing, so it is not reported.
void SyncDirectory(const std::filesystem::path &dir)
{
    const UniqueFd fd(::open(dir.empty() ? "." : dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd.valid()) {
        ::fsync(fd.get());
    }
}

int CreateExclusive(const std::filesystem::path &path)
{
    if (const int injected = InjectedError(SaveStep::Create)) {
        errno = injected;
        return -1;
    }
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

} // namespace

std::optional<FileError> WriteFileAtomically(const std::filesystem::path &path,
                                             std::string_view bytes)
{
    const std::filesystem::path temporaryPath = TemporaryName(path);
    UniqueFd fd(CreateExclusive(temporaryPath));
    if (!fd.valid()) {
        return Unwritable(path, "the temporary file could not be created", errno);
    }
    TemporaryFile temporary(temporaryPath);

    if (const int error = WriteAll(fd.get(), bytes)) {
        return Unwritable(path, "writing failed", error);
    }
    int error = InjectedError(SaveStep::Flush);
    if (error == 0 && ::fsync(fd.get()) != 0) {
        error = errno;
    }
    if (error != 0) {
        return Unwritable(path, "flushing to disk failed", error);
    }
    error = InjectedError(SaveStep::Close);
    if (!fd.close() && error == 0) {
        error = errno;
    }
    if (error != 0) {
        return Unwritable(path, "closing failed", error);
    }
    error = InjectedError(SaveStep::Rename);
    if (error == 0 && ::rename(temporaryPath.c_str(), path.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        return Unwritable(path, "replacing the old file failed", error);
    }
    temporary.keep();
    SyncDirectory(path.parent_path());
    return std::nullopt;
}

InjectedSaveFault::InjectedSaveFault(const SaveFault &fault)
{
    g_fault = fault;
}

InjectedSaveFault::~InjectedSaveFault()
{
    g_fault.reset();
}
