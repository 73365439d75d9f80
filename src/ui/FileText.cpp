#include "FileText.h"

#include "core/Cp1252.h"

namespace {

// Characters (code points) in text[0..end); a surrogate pair counts once, as
// the conversion turns it into one "?".
int charactersBefore(const QString &text, int end)
{
    int count = 0;
    for (int i = 0; i < end; ++i) {
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        ++count;
    }
    return count;
}

} // namespace

QString fileText(const QString &text)
{
    return QString::fromStdString(cp1252ToUtf8(utf8ToCp1252(text.toStdString())));
}

QValidator::State FileTextValidator::validate(QString &input, int &pos) const
{
    const QString converted = fileText(input);
    if (converted != input) {
        // Every character became exactly one, so the cursor stays behind the
        // character it followed.
        pos = charactersBefore(input, qBound(0, pos, int(input.size())));
        input = converted;
    }
    if (input.size() > FileTextMaxLength) {
        input.truncate(FileTextMaxLength);
        pos = qMin(pos, FileTextMaxLength);
    }
    return Acceptable;
}
