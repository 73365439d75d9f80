// Runs a command and, when it has ended, writes one line to standard output:
// its peak resident memory in kB, its user and system CPU time in ms, and its
// exit status. A program of its own because a process's peak carries over exec
// from the process that started it: started from the large benchmark process,
// the command would seem to use the benchmark's memory; started from this small
// one, the figure is the command's own.
#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double milliseconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s PROGRAM [ARGUMENT...]\n", argv[0]);
        return 2;
    }
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execv(argv[1], argv + 1);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || ::wait4(pid, &status, 0, &usage) != pid)
        return 1;
    std::printf("%ld %.3f %.3f %d\n", usage.ru_maxrss, milliseconds(usage.ru_utime),
                milliseconds(usage.ru_stime), WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    return 0;
}
