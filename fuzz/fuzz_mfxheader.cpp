// Parses any bytes as an MFx header, reads every field and writes it.
#include "fuzz/fuzzing.h"
#include "songs/mfx/mfxheader.h"

using namespace tarvel4;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray input = Fuzzing::bytes(data, size);
    MfxHeader header;
    Fuzzing::require(header.parse(input) == (header.version() != 0));
    Fuzzing::require(header.version() == 0 || header.headerBytes() == input);

    const QString title = header.title();
    header.setArtist(header.artist());
    header.setAuthor(header.author() + header.longName());
    header.setGenre(header.genre());
    header.setTitle(title);
    header.setBpm(header.bpm());
    header.setFlag(header.flags());
    header.setTotalSize(static_cast<quint32>(size));
    header.setUncompressedSize(static_cast<quint32>(size));
    Fuzzing::require(header.headerBytes().size() >= (header.version() == 0 ? 0 : input.size()));
    return 0;
}
