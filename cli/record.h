#pragma once

#include <QJsonValue>
#include <QString>
#include <QVector>

/** One record of a command's output: fields in a fixed order, to be written for people or for
 * programs. */
class Record
{
public:
    /** Adds a field; \a text is what people read where the value is not plain. */
    void add(const char *key, const QJsonValue &value, const QString &text = QString());
    void append(const Record &other) { m_fields += other.m_fields; }

    /** One JSON object without a line feed; control characters are escaped. */
    QByteArray toJson() const;

    /** One line "key: value" a field. */
    QByteArray toText() const;

private:
    struct Field
    {
        const char *key;
        QJsonValue value;
        QString text;
    };

    QVector<Field> m_fields;
};
