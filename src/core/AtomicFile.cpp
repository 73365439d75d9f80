#include "core/AtomicFile.h"

#include "core/UniqueFd.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <system_error>
#include <unistd.h>

namespace {

std::optional<SaveFault> g_fault;

// errno for an injected failure of this step, or 0 when the step should run normally.
int injectedError(SaveStep step, std::size_t writeIndex = 0)
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

constexpr std::string_view TemporaryMark = ".tmp";

std::filesystem::path temporaryName(const std::filesystem::path &target)
{
    // Unique within the process; O_EXCL guards against a leftover of another run.
    static std::atomic<unsigned> counter{0};
    std::filesystem::path name = target;
    name +=
        std::string(TemporaryMark) + std::to_string(::getpid()) + "-" + std::to_string(counter++);
    return name;
}

bool allDigits(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The process that made a temporary name of target, or 0 when name is not one.
pid_t temporaryOwner(std::string_view name, std::string_view target)
{
    if (name.size() <= target.size() + TemporaryMark.size() ||
        name.substr(0, target.size()) != target ||
        name.substr(target.size(), TemporaryMark.size()) != TemporaryMark) {
        return 0;
    }
    const std::string_view rest = name.substr(target.size() + TemporaryMark.size());
    const std::size_t dash = rest.find('-');
    // Nine digits at most, so that the number cannot overflow; no pid is that long.
    if (dash == std::string_view::npos || dash > 9 || !allDigits(rest.substr(0, dash)) ||
        !allDigits(rest.substr(dash + 1))) {
        return 0;
    }
    return static_cast<pid_t>(std::stol(std::string(rest.substr(0, dash))));
}

FileError unwritable(const std::filesystem::path &path, const std::string &step, int error)
{
    return FileError{
        FileError::Kind::Unwritable, path.string(), step + ": " + std::strerror(error), {}};
}

// Writes every byte, retrying short writes and interruptions; 0 or the errno.
// Injected faults count pieces of AtomicWriteChunk bytes, but each real write
// goes on to the end, or to the piece that is to fail: one system call per
// piece made a large bank's save spend more time in calls than in writing.
// The bytes go at offset at of the file.
int writeAll(int fd, std::string_view bytes, std::size_t at)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const std::size_t piece = (at + done) / AtomicWriteChunk;
        if (const int injected = injectedError(SaveStep::Write, piece)) {
            return injected;
        }
        std::size_t end = bytes.size();
        if (g_fault && g_fault->step == SaveStep::Write && g_fault->writeIndex > piece) {
            end = std::min(end, g_fault->writeIndex * AtomicWriteChunk - at);
        }
        const ssize_t written = ::write(fd, bytes.data() + done, end - done);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        done += static_cast<std::size_t>(written);
    }
    return 0;
}

// Makes the rename itself durable; a failure here loses nothing, so it is not reported.
void syncDirectory(const std::filesystem::path &dir)
{
    const UniqueFd fd(::open(dir.empty() ? "." : dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd.valid()) {
        ::fsync(fd.get());
    }
}

int createExclusive(const std::filesystem::path &path)
{
    if (const int injected = injectedError(SaveStep::Create)) {
        errno = injected;
        return -1;
    }
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

} // namespace

std::optional<FileError> writeFileAtomically(const std::filesystem::path &path,
                                             std::string_view bytes)
{
    return writeFileAtomically(
        path, [bytes](const std::function<void(std::string_view)> &write) { write(bytes); });
}

std::optional<FileError> writeFileAtomically(const std::filesystem::path &path,
                                             const ContentMaker &make)
{
    const std::filesystem::path temporaryPath = temporaryName(path);
    UniqueFd fd(createExclusive(temporaryPath));
    if (!fd.valid()) {
        return unwritable(path, "the temporary file could not be created", errno);
    }
    TemporaryFile temporary(temporaryPath);

    // A failed write ends the making at once; its errno comes back here.
    struct WriteFailed {
        int error;
    };
    std::size_t written = 0;
    try {
        make([&](std::string_view piece) {
            if (const int error = writeAll(fd.get(), piece, written)) {
                throw WriteFailed{error};
            }
            written += piece.size();
        });
    } catch (const WriteFailed &failed) {
        return unwritable(path, "writing failed", failed.error);
    }
    int error = injectedError(SaveStep::Flush);
    if (error == 0 && ::fsync(fd.get()) != 0) {
        error = errno;
    }
    if (error != 0) {
        return unwritable(path, "flushing to disk failed", error);
    }
    error = injectedError(SaveStep::Close);
    if (!fd.close() && error == 0) {
        error = errno;
    }
    if (error != 0) {
        return unwritable(path, "closing failed", error);
    }
    error = injectedError(SaveStep::Rename);
    if (error == 0 && ::rename(temporaryPath.c_str(), path.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        return unwritable(path, "replacing the old file failed", error);
    }
    temporary.keep();
    syncDirectory(path.parent_path());
    return std::nullopt;
}

// A save killed part-way leaves its temporary file behind, and every such file
// would stay for good. Those whose process no longer exists are removed; a
// temporary file of a live process is left alone.
void removeStaleTemporaries(const std::filesystem::path &target)
{
    const std::filesystem::path dir = target.parent_path().empty() ? "." : target.parent_path();
    const std::string targetName = target.filename().string();
    std::error_code error;
    for (std::filesystem::directory_iterator it(dir, error), end; !error && it != end;
         it.increment(error)) {
        const std::string name = it->path().filename().string();
        const pid_t owner = temporaryOwner(name, targetName);
        if (owner > 0 && owner != ::getpid() && ::kill(owner, 0) != 0 && errno == ESRCH) {
            ::unlink(it->path().c_str());
        }
    }
}

InjectedSaveFault::InjectedSaveFault(const SaveFault &fault)
{
    g_fault = fault;
}

InjectedSaveFault::~InjectedSaveFault()
{
    g_fault.reset();
}
