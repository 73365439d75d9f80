#include "core/ReadFile.h"

#include "core/UniqueFd.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace {

FileContents Unreadable(const std::filesystem::path &path, int error)
{
    FileContents contents;
    contents.error =
        FileError{FileError::Kind::Unreadable, path.string(), std::strerror(error), {}};
    return contents;
}

} // namespace

FileContents ReadWholeFile(const std::filesystem::path &path)
{
    const UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) {
        if (errno == ENOENT) {
            FileContents contents;
            contents.missing = true;
            return contents;
        }
        return Unreadable(path, errno);
    }

    FileContents contents;
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd.get(), buffer, sizeof buffer);
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return Unreadable(path, errno);
        }
        if (got == 0) {
            break;
        }
        contents.bytes.append(buffer, static_cast<std::size_t>(got));
    }
    return contents;
}
