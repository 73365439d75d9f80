// The help screens: formatted help for the main, Students and Tests screens,
// shown modally and closed with their Close button.
#pragma once

#include <QDialog>

struct DataPaths;

enum class HelpPage { Main, Students, Tests };

class HelpScreen : public QDialog {
    Q_OBJECT
public:
    HelpScreen(HelpPage page, const DataPaths &paths, QWidget *parent = nullptr);
};
