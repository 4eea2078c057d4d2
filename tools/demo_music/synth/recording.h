// A piece for the program's own instruments, and how it becomes sound.
#pragma once

#include <string>
#include <vector>

#include "demo_music/phrase.h"
#include "demo_music/synth/instrument.h"

namespace hullrider::demo {

struct Track {
    Phrase phrase;
    Instrument instrument;
    double levelLu = 0;             // how loud it is by itself, to the other tracks (ITU-R BS.1770)
    double pan = 0;                 // -1 left, 1 right
    double reverb = 0.2, echo = 0;  // how much of it is sent there
};

struct Recording {
    std::string title;      // UTF-8
    std::string extension;  // of the file that it is encoded to: "flac", "mp3" or "m4a"
    uint64_t seed = 1;
    double beatsPerMinute = 100;
    double reverbSeconds = 2;
    double echoBeats = 0.75, echoFeedback = 0.4;
    std::vector<Track> tracks;
};

// Mixed and mastered to -17 LUFS, with a few seconds for the last notes to ring.
Stereo Perform(const Recording& recording);

// A RIFF file of 16 bit stereo with the tags in an INFO list (Microsoft and IBM, "Multimedia Programming Interface and
// Data Specifications 1.0", 1991), dithered.
std::string WriteWavFile(const Stereo& sound, const std::string& title, const std::string& artist,
                         const std::string& album);

}  // namespace hullrider::demo
