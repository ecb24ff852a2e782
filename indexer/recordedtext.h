#pragma once

#include <QByteArray>

namespace tarvel4 {

/** What the verifier can tell of the texts in an index, which hold ISO 8859-1 and nothing else. */
namespace RecordedText {

/** What a text holds in place of a character that ISO 8859-1 does not have. */
constexpr char replacement = '?';

/** The bytes of a field up to its first zero byte. */
QByteArray untilNul(const QByteArray &field);

/** True for a text as it is stored: in upper case, and no white space around it but where a cut
 * at \a fieldSize bytes left it at the end. */
bool isTidy(const QByteArray &text, int fieldSize);

/**
 * Tells of texts read one after the other whether each may follow those before it. A replaced
 * character may stand for any other, so nothing from the first one on counts; besides its
 * neighbour a text is held against the last one without any, which would hide what stands behind
 * it.
 */
class OrderCheck
{
public:
    bool follows(const QByteArray &text);

private:
    bool m_first = true;
    QByteArray m_previous;
    QByteArray m_lastKnown;
};

} // namespace RecordedText

} // namespace tarvel4
