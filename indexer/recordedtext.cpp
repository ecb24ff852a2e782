#include "indexer/recordedtext.h"

#include <QString>

#include <algorithm>

namespace tarvel4 {

namespace {

/**
 * Compares two texts without regard to case as far as the files tell. Negative, 0 (equal or
 * unknown) or positive.
 */
int compareKnown(const QByteArray &left, const QByteArray &right)
{
    const auto knownSize = [](const QByteArray &text) {
        const int end = static_cast<int>(text.indexOf(RecordedText::replacement));
        return end < 0 ? text.size() : end;
    };
    const int common = static_cast<int>(std::min(knownSize(left), knownSize(right)));
    const int order =
        QString::compare(QString::fromLatin1(left.left(common)),
                         QString::fromLatin1(right.left(common)), Qt::CaseInsensitive);
    const bool leftEnds = common == left.size();
    const bool rightEnds = common == right.size();
    if (order != 0 || leftEnds == rightEnds)
        return order;
    return leftEnds ? -1 : 1;
}

} // namespace

QByteArray RecordedText::untilNul(const QByteArray &field)
{
    const int end = static_cast<int>(field.indexOf('\0'));
    return end < 0 ? field : field.left(end);
}

bool RecordedText::isTidy(const QByteArray &text, int fieldSize)
{
    const QString stored = QString::fromLatin1(text);
    const bool isCut = text.size() == fieldSize;
    // What was cut off may have stood behind the white space at the end.
    const QString trimmed =
        isCut ? (stored + QLatin1Char('.')).trimmed().chopped(1) : stored.trimmed();
    return trimmed.toUpper() == stored;
}

bool RecordedText::OrderCheck::follows(const QByteArray &text)
{
    const bool inOrder =
        m_first || (compareKnown(m_previous, text) <= 0 && compareKnown(m_lastKnown, text) <= 0);
    if (m_first || !text.contains(replacement))
        m_lastKnown = text;
    m_previous = text;
    m_first = false;
    return inOrder;
}

} // namespace tarvel4
