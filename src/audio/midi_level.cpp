#include "audio/midi_level.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace hullrider {

namespace {

constexpr double kCommonLkfs = -19.0, kMostDb = 12.0;
constexpr double kExcerptSeconds = 0.8;
constexpr size_t kMostEvents = 50'000;  // in the excerpts; more is not music

// Excerpts as fractions of the song, most significant first.
constexpr std::array kPlaces{0.5, 0.7, 0.3, 0.1, 0.9};

}  // namespace

MidiLevel::MidiLevel(const MidiSong& song, uint32_t rate)
    : song_(song), rate_(rate), loudness_(rate), excerpt_(static_cast<size_t>(kExcerptSeconds * rate) * kStereo) {}

void MidiLevel::WeighOne(MidiPlayer& player) {
    player.TheSynth().SetGain(1.0f);
    player.TheSynth().SetDraft(true);
    player.GoTo(static_cast<int64_t>(kPlaces[weighed_] * song_.seconds * rate_), MidiPlayer::Notes::kHeld);
    const size_t first = player.EventsPassed();
    player.RenderTo(player.Position() + static_cast<int64_t>(excerpt_.size() / kStereo), excerpt_.data());
    loudness_.Add(excerpt_.data(), excerpt_.size() / kStereo);
    player.TheSynth().SetDraft(false);
    events_ += player.EventsPassed() - first;
    ++weighed_;
}

bool MidiLevel::IsDone() const {
    return weighed_ == kPlaces.size() || events_ >= kMostEvents;
}

float MidiLevel::Gain() const {
    const std::optional<double> lkfs = loudness_.Lkfs();
    if (!lkfs) return 1.0f;
    const double db = std::clamp(kCommonLkfs - *lkfs, -kMostDb, kMostDb);
    return static_cast<float>(std::pow(10.0, db / 20.0));
}

}  // namespace hullrider
