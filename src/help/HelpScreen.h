// The help screens: formatted help for the main, Students and Tests screens,
// shown modally and closed with their Close button.
#pragma once

#include "ui/ProgramMode.h"

#include <QDialog>

struct DataPaths;

enum class HelpPage { Main, Students, Tests };

class HelpScreen : public QDialog {
    Q_OBJECT
public:
    HelpScreen(HelpPage page, const DataPaths &paths, QWidget *parent = nullptr);
    // In classroom mode the pages say which of the controls they describe
    // only the teacher's copy shows.
    HelpScreen(HelpPage page, const DataPaths &paths, ProgramMode mode, QWidget *parent = nullptr);
};
