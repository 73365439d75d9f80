// A Prompt that shows nothing: it answers from a script the test sets up and
// records every dialog it was asked to show.
#pragma once

#include "ui/Prompt.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <vector>

class ScriptedPrompt : public Prompt {
public:
    struct Shown {
        enum class Kind { Stop, Confirm, Input, SaveFile, OpenFile } kind;
        QString title;
        QString text;
        QString defaultText; // of an input box; the suggested path of a file dialog
    };

    // Answers for the next confirmations (OK when true) and input boxes, in order.
    // With the script empty, a confirmation answers Cancel and an input box or a
    // file dialog "".
    void answerConfirm(bool ok) { m_confirms.push_back(ok); }
    void answerInput(const QString &text) { m_inputs.push_back(text); }
    void answerSaveFile(const QString &path) { m_saveFiles.push_back(path); }
    void answerOpenFile(const QString &path) { m_openFiles.push_back(path); }

    const std::vector<Shown> &shown() const { return m_shown; }
    const Shown *last() const { return m_shown.empty() ? nullptr : &m_shown.back(); }
    void clear() { m_shown.clear(); }

    void stop(QWidget *parent, const QString &title, const QString &text) override;
    bool confirm(QWidget *parent, const QString &title, const QString &text) override;
    QString input(QWidget *parent, const QString &title, const QString &prompt,
                  const QString &defaultText = QString()) override;
    QString saveFileName(QWidget *parent, const QString &title, const QString &suggestedPath,
                         const QString &filter) override;
    QString openFileName(QWidget *parent, const QString &title, const QString &filter) override;

private:
    std::deque<bool> m_confirms;
    std::deque<QString> m_inputs;
    std::deque<QString> m_saveFiles;
    std::deque<QString> m_openFiles;
    std::vector<Shown> m_shown;
};
