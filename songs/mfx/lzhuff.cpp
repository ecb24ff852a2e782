#include "songs/mfx/lzhuff.h"

#include "songs/mfx/lzhuffpositions.h"
#include "storage/debuglog.h"

#include <QDebug>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace tarvel4 {

using namespace LzHuffFormat;

namespace {

/** The size field; required: bytes that are missing count as 0xFF. */
quint32 readTextSize(const QByteArray &stream)
{
    const QByteArray field = stream.left(sizeFieldWidth).leftJustified(sizeFieldWidth, '\xFF');
    return qFromLittleEndian<quint32>(field.constData());
}

void logCorruptStream(quint32 textSize)
{
    const char *line = "=====================================================================";
    qDebug() << line;
    qDebug() << "WARNING: skipping file, compressed stream corrupted/wrong size !!!";
    qDebug() << "Text size: " << textSize;
    qDebug() << line;
}

constexpr int symbolOfLength(int length)
{
    return literalCount - shortestMatch + length;
}

constexpr int lengthOfSymbol(int symbol)
{
    return symbol - literalCount + shortestMatch;
}

/// Bytes that copyMatch() writes at most.
constexpr int copyRoom = 32;
static_assert(copyRoom >= longestMatch);

/** Copies a match from \a distance bytes back; what comes after it is written over later. */
void copyMatch(char *out, int distance, int length)
{
    constexpr int step = 8;
    if (distance < step) { // it repeats what it has just written
        for (int i = 0; i < length; ++i)
            out[i] = out[i - distance];
        return;
    }
    for (int i = 0; i < copyRoom; i += step)
        std::memcpy(out + i, out + i - distance, step);
}

} // namespace

bool LzHuff::expand(const QByteArray &input, QByteArray &output)
{
    const auto inputSize = input.size();
    output = expanded(input);
    if (output.isEmpty()) {
        qDebug() << "Expand: ERROR";
        return false;
    }
    qCDebug(debugLog) << "Expand:" << inputSize << " -->" << output.size();
    return true;
}

void LzHuff::compress(const QByteArray &input, QByteArray &output)
{
    const auto inputSize = input.size();
    output = compressed(input);
    qCDebug(debugLog) << "Compress:" << inputSize << " -->" << output.size();
}

/** The text of a stream, empty when its size field is refused. */
QByteArray LzHuff::expanded(const QByteArray &input)
{
    const quint32 textSize = readTextSize(input);
    if (textSize > maxTextSize) {
        logCorruptStream(textSize);
        return {};
    }
    if (textSize == 0)
        return {};

    m_tree.reset();
    BitReader bits(input, sizeFieldWidth);
    // The window as it is at first, then the text: what one looks back at lies in one piece.
    // required: the last match is copied whole, even past the size
    QByteArray buffer(windowSize + static_cast<int>(textSize) + copyRoom, Qt::Uninitialized);
    char *const begin = std::fill_n(std::fill_n(buffer.data(), longestMatch, static_cast<char>(0)),
                                    windowStart, windowFill);
    char *const end = begin + textSize;
    char *out = begin;
    while (out < end) {
        const int symbol = m_tree.decode(bits);
        if (symbol < literalCount) {
            *out++ = char(symbol);
            continue;
        }
        const int distance = LzHuffPositions::decode(bits) + 1;
        copyMatch(out, distance, lengthOfSymbol(symbol));
        out += lengthOfSymbol(symbol);
    }
    return QByteArray(begin, static_cast<int>(out - begin));
}

QByteArray LzHuff::compressed(const QByteArray &input)
{
    QByteArray stream(sizeFieldWidth, Qt::Uninitialized);
    qToLittleEndian(static_cast<quint32>(input.size()), stream.data());
    if (input.isEmpty())
        return stream;

    stream.reserve(sizeFieldWidth + input.size());
    m_tree.reset();
    m_matcher.start(input);
    BitWriter bits(stream);
    while (!m_matcher.atEnd()) {
        const LzHuffMatcher::Match match = m_matcher.match();
        if (match.length < shortestMatch) {
            m_tree.encode(m_matcher.current(), bits);
            m_matcher.advance(1);
        } else {
            m_tree.encode(symbolOfLength(match.length), bits);
            LzHuffPositions::encode(match.position, bits);
            m_matcher.advance(match.length);
        }
    }
    bits.finish();
    return stream;
}

} // namespace tarvel4
