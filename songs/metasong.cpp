#include "songs/metasong.h"

#include "songs/fieldrules.h"
#include "songs/id3/mp3song.h"
#include "songs/mfx/mfxsong.h"
#include "songs/midi/midisong.h"
#include "storage/recovery.h"
#include "storage/regularfile.h"
#include "storage/savebatch.h"

#include <QDebug>

namespace tarvel4 {

namespace {

// Enough to recognise every format, and to hold most tags.
constexpr int startSize = 4096;

} // namespace

QString keyOf(SongField field)
{
    switch (field) {
    case SongField::Markers:
        return QStringLiteral("markers");
    case SongField::Key:
        return QStringLiteral("key");
    case SongField::Length:
        return QStringLiteral("length");
    case SongField::Title:
        return QStringLiteral("title");
    case SongField::Author:
        return QStringLiteral("author");
    case SongField::Bpm:
        return QStringLiteral("bpm");
    case SongField::Artist:
        return QStringLiteral("artist");
    case SongField::Genre:
        return QStringLiteral("genre");
    }
    return {};
}

MetaSong::MetaSong(Disk &disk)
    : m_disk(disk)
{}

MetaSong::~MetaSong() = default;
MetaSong::MetaSong(MetaSong &&) noexcept = default;

Outcome MetaSong::importFile(const QString &path)
{
    return importFile(path, path);
}

bool MetaSong::isSong(const QString &path)
{
    return static_cast<bool>(MetaSong().importFile(path, Recovery::goesBackTo(path)));
}

/** \a name: what the file is called, for the formats that are recognised by it. */
Outcome MetaSong::importFile(const QString &path, const QString &name)
{
    m_song.reset();
    RegularFile file(path);
    Outcome outcome = file.outcome();
    if (outcome)
        outcome = load(name, file);
    if (!outcome)
        m_song.reset();
    outcome.path = path;
    return outcome;
}

Outcome MetaSong::load(const QString &name, RegularFile &file)
{
    QByteArray bytes = file.read(startSize);
    if (!file.outcome())
        return file.outcome();
    const bool isMidi = bytes.startsWith(MidiFormat::fileMagic);
    if (isMidi || MfxSong::isRecognised(bytes)) {
        const Outcome read = file.readUpTo(file.size(), bytes);
        if (!read)
            return read;
    }
    const auto take = [this](auto song, auto &&...arguments) {
        const Outcome loaded = song->load(arguments...);
        m_song = std::move(song);
        return loaded;
    };
    if (isMidi)
        return take(std::make_unique<MidiSong>(), bytes);
    if (MfxSong::isRecognised(bytes))
        return take(std::make_unique<MfxSong>(), bytes);
    if (Mp3Song::isRecognised(name, bytes))
        return take(std::make_unique<Mp3Song>(), file, bytes);
    return {Outcome::Code::NotASong, {}, {}, {}};
}

void MetaSong::readInfo(SongInfo &info) const
{
    info.clear();
    info.format = formatName(format());
    if (m_song)
        m_song->readInto(info);
}

void MetaSong::setSongInfo(const SongInfo &info, WrittenBy writtenBy)
{
    const bool isEdit = writtenBy == WrittenBy::User;
    qDebug() << "[MetaSong] setSongInfo,";
    dumpSongInfo(info);
    qDebug() << "manual: " << (isEdit ? "true" : "false");
    if (!m_song)
        return;
    if (isEdit)
        FieldRules::applyEdit(*m_song, info);
    else
        FieldRules::applyUpdate(*m_song, info);
}

QVector<FieldNote> MetaSong::checkEdit(const SongInfo &edited) const
{
    return m_song ? FieldCheck::ofEdit(*m_song, edited) : QVector<FieldNote>();
}

int MetaSong::addMarker(const QString &text, quint16 bar)
{
    qDebug() << "[MetaSong] addMarker";
    const int inserted = m_song ? m_song->addMarker({bar, text}) : 0;
    qDebug() << "Marker added, len= " << inserted;
    qDebug() << "-----------------------------------";
    return inserted;
}

Outcome MetaSong::whyNotSavable() const
{
    Outcome outcome{Outcome::Code::NotASong, {}, {}, {}};
    if (m_song)
        outcome = m_song->whyNotSavable();
    return outcome;
}

Outcome MetaSong::planSave(FileChange &change) const
{
    Outcome outcome = whyNotSavable();
    if (outcome)
        change = m_song->change();
    else
        qDebug() << "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting";
    return outcome;
}

Outcome MetaSong::saveToFile(const QString &path)
{
    FileChange change;
    Outcome outcome = planSave(change);
    if (outcome) {
        if (change.way == FileChange::Way::InPlace)
            change.oldHead = QByteArray(); // it may be another file than the one that was loaded
        else
            Recovery::recover(m_disk, path, isSong); // the name of what is set aside is needed
        SaveBatch batch(m_disk);
        batch.add(path, {}, change, [&outcome](const Outcome &saved) { outcome = saved; });
        batch.commit();
    }
    outcome.path = path;
    return outcome;
}

// required, although nothing in the program calls it
void MetaSong::dump() const
{
    SongInfo info;
    readInfo(info);
    dumpSongInfo(info);
}

int MetaSong::format() const
{
    return m_song ? m_song->format() : Unknown;
}

QByteArray MetaSong::midiData() const
{
    return m_song ? m_song->midiData() : QByteArray();
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
