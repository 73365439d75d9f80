// The one way screens talk to the user in dialogs: message boxes, confirmations,
// input boxes and the choice of a file to save or to read. Tests replace it with
// scripted answers.
#pragma once

#include <QString>

class QWidget;

class Prompt {
public:
    virtual ~Prompt() = default;

    // A message box with the stop icon and an OK button.
    virtual void stop(QWidget *parent, const QString &title, const QString &text) = 0;
    // A message box with OK and Cancel and the question icon; true only for OK.
    virtual bool confirm(QWidget *parent, const QString &title, const QString &text) = 0;
    // A modal input box; an empty text when the user cancels.
    virtual QString input(QWidget *parent, const QString &title, const QString &prompt,
                          const QString &defaultText = QString()) = 0;
    // A file dialog for saving, opened on suggestedPath, asking before it replaces
    // a file; the chosen path, or an empty text when the user cancels.
    virtual QString saveFileName(QWidget *parent, const QString &title,
                                 const QString &suggestedPath, const QString &filter) = 0;
    // A file dialog for reading an existing file; the chosen path, or an empty
    // text when the user cancels.
    virtual QString openFileName(QWidget *parent, const QString &title, const QString &filter) = 0;
};

// The real dialogs. Line breaks in texts are single carriage returns, shown as new lines.
class DialogPrompt : public Prompt {
public:
    void stop(QWidget *parent, const QString &title, const QString &text) override;
    bool confirm(QWidget *parent, const QString &title, const QString &text) override;
    QString input(QWidget *parent, const QString &title, const QString &prompt,
                  const QString &defaultText = QString()) override;
    QString saveFileName(QWidget *parent, const QString &title, const QString &suggestedPath,
                         const QString &filter) override;
    QString openFileName(QWidget *parent, const QString &title, const QString &filter) override;
};
