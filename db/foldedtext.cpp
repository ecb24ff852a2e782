#include "db/foldedtext.h"

#include <algorithm>

namespace tarvel4 {

QString FoldedText::of(const QString &text)
{
    const bool isAscii =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    if (isAscii)
        return text.toLower();
    QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    const auto end = std::remove_if(folded.begin(), folded.end(),
                                    [](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    folded.truncate(static_cast<int>(end - folded.begin()));
    folded.replace(QChar(0x2019), QLatin1Char('\''));
    return folded;
}

QStringList FoldedText::wordsOf(const QString &text)
{
    QStringList words = of(text).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    words.removeDuplicates(); // a text that was pasted may repeat one a thousand times
    return words;
}

} // namespace tarvel4
