// Ends a start-up measurement: once the watched window has been painted for
// the first time, the time and the peak memory so far are written to standard
// output and the process ends.
#pragma once

#include <QObject>

class QWidget;

class ReportWhenShown : public QObject {
public:
    explicit ReportWhenShown(QWidget &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_painted = false;
};
