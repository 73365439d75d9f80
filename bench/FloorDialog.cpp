// The floor of start-up for any Qt Widgets program: one empty dialog shown.
#include "ReportWhenShown.h"

#include <QApplication>
#include <QDialog>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QDialog dialog;
    const ReportWhenShown report(dialog);
    dialog.show();
    return app.exec();
}
