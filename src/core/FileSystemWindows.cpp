#include "core/FileSystem.h"

#include "core/WindowsErrors.h"

#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

// ReadFile and WriteFile take a 32-bit count; larger transfers go in pieces.
constexpr std::size_t LargestTransfer = 1u << 30;

// A replace that meets the target held open is tried again for a moment, as a
// virus scanner or a search indexer may have opened the file only to look at it.
constexpr int ReplaceAttempts = 5;
constexpr DWORD ReplaceRetryMilliseconds = 20;

HANDLE handleOf(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

int lastError()
{
    return errorFromWindows(::GetLastError());
}

int openWith(const std::filesystem::path &path, DWORD access, DWORD sharing, DWORD disposition,
             std::intptr_t &handle)
{
    const HANDLE opened = ::CreateFileW(path.c_str(), access, sharing, nullptr, disposition,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        return lastError();
    }
    handle = reinterpret_cast<std::intptr_t>(opened);
    return 0;
}

// Whether another program has path open in a way that keeps it from being
// replaced, which Windows reports as a mere "access denied".
bool heldByAnother(const std::filesystem::path &path)
{
    const HANDLE probe =
        ::CreateFileW(path.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (probe == INVALID_HANDLE_VALUE) {
        return ::GetLastError() == ERROR_SHARING_VIOLATION;
    }
    ::CloseHandle(probe);
    return false;
}

std::string utf8(const wchar_t *text, int length)
{
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(std::max(bytes, 0)), '\0');
    if (bytes > 0) {
        ::WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), bytes, nullptr, nullptr);
    }
    return result;
}

// The system's own words for a code, without the closing full stop and line break.
std::string windowsText(DWORD code)
{
    wchar_t *text = nullptr;
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<wchar_t *>(&text), 0, nullptr);
    std::string words = length > 0 ? utf8(text, static_cast<int>(length)) : std::string();
    ::LocalFree(text);
    while (!words.empty() && (words.back() == '\n' || words.back() == '\r' || words.back() == ' ' ||
                              words.back() == '.')) {
        words.pop_back();
    }
    const std::string number = "Windows error " + std::to_string(code);
    return words.empty() ? number : words + " (" + number + ")";
}

} // namespace

int errorFromWindows(unsigned long code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_CANNOT_MAKE:
        return EACCES;
    case ERROR_WRITE_PROTECT:
        return EROFS;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
        return EBUSY;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return EEXIST;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return ENOMEM;
    case ERROR_FILENAME_EXCED_RANGE:
        return ENAMETOOLONG;
    case ERROR_NOT_SAME_DEVICE:
        return EXDEV;
    case ERROR_CRC:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_GEN_FAILURE:
        return EIO;
    default:
        return -static_cast<int>(code & 0x7FFFFFFF);
    }
}

NativeFile::~NativeFile()
{
    close();
}

int NativeFile::openForReading(const std::filesystem::path &path)
{
    close();
    // Others may go on reading, writing and replacing it: a save by another
    // copy of the program must not fail because this one is reading.
    const int error =
        openWith(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                 OPEN_EXISTING, m_handle);
    // Windows refuses to open a folder as a file with a mere "access denied".
    if (error == EACCES) {
        const DWORD attributes = ::GetFileAttributesW(path.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
            return EISDIR;
        }
    }
    return error;
}

int NativeFile::createNew(const std::filesystem::path &path)
{
    close();
    return openWith(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW, m_handle);
}

int NativeFile::size(std::uint64_t &bytes) const
{
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(handleOf(m_handle), &size)) {
        return lastError();
    }
    bytes = size.QuadPart > 0 ? static_cast<std::uint64_t>(size.QuadPart) : 0;
    return 0;
}

bool NativeFile::isOrdinaryFile() const
{
    // A folder cannot be opened as a file here, so a disk file is an ordinary one.
    return ::GetFileType(handleOf(m_handle)) == FILE_TYPE_DISK;
}

int NativeFile::read(char *into, std::size_t capacity, std::size_t &got)
{
    DWORD count = 0;
    if (!::ReadFile(handleOf(m_handle), into,
                    static_cast<DWORD>(std::min(capacity, LargestTransfer)), &count, nullptr)) {
        return lastError();
    }
    got = count;
    return 0;
}

int NativeFile::write(const char *bytes, std::size_t count)
{
    std::size_t done = 0;
    while (done < count) {
        DWORD written = 0;
        if (!::WriteFile(handleOf(m_handle), bytes + done,
                         static_cast<DWORD>(std::min(count - done, LargestTransfer)), &written,
                         nullptr)) {
            return lastError();
        }
        done += written;
    }
    return 0;
}

int NativeFile::flush()
{
    return ::FlushFileBuffers(handleOf(m_handle)) ? 0 : lastError();
}

int NativeFile::close()
{
    if (m_handle == Closed) {
        return 0;
    }
    const HANDLE handle = handleOf(m_handle);
    m_handle = Closed;
    return ::CloseHandle(handle) ? 0 : lastError();
}

int replaceFile(const std::filesystem::path &from, const std::filesystem::path &to)
{
    for (int attempt = 1;; ++attempt) {
        // Write-through: the call returns once the new name is on the disk.
        if (::MoveFileExW(from.c_str(), to.c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            return 0;
        }
        const DWORD code = ::GetLastError();
        const bool held = code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION ||
                          (code == ERROR_ACCESS_DENIED && heldByAnother(to));
        if (!held) {
            return errorFromWindows(code);
        }
        if (attempt == ReplaceAttempts) {
            return EBUSY;
        }
        ::Sleep(ReplaceRetryMilliseconds);
    }
}

void removeFile(const std::filesystem::path &path)
{
    ::DeleteFileW(path.c_str());
}

void syncDirectory(const std::filesystem::path &)
{
    // Nothing to do: the replace itself was written through to the disk.
}

unsigned long currentProcessId()
{
    return ::GetCurrentProcessId();
}

bool processHasEnded(unsigned long id)
{
    const HANDLE process = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE,
                                         static_cast<DWORD>(id));
    if (!process) {
        // Any other refusal (access denied) means the process is there.
        return ::GetLastError() == ERROR_INVALID_PARAMETER;
    }
    // A process that has ended lives on while someone holds a handle to it.
    const bool ended = ::WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
    ::CloseHandle(process);
    return ended;
}

void *allocatePages(std::size_t bytes)
{
    return ::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void freePages(void *memory, std::size_t)
{
    ::VirtualFree(memory, 0, MEM_RELEASE);
}

std::string systemErrorText(int error)
{
    // The C library's words on Windows differ from those on Linux; these are the
    // ones the program shows everywhere.
    switch (error) {
    case ENOENT:
        return "No such file or directory";
    case EACCES:
        return "Permission denied";
    case EROFS:
        return "Read-only file system";
    case EBUSY:
        return "the file is in use by another program";
    case ENOSPC:
        return "No space left on device";
    case EEXIST:
        return "File exists";
    case EISDIR:
        return "Is a directory";
    case ENOMEM:
        return "Cannot allocate memory";
    case ENAMETOOLONG:
        return "File name too long";
    case EXDEV:
        return "Invalid cross-device link";
    case EIO:
        return "Input/output error";
    case EFBIG:
        return "File too large";
    default:
        return error < 0 ? windowsText(static_cast<DWORD>(-error)) : std::strerror(error);
    }
}

std::string systemErrorText(const std::error_code &error)
{
    if (error.category() == std::system_category()) {
        return systemErrorText(errorFromWindows(static_cast<unsigned long>(error.value())));
    }
    return systemErrorText(error.value());
}
