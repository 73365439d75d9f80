#include "core/AtomicFile.h"

#include "core/FileSystem.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <system_error>

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

// Removes the temporary file unless the save got as far as renaming it. It is
// closed first, as Windows removes no file that is still open.
class TemporaryFile {
public:
    TemporaryFile(std::filesystem::path path, NativeFile &file)
        : m_path(std::move(path)), m_file(file)
    {
    }
    ~TemporaryFile()
    {
        if (!m_kept) {
            m_file.close();
            removeFile(m_path);
        }
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    void keep() { m_kept = true; }

private:
    std::filesystem::path m_path;
    NativeFile &m_file;
    bool m_kept = false;
};

constexpr std::string_view TemporaryMark = ".tmp";

std::filesystem::path temporaryName(const std::filesystem::path &target)
{
    // Unique within the process; O_EXCL guards against a leftover of another run.
    static std::atomic<unsigned> counter{0};
    std::filesystem::path name = target;
    name += std::string(TemporaryMark) + std::to_string(currentProcessId()) + "-" +
            std::to_string(counter++);
    return name;
}

bool allDigits(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The process that made a temporary name of target, or 0 when name is not one.
unsigned long temporaryOwner(std::string_view name, std::string_view target)
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
    return std::stoul(std::string(rest.substr(0, dash)));
}

FileError unwritable(const std::filesystem::path &path, const std::string &step, int error)
{
    return FileError{
        FileError::Kind::Unwritable, path.u8string(), step + ": " + systemErrorText(error), {}};
}

// Writes every byte; 0 or the error. Injected faults count pieces of
// AtomicWriteChunk bytes, but each real write goes on to the end, or to the
// piece that is to fail: one system call per piece made a large bank's save
// spend more time in calls than in writing. The bytes go at offset at of the file.
int writeAll(NativeFile &file, std::string_view bytes, std::size_t at)
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
        if (const int error = file.write(bytes.data() + done, end - done)) {
            return error;
        }
        done = end;
    }
    return 0;
}

int createExclusive(NativeFile &file, const std::filesystem::path &path)
{
    if (const int injected = injectedError(SaveStep::Create)) {
        return injected;
    }
    return file.createNew(path);
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
    NativeFile file;
    if (const int error = createExclusive(file, temporaryPath)) {
        return unwritable(path, "the temporary file could not be created", error);
    }
    TemporaryFile temporary(temporaryPath, file);

    // A failed write ends the making at once; its error comes back here.
    struct WriteFailed {
        int error;
    };
    std::size_t written = 0;
    try {
        make([&](std::string_view piece) {
            if (const int error = writeAll(file, piece, written)) {
                throw WriteFailed{error};
            }
            written += piece.size();
        });
    } catch (const WriteFailed &failed) {
        return unwritable(path, "writing failed", failed.error);
    }
    int error = injectedError(SaveStep::Flush);
    if (error == 0) {
        error = file.flush();
    }
    if (error != 0) {
        return unwritable(path, "flushing to disk failed", error);
    }
    error = injectedError(SaveStep::Close);
    const int closeError = file.close();
    if (error == 0) {
        error = closeError;
    }
    if (error != 0) {
        return unwritable(path, "closing failed", error);
    }
    error = injectedError(SaveStep::Rename);
    if (error == 0) {
        error = replaceFile(temporaryPath, path);
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
    const std::string targetName = target.filename().u8string();
    std::error_code error;
    for (std::filesystem::directory_iterator it(dir, error), end; !error && it != end;
         it.increment(error)) {
        const std::string name = it->path().filename().u8string();
        const unsigned long owner = temporaryOwner(name, targetName);
        if (owner > 0 && owner != currentProcessId() && processHasEnded(owner)) {
            removeFile(it->path());
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
