// One stream or module: a source, the ring that is decoded ahead, its effects, its volume and its level. Three kinds of
// threads meet here, each with its own functions below:
//
// - callers, any thread, behind the channel's mutex;
// - one decoder thread at a time, which fills the ring;
// - the callback, which takes from it and never waits.
// A seek starts a new generation: the callback is silent until the decoder has frames of that generation ready, and
// then skips all earlier ones. So nothing from before a seek is heard after it.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "audio/declick.h"
#include "audio/effect_rack.h"
#include "audio/level_meter.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "audio/volume.h"

namespace hullrider {

using SteadyTime = std::chrono::steady_clock::time_point;

// The state that a channel was set to or has reached.
enum class RunState : uint32_t { kStopped, kPlaying, kPaused, kEnded };

// The part of a block, from its start, in which a channel was heard.
struct Sounded {
    size_t frames = 0;
    float left = 0.0f, right = 0.0f;  // the last frame, as mixed
    bool begins = false;              // they do not continue what was heard before
    size_t lacking = 0;               // frames missing because they were not decoded in time
};

class Channel {
public:
    // `frees`: the handle of the channel to free together with this one, or 0.
    Channel(std::unique_ptr<Source> source, const SourceRequest& request, uint32_t flags, uint32_t frees = 0);

    // Identifies the channel; never 0, and unlike the address never reused.
    uint64_t Number() const { return number_; }

    // --- Callers.
    void Play(bool restart);
    bool Pause();  // false when it is not playing
    void Stop();
    RunState State() const;
    bool Starved() const { return starved_.load(); }  // playing, but has lacked data for a while, or waits to refill

    // In frames of the source. What is heard lags `latencyFrames` mixed frames behind what was taken.
    int64_t Position(uint32_t latencyFrames) const;
    int64_t Length() const { return source_->Length(); }
    void SetPosition(int64_t frame);
    // False when the source takes no fonts. They are heard within a quarter of a second, without a gap.
    bool SetFonts(const FontList& fonts, uint32_t latencyFrames);

    EffectRack& Effects() { return effects_; }
    const EffectRack& Effects() const { return effects_; }
    Volume& ChannelVolume() { return volume_; }
    const LevelMeter& Level() const { return level_; }
    const SourceFormat& Format() const { return format_; }
    const TagBlocks& Tags() const { return tags_; }
    // The tags that change as it plays, of what is heard.
    TagBlocks TagsNow(uint32_t latencyFrames) const { return source_->TagsAt(Position(latencyFrames)); }
    size_t BytesAhead() const { return source_->BytesAhead(); }
    bool IsConnected() const { return source_->IsConnected(); }
    uint32_t BitRate() const { return source_->BitRate(); }  // kbit/s, 0 when it is not known
    // Releases a decoder that waits for a file, and ends decoding and playing. For a channel that is about to be freed.
    // A lent source goes on for as long as the borrower plays it.
    void Cancel() {
        freed_ = true;
        decodedMore_.notify_all();
        if (!lent_) source_->Cancel();
    }
    bool IsFreed() const { return freed_; }
    const std::string& Path() const { return path_; }
    uint32_t Flags() const { return flags_; }
    void SetLoop(bool loop);

    // For a stopped channel: how far to decode ahead nevertheless, and a wait until that much, or all there is, is
    // ready. False when the channel was freed or failed before its first frame.
    void Prepare(uint32_t ms) { preparedMs_ = ms; }
    bool WaitUntilPrepared();
    // The peaks of what was decoded ahead, one for each whole `spanFrames`. Only for a stopped channel.
    std::vector<StereoPeak> PeaksAhead(size_t spanFrames) const;
    uint32_t Frees() const { return frees_; }

    // The tempo change in percent, if the source has one.
    std::optional<float> Tempo() const { return source_->Tempo(); }
    void SetTempo(float percent) { source_->SetTempo(percent); }

    // Any thread: whether it sounded up to the end of the last block, so that a sudden end would click.
    bool IsHeard() const { return sounding_.load(); }

    // For a decoding channel: lends its source to a tempo stream. False when it is already lent.
    bool BorrowSource() { return !lent_.exchange(true); }
    void ReturnSource() { lent_ = false; }
    Source& DecodedSource() { return *source_; }

    // Whether the callback would now get `frames` frames, or all that remain. For rendering faster than real time.
    bool ReadyFor(size_t frames) const;

    // --- Decoder. Decodes a piece if one is wanted, and returns when it needs to be called again.
    SteadyTime DecodeAhead(SteadyTime now);

    // --- Callback. The first step of Render; also for an output that waits for decoders before it renders.
    void PassOverVoid() { PassOverVoid(LoadControl()); }
    // Whether a volume slide is running, which needs output time even while the channel does not play.
    bool IsSliding() const { return volume_.IsMoving(); }

    // Adds the next `frames` frames to `mix`; `scratch` has room for as many.
    Sounded Render(float* scratch, float* mix, size_t frames);

private:
    // The state and its generation change together.
    struct Control {
        uint64_t generation;
        RunState state;
    };
    static uint64_t Pack(Control control);
    static Control Unpack(uint64_t word);
    Control LoadControl() const { return Unpack(control_.load()); }
    void ChangeState(RunState state);
    void BeginGeneration(int64_t frame, RunState state);
    bool IsFresh() const;

    bool TakeSeek();
    bool TakeRejoin();
    bool WantsRejoin() const { return rejoinOrders_.load() != rejoined_.load() && !ring_.Splicing(); }
    uint64_t DecodeSplice(uint64_t from);
    void MarkPlace();
    double OwnFrameAt(uint64_t taken, uint64_t latency) const;
    size_t FramesWanted() const;
    size_t FullFrames() const;
    bool IsPrepared() const;
    size_t FramesAhead() const;
    size_t DecodePiece(size_t frames);
    SteadyTime NextCall(SteadyTime now, bool progressed) const;

    using Limit = std::optional<uint64_t>;  // number of a ring frame
    Limit PassOverVoid(Control control);
    bool GoesOn(Control control) const;
    bool MustRefill(Control control, size_t frames);
    Sounded PlayOn(Control control, float* out, size_t frames, Limit end);
    Sounded LetFall(Control control, float* out, size_t frames, Limit end);
    size_t Take(Control control, float* out, size_t frames, Limit end);
    void BeginSounding(Control control, uint64_t firstFrame);

    // Fixed at creation.
    uint64_t number_;
    std::unique_ptr<Source> source_;
    SourceFormat format_;
    TagBlocks tags_;
    std::string path_;
    std::atomic<uint32_t> flags_;
    uint32_t frees_, mixRate_, aheadMs_;
    size_t refillFrames_;
    std::atomic<uint32_t> preparedMs_{0};
    std::atomic<bool> lent_{false}, freed_{false};

    FrameRing ring_;
    EffectRack effects_;
    Volume volume_;
    LevelMeter level_;

    std::atomic<uint64_t> control_;
    // Written by the decoder, read by the callback: the generation being decoded, the generation that can be heard, and
    // the ring frames where that one begins and ends (kNoEnd: not known yet).
    static constexpr uint64_t kNoEnd = ~uint64_t{0};
    std::atomic<uint64_t> decoding_{0}, ready_{0}, begin_{0}, end_{kNoEnd};
    std::atomic<bool> fromStart_{false};  // that generation begins at the source's start
    std::atomic<bool> starved_{false};
    std::atomic<bool> lacksInput_{false};  // the source had nothing more when it was last asked
    // How often callers have asked for the source to be rendered again from the current place on, and which of these
    // orders the decoder has carried out.
    std::atomic<uint32_t> rejoinOrders_{0}, rejoined_{0};

    // Callers and decoder, under the mutex.
    mutable std::mutex mutex_;
    std::condition_variable decodedMore_;
    int64_t seekFrame_ = 0;   // source frame where the newest generation begins
    uint64_t resumedAt_ = 0;  // ring frame from which it has played without a pause
    // Maps ring frames of the audible generation to source frames: from `ring` on, up to the next mark, they are the
    // source from `own` on, at `pace` source frames per ring frame. The `skipped` ring frames before it are never
    // heard.
    struct Mark {
        uint64_t ring, skipped;
        double own, pace;
    };
    std::vector<Mark> marks_;

    // Decoder only.
    bool sourceEnded_ = false;

    // Written by the callback.
    std::atomic<bool> sounding_{false};  // sounded up to the end of the previous block

    // Callback only.
    size_t missing_ = 0;     // missing frames in a row
    bool refilling_ = true;  // not enough is ready to sound; for a source that asks for it
    uint64_t heard_ = 0;     // the generation
    RampIn rampIn_;
    RampOut rampOut_;
};

}  // namespace hullrider
