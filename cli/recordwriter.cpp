#include "cli/recordwriter.h"

#include "cli/console.h"
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
    writeTableLine(Record::csvLine(columns));
}

void RecordWriter::write(const Record &record)
{
    if (m_format == Record::Csv)
        return writeTableLine(record.bytes());
    const bool isSeparated = m_format == Record::Text && !m_isFirst;
    writeRaw(isSeparated ? '\n' + record.bytes() : record.bytes());
    m_isFirst = false;
}

void RecordWriter::writeLine(const Record &record, const QString &line)
{
    writeRaw(m_format == Record::Json ? record.bytes() : printable(line).toUtf8() + '\n');
}

void RecordWriter::writeTableLine(const QByteArray &line)
{
    const bool isTerminal = Console::isTerminal(Console::Output);
    writeRaw(isTerminal ? printable(QString::fromUtf8(line.chopped(1))).toUtf8() + '\n' : line);
}

void RecordWriter::writeRaw(const QByteArray &bytes)
{
    if (!m_failed)
        m_failed = !m_sink(bytes);
}

} // namespace tarvel4
