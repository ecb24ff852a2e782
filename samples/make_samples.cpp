// Makes the songs of samples/: make_samples FOLDER. Needs the program lame for the MP3.

#include "samples/arrangement.h"
#include "samples/karaoke.h"
#include "samples/midiwriter.h"
#include "samples/synth.h"

#include "songs/id3/id3v2tag.h"
#include "songs/mfx/lzhuff.h"
#include "songs/mfx/mfxheader.h"
#include "songs/midi/midiformat.h"
#include "songs/midi/rawmidifile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace tarvel4;

namespace {

void save(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        qFatal("can't write %s", qPrintable(path));
    std::printf("%s: %lld bytes\n", qPrintable(path), static_cast<long long>(bytes.size()));
}

int secondsOf(const Tune &tune, const Arrangement &song)
{
    return qRound(song.secondsAt(song.endTick(), tune.bpm));
}

/** The MIDI file of a tune with what its stream tells of the song, whatever it is packed in. */
RawMidiFile midiOf(const Tune &tune, const Arrangement &song, int format)
{
    RawMidiFile midi;
    if (!midi.load(MidiWriter::write(tune, song, format)))
        qFatal("%s is no MIDI file", qPrintable(tune.fileName));
    if (tune.tellsMarkers)
        midi.setMarkers(song.markers);
    if (tune.tellsLength)
        midi.setLength(secondsOf(tune, song));
    midi.setKey(tune.key);
    midi.setTrackName(tune.title);
    return midi;
}

QByteArray midiSong(const Tune &tune, const Arrangement &song, int format)
{
    RawMidiFile midi = midiOf(tune, song, format);
    if (tune.tellsTempo)
        midi.setBpm(tune.bpm);
    if (!tune.author.isEmpty())
        midi.setAuthor(tune.author);
    if (!tune.artist.isEmpty())
        midi.setArtist(tune.artist);
    if (!tune.genre.isEmpty())
        midi.setGenre(tune.genre);
    return midi.data();
}

MfxHeader mfxHeader(const Tune &tune, const MfxFormat::Variant &variant)
{
    QByteArray bytes(variant.headerSize, '\0');
    bytes.replace(0, MfxFormat::magicWidth, variant.magic);
    const QByteArray longName = tune.longName.toLatin1();
    bytes.replace(MfxFormat::longNameField.offset, longName.size(), longName);
    MfxHeader header;
    if (!header.parse(bytes))
        qFatal("%s has no MFx header", qPrintable(tune.fileName));
    header.setTitle(tune.title);
    header.setArtist(tune.artist);
    header.setAuthor(tune.author);
    header.setGenre(tune.genre);
    if (tune.tellsTempo)
        header.setBpm(tune.bpm);
    if (tune.tellsMarkers)
        header.setFlag(MfxFormat::hasMarkersFlag);
    return header;
}

QByteArray mfxSong(const Tune &tune, const Arrangement &song, const MfxFormat::Variant &variant)
{
    MfxHeader header = mfxHeader(tune, variant);
    QByteArray midi = midiOf(tune, song, 0).data();
    if (variant.version == 4) {
        const auto track = midi.indexOf(MidiFormat::trackMagic);
        midi.insert(track + MidiFormat::trackHeaderSize, QByteArray("\xFF\x00\xFF", 3));
    }
    QByteArray stream;
    LzHuff().compress(midi, stream);
    header.setTotalSize(static_cast<quint32>(header.headerBytes().size() + stream.size()));
    header.setUncompressedSize(static_cast<quint32>(midi.size()));
    return header.headerBytes() + stream;
}

QByteArray encodeMp3(const QByteArray &wav)
{
    QTemporaryDir folder;
    const QString wavPath = folder.filePath(QStringLiteral("song.wav"));
    const QString mp3Path = folder.filePath(QStringLiteral("song.mp3"));
    save(wavPath, wav);
    const QStringList arguments = {QStringLiteral("--quiet"),
                                   QStringLiteral("-m"),
                                   QStringLiteral("m"),
                                   QStringLiteral("-b"),
                                   QStringLiteral("64"),
                                   wavPath,
                                   mp3Path};
    QFile mp3(mp3Path);
    if (QProcess::execute(QStringLiteral("lame"), arguments) != 0 || !mp3.open(QIODevice::ReadOnly))
        qFatal("lame made no MP3");
    return mp3.readAll();
}

QByteArray mp3Song(const Tune &tune, const Arrangement &song)
{
    const QByteArray audio = encodeMp3(Synth::renderWav(song, tune.bpm));
    Id3v2Tag tag;
    if (!tag.parse(audio))
        qFatal("lame made no MP3 that a tag can be put before");
    tag.setTitle(tune.title);
    tag.setArtist(tune.artist);
    return tag.tag() + audio.mid(static_cast<int>(tag.audioStart()));
}

QByteArray songOf(const Tune &tune, const Arrangement &song)
{
    const QString suffix = tune.fileName.section(QLatin1Char('.'), -1);
    for (const MfxFormat::Variant &variant : MfxFormat::variants) {
        if (suffix == QStringLiteral("mf%1").arg(variant.version))
            return mfxSong(tune, song, variant);
    }
    if (suffix == QLatin1String("mp3"))
        return mp3Song(tune, song);
    return midiSong(tune, song, tune.fileName == QLatin1String("SANTALUC.mid") ? 0 : 1);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_samples FOLDER\n");
        return 2;
    }
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type != QtDebugMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    const QDir folder(QFile::decodeName(argv[1]));
    for (const Tune &tune : allTunes()) {
        const Arrangement song = arrange(tune);
        const QString path = folder.filePath(tune.fileName);
        save(path, songOf(tune, song));
        if (path.endsWith(QLatin1String(".mp3")))
            save(path.chopped(4) + QStringLiteral(".cdg"), drawKaraoke(tune, song));
        std::printf("  %d s, %d bars\n", secondsOf(tune, song), song.bars);
    }
}
