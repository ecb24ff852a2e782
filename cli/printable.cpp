#include "cli/printable.h"

#include <algorithm>

namespace tarvel4 {

bool isUnprintable(QChar character)
{
    const ushort code = character.unicode();
    const bool isControl = code < 0x20 || (code >= 0x7F && code <= 0x9F);
    const bool breaksLine = code == 0x2028 || code == 0x2029;
    const bool turnsText = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return isControl || breaksLine || turnsText;
}

QString printable(const QString &text)
{
    if (std::none_of(text.cbegin(), text.cend(), isUnprintable))
        return text;
    QString shown;
    for (QChar character : text) {
        if (isUnprintable(character))
            shown += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
        else
            shown += character;
    }
    return shown;
}

} // namespace tarvel4
