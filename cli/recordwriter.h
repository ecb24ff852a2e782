#pragma once

#include "cli/record.h"

#include <functional>

/** Where a command's records go: each is written whole as soon as it is ready. */
class RecordWriter
{
public:
    enum Format { Text, Json };
    /** Takes bytes; false when they could not be written. */
    using Sink = std::function<bool(const QByteArray &)>;

    RecordWriter(Format format, Sink sink);

    /** For people: the fields one below the other, records parted by an empty line. */
    void write(const Record &record);

    /** For people: \a line in place of the fields. */
    void writeLine(const Record &record, const QString &line);

    /** Bytes that are the same for people and programs. */
    void writeRaw(const QByteArray &bytes);

    Format format() const { return m_format; }
    /** True once anything could not be written; what follows is dropped. */
    bool failed() const { return m_failed; }

private:
    Format m_format;
    Sink m_sink;
    bool m_isFirst = true;
    bool m_failed = false;
};
