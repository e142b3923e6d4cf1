#include "music/sound.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <tuple>

namespace varnock::music {

namespace {

constexpr int kTicksPerQuarter = 480;
constexpr int kMicrosPerQuarter = 500000; // 120 beats a minute
constexpr double kTicksPerSecond = kTicksPerQuarter * 1e6 / kMicrosPerQuarter;
constexpr double kStrumGap = 0.04;  // seconds between strings of a strum
constexpr double kRing = 2.0;       // seconds a strummed chord rings
constexpr double kNoteLength = 0.6; // seconds of a chord note on its own
constexpr double kScaleNote = 0.35; // seconds of a scale note
constexpr double kRelease = 0.03;   // seconds over which a note is damped
constexpr double kPeak = 0.9;

void Check(const std::vector<NoteEvent> &events) {
    for (const NoteEvent &e : events) {
        if (e.note < 0 || e.note > 127)
            throw std::invalid_argument("note " + std::to_string(e.note) + " outside 0..127");
        if (!(e.start >= 0) || !(e.duration > 0) || !std::isfinite(e.start + e.duration))
            throw std::invalid_argument("a note's start or duration out of range");
    }
}

// One plucked string: a delay line fed back through a two-point average
// (half a sample of delay, the string's losses) and a first-order allpass
// that supplies the fraction of a sample the integer line cannot.
void Pluck(const NoteEvent &e, std::uint32_t seed, std::vector<double> &mix) {
    const double period = kSampleRate / Frequency(e.note);
    const int length = std::max(2, static_cast<int>(std::floor(period - 0.6)));
    const double fraction = period - 0.5 - length; // 0.1 .. 1.1, where the allpass is flat
    const double c = (1 - fraction) / (1 + fraction);
    // Each trip round the loop loses a little, so the note fades in ~3 s.
    const double loss = std::pow(0.001, 1.0 / (3.0 * Frequency(e.note)));

    std::vector<double> line(static_cast<std::size_t>(length));
    double mean = 0;
    for (double &v : line) {
        seed = seed * 1664525u + 1013904223u;
        v = static_cast<double>(seed >> 8) / (1u << 24) * 2 - 1;
        mean += v;
    }
    for (double &v : line)
        v -= mean / length;

    const auto first = static_cast<std::size_t>(std::lround(e.start * kSampleRate));
    const auto count = static_cast<std::size_t>(std::lround(e.duration * kSampleRate));
    const double releaseFrom = static_cast<double>(count) - kRelease * kSampleRate;
    double previous = 0, apIn = 0, apOut = 0;
    std::size_t at = 0;
    for (std::size_t n = 0; n < count && first + n < mix.size(); ++n) {
        const double out = line[at];
        const double average = 0.5 * (out + previous);
        previous = out;
        apOut = c * average + apIn - c * apOut;
        apIn = average;
        line[at] = apOut * loss;
        at = at + 1 == line.size() ? 0 : at + 1;
        const double damp = n < releaseFrom ? 1.0 : (count - n) / (kRelease * kSampleRate);
        mix[first + n] += out * damp;
    }
}

void Put16(std::vector<std::uint8_t> &out, unsigned v) {
    out.push_back(static_cast<std::uint8_t>(v & 0xff));
    out.push_back(static_cast<std::uint8_t>((v >> 8) & 0xff));
}

void Put32(std::vector<std::uint8_t> &out, std::uint32_t v) {
    Put16(out, v & 0xffff);
    Put16(out, v >> 16);
}

// Byte by byte: GCC 12 at -O2 misreads a ranged insert here as an overflow.
void PutText(std::vector<std::uint8_t> &out, const char *text) {
    for (int i = 0; i < 4; ++i)
        out.push_back(static_cast<std::uint8_t>(text[i]));
}

void PutBig(std::vector<std::uint8_t> &out, std::uint32_t v, int bytes) {
    for (int i = bytes - 1; i >= 0; --i)
        out.push_back(static_cast<std::uint8_t>((v >> (8 * i)) & 0xff));
}

// A MIDI variable-length quantity: seven bits a byte, high bit on all but the last.
void PutVarLen(std::vector<std::uint8_t> &out, std::uint32_t v) {
    std::uint8_t bytes[5];
    int n = 0;
    do {
        bytes[n++] = static_cast<std::uint8_t>(v & 0x7f);
        v >>= 7;
    } while (v);
    while (n > 1)
        out.push_back(bytes[--n] | 0x80);
    out.push_back(bytes[0]);
}

} // namespace

double Frequency(int midiNote) {
    return 440.0 * std::pow(2.0, (midiNote - 69) / 12.0);
}

int MidiNote(int pitchClass, int octave) {
    return 12 * (octave + 1) + (pitchClass + 9) % 12;
}

std::vector<NoteEvent> StrumThenNotes(const std::vector<int> &notes) {
    std::vector<NoteEvent> events;
    const double strummed = kStrumGap * static_cast<double>(notes.size());
    for (std::size_t i = 0; i < notes.size(); ++i)
        events.push_back({notes[i], kStrumGap * static_cast<double>(i), kRing});
    for (std::size_t i = 0; i < notes.size(); ++i)
        events.push_back(
            {notes[i], strummed + kRing + kNoteLength * static_cast<double>(i), kNoteLength});
    return events;
}

std::vector<NoteEvent> UpAndDown(const std::vector<int> &notes) {
    std::vector<int> order = notes;
    for (std::size_t i = notes.size(); i-- > 1;)
        order.push_back(notes[i - 1]);
    std::vector<NoteEvent> events;
    for (std::size_t i = 0; i < order.size(); ++i)
        events.push_back({order[i], kScaleNote * static_cast<double>(i), kScaleNote});
    if (!events.empty())
        events.back().duration = kRing / 2; // the last note rings on
    return events;
}

std::vector<std::int16_t> Synthesize(const std::vector<NoteEvent> &events) {
    Check(events);
    double end = 0;
    for (const NoteEvent &e : events)
        end = std::max(end, e.start + e.duration);
    std::vector<double> mix(static_cast<std::size_t>(std::ceil(end * kSampleRate)));
    std::uint32_t seed = 12345;
    for (const NoteEvent &e : events)
        Pluck(e, seed += 7919, mix);

    double peak = 0;
    for (double v : mix)
        peak = std::max(peak, std::abs(v));
    std::vector<std::int16_t> samples(mix.size());
    const double scale = peak > 0 ? kPeak * 32767 / peak : 0;
    for (std::size_t i = 0; i < mix.size(); ++i)
        samples[i] = static_cast<std::int16_t>(std::lround(mix[i] * scale));
    return samples;
}

std::vector<std::uint8_t> WavBytes(const std::vector<std::int16_t> &samples) {
    const auto dataBytes = static_cast<std::uint32_t>(samples.size() * 2);
    std::vector<std::uint8_t> out;
    out.reserve(44 + dataBytes);
    PutText(out, "RIFF");
    Put32(out, 36 + dataBytes);
    PutText(out, "WAVE");
    PutText(out, "fmt ");
    Put32(out, 16);
    Put16(out, 1); // PCM
    Put16(out, 1); // mono
    Put32(out, kSampleRate);
    Put32(out, kSampleRate * 2); // bytes a second
    Put16(out, 2);               // bytes a frame
    Put16(out, 16);              // bits a sample
    PutText(out, "data");
    Put32(out, dataBytes);
    for (std::int16_t s : samples)
        Put16(out, static_cast<std::uint16_t>(s));
    return out;
}

std::vector<std::uint8_t> MidiBytes(const std::vector<NoteEvent> &events) {
    Check(events);
    // (tick, off before on, order given, status, note, velocity)
    std::vector<std::tuple<std::uint32_t, int, std::size_t, int, int, int>> moments;
    const auto tick = [](double seconds) {
        return static_cast<std::uint32_t>(std::lround(seconds * kTicksPerSecond));
    };
    for (std::size_t i = 0; i < events.size(); ++i) {
        const NoteEvent &e = events[i];
        moments.emplace_back(tick(e.start), 1, i, 0x90, e.note, 100);
        moments.emplace_back(tick(e.start + e.duration), 0, i, 0x80, e.note, 64);
    }
    std::sort(moments.begin(), moments.end());

    std::vector<std::uint8_t> track;
    PutVarLen(track, 0);
    track.insert(track.end(), {0xff, 0x51, 0x03});
    PutBig(track, kMicrosPerQuarter, 3);
    PutVarLen(track, 0);
    track.insert(track.end(), {0xc0, static_cast<std::uint8_t>(kPluckedProgramme)});
    std::uint32_t now = 0;
    for (const auto &[at, order, index, status, note, velocity] : moments) {
        PutVarLen(track, at - now);
        now = at;
        track.insert(track.end(),
                     {static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(note),
                      static_cast<std::uint8_t>(velocity)});
    }
    PutVarLen(track, 0);
    track.insert(track.end(), {0xff, 0x2f, 0x00});

    std::vector<std::uint8_t> out;
    PutText(out, "MThd");
    PutBig(out, 6, 4);
    PutBig(out, 0, 2); // type 0
    PutBig(out, 1, 2); // one track
    PutBig(out, kTicksPerQuarter, 2);
    PutText(out, "MTrk");
    PutBig(out, static_cast<std::uint32_t>(track.size()), 4);
    out.insert(out.end(), track.begin(), track.end());
    return out;
}

} // namespace varnock::music
