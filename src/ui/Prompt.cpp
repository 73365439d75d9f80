#include "Prompt.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace {

QString displayed(QString text)
{
    return text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

} // namespace

void DialogPrompt::stop(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Critical, title, displayed(text), QMessageBox::Ok, parent);
    box.exec();
}

bool DialogPrompt::confirm(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Question, title, displayed(text),
                    QMessageBox::Ok | QMessageBox::Cancel, parent);
    box.setDefaultButton(QMessageBox::Ok);
    return box.exec() == QMessageBox::Ok;
}

QString DialogPrompt::input(QWidget *parent, const QString &title, const QString &prompt,
                            const QString &defaultText)
{
    bool accepted = false;
    const QString answer = QInputDialog::getText(parent, title, displayed(prompt),
                                                 QLineEdit::Normal, defaultText, &accepted);
    return accepted ? answer : QString();
}

QString DialogPrompt::saveFileName(QWidget *parent, const QString &title,
                                   const QString &suggestedPath, const QString &filter)
{
    return QFileDialog::getSaveFileName(parent, title, suggestedPath, filter);
}

QString DialogPrompt::openFileName(QWidget *parent, const QString &title, const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, QString(), filter);
}
