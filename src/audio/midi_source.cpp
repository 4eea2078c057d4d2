#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "audio/bass.h"
#include "audio/midi_file.h"
#include "audio/midi_level.h"
#include "audio/midi_player.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "platform/files.h"

namespace hullrider {

namespace {

constexpr size_t kMaxFileBytes = size_t{32} << 20;
constexpr double kReleaseSeconds = 1.5;  // for the last notes and their reverb
constexpr double kPrerollSeconds = 1.0;  // for held notes and the reverb to settle

// A song's loudness is estimated from one excerpt before its first sound. The other excerpts follow while it plays,
// once enough has been decoded ahead, one for each stretch rendered; the level glides to the new estimate.
constexpr double kFirstStepSeconds = 1.2, kWeighStepSeconds = 0.1;
constexpr double kGlideSeconds = 0.5;

using Notes = MidiPlayer::Notes;

class MidiSource : public Source {
public:
    MidiSource(const SourceRequest& request, MidiSong song, const FontList& fonts)
        : rate_(request.mixRate), loop_(request.loop), song_(std::move(song)), player_(song_, rate_), fonts_(fonts) {
        length_ = static_cast<int64_t>((song_.seconds + kReleaseSeconds) * rate_);
    }

    SourceFormat Format() const override { return {rate_, kStereo, BASS_CTYPE_STREAM_MIDI}; }
    int64_t Length() const override { return length_; }
    int64_t LoopLength() const override { return loop_ ? length_ : 0; }
    void SetLoop(bool loop) override { loop_ = loop; }
    TagBlocks Tags() const override { return {{BASS_TAG_MIDI_TRACK, song_.name}}; }
    SourceRead Read(float* out, size_t frames) override;
    bool Seek(int64_t frame) override;
    bool Rejoin(int64_t frame) override;
    bool SetFonts(const FontList& fonts) override;
    bool LacksFonts() const override { return lacksFonts_; }

private:
    enum class Weighing { kAtOnce, kBitByBit };

    bool TakeNewFonts(Weighing weighing);
    void FindLevel(Weighing weighing);
    void WeighOn();

    uint32_t rate_;
    std::atomic<bool> loop_;
    const MidiSong song_;
    MidiPlayer player_;
    int64_t length_ = 0;
    FontList inUse_;

    std::map<std::string, float> gains_;  // by the first font's path

    // While the loudness is being estimated.
    std::unique_ptr<MidiLevel> level_;
    std::unique_ptr<MidiPlayer> weigher_;
    int64_t untilWeighing_ = 0;  // frames to render before the next excerpt

    std::atomic<bool> lacksFonts_{true};
    std::mutex fontMutex_;
    std::optional<FontList> fonts_;  // to be used next
};

SourceRead MidiSource::Read(float* out, size_t frames) {
    const int64_t place = player_.Position();
    if (TakeNewFonts(Weighing::kBitByBit)) player_.GoTo(place, Notes::kHeld);
    size_t done = 0;
    while (done < frames) {
        if (player_.Position() >= length_ && (!loop_ || !Seek(0))) return {done, true};
        const int64_t from = player_.Position();
        int64_t to = std::min(length_, from + static_cast<int64_t>(frames - done));
        if (level_) to = std::min(to, from + untilWeighing_);
        player_.RenderTo(to, out + done * kStereo);
        done += static_cast<size_t>(to - from);
        untilWeighing_ -= to - from;
        if (level_ && untilWeighing_ <= 0) WeighOn();
    }
    return {done, false};
}

bool MidiSource::Seek(int64_t frame) {
    TakeNewFonts(Weighing::kBitByBit);
    player_.GoTo(frame, Notes::kCut);
    return true;
}

bool MidiSource::Rejoin(int64_t frame) {
    TakeNewFonts(Weighing::kAtOnce);
    const int64_t preroll = std::min(frame, static_cast<int64_t>(kPrerollSeconds * rate_));
    player_.GoTo(frame - preroll, Notes::kHeld);
    std::vector<float> dropped(static_cast<size_t>(preroll) * kStereo);
    player_.RenderTo(frame, dropped.data());
    return true;
}

bool MidiSource::SetFonts(const FontList& fonts) {
    const std::lock_guard lock(fontMutex_);
    fonts_ = fonts;
    return true;
}

// True when there were any; the player may then be anywhere in the song.
bool MidiSource::TakeNewFonts(Weighing weighing) {
    std::optional<FontList> fonts;
    {
        const std::lock_guard lock(fontMutex_);
        fonts.swap(fonts_);
    }
    if (!fonts || !player_.UseFonts(*fonts)) return false;
    inUse_ = *fonts;
    level_.reset();
    weigher_.reset();
    lacksFonts_ = !player_.HasFonts();
    if (!lacksFonts_) FindLevel(weighing);
    return true;
}

void MidiSource::FindLevel(Weighing weighing) {
    const auto known = gains_.find(inUse_.front().font->path);
    if (known != gains_.end()) return player_.TheSynth().SetGain(known->second);
    level_ = std::make_unique<MidiLevel>(song_, rate_);
    level_->WeighOne(player_);
    while (weighing == Weighing::kAtOnce && !level_->IsDone()) level_->WeighOne(player_);
    player_.TheSynth().SetGain(level_->Gain());
    untilWeighing_ = static_cast<int64_t>(kFirstStepSeconds * rate_);
    if (!level_->IsDone()) return;
    gains_[inUse_.front().font->path] = level_->Gain();
    level_.reset();
}

// One more excerpt, through a second synthesizer because this one is in use.
void MidiSource::WeighOn() {
    untilWeighing_ = static_cast<int64_t>(kWeighStepSeconds * rate_);
    if (!weigher_) {
        weigher_ = std::make_unique<MidiPlayer>(song_, rate_);
        if (!weigher_->UseFonts(inUse_)) {
            weigher_.reset();
            level_.reset();  // the excerpts so far will do
            return;
        }
    }
    level_->WeighOne(*weigher_);
    player_.TheSynth().GlideToGain(level_->Gain(), static_cast<size_t>(kGlideSeconds * rate_));
    if (!level_->IsDone()) return;
    gains_[inUse_.front().font->path] = level_->Gain();
    level_.reset();
    weigher_.reset();
}

}  // namespace

std::unique_ptr<Source> OpenMidiSource(const SourceRequest& request, const FontList& fonts, int& error) {
    const std::optional<std::string> file = ReadWholeFile(request.path, kMaxFileBytes);
    std::optional<MidiSong> song;
    if (file) song = ReadMidiFile(*file);
    if (!song) {
        error = BASS_ERROR_FILEFORM;
        return nullptr;
    }
    error = BASS_OK;
    return std::make_unique<MidiSource>(request, std::move(*song), fonts);
}

}  // namespace hullrider
