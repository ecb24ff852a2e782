#include "player/songsound.h"

#include "player/miditimeline.h"
#include "songs/metasong.h"
#include "storage/regularfile.h"

#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

namespace {

constexpr int mostMidiBytes = 16 << 20; // a synthesiser takes many times as much of memory

} // namespace

Outcome SongSound::read(const QString &path, SongSound &sound)
{
    MetaSong song;
    const Outcome outcome = song.importFile(path);
    if (!outcome)
        return outcome;
    SongInfo info;
    song.readInfo(info);
    sound = SongSound();
    sound.path = path;
    sound.kind = kindOf(info.format);
    sound.title = info.title.isEmpty() ? QFileInfo(path).fileName() : info.title;
    sound.lengthMs = qint64{info.length} * 1000;
    if (sound.kind == Kind::Mp3)
        return outcome;

    sound.midi = song.midiData();
    if (sound.midi.size() > mostMidiBytes)
        return {Outcome::Code::TooLarge, path, FileBytes::sizeLimitText(mostMidiBytes), {}};
    const MidiTimeline timeline(sound.midi);
    sound.lengthMs = timeline.msOfTick(timeline.lastTick());
    for (const Marker &marker : info.markers)
        sound.marks.append({timeline.msOfTick(timeline.tickOfBar(marker.bar)), marker.text});
    std::stable_sort(sound.marks.begin(), sound.marks.end(),
                     [](const SoundMark &a, const SoundMark &b) { return a.ms < b.ms; });
    return outcome;
}

SongSound::Kind SongSound::kindOf(const QString &formatName)
{
    return formatName == MetaSong::formatName(MetaSong::Mp3) ? Kind::Mp3 : Kind::Midi;
}

int SongSound::markAt(qint64 ms) const
{
    const auto next = std::find_if(marks.begin(), marks.end(),
                                   [ms](const SoundMark &mark) { return mark.ms > ms; });
    return static_cast<int>(next - marks.begin()) - 1;
}

} // namespace tarvel4
