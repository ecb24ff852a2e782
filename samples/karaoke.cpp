#include "samples/karaoke.h"

#include "samples/karaokegraphics.h"

namespace tarvel4 {

namespace {

using Syllable = Arrangement::Syllable;
using Line = QVector<Syllable>;

constexpr int linesOnPage = 4;
constexpr int firstRow = 4;
constexpr int rowsBetweenLines = 3;
constexpr double secondsToRead = 1.0; // before the first syllable of a page

QVector<Line> linesOf(const QVector<Syllable> &syllables)
{
    QVector<Line> lines;
    for (const Syllable &syllable : syllables) {
        if (syllable.beginsLine || lines.isEmpty())
            lines.append(Line());
        lines.last().append(syllable);
    }
    return lines;
}

QByteArray textOf(const Line &line)
{
    QByteArray text;
    for (const Syllable &syllable : line)
        text += syllable.text;
    return text.trimmed();
}

int columnFor(qsizetype width)
{
    return (KaraokeGraphics::columns - static_cast<int>(width)) / 2;
}

int rowFor(int line)
{
    return firstRow + line % linesOnPage * rowsBetweenLines;
}

void drawTitle(KaraokeGraphics &screen, const Tune &tune)
{
    const QByteArray title = tune.title.toLatin1();
    screen.writeLargeText(6, columnFor(2 * title.size()), title, KaraokeGraphics::Gold);
    const QByteArray artist = tune.artist.toLatin1();
    screen.writeText(10, columnFor(artist.size()), artist, KaraokeGraphics::Sky);
}

void drawPage(KaraokeGraphics &screen, const QVector<Line> &lines, int first)
{
    screen.clear();
    for (int i = first; i < std::min(first + linesOnPage, static_cast<int>(lines.size())); ++i) {
        const QByteArray text = textOf(lines[i]);
        screen.writeText(rowFor(i), columnFor(text.size()), text, KaraokeGraphics::White);
    }
}

} // namespace

QByteArray drawKaraoke(const Tune &tune, const Arrangement &song)
{
    const auto seconds = [&](int tick) { return song.secondsAt(tick, tune.bpm); };
    KaraokeGraphics screen;
    drawTitle(screen, tune);
    const QVector<Line> lines = linesOf(song.syllables);
    for (int i = 0; i < lines.size(); ++i) {
        const Line &line = lines[i];
        if (i % linesOnPage == 0) {
            screen.waitUntil(seconds(line.first().start) - secondsToRead);
            drawPage(screen, lines, i);
        }
        int column = columnFor(textOf(line).size());
        for (const Syllable &syllable : line) {
            screen.waitUntil(seconds(syllable.start));
            screen.writeText(rowFor(i), column, syllable.text, KaraokeGraphics::Gold);
            column += static_cast<int>(syllable.text.size());
        }
    }
    screen.waitUntil(seconds(song.endTick()) + 1);
    return screen.bytes();
}

} // namespace tarvel4
