#include "core/ReadFile.h"

#include <cerrno>
#include <string>

namespace {

FileError unreadable(const std::filesystem::path &path, int error)
{
    return FileError{FileError::Kind::Unreadable, path.u8string(), systemErrorText(error), {}};
}

} // namespace

FileReader::FileReader(const std::filesystem::path &path)
{
    if (const int error = m_file.openForReading(path)) {
        m_missing = error == ENOENT;
        if (!m_missing) {
            m_error = unreadable(path, error);
        }
        return;
    }
    std::uint64_t size = 0;
    if (const int error = m_file.size(size)) {
        m_error = unreadable(path, error);
        return;
    }
    m_size = static_cast<std::size_t>(size);
}

std::size_t FileReader::read(char *into, std::size_t capacity)
{
    std::size_t got = 0;
    if (const int error = m_file.read(into, capacity, got)) {
        throw FileReadFailed(systemErrorText(error));
    }
    return got;
}

FileBytes::FileBytes(FileReader &file) : m_capacity(file.size())
{
    if (m_capacity == 0) {
        return;
    }
    m_memory = allocatePages(m_capacity);
    if (!m_memory) {
        throw FileReadFailed("there is not enough memory to read its " +
                             std::to_string(m_capacity) + " bytes");
    }
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
        freePages(m_memory, m_capacity);
        throw;
    }
}

FileBytes::~FileBytes()
{
    if (m_memory) {
        freePages(m_memory, m_capacity);
    }
}
