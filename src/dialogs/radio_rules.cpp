#include "dialogs/radio_rules.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hullrider {

namespace {

struct Stock {
    const char* none;
    int32_t MusicLibrary::*count;
};

// By Category.
constexpr std::array<Stock, 5> kStock{{{"No MIDI songs", &MusicLibrary::midiSongCount},
                                       {"No audio files", &MusicLibrary::mp3SongCount},
                                       {"No modules", &MusicLibrary::trackerSongCount},
                                       {"No favorites", &MusicLibrary::favoriteSongCount},
                                       {"No stations", &MusicLibrary::internetStationCount}}};

}  // namespace

void OptionalNumber::Switch(bool isOn) {
    const int32_t number = Number();
    *setting_ = isOn ? number : off_;
}

int32_t OptionalNumber::Number() const {
    if (IsOn()) number_ = *setting_;
    return number_;
}

void OptionalNumber::SetNumber(int32_t number) {
    number_ = number;
    if (IsOn()) *setting_ = number;
}

void MoveLeast(int32_t& least, int32_t& most, int32_t to) {
    least = to;
    most = std::max(most, to);
}

void MoveMost(int32_t& least, int32_t& most, int32_t to) {
    most = to;
    least = std::min(least, to);
}

float StoppedHigh(float wanted, float low) {
    return std::max(wanted, low);
}

float StoppedLow(float wanted, float high) {
    return std::min(wanted, high);
}

std::string ShareText(Category category, double share, const MusicLibrary& library) {
    const Stock& stock = kStock[static_cast<size_t>(category)];
    if (share <= 0.0 && library.*stock.count == 0) return stock.none;
    return std::to_string(std::lround(share * 100.0)) + " %";
}

std::string HistoryRemark(int32_t depth, int64_t songs) {
    return songs > 0 && depth >= songs ? "As rarely as possible" : "";
}

}  // namespace hullrider
