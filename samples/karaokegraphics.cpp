#include "samples/karaokegraphics.h"

#include "samples/karaokefont.h"

#include <QtGlobal>

namespace tarvel4 {

namespace {

constexpr int packetSize = 24;
constexpr int packetsInSecond = 300;
constexpr int dataOffset = 4; // after command, instruction and two parity bytes
constexpr char graphicsCommand = 9;

constexpr char memoryPreset = 1;
constexpr char borderPreset = 2;
constexpr char tileBlock = 6;
constexpr char loadColors = 30; // the first eight of sixteen

constexpr int tileWidth = 6;
constexpr int tileHeight = 12;
constexpr int presetRepeats = 16; // packets get lost on a scratched disc

/** Red, green and blue of the colours, 0 to 15 each, in the order of KaraokeGraphics::Color. */
constexpr quint16 palette[] = {0x013, 0xFFF, 0xFC2, 0x8CF};

// The row of a glyph that each row of a tile shows: seven rows stretched over ten of twelve.
constexpr int glyphRow[tileHeight] = {-1, 0, 1, 1, 2, 3, 3, 4, 5, 5, 6, -1};

/** Whether the dot of a character is set, in a tile that is \a scale times as large each way. */
bool dotOf(char character, int scale, int x, int y)
{
    const int row = glyphRow[y / scale];
    const int column = x / scale;
    if (row < 0 || column >= KaraokeFont::width)
        return false;
    return (KaraokeFont::glyph(character)[static_cast<std::size_t>(row)]
            >> (KaraokeFont::width - 1 - column))
        & 1;
}

/** The twelve rows of one tile of a character, the leftmost dot the highest of six bits. */
QByteArray tileOf(char character, int scale, int tileX, int tileY)
{
    QByteArray dots;
    for (int y = 0; y < tileHeight; ++y) {
        int bits = 0;
        for (int x = 0; x < tileWidth; ++x)
            bits = bits << 1
                | static_cast<int>(
                       dotOf(character, scale, tileX * tileWidth + x, tileY * tileHeight + y));
        dots.append(static_cast<char>(bits));
    }
    return dots;
}

} // namespace

KaraokeGraphics::KaraokeGraphics()
{
    QByteArray colors(16, '\0');
    for (int i = 0; i < 4; ++i) {
        const int rgb = palette[i];
        colors[2 * i] = static_cast<char>(rgb >> 6); // four bits of red, the upper two of green
        colors[2 * i + 1] =
            static_cast<char>((rgb & 0x30) | (rgb & 0x0F)); // the lower two of green, blue
    }
    addPacket(loadColors, colors);
    clear();
}

void KaraokeGraphics::clear()
{
    for (int i = 0; i < presetRepeats; ++i)
        addPacket(memoryPreset, QByteArray(1, static_cast<char>(Night)) + static_cast<char>(i));
    addPacket(borderPreset, QByteArray(1, static_cast<char>(Night)));
}

void KaraokeGraphics::writeText(int row, int column, const QByteArray &text, Color color)
{
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != ' ')
            addTile(row, column + i, color, tileOf(text.at(i), 1, 0, 0));
    }
}

void KaraokeGraphics::writeLargeText(int row, int column, const QByteArray &text, Color color)
{
    for (int i = 0; i < text.size(); ++i) {
        for (int tile = 0; tile < 4; ++tile) {
            const int x = tile % 2;
            const int y = tile / 2;
            addTile(row + y, column + 2 * i + x, color, tileOf(text.at(i), 2, x, y));
        }
    }
}

void KaraokeGraphics::waitUntil(double seconds)
{
    const int packets = static_cast<int>(seconds * packetsInSecond);
    const auto missing = packets * packetSize - m_bytes.size();
    if (missing > 0)
        m_bytes.append(missing, '\0');
}

void KaraokeGraphics::addPacket(char instruction, const QByteArray &data)
{
    QByteArray packet(packetSize, '\0');
    packet[0] = graphicsCommand;
    packet[1] = instruction;
    packet.replace(dataOffset, data.size(), data);
    m_bytes += packet;
}

void KaraokeGraphics::addTile(int row, int column, Color color, const QByteArray &dots)
{
    Q_ASSERT(row < rows && column < columns);
    addPacket(tileBlock,
              QByteArray(1, static_cast<char>(Night)) + static_cast<char>(color)
                  + static_cast<char>(row) + static_cast<char>(column) + dots);
}

} // namespace tarvel4
