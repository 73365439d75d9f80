#include "core/ReadFile.h"

#include "core/UniqueFd.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

FileError Unreadable(const std::filesystem::path &path, int error)
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
            m_error = Unreadable(path, errno);
        }
        return;
    }
    struct stat status {};
    if (::fstat(m_fd.get(), &status) != 0) {
        m_error = Unreadable(path, errno);
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
