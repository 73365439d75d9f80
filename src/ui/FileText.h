// Text as the data files will hold it: Windows-1252, at most a 16-bit byte count.
// Edit boxes use it so that what the screen shows is what the file keeps.
#pragma once

#include <QString>
#include <QValidator>

// The longest text the file can hold; one byte per character after conversion.
constexpr int FileTextMaxLength = 0xFFFF;

// The text with every character that Windows-1252 lacks replaced by "?",
// one "?" per character.
QString fileText(const QString &text);

// Replaces characters the file cannot hold while the user types or pastes,
// keeping the cursor after the same character. Use with a maximum length of
// FileTextMaxLength.
class FileTextValidator : public QValidator {
    Q_OBJECT
public:
    using QValidator::QValidator;

    State validate(QString &input, int &pos) const override;
};
