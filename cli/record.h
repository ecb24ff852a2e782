#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

namespace tarvel4 {

/**
 * One record of a command's output, written field by field in the order of the calls: as a JSON
 * object on one line, or for people as one line "key: value" a field.
 */
class Record
{
public:
    enum Format { Text, Json };

    /** \a isColoured: the keys that people read stand out. */
    explicit Record(Format format, bool isColoured = false)
        : m_format(format)
        , m_isColoured(isColoured)
    {
        m_bytes.reserve(usualSize);
    }

    void addText(const char *key, const QString &text);
    void addNumber(const char *key, int number);
    void addFlag(const char *key, bool flag);
    /** An array or object, and what people read in its place. */
    void addValue(const char *key, const QJsonValue &value, const QString &text);

    /** The record with its line feed; control characters are escaped. */
    QByteArray bytes() const;

private:
    static constexpr int usualSize = 512;

    void begin(const char *key);
    void end();

    Format m_format;
    bool m_isColoured;
    QByteArray m_bytes;
};

} // namespace tarvel4
