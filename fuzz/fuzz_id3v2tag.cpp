// Parses any bytes as the beginning of an MP3, reads every frame and writes it.
#include "fuzz/fuzzing.h"
#include "songs/id3/id3v2tag.h"

using namespace tarvel4;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray input = Fuzzing::bytes(data, size);
    Id3v2Tag tag;
    if (!tag.parse(input))
        return 0;
    // A tag may end up to its header's ten bytes behind the end of the file.
    Fuzzing::require(tag.audioStart() >= 0 && tag.audioStart() <= input.size() + 10);

    tag.setTitle(tag.title());
    tag.setArtist(tag.artist());
    tag.setAuthor(tag.author());
    tag.setGenre(tag.genre());
    tag.setKey(tag.key());
    tag.setLength(tag.length());
    tag.setBpm(tag.isPublisher() ? 0 : tag.bpm());
    if (!tag.hasEditMark())
        tag.addEditMark();
    Fuzzing::require(tag.hasLength() && tag.hasEditMark());
    return 0;
}
