#include "songs/midi/midikeys.h"

#include <QMap>

namespace tarvel4 {

namespace {

struct KeyRow
{
    qint8 sharps; // flats below zero
    const char *major;
    const char *minor;
};

constexpr KeyRow keyTable[] = {
    {7, "C#", "A#-"}, {6, "F#", "D#-"}, {5, "B", "G#-"},   {4, "E", "C#-"},   {3, "A", "F#-"},
    {2, "D", "B-"},   {1, "G", "E-"},   {0, "C", "A-"},    {-1, "F", "D-"},   {-2, "Bb", "G-"},
    {-3, "Eb", "C-"}, {-4, "Ab", "F-"}, {-5, "Db", "Bb-"}, {-6, "Gb", "Eb-"}, {-7, "Cb", "Ab-"},
};

constexpr quint16 keyCode(int sharps, bool isMinor)
{
    return static_cast<quint16>(static_cast<quint8>(sharps) << 8 | static_cast<int>(isMinor));
}

const QMap<quint16, QString> &nameByKey()
{
    static const QMap<quint16, QString> map = [] {
        QMap<quint16, QString> names;
        for (const KeyRow &row : keyTable) {
            names.insert(keyCode(row.sharps, false), QLatin1String(row.major));
            names.insert(keyCode(row.sharps, true), QLatin1String(row.minor));
        }
        return names;
    }();
    return map;
}

const QMap<QString, quint16> &keyByName()
{
    static const QMap<QString, quint16> map = [] {
        QMap<QString, quint16> keys;
        for (auto row = nameByKey().cbegin(); row != nameByKey().cend(); ++row)
            keys.insert(row.value(), row.key());
        // required: the code of E, although G# sounds like Ab
        keys.insert(QStringLiteral("G#"), keyCode(4, false));
        keys.insert(QStringLiteral("Db-"), keyCode(4, true));
        keys.insert(QStringLiteral("D#"), keyCode(-3, false));
        return keys;
    }();
    return map;
}

} // namespace

QString MidiKeys::nameOf(quint16 code)
{
    return nameByKey().value(code);
}

int MidiKeys::codeOf(const QString &name)
{
    QString key = name;
    key.remove(QLatin1Char(' '));
    const auto row = keyByName().constFind(key);
    return row == keyByName().cend() ? -1 : *row;
}

QStringList MidiKeys::names()
{
    return nameByKey().values();
}

} // namespace tarvel4
