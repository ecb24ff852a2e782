#include "library/companion.h"

#include <QFileInfo>

namespace tarvel4 {

namespace {

constexpr char songSuffix[] = ".mp3";
constexpr char companionSuffix[] = ".cdg";
constexpr int suffixLength = sizeof(companionSuffix) - 1;

} // namespace

QString Companion::of(const QString &songPath)
{
    if (!songPath.endsWith(QLatin1String(songSuffix), Qt::CaseInsensitive))
        return QString();
    const QString stem = songPath.chopped(suffixLength);
    const int letters = suffixLength - 1;
    for (int upperCase = 0; upperCase < 1 << letters; ++upperCase) {
        QString suffix = QLatin1String(companionSuffix);
        for (int letter = 0; letter < letters; ++letter) {
            if (upperCase & 1 << letter)
                suffix[letter + 1] = suffix.at(letter + 1).toUpper();
        }
        if (QFileInfo(stem + suffix).isFile())
            return stem + suffix;
    }
    return QString();
}

QString Companion::destinationFor(const QString &songDestination)
{
    return songDestination.chopped(suffixLength) + QLatin1String(companionSuffix);
}

bool Companion::isCompanion(const QString &path)
{
    return path.endsWith(QLatin1String(companionSuffix), Qt::CaseInsensitive);
}

} // namespace tarvel4
