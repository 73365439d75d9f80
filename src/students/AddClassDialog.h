// The Add Class dialog of the Students screen: a whole class pasted, typed or
// read from a file, one name a line, with a live line saying what Add will do.
#pragma once

#include "classlist/NewNames.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class Prompt;

class AddClassDialog : public QDialog {
    Q_OBJECT
public:
    // The roster is only read, to tell names already on it. The choice of a file
    // and any message about it go through the prompt.
    AddClassDialog(const std::vector<Student> &roster, Prompt &prompt, QWidget *parent = nullptr);
    ~AddClassDialog() override;

    // The names Add gives, cleaned and sorted out, and the level chosen for them.
    const NewNames &newNames() const { return m_newNames; }
    int16_t level() const;

    // What the user does in the dialog; public so that tests can drive it.
    // Reads a text or CSV file into the box, after what the box holds.
    void readFromFile();
    // Sorts the box's lines again and says what Add will do.
    void updateSummary();
    // Closes the dialog with the names, when it has any.
    void addClass();

private:
    std::string boxText() const;

    NewNamesPlanner m_planner;
    Prompt &m_prompt;
    NewNames m_newNames;

    QPlainTextEdit *m_namesBox = nullptr;
    QPushButton *m_fromFileButton = nullptr;
    QComboBox *m_levelList = nullptr;
    QCheckBox *m_addKnownNames = nullptr;
    QLabel *m_summary = nullptr;
    QPushButton *m_addButton = nullptr;
};
