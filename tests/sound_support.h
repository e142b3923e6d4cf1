#pragma once

// Reading back the sound and the files the command writes: numbers in their
// bytes, the events of a MIDI file, and the pitch measured from samples.

#include "music/sound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace testsupport {

// Numbers stored low byte first (WAV) and high byte first (MIDI).
inline std::uint32_t Le(const std::vector<std::uint8_t> &b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = v << 8 | b.at(at + i);
    return v;
}

inline std::uint32_t Be(const std::vector<std::uint8_t> &b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = 0; i < bytes; ++i)
        v = v << 8 | b.at(at + i);
    return v;
}

inline std::string Text(const std::vector<std::uint8_t> &b, std::size_t at) {
    return std::string(b.begin() + static_cast<long>(at), b.begin() + static_cast<long>(at) + 4);
}

struct MidiEvent {
    std::uint32_t tick;
    int status, note;
    bool operator==(const MidiEvent &) const = default;
};

// A small reader of type 0 files that insists on a status byte for every event.
struct MidiFile {
    int format = -1, tracks = -1, division = -1, programme = -1;
    std::uint32_t tempo = 0;
    bool ended = false;
    std::vector<MidiEvent> notes;

    explicit MidiFile(const std::vector<std::uint8_t> &b) {
        EXPECT_EQ(Text(b, 0), "MThd");
        EXPECT_EQ(Be(b, 4, 4), 6u);
        format = static_cast<int>(Be(b, 8, 2));
        tracks = static_cast<int>(Be(b, 10, 2));
        division = static_cast<int>(Be(b, 12, 2));
        EXPECT_EQ(Text(b, 14), "MTrk");
        EXPECT_EQ(Be(b, 18, 4), b.size() - 22) << "track length";
        std::size_t at = 22;
        std::uint32_t tick = 0;
        while (at < b.size() && !ended) {
            std::uint32_t delta = 0;
            do
                delta = delta << 7 | (b.at(at) & 0x7f);
            while (b.at(at++) & 0x80);
            tick += delta;
            const int status = b.at(at++);
            if (status < 0x80) {
                ADD_FAILURE() << "no status byte at " << at - 1;
                return;
            }
            if (status == 0xff) {
                const int type = b.at(at), length = b.at(at + 1);
                if (type == 0x51)
                    tempo = Be(b, at + 2, 3);
                ended = type == 0x2f && length == 0;
                at += 2 + static_cast<std::size_t>(length);
            } else if (status == 0xc0) {
                programme = b.at(at++);
            } else {
                notes.push_back({tick, status, b.at(at)});
                at += 2;
            }
        }
        EXPECT_EQ(at, b.size()) << "bytes after the end of the track";
    }
    // The notes struck, in order.
    std::vector<MidiEvent> Struck() const {
        std::vector<MidiEvent> out;
        std::copy_if(notes.begin(), notes.end(), std::back_inserter(out),
                     [](const MidiEvent &e) { return e.status == 0x90; });
        return out;
    }
};

// The frequency whose period best repeats in a window of the samples:
// normalised autocorrelation, the first peak near the highest, refined by a
// parabola through its neighbours.
inline double MeasuredFrequency(const std::vector<std::int16_t> &s, std::size_t from,
                                std::size_t size) {
    const int minLag = varnock::music::kSampleRate / 2000, maxLag = varnock::music::kSampleRate / 60;
    std::vector<double> r(maxLag + 2, 0);
    for (int lag = minLag - 1; lag <= maxLag + 1; ++lag) {
        double sum = 0, e1 = 0, e2 = 0;
        for (std::size_t i = from; i < from + size; ++i) {
            const double a = s.at(i), b = s.at(i + static_cast<std::size_t>(lag));
            sum += a * b;
            e1 += a * a;
            e2 += b * b;
        }
        r[lag] = sum / std::sqrt(e1 * e2 + 1e-9);
    }
    double best = 0;
    for (int lag = minLag; lag <= maxLag; ++lag)
        best = std::max(best, r[lag]);
    for (int lag = minLag; lag <= maxLag; ++lag) {
        if (r[lag] >= 0.95 * best && r[lag] >= r[lag - 1] && r[lag] >= r[lag + 1]) {
            const double shift =
                0.5 * (r[lag - 1] - r[lag + 1]) / (r[lag - 1] - 2 * r[lag] + r[lag + 1]);
            return varnock::music::kSampleRate / (lag + shift);
        }
    }
    return 0;
}

} // namespace testsupport
