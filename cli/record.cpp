#include "cli/record.h"

#include "cli/printable.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

bool isJsonSyntax(QChar character)
{
    return character == QLatin1Char('"') || character == QLatin1Char('\\');
}

void appendJson(QByteArray &json, const QString &text)
{
    json += '"';
    if (std::none_of(text.cbegin(), text.cend(), isJsonSyntax)) {
        json += printable(text).toUtf8();
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
    case QJsonValue::Array:
        json += '[';
        for (const QJsonValue &element : value.toArray()) {
            json += separator;
            appendJson(json, element);
            separator = ",";
        }
        json += ']';
        break;
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

QString plainText(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isArray()) {
        QStringList texts;
        for (const QJsonValue &element : value.toArray())
            texts += plainText(element);
        return texts.join(QLatin1String(", "));
    }
    return value.toVariant().toString();
}

} // namespace

void Record::add(const char *key, const QJsonValue &value, const QString &text)
{
    m_fields.append({key, value, text});
}

QByteArray Record::toJson() const
{
    QByteArray json = "{";
    const char *separator = "\"";
    for (const Field &field : m_fields) {
        json += separator;
        json += field.key;
        json += "\":";
        appendJson(json, field.value);
        separator = ",\"";
    }
    return json + '}';
}

QByteArray Record::toText() const
{
    QByteArray text;
    for (const Field &field : m_fields) {
        text += field.key;
        const QString value = field.text.isEmpty() ? plainText(field.value) : field.text;
        text += value.isEmpty() ? ":" : ": ";
        text += printable(value).toUtf8() + '\n';
    }
    return text;
}
