// Takes any bytes as the seven files of a prepared memory that holds one song: reads them, checks
// them, lists their songs and brings them up to date. The files follow one another as pack_index
// puts them: each behind its length, in two bytes, big-endian.
#include "fuzz/fuzzing.h"
#include "indexer/index.h"
#include "indexer/indexformat.h"
#include "indexer/indexverifier.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

using namespace tarvel4;

namespace {

QString filePath(const QString &root, const char *name)
{
    return root + QLatin1Char('/') + QLatin1String(name);
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    Fuzzing::require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/** The song and the time that fuzz/run gave it when it made the first inputs. */
void putSong(const QString &root)
{
    const QString path = filePath(root, "SANTALUC.mid");
    Fuzzing::require(QFile::copy(QStringLiteral(TARVEL4_SAMPLES "/SANTALUC.mid"), path));
    QFile song(path);
    Fuzzing::require(song.open(QIODevice::ReadWrite)
                     && song.setFileTime(QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)),
                                         QFileDevice::FileModificationTime));
}

/** Takes the next file off the input; one that ends early is short. */
QByteArray nextFile(QByteArray &input)
{
    constexpr int lengthSize = 2;
    if (input.size() < lengthSize)
        return {};
    const QByteArray bytes = input.mid(lengthSize, qFromBigEndian<quint16>(input.constData()));
    input.remove(0, lengthSize + bytes.size());
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    Fuzzing::silenceLog();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/tarvel4-fuzz-XXXXXX"));
    static const QTemporaryDir lists(QStringLiteral("/dev/shm/tarvel4-fuzz-XXXXXX"));
    static const QString root = folder.path();
    static const bool hasSong = (putSong(root), true);
    Fuzzing::require(hasSong);

    QByteArray input = Fuzzing::bytes(data, size);
    for (const char *name : IndexFormat::preparedFiles)
        write(filePath(root, name), nextFile(input));

    IndexVerifier(root).verify();
    const Index::Contents contents = Index::readEntries(root);
    const bool isReadable = bool(contents.outcome);
    const int records = contents.entries.size();
    Index index;
    const int listed = index.writeSongList(root, lists.filePath(QStringLiteral("list")),
                                           static_cast<int>(size % 3));
    Fuzzing::require(listed == static_cast<int>(isReadable));

    // An index that can be read is brought up to date, and what an update writes needs no other.
    Fuzzing::require(index.update(root) == isReadable);
    if (isReadable && (index.changed() || records == 0)) {
        Fuzzing::require(index.update(root) && !index.changed());
        Fuzzing::require(Index::readEntries(root).entries.size() == 1);
    }
    return 0;
}
