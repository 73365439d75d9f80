#include "Accessibility.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>

namespace {

const char *const CaptionProperty = "tavrinoValueCaption";

// A value label as a screen reader sees it: static text named by its caption
// and its current text. Qt itself tells the reader when the text changes, as
// long as the widget's own accessible name stays empty.
class CaptionedValue : public QAccessibleWidget {
public:
    explicit CaptionedValue(QLabel *label) : QAccessibleWidget(label, QAccessible::StaticText) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        const auto *label = static_cast<const QLabel *>(widget());
        return label->property(CaptionProperty).toString() + QStringLiteral(": ") + label->text();
    }
};

QAccessibleInterface *captionedValueFactory(const QString &className, QObject *object)
{
    auto *label = qobject_cast<QLabel *>(object);
    if (label == nullptr || className != QLatin1String("QLabel") ||
        !label->property(CaptionProperty).isValid())
        return nullptr;
    return new CaptionedValue(label);
}

} // namespace

void setTabChain(const std::vector<QWidget *> &widgets)
{
    QWidget *previous = nullptr;
    for (QWidget *widget : widgets) {
        if (widget == nullptr || widget->focusPolicy() == Qt::NoFocus)
            continue;
        if (previous != nullptr)
            QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
}

void tabToCheckedButton(const QList<QAbstractButton *> &buttons)
{
    for (QAbstractButton *button : buttons) {
        QObject::connect(button, &QAbstractButton::toggled, button, [buttons](bool checked) {
            if (checked)
                updateTabStop(buttons);
        });
    }
    updateTabStop(buttons);
}

void updateTabStop(const QList<QAbstractButton *> &buttons)
{
    const QAbstractButton *stop = nullptr;
    for (const QAbstractButton *button : buttons) {
        if (button->isChecked() && button->isEnabled())
            stop = button;
    }
    for (QAbstractButton *button : buttons) {
        const Qt::FocusPolicy policy = button->focusPolicy();
        button->setFocusPolicy(stop == nullptr || button == stop
                                   ? Qt::FocusPolicy(policy | Qt::TabFocus)
                                   : Qt::FocusPolicy(policy & ~Qt::TabFocus));
    }
}

void nameValueLabel(QLabel &label, const QString &caption)
{
    // Installed once, before any label asks for it; Qt keeps every factory.
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(captionedValueFactory);
        return true;
    }();
    label.setProperty(CaptionProperty, caption);
}
