#include "ScriptedPrompt.h"

void ScriptedPrompt::stop(QWidget *, const QString &title, const QString &text)
{
    m_shown.push_back({Shown::Kind::Stop, title, text, QString()});
}

bool ScriptedPrompt::confirm(QWidget *, const QString &title, const QString &text)
{
    m_shown.push_back({Shown::Kind::Confirm, title, text, QString()});
    if (m_confirms.empty())
        return false;
    const bool ok = m_confirms.front();
    m_confirms.pop_front();
    return ok;
}

QString ScriptedPrompt::input(QWidget *, const QString &title, const QString &prompt,
                              const QString &defaultText)
{
    m_shown.push_back({Shown::Kind::Input, title, prompt, defaultText});
    if (m_inputs.empty())
        return QString();
    QString answer = m_inputs.front();
    m_inputs.pop_front();
    return answer;
}

QString ScriptedPrompt::saveFileName(QWidget *, const QString &title, const QString &suggestedPath,
                                     const QString &)
{
    m_shown.push_back({Shown::Kind::SaveFile, title, QString(), suggestedPath});
    if (m_saveFiles.empty())
        return QString();
    QString answer = m_saveFiles.front();
    m_saveFiles.pop_front();
    return answer;
}

QString ScriptedPrompt::openFileName(QWidget *, const QString &title, const QString &)
{
    m_shown.push_back({Shown::Kind::OpenFile, title, QString(), QString()});
    if (m_openFiles.empty())
        return QString();
    QString answer = m_openFiles.front();
    m_openFiles.pop_front();
    return answer;
}
