#include "songs/metasong.h"

#include "songs/fieldrules.h"
#include "songs/id3/mp3rewrite.h"
#include "songs/mfx/lzhuff.h"
#include "songs/mfx/lzhuffformat.h"
#include "songs/midi/cutpadding.h"
#include "songs/songfields.h"
#include "storage/filebytes.h"
#include "storage/inplacerewrite.h"
#include "storage/recovery.h"
#include "storage/regularfile.h"

#include <QDebug>

#include <algorithm>
#include <iterator>

namespace tarvel4 {

namespace {

// An MF4 stream has these after the header of its first track, not counted in the track's length.
constexpr char mf4Filler[] = {'\xFF', '\x00', '\xFF'};
constexpr int mf4FillerSize = sizeof(mf4Filler);

// Enough to recognise every format, and to hold most tags.
constexpr int startSize = 4096;

/** Where the filler of an MF4 stream belongs; -1 when it has no track. */
int mf4FillerOffset(const QByteArray &midi)
{
    const int track = midi.indexOf(MidiFormat::trackMagic);
    return track < 0 ? -1 : track + MidiFormat::trackHeaderSize;
}

/** The size of the header that begins so; 0 when it is no MFx song. */
int mfxHeaderSize(const QByteArray &start)
{
    const auto variant = std::find_if(
        std::begin(MfxFormat::variants), std::end(MfxFormat::variants),
        [&](const MfxFormat::Variant &candidate) { return start.startsWith(candidate.magic); });
    return variant == std::end(MfxFormat::variants) ? 0 : variant->headerSize;
}

bool isMp3(const QString &path, const QByteArray &start)
{
    if (!path.endsWith(QLatin1String("MP3"), Qt::CaseInsensitive))
        return false;
    if (start.startsWith(Id3Format::tagMagic) || start.startsWith(QByteArray(2, '\0')))
        return true;
    // required: a signed comparison, which lets 0x00-0x7F pass as well as 0xF3-0xFF
    constexpr qint8 leastSecondByte = -13;
    return start.size() >= 2 && start.at(0) == '\xFF' && qint8(start.at(1)) >= leastSecondByte;
}

void readMidi(const RawMidiFile &midi, SongInfo &info)
{
    info.title = midi.trackName();
    info.artist = midi.artist();
    info.author = midi.author();
    info.genre = midi.genre();
    info.key = midi.key();
    info.markers = midi.markers();
    info.isPublisher = midi.isPublisher();
    info.length = midi.length();
    info.bpm = midi.bpm();
}

void readMfx(const MfxHeader &header, const RawMidiFile &midi, SongInfo &info)
{
    info.title = header.title();
    info.artist = header.artist();
    info.author = header.author();
    info.genre = header.genre();
    info.key = midi.key();
    info.markers = midi.markers();
    info.isPublisher = true;
    info.length = midi.length();
    info.bpm = header.bpm();
    info.mfxLongName = header.longName();
    info.mfxFlags = header.flags();
}

void readMp3(const Id3v2Tag &tag, SongInfo &info)
{
    info.title = tag.title();
    info.artist = tag.artist();
    info.author = tag.author();
    info.genre = tag.genre();
    info.key = tag.key();
    info.isPublisher = tag.isPublisher();
    info.length = tag.length();
    info.bpm = tag.bpm();
}

void apply(SongFields &&song, const SongInfo &info, bool manual)
{
    if (manual)
        FieldRules::applyEdit(song, info);
    else
        FieldRules::applyUpdate(song, info);
}

} // namespace

MetaSong::MetaSong(Disk &disk)
    : m_disk(disk)
{}

bool MetaSong::importFile(const QString &path)
{
    return importFile(path, path);
}

bool MetaSong::isSong(const QString &path)
{
    return MetaSong().importFile(path, Recovery::goesBackTo(path));
}

/** \a name: what the file is called, for the formats that are recognised by it. */
bool MetaSong::importFile(const QString &path, const QString &name)
{
    m_format = Unknown;
    m_midi = RawMidiFile();
    SongFile file(path);
    if (!file.isOpen())
        return false;

    QByteArray bytes = file.read(startSize);
    const bool isMidiStart = bytes.startsWith(MidiFormat::fileMagic);
    if (isMidiStart || mfxHeaderSize(bytes) > 0) {
        if (!file.readUpTo(file.size(), bytes))
            return false;
        if (!isMidiStart)
            return importMfx(bytes);
        CutPadding::removeFrom(bytes);
        return importMidi(bytes);
    }
    return isMp3(name, bytes) && importMp3(file, bytes);
}

bool MetaSong::importMidi(const QByteArray &bytes)
{
    if (!m_midi.load(bytes))
        return false;
    m_format = m_midi.type();
    return true;
}

bool MetaSong::importMfx(const QByteArray &bytes)
{
    const int headerSize = mfxHeaderSize(bytes);
    if (!m_header.parse(bytes.left(headerSize)))
        return false;

    QByteArray midi;
    if (!LzHuff().expand(bytes.mid(headerSize), midi)) {
        qDebug() << "[MetaSong::importFile] LzHuff Expand filed, skipping file";
        return false;
    }
    const int filler = mf4FillerOffset(midi);
    if (m_header.version() == 4 && filler >= 0)
        midi.remove(filler, mf4FillerSize);
    if (!m_midi.load(midi)) {
        qDebug() << "[MetaSong::importFile] MidiStream corrupted, skipping file";
        return false;
    }
    m_format = m_header.version();
    return true;
}

bool MetaSong::importMp3(SongFile &file, const QByteArray &start)
{
    const qint64 wanted = Id3v2Tag::bytesWanted(start);
    if (wanted - Id3Format::headerSize > Id3Format::maxSongBytes)
        return false;
    m_oldStart = start.left(int(wanted));
    if (!file.readUpTo(std::min(wanted, file.size()), m_oldStart) || !m_tag.parse(m_oldStart))
        return false;
    m_format = Mp3;
    return true;
}

void MetaSong::readInfo(SongInfo &info) const
{
    info.clear();
    info.format = formatName(m_format);
    if (isMidi())
        readMidi(m_midi, info);
    else if (isMfx())
        readMfx(m_header, m_midi, info);
    else if (m_format == Mp3)
        readMp3(m_tag, info);
}

void MetaSong::setSongInfo(const SongInfo &info, bool manual)
{
    qDebug() << "[MetaSong] setSongInfo,";
    dumpSongInfo(info);
    qDebug() << "manual: " << (manual ? "true" : "false");
    if (isMidi())
        apply(MidiFields(m_midi), info, manual);
    else if (isMfx())
        apply(MfxFields(m_header, m_midi), info, manual);
    else if (m_format == Mp3)
        apply(Mp3Fields(m_tag), info, manual);
}

int MetaSong::addMarker(const QString &text, quint16 bar)
{
    qDebug() << "[MetaSong] addMarker";
    const int inserted = m_midi.addMarker({bar, text});
    qDebug() << "Marker added, len= " << inserted;
    qDebug() << "-----------------------------------";
    return inserted;
}

bool MetaSong::isSavable() const
{
    // What could not be read again is not written either.
    if (m_format == Mp3)
        return m_tag.tagSize() <= quint32(Id3Format::maxSongBytes);
    if (isMfx()) {
        return m_header.headerBytes().size() == MfxHeader::sizeOf(m_format)
            && quint32(mfxStream().size()) <= LzHuffFormat::maxTextSize;
    }
    return isMidi() && m_midi.data().size() <= FileBytes::maxSize;
}

bool MetaSong::saveToFile(const QString &path)
{
    if (!isSavable()) {
        qDebug() << "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting";
        return false;
    }
    if (m_format == Mp3) {
        Recovery::recover(m_disk, path, isSong); // its name is needed
        return Mp3Rewrite(m_disk, path).write(m_tag.tag(), m_oldStart, m_tag.audioStart());
    }

    const QByteArray bytes = image();
    InPlaceRewrite rewrite(m_disk, path);
    if (!rewrite.open()) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                    "protected? Aborting!";
        return false;
    }
    qDebug() << (isMfx() ? "[MetaSong::saveToFile] MFx" : "[MetaSong::saveToFile] MIDI");
    return rewrite.write(bytes);
}

QByteArray MetaSong::mfxStream() const
{
    QByteArray midi = m_midi.data();
    if (m_format == Mf4)
        midi.insert(mf4FillerOffset(midi), QByteArray(mf4Filler, mf4FillerSize));
    return midi;
}

QByteArray MetaSong::image() const
{
    if (isMidi())
        return m_midi.data();
    const QByteArray stream = mfxStream();
    QByteArray compressed;
    LzHuff().compress(stream, compressed);
    MfxHeader header = m_header;
    header.setTotalSize(quint32(header.headerBytes().size() + compressed.size()));
    header.setUncompressedSize(quint32(stream.size()));
    return header.headerBytes() + compressed;
}

void MetaSong::dump() const
{
    SongInfo info;
    readInfo(info);
    dumpSongInfo(info);
}

QString MetaSong::formatName(int format)
{
    switch (format) {
    case Midi0:
    case Midi1:
        return QStringLiteral("MIDI");
    case Mf3:
        return QStringLiteral("MF3");
    case Mf4:
        return QStringLiteral("MF4");
    case Mf5:
        return QStringLiteral("MF5");
    case Mp3:
        return QStringLiteral("MP3");
    default:
        return QStringLiteral("UNKNOWN");
    }
}

QStringList MetaSong::keyList()
{
    return RawMidiFile::keyList();
}

} // namespace tarvel4
