#include "cli/record.h"

#include "cli/printable.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace tarvel4 {

namespace {

bool isJsonSyntax(QChar character)
{
    return character == QLatin1Char('"') || character == QLatin1Char('\\');
}

/** True for what JSON and a terminal take as it stands. */
bool isPlain(QChar character)
{
    const ushort code = character.unicode();
    return code >= 0x20 && code < 0x7F && !isJsonSyntax(character);
}

void appendJson(QByteArray &json, const QString &text)
{
    json += '"';
    if (std::all_of(text.cbegin(), text.cend(), isPlain)) {
        json += text.toLatin1();
    } else {
        QString escaped;
        for (QChar character : text) {
            if (isJsonSyntax(character))
                escaped += QLatin1Char('\\');
            escaped += character;
        }
        json += printable(escaped).toUtf8();
    }
    json += '"';
}

void appendJson(QByteArray &json, const QJsonValue &value)
{
    const char *separator = "";
    switch (value.type()) {
    case QJsonValue::String:
        appendJson(json, value.toString());
        break;
    case QJsonValue::Array: {
        json += '[';
        const QJsonArray array = value.toArray();
        for (const QJsonValue element : array) {
            json += separator;
            appendJson(json, element);
            separator = ",";
        }
        json += ']';
        break;
    }
    case QJsonValue::Object: {
        json += '{';
        const QJsonObject object = value.toObject();
        for (auto field = object.begin(); field != object.end(); ++field) {
            json += separator;
            appendJson(json, field.key());
            json += ':';
            appendJson(json, field.value());
            separator = ",";
        }
        json += '}';
        break;
    }
    case QJsonValue::Bool:
        json += value.toBool() ? "true" : "false";
        break;
    default:
        json += QByteArray::number(value.toInt());
    }
}

} // namespace

bool Record::isLeftOut(const char *key) const
{
    return !m_keys.isEmpty() && !m_keys.contains(key);
}

void Record::addText(const char *key, const QString &text)
{
    if (isLeftOut(key))
        return;
    if (m_format == Csv)
        return setCell(key, text.toUtf8());
    begin(key);
    if (m_format == Json)
        appendJson(m_bytes, text);
    else if (!text.isEmpty())
        m_bytes += ' ' + printable(text).toUtf8();
    end();
}

void Record::addNumber(const char *key, int number)
{
    if (isLeftOut(key))
        return;
    if (m_format == Csv)
        return setCell(key, QByteArray::number(number));
    begin(key);
    if (m_format == Text)
        m_bytes += ' ';
    m_bytes += QByteArray::number(number);
    end();
}

void Record::addFlag(const char *key, bool flag)
{
    if (isLeftOut(key))
        return;
    if (m_format == Csv)
        return setCell(key, flag ? "true" : "false");
    begin(key);
    if (m_format == Text)
        m_bytes += ' ';
    m_bytes += flag ? "true" : "false";
    end();
}

void Record::addValue(const char *key, const QJsonValue &value, const QString &text)
{
    if (m_format != Json)
        return addText(key, text);
    if (isLeftOut(key))
        return;
    begin(key);
    appendJson(m_bytes, value);
    end();
}

QByteArray Record::bytes() const
{
    if (m_format == Text)
        return m_bytes;
    if (m_format == Csv)
        return csvLine(m_cells);
    return m_bytes.isEmpty() ? QByteArray("{}\n") : m_bytes + "}\n";
}

QByteArray Record::csvLine(const QByteArrayList &cells)
{
    QByteArrayList quoted;
    for (QByteArray cell : cells) {
        const bool isPlain = std::none_of(cell.cbegin(), cell.cend(), [](char character) {
            return character == ',' || character == '"' || character == '\n' || character == '\r';
        });
        quoted += isPlain ? cell : '"' + cell.replace('"', "\"\"") + '"';
    }
    return quoted.join(',') + '\n';
}

void Record::setCell(const char *key, const QByteArray &text)
{
    while (m_cells.size() < m_keys.size())
        m_cells += QByteArray();
    for (int column = 0; column < m_keys.size(); ++column) {
        if (m_keys.at(column) == key)
            m_cells[column] = text;
    }
}

void Record::begin(const char *key)
{
    if (m_format == Text) {
        m_bytes += m_isColoured ? "\x1b[36m" : "";
        m_bytes += key;
        m_bytes += m_isColoured ? ":\x1b[0m" : ":";
        return;
    }
    m_bytes += m_bytes.isEmpty() ? "{\"" : ",\"";
    m_bytes += key;
    m_bytes += "\":";
}

void Record::end()
{
    if (m_format == Text)
        m_bytes += '\n';
}

} // namespace tarvel4
