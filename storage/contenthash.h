#pragma once

#include "storage/outcome.h"

#include <QByteArray>

#include <memory>

namespace tarvel4 {

/** Tells whether a file still has the bytes that were written: 16 bytes (XXH3, most significant
 * first), good against chance, not against malice. */
class ContentHash
{
public:
    static constexpr int size = 16;

    ContentHash();
    ~ContentHash();
    Q_DISABLE_COPY(ContentHash)

    void add(const char *bytes, qint64 count);
    void add(const QByteArray &bytes) { add(bytes.constData(), bytes.size()); }
    QByteArray result() const;

    /** Reads a whole file; empty, and \a outcome the cause, where that fails. */
    static QByteArray ofFile(const QString &path, Outcome &outcome);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace tarvel4
