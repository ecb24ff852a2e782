#include "indexer/sortkeys.h"

QString SortKeys::ofText(const QString &text)
{
    QString key = text;
    for (QChar &c : key)
        c = c.toCaseFolded();
    return key;
}
