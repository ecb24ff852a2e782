#pragma once

#include <QByteArray>

namespace tarvel4 {

/**
 * Writes the graphics that a karaoke disc carries beside its sound (.cdg): packets of 24 bytes, 300
 * of them a second, each of which may change a little of a screen of 50 by 18 tiles.
 */
class KaraokeGraphics
{
public:
    enum Color { Night, White, Gold, Sky };

    KaraokeGraphics();

    /** Fills the screen with the darkest colour. */
    void clear();

    /** Writes a line of text from the tile at \a row and \a column on, one tile a character. */
    void writeText(int row, int column, const QByteArray &text, Color color);

    /** As writeText(), two tiles wide and two high a character. */
    void writeLargeText(int row, int column, const QByteArray &text, Color color);

    /** Lets time pass until \a seconds from the beginning; what was written after that moment
     * already is late and stays so. */
    void waitUntil(double seconds);

    const QByteArray &bytes() const { return m_bytes; }

    static constexpr int columns = 50;
    static constexpr int rows = 18;

private:
    void addPacket(char instruction, const QByteArray &data);
    void addTile(int row, int column, Color color, const QByteArray &dots);

    QByteArray m_bytes;
};

} // namespace tarvel4
