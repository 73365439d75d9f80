#include "ReportWhenShown.h"

#include <QEvent>
#include <QWidget>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

// The peak resident memory so far, in kB, as the kernel counts it for this process.
long peakResidentKilobytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stol(line.substr(6));
    }
    return 0;
}

// The line is the monotonic clock in ns (the steady clock, which the parent reads
// too) and the peak memory in kB. The process ends without tearing anything
// down: only start-up is measured.
[[noreturn]] void reportAndEnd()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const std::string line =
        std::to_string(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()) + " " +
        std::to_string(peakResidentKilobytes()) + "\n";
    const ssize_t written = ::write(STDOUT_FILENO, line.data(), line.size());
    std::_Exit(written == static_cast<ssize_t>(line.size()) ? 0 : 1);
}

} // namespace

ReportWhenShown::ReportWhenShown(QWidget &window)
{
    window.installEventFilter(this);
}

bool ReportWhenShown::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Paint && !m_painted) {
        m_painted = true;
        // Queued, so the children are painted and the frame is out first.
        QMetaObject::invokeMethod(
            this, [] { reportAndEnd(); }, Qt::QueuedConnection);
    }
    return false;
}
