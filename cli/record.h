#pragma once

#include <QByteArrayList>
#include <QJsonValue>
#include <QString>

#include <utility>

namespace tarvel4 {

/**
 * One record of a command's output, written field by field in the order of the calls: as a JSON
 * object on one line, for people as one line "key: value" a field, or as a line of a table.
 */
class Record
{
public:
    enum Format { Text, Json, Csv };

    /** \a isColoured: the keys that people read stand out. \a keys: the columns of a table; else
     * the only ones that are written, or all where there is none. */
    explicit Record(Format format, bool isColoured = false, QByteArrayList keys = {})
        : m_keys(std::move(keys))
        , m_format(format)
        , m_isColoured(isColoured)
    {
        m_bytes.reserve(usualSize);
    }

    void addText(const char *key, const QString &text);
    void addNumber(const char *key, int number);
    void addFlag(const char *key, bool flag);
    /** An array or object, and what people read in its place. */
    void addValue(const char *key, const QJsonValue &value, const QString &text);

    /** The record with its line feed; control characters are escaped, but in a table. */
    QByteArray bytes() const;

    /** A line of a table: RFC 4180, but for the line feed alone at its end. */
    static QByteArray csvLine(const QByteArrayList &cells);

private:
    static constexpr int usualSize = 512;

    void begin(const char *key);
    void end();
    bool isLeftOut(const char *key) const;
    void setCell(const char *key, const QByteArray &text);

    QByteArrayList m_keys;
    QByteArrayList m_cells; ///< of a table, in the order of the keys
    Format m_format;
    bool m_isColoured;
    QByteArray m_bytes;
};

} // namespace tarvel4
