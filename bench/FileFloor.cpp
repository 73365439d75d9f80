#include "FileFloor.h"

#include "UniqueFd.h"
#include "core/FileSystem.h"
#include "core/ReadFile.h"

#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

[[noreturn]] void fail(const std::string &what, const std::filesystem::path &path)
{
    throw std::runtime_error(what + " " + path.string());
}

std::size_t fileSize(int fd, const std::filesystem::path &path)
{
    struct stat status {};
    if (::fstat(fd, &status) != 0)
        fail("cannot stat", path);
    return static_cast<std::size_t>(status.st_size);
}

} // namespace

std::size_t readFloor(const std::filesystem::path &path)
{
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0)
        fail("cannot open", path);
    const std::size_t size = fileSize(fd.get(), path);
    // Not zero-filled: the floor pays only for the pages the read fills. A large
    // file goes to memory backed by huge pages where the system offers them, as
    // the loader's does; a small one to the heap, whose pages are used again.
    ssize_t got = 0;
    if (size >= HugePageWorthBytes) {
        void *buffer =
            ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (buffer == MAP_FAILED)
            fail("no memory to read", path);
        ::madvise(buffer, size, MADV_HUGEPAGE);
        got = ::read(fd.get(), buffer, size);
        ::munmap(buffer, size);
    } else {
        const std::unique_ptr<char[]> buffer(new char[size]);
        got = ::read(fd.get(), buffer.get(), size);
    }
    if (got < 0 || static_cast<std::size_t>(got) != size)
        fail("short read of", path);
    return static_cast<std::size_t>(got);
}

void writeFloor(const std::filesystem::path &target, std::string_view bytes)
{
    std::filesystem::path temporary = target;
    temporary += ".floor-tmp";
    UniqueFd fd(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (fd.get() < 0)
        fail("cannot create", temporary);
    const ssize_t written = ::write(fd.get(), bytes.data(), bytes.size());
    if (written < 0 || static_cast<std::size_t>(written) != bytes.size())
        fail("short write of", temporary);
    if (::fsync(fd.get()) != 0 || !fd.close())
        fail("cannot flush", temporary);
    if (::rename(temporary.c_str(), target.c_str()) != 0)
        fail("cannot rename", temporary);
    const UniqueFd dir(::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir.get() >= 0)
        ::fsync(dir.get());
}

std::string wholeFile(const std::filesystem::path &path)
{
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0)
        fail("cannot open", path);
    std::string bytes(fileSize(fd.get(), path), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = ::read(fd.get(), bytes.data() + done, bytes.size() - done);
        if (got <= 0)
            fail("short read of", path);
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}
