#include "library/fieldtexts.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <iterator>

namespace tarvel4 {

namespace {

struct Name
{
    const char *field;
    const char *text;
};

constexpr Name allNames[] = {
    {"title", QT_TRANSLATE_NOOP("FieldTexts", "Titolo")},
    {"artist", QT_TRANSLATE_NOOP("FieldTexts", "Interprete")},
    {"genre", QT_TRANSLATE_NOOP("FieldTexts", "Genere")},
    {"author", QT_TRANSLATE_NOOP("FieldTexts", "Autore")},
    {"length", QT_TRANSLATE_NOOP("FieldTexts", "Durata")},
    {"bpm", QT_TRANSLATE_NOOP("FieldTexts", "Tempo (BPM)")},
    {"key", QT_TRANSLATE_NOOP("FieldTexts", "Tonalità")},
    {"publisher", QT_TRANSLATE_NOOP("FieldTexts", "Pubblicata da K-Varo")},
    {"markers", QT_TRANSLATE_NOOP("FieldTexts", "Marker")},
    {"mfxLongName", QT_TRANSLATE_NOOP("FieldTexts", "Nome lungo")},
    {"mfxFlags", QT_TRANSLATE_NOOP("FieldTexts", "Indicatori MFx")},
};

QString translated(const char *source)
{
    return QCoreApplication::translate("FieldTexts", source);
}

QString markersText(const QVariantList &markers)
{
    QStringList texts;
    for (const QVariant &marker : markers) {
        const QVariantMap fields = marker.toMap();
        texts += fields.value(QStringLiteral("bar")).toString() + QLatin1Char(' ')
            + fields.value(QStringLiteral("text")).toString();
    }
    return texts.join(QLatin1String(", "));
}

/** Numbers below 0 are unknown ones. */
QString numberText(const QString &field, int number)
{
    if (number < 0)
        return {};
    if (field != QLatin1String("length"))
        return QString::number(number);
    return QStringLiteral("%1:%2")
        .arg(number / 60, 2, 10, QLatin1Char('0'))
        .arg(number % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

QString FieldTexts::nameOf(const QString &field)
{
    const auto name = std::find_if(std::begin(allNames), std::end(allNames), [&](const Name &row) {
        return field == QLatin1String(row.field);
    });
    return name == std::end(allNames) ? field : translated(name->text);
}

QString FieldTexts::valueOf(const QString &field, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QVariantList:
        return markersText(value.toList());
    case QMetaType::Bool:
        return value.toBool() ? translated(QT_TRANSLATE_NOOP("FieldTexts", "sì"))
                              : translated(QT_TRANSLATE_NOOP("FieldTexts", "no"));
    case QMetaType::Int:
        return numberText(field, value.toInt());
    default:
        return value.toString();
    }
}

} // namespace tarvel4
