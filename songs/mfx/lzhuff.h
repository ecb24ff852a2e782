#pragma once

#include "songs/mfx/lzhuffformat.h"
#include "songs/mfx/lzhuffmatcher.h"
#include "songs/mfx/lzhufftree.h"

#include <QByteArray>

namespace tarvel4 {

/**
 * Compresses and expands the MIDI stream of an MFx song: LZSS over a window of 4096 bytes, its
 * output coded by an adaptive Huffman tree; docs/formats.md, LzHuff stream.
 *
 * An object holds the storage that the encoder needs (about 45 KB) and can be used any number of
 * times.
 */
class LzHuff
{
public:
    /**
     * Expands a stream. False, with an empty \a output, when its size field is 0 or above 500,000
     * bytes; a stream that is damaged otherwise expands to garbage of at least that size, and at
     * most 28 bytes more.
     */
    bool expand(const QByteArray &input, QByteArray &output);

    /** Compresses any bytes; what is longer than 500,000 bytes can't be expanded again. */
    void compress(const QByteArray &input, QByteArray &output);

private:
    QByteArray expanded(const QByteArray &input);
    QByteArray compressed(const QByteArray &input);

    LzHuffTree m_tree;
    LzHuffMatcher m_matcher;
};

} // namespace tarvel4
