#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <array>

namespace tarvel4 {

/** The names of the player's memory: files, records, fields; docs/formats.md, Player memory. */
namespace IndexFormat {

constexpr char pathFile[] = "index.id3";
constexpr char ordFile[] = "ordfile.id3";
constexpr char titleFile[] = "title.id3";
constexpr char artistFile[] = "artist.id3";
constexpr char titleAlphaFile[] = "atitle.id3";
constexpr char artistAlphaFile[] = "aartist.id3";
constexpr char numFile[] = "fsinfos.id3";

/** A memory is prepared when all of these exist. */
constexpr std::array<const char *, 7> preparedFiles{
    pathFile, ordFile, titleFile, artistFile, titleAlphaFile, artistAlphaFile, numFile};

/** What "delete index" removes, in this order; the player's own file stays. */
constexpr std::array<const char *, 17> deletedFiles{
    "index.id3",    "ordfile.id3", "title.id3",   "artist.id3",  "genre.id3",  "atitle.id3",
    "aartist.id3",  "agenre.id3",  "title3.id3",  "artist3.id3", "genre3.id3", "atitle3.id3",
    "aartist3.id3", "agenre3.id3", "fsinfos.id3", "temp1.id3",   "temp2.id3"};

constexpr char playersFile[] = "sfx.id3";

/** Folders whose songs are never indexed, in any case of letters. */
constexpr std::array<const char *, 2> skippedFolders{"sfx", "bridge"};

/** Suffixes of songs, in upper case. */
constexpr std::array<const char *, 6> songSuffixes{"MID", "KAR", "MF3", "MF4", "MF5", "MP3"};

/** A file that claims to hold more songs is not read: the ord index tells half as many apart. */
constexpr qint64 mostSongs = 2 * 65536;

/** The size of a file that holds so many. */
constexpr qint64 largestFile(int bytesASong)
{
    return mostSongs * bytesASong;
}

/** Under this name the counts are written, before they take their own; a killed run may leave it.
 */
constexpr char unfinishedNumFile[] = ".fsinfos.new";

/** At the start of a song: what the index tells of it is there. */
constexpr int songBytesRead = 3072;

/** Longer paths below the root are not indexed. */
constexpr int longestPath = 251;

/** A record of the path index; the number is big-endian, date and time are ASCII digits. */
namespace PathRecord {
constexpr int numberAt = 0;
constexpr int pathAt = 4;
constexpr int pathSize = 252;
constexpr int dateAt = 256;
constexpr int dateSize = 8;
constexpr int timeAt = 264;
constexpr int timeSize = 6;
constexpr int size = 270;
} // namespace PathRecord

/** A value of the ord index: a record number cut to 16 bits, little-endian. */
namespace OrdRecord {
constexpr int size = 2;
constexpr int blockEntries = 512; ///< values are written in blocks of this many
} // namespace OrdRecord

/** A record of the title index and a song's record of the artist index; the number is big-endian.
 */
namespace SongRecord {
constexpr int numberAt = 0;
constexpr int textAt = 4;
constexpr int textSize = 58;
constexpr int tempoAt = 62;
constexpr int attributeAt = 63; ///< kind in the low bits, markers above them
constexpr quint8 kindMask = 7;
constexpr int markersShift = 3;
constexpr int size = 64;
} // namespace SongRecord

/** A group's header in the artist index; both counts are big-endian. */
namespace GroupRecord {
constexpr int backCountAt = 0;
constexpr int countAt = 2;
constexpr int textAt = 4;
constexpr int textSize = 58;
constexpr int zeroAt = 62;
constexpr int markAt = 63;
constexpr quint8 mark = 0xFF;
constexpr int size = 64;
constexpr int bytesASong = 2 * size; ///< where each song has an artist of its own
} // namespace GroupRecord

/** An alpha index: big-endian offsets of the first record of each character. */
namespace AlphaIndex {
constexpr int firstCharacter = 32;
constexpr int slots = 64;
constexpr int slotSize = 4;
constexpr quint32 unclaimed = 0xFFFFFFFF;
constexpr int size = slots * slotSize;
} // namespace AlphaIndex

/** The counts: little-endian, cut to 16 bits. */
namespace NumRecord {
constexpr int titlesAt = 0;
constexpr int artistsAt = 2;
constexpr int reservedAt = 4;
constexpr int size = 12;
} // namespace NumRecord

/** The artist and genre of a song that has none, in capitals like every stored text. */
constexpr char unknownText[] = "<UNKNOWN>";

/** What kind of file a song is, as the attribute byte has it. */
enum class Kind : quint8 { Midi = 0, Mp3 = 1, Mf3 = 2, Mf4 = 3, Mf5 = 4 };
constexpr quint8 highestKind = 4;

} // namespace IndexFormat

} // namespace tarvel4
