// A tracker module before it is written in one format or another: samples, and a grid of rows and channels.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "demo_music/phrase.h"
#include "demo_music/tracker/sample.h"

namespace hullrider::demo {

enum class Effect { kNone, kArpeggio, kVibrato };

struct Cell {
    static constexpr int kNoNote = -1, kRelease = -2;
    int key = kNoNote;  // a MIDI key, or one of the above
    int sample = 0;     // from 1; 0 for none
    int volume = -1;    // 0..64; -1 leaves the sample's own
    Effect effect = Effect::kNone;
    int parameter = 0;  // arpeggio: two intervals of a half byte each; vibrato: speed and depth

    bool operator==(const Cell&) const = default;
};

struct Row {
    std::vector<Cell> cells;  // one a channel
    int ticks = 0;            // how long this row and the next ones are; 0 for no change

    bool operator==(const Row&) const = default;
};

constexpr size_t kRowsOfPattern = 64;
using Pattern = std::vector<Row>;  // kRowsOfPattern rows

struct Module {
    std::string title;
    int beatsPerMinute = 125;
    std::vector<double> pans;  // one a channel, -1 left to 1 right; only an S3M keeps them
    std::vector<Sample> samples;
    std::vector<Pattern> patterns;  // each different
    std::vector<int> order;         // indices of patterns
};

// One voice of the score on its way into the grid.
struct ModuleVoice {
    Phrase phrase;
    int sample = 1;         // from 1
    int channel = 0;        // of its highest note; the notes of a chord below it go to the channels after
    bool arpeggio = false;  // a chord becomes one note with the arpeggio effect instead
    int vibrato = 0;        // speed and depth for long notes, 0 for none
};

struct TrackerPiece {
    std::string title;
    int beatsPerMinute = 125;           // four rows a beat
    std::array<int, 2> rowTicks{6, 6};  // even and odd rows; unequal ones swing. Their sum is 12.
    std::vector<double> pans;
    std::vector<Sample> samples;
    std::vector<ModuleVoice> voices;  // where two meet in a cell, the later one is heard
};

// Lays the voices on the grid. Notes are rounded to rows.
Module Sequence(const TrackerPiece& piece);

// The three formats. The keys must be in the format's reach (std::out_of_range says which is not).
//
// ProTracker, 4 channels, 8 bit: the file layout as in "Noisetracker/Soundtracker/Protracker Module Format" (4th
// revision, A. Scott), periods as ProTracker's own table.
std::string WriteMod(const Module& module);
// Scream Tracker 3.20: its TECH.DOC.
std::string WriteS3m(const Module& module);
// FastTracker 2: "The XM module format description for XM files version $0104" (Mr.H of Triton, 1994).
std::string WriteXm(const Module& module);

}  // namespace hullrider::demo
