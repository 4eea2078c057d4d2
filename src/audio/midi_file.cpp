#include "audio/midi_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "audio/byte_reader.h"
#include "platform/charset.h"

namespace hullrider {

namespace {

constexpr size_t kMaxEvents = 1'000'000;
constexpr size_t kMaxTempos = 100'000;
constexpr size_t kMaxSysex = 4'000;  // a reset costs a synthesizer as much as a thousand notes
constexpr size_t kMaxSysexBytes = 1'000;
constexpr size_t kMaxNameBytes = 500;
constexpr double kMaxSeconds = 24.0 * 3600.0;  // later events are dropped
constexpr double kMostSilence = 10.0;          // at the end, for notes to die away
constexpr double kDefaultTempo = 500'000.0;    // microseconds per quarter note: 120 per minute

bool IsSystemReset(const uint8_t* bytes, size_t count) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), count);
    if (count >= 4 && bytes[0] == 0x7E) return bytes[2] == 0x09;
    if (count >= 8 && bytes[0] == 0x41) return text.substr(2, 6) == std::string_view("\x42\x12\x40\x00\x7F\x00", 6);
    if (count >= 7 && bytes[0] == 0x43) return text.substr(2, 5) == std::string_view("\x4C\x00\x00\x7E\x00", 5);
    return false;
}

struct TempoChange {
    double tick;
    double microsPerQuarter;
};

// A file being read: the events' `seconds` still hold ticks.
struct Reading {
    MidiSong song;
    std::vector<TempoChange> tempos;
    size_t sysexCount = 0;
    double endTick = 0.0;
    bool tooMany = false;
    size_t tracks = 0;
    std::string_view name;    // of the first track, as in the file
    bool firstPlays = false;  // the first track holds notes
};

void ReadMeta(uint8_t type, std::string_view data, double tick, Reading& reading) {
    if (type == 0x03 && reading.tracks == 1 && reading.name.empty()) reading.name = data.substr(0, kMaxNameBytes);
    if (type != 0x51 || data.size() < 3) return;
    ByteReader in{data};
    const uint32_t micros = in.BigEndian(3);
    if (reading.tempos.size() < kMaxTempos) reading.tempos.push_back({tick, micros == 0 ? kDefaultTempo : micros});
}

void AddEvent(const MidiEvent& event, Reading& reading) {
    if (reading.song.events.size() >= kMaxEvents) {
        reading.tooMany = true;
    } else {
        reading.song.events.push_back(event);
    }
}

void AddSysex(std::string_view data, double tick, Reading& reading) {
    // A message may be split into packets, all but the last without the closing F7; no important one is.
    if (data.empty() || data.size() > kMaxSysexBytes || static_cast<uint8_t>(data.back()) != 0xF7) return;
    if (++reading.sysexCount > kMaxSysex) return;
    data.remove_suffix(1);
    MidiEvent event;
    event.seconds = tick;
    event.status = 0xF0;
    event.sysex = static_cast<uint32_t>(reading.song.sysex.size());
    reading.song.sysex.emplace_back(data.begin(), data.end());
    AddEvent(event, reading);
}

// One channel message, whose first byte after any status is `first`. False when its data bytes are invalid.
bool ReadChannelMessage(uint8_t status, uint8_t first, ByteReader& in, double tick, Reading& reading) {
    MidiEvent event;
    event.seconds = tick;
    event.status = status;
    event.data[0] = first;
    const bool one = (status & 0xE0) == 0xC0;  // program change and channel pressure
    if (!one) event.data[1] = in.Byte();
    if (!in.good || event.data[0] >= 0x80 || event.data[1] >= 0x80) return false;
    AddEvent(event, reading);
    return true;
}

// Reads a track that begins at `startTick`, up to its end or the first invalid byte. Returns its end.
double ReadTrack(std::string_view bytes, double startTick, Reading& reading) {
    ByteReader in{bytes};
    double tick = startTick;
    uint8_t running = 0;
    while (!in.bytes.empty() && !reading.tooMany) {
        const uint32_t delta = in.VariableLength();
        if (!in.good) break;
        tick += delta;
        const uint8_t byte = in.Byte();
        if (byte == 0xFF) {
            const uint8_t type = in.Byte();
            const std::string_view data = in.Take(in.VariableLength());
            if (!in.good || type == 0x2F) break;
            ReadMeta(type, data, tick, reading);
        } else if (byte == 0xF0 || byte == 0xF7) {
            const std::string_view data = in.Take(in.VariableLength());
            if (!in.good) break;
            if (byte == 0xF0) AddSysex(data, tick, reading);
        } else if (byte > 0xF0) {
            break;
        } else {
            // Real files keep the running status across meta events, contrary to the standard.
            const bool isStatus = byte >= 0x80;
            if (isStatus) running = byte;
            if (running == 0) break;
            if (!ReadChannelMessage(running, isStatus ? in.Byte() : byte, in, tick, reading)) break;
        }
    }
    return tick;
}

// Walks time forward through the tempo map.
class TickClock {
public:
    TickClock(uint16_t division, const std::vector<TempoChange>& tempos) : tempos_(tempos) {
        if (division & 0x8000) {  // negative frames per second, and ticks per frame
            const int frames = 256 - (division >> 8);
            fixed_ = true;
            secondsPerTick_ = 1.0 / ((frames == 29 ? 29.97 : frames) * std::max(1, division & 0xFF));
        } else {
            ticksPerQuarter_ = division;
            secondsPerTick_ = kDefaultTempo / 1e6 / ticksPerQuarter_;
        }
    }

    // `tick` must not decrease from call to call.
    double SecondsAt(double tick) {
        while (!fixed_ && next_ < tempos_.size() && tempos_[next_].tick <= tick) {
            MoveTo(tempos_[next_].tick);
            secondsPerTick_ = tempos_[next_].microsPerQuarter / 1e6 / ticksPerQuarter_;
            next_++;
        }
        MoveTo(tick);
        return seconds_;
    }

private:
    void MoveTo(double tick) {
        seconds_ += (tick - tick_) * secondsPerTick_;
        tick_ = tick;
    }

    const std::vector<TempoChange>& tempos_;
    size_t next_ = 0;
    bool fixed_ = false;
    double ticksPerQuarter_ = 1.0, secondsPerTick_ = 0.0;
    double tick_ = 0.0, seconds_ = 0.0;
};

// What holds the notes of one channel: pressed keys and the pedal.
struct HeldNotes {
    std::array<bool, 128> keys{};
    bool pedal = false;

    // Whether the message started or ended any.
    bool Note(const MidiEvent& event) {
        constexpr uint8_t kSustain = 64, kResetControllers = 121, kFirstMode = 120;
        const uint8_t kind = event.status & 0xF0, number = event.data[0], value = event.data[1];
        if (kind == 0x80 || kind == 0x90) {
            keys[number] = kind == 0x90 && value > 0;
            return true;
        }
        if (kind != 0xB0) return false;
        if (number == kResetControllers) return std::exchange(pedal, false);
        if (number == kSustain) pedal = value >= 64;
        if (number >= kFirstMode) keys.fill(false);
        return number == kSustain || number >= kFirstMode;
    }

    bool AnyKey() const { return std::find(keys.begin(), keys.end(), true) != keys.end(); }
};

// When the last note ends, or the pedal that holds it; infinity when one never does. Drums are struck, not held.
double EndOfNotes(const MidiSong& song) {
    constexpr size_t kDrums = 9;
    std::array<HeldNotes, 16> channels;
    const auto holds = [&](const HeldNotes& channel) {
        return channel.pedal || (&channel != &channels[kDrums] && channel.AnyKey());
    };
    const auto sounds = [&] { return std::any_of(channels.begin(), channels.end(), holds); };
    double end = 0.0;
    for (const MidiEvent& event : song.events) {
        if (event.status < 0xF0) {
            if (channels[event.status & 0x0F].Note(event)) end = event.seconds;
        } else if (IsSystemReset(song, event) && sounds()) {
            channels = {};
            end = event.seconds;
        }
    }
    return sounds() ? std::numeric_limits<double>::infinity() : end;
}

void PlaceInTime(uint16_t division, Reading& reading) {
    std::vector<MidiEvent>& events = reading.song.events;
    const auto earlier = [](const MidiEvent& a, const MidiEvent& b) { return a.seconds < b.seconds; };
    std::stable_sort(events.begin(), events.end(), earlier);
    std::stable_sort(reading.tempos.begin(), reading.tempos.end(),
                     [](const TempoChange& a, const TempoChange& b) { return a.tick < b.tick; });
    TickClock clock(division, reading.tempos);
    for (MidiEvent& event : events) event.seconds = clock.SecondsAt(event.seconds);
    const double silence = EndOfNotes(reading.song) + kMostSilence;
    reading.song.seconds = std::min({clock.SecondsAt(reading.endTick), silence, kMaxSeconds});
    const auto late = [&](const MidiEvent& event) { return event.seconds > reading.song.seconds; };
    events.erase(std::find_if(events.begin(), events.end(), late), events.end());
}

bool HoldsNotes(const MidiSong& song) {
    return std::any_of(song.events.begin(), song.events.end(),
                       [](const MidiEvent& event) { return (event.status & 0xF0) == 0x90; });
}

// The MIDI file in a RIFF container, or the file itself.
std::string_view Unwrap(std::string_view file) {
    if (file.size() < 12 || !file.starts_with("RIFF") || file.substr(8, 4) != "RMID") return file;
    const size_t at = file.find("MThd", 12);
    return at == std::string_view::npos ? std::string_view{} : file.substr(at);
}

}  // namespace

bool IsSystemReset(const MidiSong& song, const MidiEvent& event) {
    return event.status == 0xF0 && IsSystemReset(song.sysex[event.sysex].data(), song.sysex[event.sysex].size());
}

std::optional<MidiSong> ReadMidiFile(std::string_view file) {
    ByteReader in{Unwrap(file)};
    if (in.Take(4) != "MThd") return std::nullopt;
    ByteReader header{in.Take(in.BigEndian(4))};
    const uint32_t format = header.BigEndian(2);
    header.BigEndian(2);  // the number of tracks: the actual ones count
    const auto division = static_cast<uint16_t>(header.BigEndian(2));
    if (!header.good || format > 2 || division == 0) return std::nullopt;

    Reading reading;
    while (in.bytes.size() >= 8 && !reading.tooMany) {
        const bool isTrack = in.Take(4) == "MTrk";
        const uint32_t length = std::min(in.BigEndian(4), static_cast<uint32_t>(in.bytes.size()));
        const std::string_view chunk = in.Take(length);
        if (!isTrack) continue;
        ++reading.tracks;
        // The tracks of format 2 are separate pieces, played one after another.
        const double end = ReadTrack(chunk, format == 2 ? reading.endTick : 0.0, reading);
        reading.endTick = std::max(reading.endTick, end);
        if (reading.tracks == 1) reading.firstPlays = HoldsNotes(reading.song);
    }
    if (reading.tracks == 0 || reading.tooMany) return std::nullopt;
    PlaceInTime(division, reading);
    if (reading.tracks == 1 || !reading.firstPlays) reading.song.name = ReadableText(reading.name).value_or("");
    return std::move(reading.song);
}

}  // namespace hullrider
