#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace tarvel4 {

/** What the readers of all song formats share: numbers, texts and searches that can't leave the
 * bytes. */
namespace Bytes {

/** The byte at \a offset; 0 outside the bytes. */
inline quint8 byteAt(const QByteArray &bytes, qint64 offset)
{
    return offset >= 0 && offset < bytes.size()
        ? static_cast<quint8>(bytes.at(static_cast<int>(offset)))
        : static_cast<quint8>(0);
}

inline bool containsRange(const QByteArray &bytes, qint64 offset, qint64 count)
{
    return offset >= 0 && count >= 0 && offset <= bytes.size() - count;
}

/** A big-endian number; bytes that are not there count as zero. */
template <typename Number> Number bigEndianAt(const QByteArray &bytes, qint64 offset)
{
    char raw[sizeof(Number)] = {};
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        raw[i] = static_cast<char>(byteAt(bytes, offset + static_cast<qint64>(i)));
    return qFromBigEndian<Number>(raw);
}

/** Overwrites the bytes at \a offset with a big-endian number; they must be there. */
template <typename Number> void putBigEndian(QByteArray &bytes, int offset, Number number)
{
    Q_ASSERT(containsRange(bytes, offset, sizeof(Number)));
    qToBigEndian(number, bytes.data() + offset);
}

/** Those of the \a count bytes at \a offset that exist. */
inline QByteArray slice(const QByteArray &bytes, qint64 offset, qint64 count)
{
    if (offset < 0 || offset >= bytes.size() || count <= 0)
        return QByteArray();
    return bytes.mid(static_cast<int>(offset),
                     static_cast<int>(std::min(count, bytes.size() - offset)));
}

/** A text field as every format stores it: of those of the \a count bytes at \a offset that exist,
 * the ones up to the first zero byte, Latin-1, trimmed. */
inline QString text(const QByteArray &bytes, qint64 offset, qint64 count)
{
    const bool isThere = offset >= 0 && offset < bytes.size() && count > 0;
    const char *const field = isThere ? bytes.constData() + offset : "";
    const auto size = isThere ? static_cast<uint>(std::min(count, bytes.size() - offset)) : 0U;
    return QString::fromLatin1(field, static_cast<int>(qstrnlen(field, size))).trimmed();
}

/** The first \a byte from \a from on; -1: none. Runs at the speed of memory. */
inline int indexOfByte(const QByteArray &bytes, char byte, int from)
{
    if (from < 0 || from >= bytes.size())
        return -1;
    const void *hit = std::memchr(bytes.constData() + from, static_cast<quint8>(byte),
                                  static_cast<std::size_t>(bytes.size() - from));
    return hit ? static_cast<int>(static_cast<const char *>(hit) - bytes.constData()) : -1;
}

} // namespace Bytes

} // namespace tarvel4
