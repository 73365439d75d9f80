#include "core/ReadFile.h"

#include "core/UniqueFd.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <string>

namespace {

FileError unreadable(const std::filesystem::path &path, int error)
{
    return FileError{FileError::Kind::Unreadable, path.string(), std::strerror(error), {}};
}

} // namespace

FileReader::FileReader(const std::filesystem::path &path)
    : m_fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (!m_fd.valid()) {
        m_missing = errno == ENOENT;
        if (!m_missing) {
            m_error = unreadable(path, errno);
        }
        return;
    }
    struct stat status {};
    if (::fstat(m_fd.get(), &status) != 0) {
        m_error = unreadable(path, errno);
        return;
    }
    m_size = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

std::size_t FileReader::read(char *into, std::size_t capacity)
{
    for (;;) {
        const ssize_t got = ::read(m_fd.get(), into, capacity);
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            throw FileReadFailed(std::strerror(errno));
        }
    }
}

FileBytes::FileBytes(FileReader &file) : m_capacity(file.size())
{
    if (m_capacity == 0) {
        return;
    }
    m_memory =
        ::mmap(nullptr, m_capacity, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (m_memory == MAP_FAILED) {
        m_memory = nullptr;
        throw FileReadFailed("there is not enough memory to read its " +
                             std::to_string(m_capacity) + " bytes");
    }
#ifdef MADV_HUGEPAGE
    if (m_capacity >= HugePageWorthBytes) {
        // Only advice: without huge pages the read is slower, never wrong.
        ::madvise(m_memory, m_capacity, MADV_HUGEPAGE);
    }
#endif
    try {
        auto *into = static_cast<char *>(m_memory);
        while (m_size < m_capacity) {
            const std::size_t got = file.read(into + m_size, m_capacity - m_size);
            if (got == 0) {
                break;
            }
            m_size += got;
        }
    } catch (...) {
        ::munmap(m_memory, m_capacity);
        throw;
    }
}

FileBytes::~FileBytes()
{
    if (m_memory) {
        ::munmap(m_memory, m_capacity);
    }
}
