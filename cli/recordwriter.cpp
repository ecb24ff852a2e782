#include "cli/recordwriter.h"

#include "cli/printable.h"

RecordWriter::RecordWriter(Format format, Sink sink)
    : m_format(format)
    , m_sink(std::move(sink))
{}

void RecordWriter::write(const Record &record)
{
    if (m_format == Json)
        return writeRaw(record.toJson() + '\n');
    writeRaw((m_isFirst ? "" : "\n") + record.toText());
    m_isFirst = false;
}

void RecordWriter::writeLine(const Record &record, const QString &line)
{
    writeRaw((m_format == Json ? record.toJson() : printable(line).toUtf8()) + '\n');
}

void RecordWriter::writeRaw(const QByteArray &bytes)
{
    if (!m_failed)
        m_failed = !m_sink(bytes);
}
