// Expands any bytes, and compresses them: a stream of our own must give them back.
#include "fuzz/fuzzing.h"
#include "songs/mfx/lzhuff.h"

using namespace tarvel4;

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    Fuzzing::silenceLog();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static LzHuff codec; // one for all inputs: what one leaves behind must not matter to the next
    const QByteArray input = Fuzzing::bytes(data, size);
    QByteArray text;
    Fuzzing::require(codec.expand(input, text) != text.isEmpty());

    QByteArray stream;
    codec.compress(input, stream);
    const bool expandable =
        !input.isEmpty() && input.size() <= static_cast<int>(LzHuffFormat::maxTextSize);
    Fuzzing::require(codec.expand(stream, text) == expandable);
    Fuzzing::require(!expandable || text == input);
    return 0;
}
