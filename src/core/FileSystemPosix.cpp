#include "core/FileSystem.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int openWith(const std::filesystem::path &path, int flags, std::intptr_t &handle)
{
    const int fd = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
    if (fd < 0) {
        return errno;
    }
    handle = fd;
    return 0;
}

} // namespace

NativeFile::~NativeFile()
{
    close();
}

int NativeFile::openForReading(const std::filesystem::path &path)
{
    close();
    // Not blocking, which changes nothing for a file but keeps a pipe without
    // a writer from hanging the open.
    return openWith(path, O_RDONLY | O_NONBLOCK, m_handle);
}

int NativeFile::createNew(const std::filesystem::path &path)
{
    close();
    return openWith(path, O_WRONLY | O_CREAT | O_EXCL, m_handle);
}

int NativeFile::size(std::uint64_t &bytes) const
{
    struct stat status {};
    if (::fstat(static_cast<int>(m_handle), &status) != 0) {
        return errno;
    }
    bytes = status.st_size > 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
    return 0;
}

bool NativeFile::isOrdinaryFile() const
{
    struct stat status {};
    return ::fstat(static_cast<int>(m_handle), &status) == 0 && S_ISREG(status.st_mode);
}

int NativeFile::read(char *into, std::size_t capacity, std::size_t &got)
{
    for (;;) {
        const ssize_t count = ::read(static_cast<int>(m_handle), into, capacity);
        if (count >= 0) {
            got = static_cast<std::size_t>(count);
            return 0;
        }
        if (errno != EINTR) {
            return errno;
        }
    }
}

int NativeFile::write(const char *bytes, std::size_t count)
{
    std::size_t done = 0;
    while (done < count) {
        const ssize_t written = ::write(static_cast<int>(m_handle), bytes + done, count - done);
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

int NativeFile::flush()
{
    return ::fsync(static_cast<int>(m_handle)) == 0 ? 0 : errno;
}

int NativeFile::close()
{
    if (m_handle == Closed) {
        return 0;
    }
    const int fd = static_cast<int>(m_handle);
    m_handle = Closed;
    return ::close(fd) == 0 ? 0 : errno;
}

int replaceFile(const std::filesystem::path &from, const std::filesystem::path &to)
{
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

void removeFile(const std::filesystem::path &path)
{
    ::unlink(path.c_str());
}

void syncDirectory(const std::filesystem::path &dir)
{
    const int fd = ::open(dir.empty() ? "." : dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

unsigned long currentProcessId()
{
    return static_cast<unsigned long>(::getpid());
}

bool processHasEnded(unsigned long id)
{
    return ::kill(static_cast<pid_t>(id), 0) != 0 && errno == ESRCH;
}

void *allocatePages(std::size_t bytes)
{
    void *memory =
        ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        return nullptr;
    }
#ifdef MADV_HUGEPAGE
    if (bytes >= HugePageWorthBytes) {
        // Only advice: without huge pages the read is slower, never wrong.
        ::madvise(memory, bytes, MADV_HUGEPAGE);
    }
#endif
    return memory;
}

void freePages(void *memory, std::size_t bytes)
{
    ::munmap(memory, bytes);
}

std::string systemErrorText(int error)
{
    return std::strerror(error);
}

std::string systemErrorText(const std::error_code &error)
{
    // Here the system's codes are errno values, whichever category holds them.
    return systemErrorText(error.value());
}
