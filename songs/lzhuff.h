#pragma once

#include "songs/lzhuffmatcher.h"
#include "songs/lzhufftree.h"

#include <QByteArray>

/**
 * Compresses and expands the MIDI stream of an MFx song; docs/formats.md, LzHuff stream. An object
 * may be used any number of times; its working storage is allocated with it.
 */
class LzHuff
{
public:
    /**
     * Expands a stream. False, with \a output empty, for a stated size of 0 or above
     * LzHuffFormat::largestSize. A damaged stream expands to garbage; the last match may run up to
     * 28 bytes past the stated size.
     */
    bool expand(const QByteArray &input, QByteArray &output);

    void compress(const QByteArray &input, QByteArray &output);

private:
    LzHuffTree m_tree;
    LzHuffMatcher m_matcher;
};
