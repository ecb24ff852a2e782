#include "cli/recordwriter.h"

#include "cli/printable.h"

namespace tarvel4 {

RecordWriter::RecordWriter(Record::Format format, Sink sink)
    : m_format(format)
    , m_sink(std::move(sink))
{}

void RecordWriter::useTable(const QByteArrayList &columns)
{
    m_format = Record::Csv;
    m_keys = columns;
    writeRaw(Record::csvLine(columns));
}

void RecordWriter::write(const Record &record)
{
    const bool isParted = m_format == Record::Text && !m_isFirst;
    writeRaw(isParted ? '\n' + record.bytes() : record.bytes());
    m_isFirst = false;
}

void RecordWriter::writeLine(const Record &record, const QString &line)
{
    writeRaw(m_format == Record::Json ? record.bytes() : printable(line).toUtf8() + '\n');
}

void RecordWriter::writeRaw(const QByteArray &bytes)
{
    if (!m_failed)
        m_failed = !m_sink(bytes);
}

} // namespace tarvel4
