#include "tests/playback/fake_audio.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <map>
#include <mutex>
#include <set>

#include "audio/ahead.h"
#include "audio/bass.h"
#include "platform/paths.h"
#include "platform/play_clock.h"
#include "platform/stop_scope.h"

namespace hullrider {
namespace {

constexpr double kBytesPerSec = 1e6;
constexpr double kEndlessSec = 1e9;

struct FakeChannel {
    double lengthSec = 0.0;
    int level = 0;
    double quietFromSec = 0.0, quietToSec = 0.0;
    bool loops = true;
    bool isMidi = false;
    uint32_t state = BASS_ACTIVE_STOPPED;
    double positionSec = 0.0;  // at `since`
    PlayTime since;
    float from = 1.0F, to = 1.0F;
    PlayTime slideStart;
    double slideSec = 0.0;
    std::string url;  // of a station
};

std::mutex mutex;
std::map<uint32_t, FakeChannel> channels;
std::set<uint32_t> fonts;
uint32_t nextHandle = 1;
thread_local int errorCode = BASS_OK;

std::map<std::string, FakeStation> stations;

bool Stalls(const FakeChannel& channel) {
    return !channel.url.empty() && stations[channel.url].stalls;
}

double SecondsSince(PlayTime time) {
    return std::chrono::duration<double>(PlayNow() - time).count();
}

double PositionOf(const FakeChannel& channel) {
    if (channel.state != BASS_ACTIVE_PLAYING || channel.lengthSec <= 0.0) return channel.positionSec;
    const double reached = channel.positionSec + SecondsSince(channel.since);
    return channel.loops ? std::fmod(reached, channel.lengthSec) : std::min(reached, channel.lengthSec);
}

bool IsPlaying(const FakeChannel& channel) {
    return channel.state == BASS_ACTIVE_PLAYING && !Stalls(channel) &&
           (channel.loops || PositionOf(channel) < channel.lengthSec);
}

bool IsQuiet(const FakeChannel& channel, double positionSec) {
    return channel.level == 0 || (positionSec >= channel.quietFromSec && positionSec < channel.quietToSec);
}

float VolumeOf(const FakeChannel& channel) {
    const double part = channel.slideSec <= 0.0 ? 1.0 : SecondsSince(channel.slideStart) / channel.slideSec;
    return part >= 1.0 ? channel.to : channel.from + (channel.to - channel.from) * static_cast<float>(part);
}

bool Fail(int code) {
    errorCode = code;
    return false;
}

// Runs `work` on the channel, if there is one.
template <typename Work>
bool With(uint32_t handle, Work work) {
    const std::lock_guard lock(mutex);
    const auto found = channels.find(handle);
    if (found == channels.end()) return Fail(BASS_ERROR_HANDLE);
    work(found->second);
    errorCode = BASS_OK;
    return true;
}

// What `read` tells of the channel, or else `otherwise`.
template <typename Value, typename Read>
Value Told(uint32_t handle, Value otherwise, Read read) {
    With(handle, [&](FakeChannel& channel) { otherwise = static_cast<Value>(read(channel)); });
    return otherwise;
}

void ChangeState(FakeChannel& channel, uint32_t state) {
    channel.positionSec = PositionOf(channel);
    channel.since = PlayNow();
    channel.state = state;
}

std::string slowText;  // in the paths of the drive that does not answer; empty: all do

bool IsOnSlowDrive(const std::string& path) {
    const std::lock_guard lock(mutex);
    return !slowText.empty() && path.find(slowText) != std::string::npos;
}

uint32_t Create(const std::string& path) {
    while (IsOnSlowDrive(path)) SleepFor(std::chrono::milliseconds(50));
    std::ifstream in(PathFromUtf8(path));
    FakeChannel channel;
    if (!in) return Fail(BASS_ERROR_FILEOPEN);
    if (!(in >> channel.lengthSec >> channel.level) || channel.lengthSec <= 0.0) return Fail(BASS_ERROR_FILEFORM);
    in >> channel.quietFromSec >> channel.quietToSec;
    channel.isMidi = path.ends_with(".mid");
    const std::lock_guard lock(mutex);
    channels[nextHandle] = channel;
    errorCode = BASS_OK;
    return nextHandle++;
}

// Waits as the network does; false when the worker is told to stop meanwhile.
bool WaitForStation(const FakeStation& station) {
    const PlayTime begin = PlayNow();
    while (PlayNow() - begin < station.opensIn) SleepFor(std::chrono::milliseconds(50));
    return !CurrentStopToken().stop_requested();
}

uint32_t CreateStation(const std::string& url) {
    FakeStation station{.answers = false};
    {
        const std::lock_guard lock(mutex);
        if (stations.contains(url)) station = stations[url];
    }
    if (!WaitForStation(station) || !station.answers) return Fail(BASS_ERROR_FILEOPEN);
    FakeChannel channel;
    channel.lengthSec = kEndlessSec;
    channel.level = station.level;
    channel.url = url;
    const std::lock_guard lock(mutex);
    channels[nextHandle] = channel;
    errorCode = BASS_OK;
    return nextHandle++;
}

}  // namespace

void SetFakeStation(const std::string& url, const FakeStation& station) {
    const std::lock_guard lock(mutex);
    stations[url] = station;
}

void ForgetFakeStations() {
    const std::lock_guard lock(mutex);
    stations.clear();
}

std::string FakeSong(double lengthSec, int level, double quietFromSec, double quietToSec) {
    return std::to_string(lengthSec) + " " + std::to_string(level) + " " + std::to_string(quietFromSec) + " " +
           std::to_string(quietToSec);
}

FakeSlowDrive::FakeSlowDrive(const std::string& text) {
    const std::lock_guard lock(mutex);
    slowText = text;
}

FakeSlowDrive::~FakeSlowDrive() {
    const std::lock_guard lock(mutex);
    slowText.clear();
}

std::vector<StereoPeak> PeaksAhead(uint32_t handle, uint32_t spanMs) {
    std::vector<StereoPeak> peaks;
    With(handle, [&](FakeChannel& channel) {
        const float peak = static_cast<float>(std::max(channel.level, 0)) / 32768.0F;
        const double spanSec = spanMs / 1000.0, fromSec = PositionOf(channel);
        for (double at = 0.0; at < 2.0 && fromSec + at + spanSec <= channel.lengthSec; at += spanSec) {
            peaks.push_back(IsQuiet(channel, fromSec + at) ? StereoPeak{} : StereoPeak{peak, peak});
        }
    });
    return peaks;
}

double QuietSec(uint32_t handle) {
    double seconds = 0.0;
    With(handle, [&](FakeChannel& channel) {
        const double positionSec = PositionOf(channel);
        if (!IsPlaying(channel) || !IsQuiet(channel, positionSec)) return;
        const double fromSec = channel.level == 0 ? 0.0 : channel.quietFromSec;
        seconds = std::min(positionSec - fromSec, SecondsSince(channel.since));
    });
    return seconds;
}

size_t FakeChannels() {
    const std::lock_guard lock(mutex);
    return channels.size();
}

size_t FakeFonts() {
    const std::lock_guard lock(mutex);
    return fonts.size();
}

float FakeLoudness() {
    const std::lock_guard lock(mutex);
    float sum = 0.0F;
    for (const auto& [handle, channel] : channels) {
        if (IsPlaying(channel)) sum += VolumeOf(channel);
    }
    return sum;
}

float FakeVolume(StreamSlot handle) {
    return Told(handle, -1.0F, VolumeOf);
}

float FakeSlideTarget(StreamSlot handle) {
    return Told(handle, -1.0F, [](const FakeChannel& channel) { return channel.to; });
}

}  // namespace hullrider

using namespace hullrider;

extern "C" {

int BASS_ErrorGetCode() {
    return errorCode;
}

bool BASS_Free() {
    const std::lock_guard lock(mutex);
    channels.clear();
    fonts.clear();
    return true;
}

HSTREAM BASS_StreamCreateFile(bool, const char* file, uint64_t, uint64_t, uint32_t) {
    return Create(file);
}

HSTREAM BASS_StreamCreateURL(const char* url, uint32_t, uint32_t, DOWNLOADPROC*, void*) {
    return CreateStation(url);
}

HMUSIC BASS_MusicLoad(bool, const char* file, uint64_t, uint32_t, uint32_t, uint32_t) {
    return Create(file);
}

bool BASS_StreamFree(HSTREAM handle) {
    const std::lock_guard lock(mutex);
    return channels.erase(handle) > 0 || Fail(BASS_ERROR_HANDLE);
}

bool BASS_ChannelPlay(uint32_t handle, bool restart) {
    return With(handle, [&](FakeChannel& channel) {
        ChangeState(channel, BASS_ACTIVE_PLAYING);
        if (restart || channel.positionSec >= channel.lengthSec) channel.positionSec = 0.0;
    });
}

bool BASS_ChannelPause(uint32_t handle) {
    return With(handle, [](FakeChannel& channel) { ChangeState(channel, BASS_ACTIVE_PAUSED); });
}

bool BASS_ChannelStop(uint32_t handle) {
    return With(handle, [](FakeChannel& channel) { ChangeState(channel, BASS_ACTIVE_STOPPED); });
}

uint32_t BASS_ChannelIsActive(uint32_t handle) {
    return Told(handle, uint32_t{BASS_ACTIVE_STOPPED}, [](const FakeChannel& channel) {
        if (channel.state == BASS_ACTIVE_PLAYING && Stalls(channel)) return uint32_t{BASS_ACTIVE_STALLED};
        const bool hasEnded = channel.state == BASS_ACTIVE_PLAYING && !IsPlaying(channel);
        return hasEnded ? BASS_ACTIVE_STOPPED : channel.state;
    });
}

bool BASS_ChannelUpdate(uint32_t handle, uint32_t) {
    return With(handle, [](FakeChannel&) {});
}

uint32_t BASS_ChannelFlags(uint32_t handle, uint32_t flags, uint32_t mask) {
    uint32_t all = ~0U;
    With(handle, [&](FakeChannel& channel) {
        channel.positionSec = PositionOf(channel);
        channel.since = PlayNow();
        if ((mask & BASS_SAMPLE_LOOP) != 0) channel.loops = (flags & BASS_SAMPLE_LOOP) != 0;
        all = channel.loops ? BASS_SAMPLE_LOOP : 0;
    });
    return all;
}

uint64_t BASS_ChannelGetLength(uint32_t handle, uint32_t) {
    return Told(handle, uint64_t{BASS_QWORD_ERROR},
                [](const auto& channel) { return channel.url.empty() ? channel.lengthSec * kBytesPerSec : 0.0; });
}

uint64_t BASS_ChannelGetPosition(uint32_t handle, uint32_t) {
    return Told(handle, uint64_t{BASS_QWORD_ERROR},
                [](const auto& channel) { return PositionOf(channel) * kBytesPerSec; });
}

bool BASS_ChannelSetPosition(uint32_t handle, uint64_t position, uint32_t) {
    return With(handle, [&](FakeChannel& channel) {
        channel.positionSec = static_cast<double>(position) / kBytesPerSec;
        channel.since = PlayNow();
    });
}

const char* BASS_ChannelGetTags(uint32_t handle, uint32_t kind) {
    thread_local std::string text;
    text.clear();
    With(handle, [&](const FakeChannel& channel) {
        const bool hasTitle = kind == BASS_TAG_META && !channel.url.empty();
        if (hasTitle) text = "StreamTitle=" + stations[channel.url].title + ";";
    });
    return text.empty() ? nullptr : text.c_str();
}

uint64_t BASS_StreamGetFilePosition(HSTREAM handle, uint32_t) {
    return Told(handle, uint64_t{BASS_QWORD_ERROR},
                [](const FakeChannel& channel) { return stations[channel.url].isConnected ? 1 : 0; });
}

double BASS_ChannelBytes2Seconds(uint32_t, uint64_t bytes) {
    return static_cast<double>(bytes) / kBytesPerSec;
}

uint64_t BASS_ChannelSeconds2Bytes(uint32_t, double seconds) {
    return static_cast<uint64_t>(seconds * kBytesPerSec);
}

bool BASS_ChannelSetAttribute(uint32_t handle, uint32_t, float value) {
    return BASS_ChannelSlideAttribute(handle, BASS_ATTRIB_VOL, value, 0);
}

bool BASS_ChannelGetAttribute(uint32_t handle, uint32_t, float* value) {
    return With(handle, [&](FakeChannel& channel) { *value = VolumeOf(channel); });
}

bool BASS_ChannelSlideAttribute(uint32_t handle, uint32_t, float value, uint32_t timeMs) {
    return With(handle, [&](FakeChannel& channel) {
        channel.from = VolumeOf(channel);
        channel.to = value;
        channel.slideStart = PlayNow();
        channel.slideSec = timeMs / 1000.0;
    });
}

uint32_t BASS_ChannelGetLevel(uint32_t handle) {
    uint32_t level = BASS_LEVEL_ERROR;
    With(handle, [&](FakeChannel& channel) {
        if (!IsPlaying(channel) || channel.level < 0) return;
        const auto side = IsQuiet(channel, PositionOf(channel)) ? 0U : static_cast<uint32_t>(channel.level);
        level = side << 16 | side;
    });
    return level;
}

HSOUNDFONT BASS_MIDI_FontInit(const char* file, uint32_t) {
    std::ifstream in(PathFromUtf8(file));
    std::string word;
    if (!(in >> word) || word != "font") return Fail(BASS_ERROR_FILEFORM);
    const std::lock_guard lock(mutex);
    fonts.insert(nextHandle);
    return nextHandle++;
}

bool BASS_MIDI_FontFree(HSOUNDFONT font) {
    const std::lock_guard lock(mutex);
    return fonts.erase(font) > 0 || Fail(BASS_ERROR_HANDLE);
}

bool BASS_MIDI_StreamSetFonts(HSTREAM handle, const BASS_MIDI_FONT* list, uint32_t) {
    const bool isMidi = Told(handle, false, [](const FakeChannel& channel) { return channel.isMidi; });
    const std::lock_guard lock(mutex);
    return (isMidi && fonts.contains(list->font)) || Fail(BASS_ERROR_NOTAVAIL);
}

}  // extern "C"
