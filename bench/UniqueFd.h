// Owns a POSIX file descriptor and closes it when it goes out of scope.
#pragma once

#include <unistd.h>

class UniqueFd {
public:
    explicit UniqueFd(int fd = -1) : m_fd(fd) {}
    ~UniqueFd() { reset(); }
    UniqueFd(const UniqueFd &) = delete;
    UniqueFd &operator=(const UniqueFd &) = delete;

    int get() const { return m_fd; }
    bool valid() const { return m_fd >= 0; }

    // Closes now and reports whether the close itself succeeded (errno says why not).
    bool close()
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd < 0 || ::close(fd) == 0;
    }

private:
    void reset()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
            m_fd = -1;
        }
    }

    int m_fd;
};
