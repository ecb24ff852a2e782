#include "samples/notation.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarvel4 {

namespace Notation {

namespace {

constexpr int semitonesInOctave = 12;

/** Takes a letter and its accidental off \a text: 0 for c to 11 for b. */
int takeNoteName(QByteArray &text)
{
    constexpr int ofLetter[] = {9, 11, 0, 2, 4, 5, 7}; // a to g
    const int letter = text.isEmpty()
        ? -1
        : QChar::toLower(static_cast<uint>(static_cast<uchar>(text.at(0)))) - 'a';
    if (letter < 0 || letter > 6)
        qFatal("no note begins with \"%s\"", text.constData());
    text.remove(0, 1);
    int note = ofLetter[letter];
    if (text.startsWith('#'))
        ++note;
    else if (text.startsWith('b'))
        --note;
    else
        return note;
    text.remove(0, 1);
    return (note + semitonesInOctave) % semitonesInOctave;
}

Tone readTone(const QByteArray &word)
{
    const auto colon = word.indexOf(':');
    bool ok = false;
    const double eighths = word.mid(colon + 1).toDouble(&ok);
    if (colon < 1 || !ok || eighths <= 0)
        qFatal("no note: \"%s\"", word.constData());
    QByteArray name = word.left(colon);
    if (name == "r")
        return {-1, eighths};
    const int note = takeNoteName(name);
    const int octave = name.toInt(&ok);
    if (!ok)
        qFatal("no octave: \"%s\"", word.constData());
    return {(octave + 1) * semitonesInOctave + note, eighths};
}

Chord readChord(QByteArray word)
{
    const QByteArray whole = word;
    const int root = takeNoteName(word);
    if (word.isEmpty())
        return {root, {0, 4, 7}};
    if (word == "m")
        return {root, {0, 3, 7}};
    if (word == "7")
        return {root, {0, 4, 7, 10}};
    qFatal("no chord: \"%s\"", whole.constData());
}

} // namespace

QList<QByteArray> wordsOf(const QByteArray &text)
{
    const QByteArray simplified = text.simplified();
    return simplified.isEmpty() ? QList<QByteArray>() : simplified.split(' ');
}

QVector<QVector<Tone>> readMelody(const QByteArray &text, int eighthsInBar)
{
    QVector<QVector<Tone>> bars;
    for (const QByteArray &barText : text.split('|')) {
        QVector<Tone> bar;
        for (const QByteArray &word : wordsOf(barText))
            bar.append(readTone(word));
        const double sum =
            std::accumulate(bar.cbegin(), bar.cend(), 0.0,
                            [](double before, const Tone &tone) { return before + tone.eighths; });
        if (std::abs(sum - eighthsInBar) > 0.001)
            qFatal("a bar of %g eighths: \"%s\"", sum, barText.constData());
        bars.append(bar);
    }
    return bars;
}

QVector<QVector<Chord>> readChords(const QByteArray &text)
{
    QVector<QVector<Chord>> bars;
    for (const QByteArray &barText : wordsOf(text)) {
        QVector<Chord> bar;
        for (const QByteArray &word : barText.split(','))
            bar.append(readChord(word));
        if (bar.size() > 2)
            qFatal("more than two chords: \"%s\"", barText.constData());
        bars.append(bar);
    }
    return bars;
}

} // namespace Notation

} // namespace tarvel4
