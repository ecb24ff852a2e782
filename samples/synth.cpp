#include "samples/synth.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace tarvel4 {

namespace Synth {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int bytesInSample = 2;

/** How a part sounds. */
struct Voice
{
    std::vector<double> harmonics; ///< the strength of the fundamental and those above it
    double attack; ///< seconds
    double decay; ///< seconds in which a struck string falls to a third; 0: held until its end
    double release; ///< seconds
    double vibrato; ///< depth, as a part of the frequency
    double gain;
};

Voice voiceOf(int channel)
{
    switch (channel) {
    case 0: // flute
        return {{1.0, 0.35, 0.12, 0.05}, 0.04, 0, 0.08, 0.004, 0.30};
    case 1: // plucked strings
        return {{1.0, 0.6, 0.4, 0.25, 0.15, 0.1}, 0.003, 0.35, 0.08, 0, 0.16};
    case 2: // bass
        return {{1.0, 0.5, 0.2}, 0.005, 0.7, 0.05, 0, 0.32};
    default: // bowed strings
        return {{1.0, 0.5, 0.33, 0.25, 0.2}, 0.15, 0, 0.2, 0.003, 0.09};
    }
}

double envelope(const Voice &voice, double time, double length)
{
    const double rise = std::min(1.0, time / voice.attack);
    const double fall = voice.decay > 0 ? std::exp(-time / voice.decay) : 1.0;
    const double end = time > length ? std::max(0.0, 1.0 - (time - length) / voice.release) : 1.0;
    return rise * fall * end;
}

class Mixer
{
public:
    explicit Mixer(double seconds)
        : m_samples(static_cast<std::size_t>(seconds * sampleRate), 0.0)
    {}

    void playNote(const Voice &voice, double start, double length, int pitch, double strength)
    {
        const double frequency = 440.0 * std::pow(2.0, (pitch - 69) / 12.0);
        forSamples(start, length + voice.release, [&](double time) {
            const double wobble = voice.vibrato * std::sin(2 * pi * 5.5 * time) / (2 * pi * 5.5);
            const double phase = 2 * pi * frequency * (time + wobble);
            double wave = 0;
            for (std::size_t i = 0; i < voice.harmonics.size(); ++i)
                wave += voice.harmonics[i] * std::sin(phase * static_cast<double>(i + 1));
            return wave * envelope(voice, time, length) * voice.gain * strength;
        });
    }

    void playDrum(int drum, double start, double strength)
    {
        constexpr int kick = 36;
        constexpr int snare = 38;
        if (drum == kick) {
            forSamples(start, 0.25, [&](double time) {
                const double phase = 2 * pi * (50 * time + 4 * (1 - std::exp(-time * 30)));
                return 0.5 * strength * std::sin(phase) * std::exp(-time * 16);
            });
            return;
        }
        const double fall = drum == snare ? 22 : 60;
        const double gain = drum == snare ? 0.18 : 0.07;
        forSamples(start, 0.2, [&](double time) {
            const double noise =
                static_cast<double>(m_random()) / static_cast<double>(std::mt19937::max()) * 2 - 1;
            return gain * strength * noise * std::exp(-time * fall);
        });
    }

    /** The samples as little-endian numbers, the loudest one near the end of the scale. */
    QByteArray pcm() const
    {
        double peak = 1e-9;
        for (double sample : m_samples)
            peak = std::max(peak, std::abs(sample));
        QByteArray bytes(static_cast<int>(m_samples.size()) * bytesInSample, Qt::Uninitialized);
        char *out = bytes.data();
        for (double sample : m_samples) {
            qToLittleEndian(static_cast<qint16>(std::lround(sample / peak * 29000)), out);
            out += bytesInSample;
        }
        return bytes;
    }

private:
    template <typename Wave> void forSamples(double start, double length, Wave wave)
    {
        const auto first = static_cast<std::size_t>(start * sampleRate);
        const auto end =
            std::min(m_samples.size(), static_cast<std::size_t>((start + length) * sampleRate));
        for (std::size_t i = first; i < end; ++i)
            m_samples[i] += wave(static_cast<double>(i - first) / sampleRate);
    }

    std::vector<double> m_samples;
    std::mt19937 m_random; // the same noise in every run
};

QByteArray wav(const QByteArray &pcm)
{
    const auto little = [](auto number) {
        QByteArray bytes(sizeof(number), Qt::Uninitialized);
        qToLittleEndian(number, bytes.data());
        return bytes;
    };
    const QByteArray format = little(static_cast<quint16>(1)) + little(static_cast<quint16>(1))
        + little(static_cast<quint32>(sampleRate))
        + little(static_cast<quint32>(sampleRate * bytesInSample))
        + little(static_cast<quint16>(bytesInSample))
        + little(static_cast<quint16>(8 * bytesInSample));
    const QByteArray chunks = "WAVEfmt " + little(static_cast<quint32>(format.size())) + format
        + "data" + little(static_cast<quint32>(pcm.size())) + pcm;
    return "RIFF" + little(static_cast<quint32>(chunks.size())) + chunks;
}

} // namespace

QByteArray renderWav(const Arrangement &song, int bpm)
{
    Mixer mixer(song.secondsAt(song.endTick(), bpm) + 1);
    for (const Arrangement::Part &part : song.parts) {
        const Voice voice = voiceOf(part.channel);
        for (const Arrangement::Note &note : part.notes) {
            const double start = song.secondsAt(note.start, bpm);
            const double strength = note.velocity / 127.0;
            if (part.channel == Arrangement::drumChannel)
                mixer.playDrum(note.pitch, start, strength);
            else
                mixer.playNote(voice, start, song.secondsAt(note.length, bpm), note.pitch,
                               strength);
        }
    }
    return wav(mixer.pcm());
}

} // namespace Synth

} // namespace tarvel4
