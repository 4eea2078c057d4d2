#include "demo_music/midi_file.h"

#include <algorithm>
#include <cmath>

#include "demo_music/bytes.h"

namespace hullrider::demo {
namespace {

constexpr int kTicksPerBeat = 480;
constexpr int kPercussionChannel = 9;
enum Controller { kVolume = 7, kPan = 10, kPedal = 64, kReverb = 91, kChorus = 93 };

struct Event {
    long tick;
    int order;  // among events of one tick: note-offs first, so that a repeated note is not cut by the one before
    std::string bytes;
};

long TickOf(double beat) {
    return std::lround(beat * kTicksPerBeat);
}

void AppendVariableLength(std::string& bytes, long value) {
    for (int shift = 21; shift > 0; shift -= 7) {
        if (value >> shift) bytes.push_back(static_cast<char>(((value >> shift) & 0x7F) | 0x80));
    }
    bytes.push_back(static_cast<char>(value & 0x7F));
}

std::string Message(int status, int first, int second) {
    return {static_cast<char>(status), static_cast<char>(first), static_cast<char>(second)};
}

std::string MetaEvent(int type, const std::string& data) {
    std::string bytes{'\xFF', static_cast<char>(type)};
    AppendVariableLength(bytes, static_cast<long>(data.size()));
    return bytes + data;
}

std::string TempoEvent(double beatsPerMinute) {
    const long microseconds = std::lround(60e6 / beatsPerMinute);
    return MetaEvent(0x51, {static_cast<char>(microseconds >> 16), static_cast<char>(microseconds >> 8),
                            static_cast<char>(microseconds)});
}

std::string TrackChunk(std::vector<Event> events, long endTick) {
    std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.tick != b.tick ? a.tick < b.tick : a.order < b.order;
    });
    events.push_back({std::max(endTick, events.empty() ? 0 : events.back().tick), 0, MetaEvent(0x2F, "")});
    std::string data;
    long last = 0;
    for (const Event& event : events) {
        AppendVariableLength(data, event.tick - last);
        data += event.bytes;
        last = event.tick;
    }
    Bytes chunk;
    chunk.Text("MTrk");
    chunk.Big32(static_cast<uint32_t>(data.size()));
    chunk.Text(data);
    return chunk.text();
}

std::vector<Event> ConductorEvents(const MidiSong& song) {
    std::vector<Event> events{{0, 0, MetaEvent(0x03, song.title)},
                              {0, 0, MetaEvent(0x58, {static_cast<char>(song.beatsPerBar), 2, 24, 8})}};
    for (const TempoMark& mark : song.tempo) {
        events.push_back({TickOf(mark.beat), 0, TempoEvent(mark.beatsPerMinute)});
    }
    return events;
}

std::vector<Event> TrackEvents(const MidiTrack& track, int channel) {
    const int control = 0xB0 | channel;
    std::vector<Event> events{{0, 0, MetaEvent(0x03, track.name)},
                              {0, 1, Message(control, kVolume, track.volume)},
                              {0, 1, Message(control, kPan, track.pan)},
                              {0, 1, Message(control, kReverb, track.reverb)},
                              {0, 1, Message(control, kChorus, track.chorus)}};
    if (track.program != kDrumKit) {
        events.push_back({0, 1, {static_cast<char>(0xC0 | channel), static_cast<char>(track.program)}});
    }
    for (const double beat : track.pedalChanges) {
        if (beat > 0) events.push_back({TickOf(beat), 0, Message(control, kPedal, 0)});
        events.push_back({TickOf(beat) + kTicksPerBeat / 16, 3, Message(control, kPedal, 127)});
    }
    for (const Note& note : track.phrase.notes) {
        const int velocity = std::clamp(static_cast<int>(std::lround(note.velocity * 127)), 1, 127);
        const long start = TickOf(note.start);
        const long end = std::max(start + 1, TickOf(note.start + note.beats));
        events.push_back({start, 2, Message(0x90 | channel, note.key, velocity)});
        events.push_back({end, 0, Message(0x80 | channel, note.key, 64)});
    }
    return events;
}

double BeatsOf(const MidiSong& song) {
    double beats = 0;
    for (const MidiTrack& track : song.tracks) beats = std::max(beats, track.phrase.beats);
    return beats;
}

}  // namespace

std::string WriteMidiFile(const MidiSong& song) {
    Bytes file;
    file.Text("MThd");
    file.Big32(6);
    file.Big16(1);
    file.Big16(static_cast<int>(song.tracks.size()) + 1);
    file.Big16(kTicksPerBeat);
    const long endTick = TickOf(BeatsOf(song));
    file.Text(TrackChunk(ConductorEvents(song), endTick));
    int channel = 0;
    for (const MidiTrack& track : song.tracks) {
        if (channel == kPercussionChannel) ++channel;
        const bool drums = track.program == kDrumKit;
        file.Text(TrackChunk(TrackEvents(track, drums ? kPercussionChannel : channel), endTick));
        if (!drums) ++channel;
    }
    return file.text();
}

}  // namespace hullrider::demo
