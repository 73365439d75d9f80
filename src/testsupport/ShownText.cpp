#include "ShownText.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QTextDocument>

namespace {

QString withoutShortcutMarks(const QString &text)
{
    QString shown;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('&')) {
            shown += text.at(i);
            continue;
        }
        // "&&" is one "&"; any other "&" only underlines the character after it.
        if (++i < text.size())
            shown += text.at(i);
    }
    return shown;
}

QString labelText(const QLabel &label)
{
    const QString text = label.text();
    const Qt::TextFormat format = label.textFormat();
    if (format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text))) {
        QTextDocument document;
        document.setHtml(text);
        return document.toPlainText();
    }
    if (format == Qt::MarkdownText) {
        QTextDocument document;
        document.setMarkdown(text);
        return document.toPlainText();
    }
    // A label that is the caption of another control makes "&" a shortcut.
    return label.buddy() ? withoutShortcutMarks(text) : text;
}

} // namespace

QString shownText(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return labelText(*label);
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return withoutShortcutMarks(button->text());
    if (const auto *frame = qobject_cast<const QGroupBox *>(&widget))
        return withoutShortcutMarks(frame->title());
    return {};
}
