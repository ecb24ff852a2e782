#pragma once

#include "cli/record.h"

#include <functional>

namespace tarvel4 {

/** Where a command's records go: each is written whole as soon as it is ready. */
class RecordWriter
{
public:
    /** Takes bytes; false when they could not be written. */
    using Sink = std::function<bool(const QByteArray &)>;

    RecordWriter(Record::Format format, Sink sink);

    /** Has the keys that people read stand out. */
    void useColours() { m_isColoured = true; }

    /** Has records written with these keys only. */
    void select(const QByteArrayList &keys) { m_keys = keys; }

    /** Has records written as a table with these columns, of which the first line tells. */
    void useTable(const QByteArrayList &columns);

    /** Separates records for people by an empty line. */
    void write(const Record &record);

    /** For people: \a line in place of the fields. */
    void writeLine(const Record &record, const QString &line);

    /** A line of a table with its line feed; a terminal is shown its control characters. */
    void writeTableLine(const QByteArray &line);

    /** Bytes that are the same for people and programs. */
    void writeRaw(const QByteArray &bytes);

    Record::Format format() const { return m_format; }
    /** A record to be filled and written. */
    Record begin() const { return Record(m_format, m_isColoured, m_keys); }
    /** True once anything could not be written; what follows is dropped. */
    bool failed() const { return m_failed; }

private:
    Record::Format m_format;
    Sink m_sink;
    QByteArrayList m_keys;
    bool m_isColoured = false;
    bool m_isFirst = true;
    bool m_failed = false;
};

} // namespace tarvel4
