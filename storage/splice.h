#pragma once

#include <QByteArray>

namespace tarvel4 {

/** What an exchange of bytes changed: all but a common start and a common end. */
struct Splice
{
    qint64 prefix = 0; ///< bytes at the start that are the same
    qint64 suffix = 0; ///< bytes at the end that are the same
    QByteArray oldMiddle;
    QByteArray newMiddle;

    /** The difference of two texts, behind both of which \a rest equal bytes stand. */
    static Splice between(const QByteArray &oldBytes, const QByteArray &newBytes, qint64 rest = 0);

    /** The whole old bytes, given the whole new ones, and the other way round. */
    QByteArray oldOf(const QByteArray &newBytes) const { return exchange(newBytes, oldMiddle); }
    QByteArray newOf(const QByteArray &oldBytes) const { return exchange(oldBytes, newMiddle); }

private:
    QByteArray exchange(const QByteArray &bytes, const QByteArray &middle) const
    {
        return bytes.left(static_cast<int>(prefix)) + middle
            + bytes.right(static_cast<int>(suffix));
    }
};

} // namespace tarvel4
