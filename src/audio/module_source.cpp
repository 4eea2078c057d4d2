#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <libopenmpt/libopenmpt.hpp>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "audio/bass.h"
#include "audio/module_samples.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr size_t kMaxFileBytes = size_t{128} << 20;
constexpr uint64_t kFairSampleBytes = uint64_t{48} << 20;  // plus some for every byte of the file
constexpr double kMaxSeconds = 6.0 * 3600.0;               // longer modules end there
constexpr double kMaxDropSeconds = 20.0;                   // rendered and discarded to reach a position within a row

// Types whose samples take no more memory than a few times the file's size, or are checked. In others many samples may
// share the same bytes, or be packed without limit.
constexpr std::array<std::string_view, 17> kFairTypes{"mod", "stk", "st26", "ice", "xm",  "it",  "mptm", "s3m", "mtm",
                                                      "669", "far", "ult",  "okt", "dsm", "gdm", "sfx",  "sfx2"};

class ModuleSource : public Source {
public:
    // Throws openmpt::exception when `file` is not a module.
    ModuleSource(const SourceRequest& request, const std::string& file)
        : rate_(request.mixRate), loop_(request.loop), repeats_(request.loop), module_(file.data(), file.size(), log_) {
        title_ = ModuleTitle(file, module_.get_metadata("title"));
        module_.select_subsong(0);
        module_.set_repeat_count(repeats_ ? -1 : 0);
        module_.set_render_param(openmpt::module::RENDER_INTERPOLATIONFILTER_LENGTH, 8);
        FindLength();
        if (loop_) FindLoopStart();
        module_.ctl_set_boolean("seek.sync_samples", true);  // after a seek, earlier notes still sound
    }

    SourceFormat Format() const override { return {rate_, kStereo, BASS_CTYPE_MUSIC_MOD}; }
    int64_t Length() const override { return length_; }
    int64_t LoopLength() const override { return loop_ ? length_ - loopStart_ : 0; }
    int64_t LoopStart() const override { return loopStart_; }
    void SetLoop(bool loop) override { loop_ = loop; }

    TagBlocks Tags() const override { return {{BASS_TAG_MUSIC_NAME, title_}}; }
    SourceRead Read(float* out, size_t frames) override try {
        size_t done = 0;
        while (done < frames && !ended_) {
            const size_t now = Render(out + done * kStereo, frames - done);
            done += now;
            if (now == 0) End();
        }
        return {done, ended_};
    } catch (const std::exception&) {
        ended_ = true;
        return {0, true};
    }

    bool Seek(int64_t frame) override try {
        position_ = GoToRowBefore(frame);
        ended_ = false;
        DropUntil(frame);
        return true;
    } catch (const std::exception&) {
        ended_ = true;
        return false;
    }

private:
    // A tick is a whole number of frames, so a module's length, and the time of every row, depend on the rate. The
    // library computes positions with the last rendering rate but reports the length for another one. Asked for a
    // position past the end, however, it goes to the end, or to where the song continues after it.
    void FindLength() {
        constexpr double kMostOff = 0.005;
        std::array<float, kStereo> none{};
        module_.read_interleaved_stereo(static_cast<int32_t>(rate_), 0, none.data());
        const double told = std::clamp(module_.get_duration_seconds(), 0.0, kMaxSeconds);
        const double end = module_.set_position_seconds(kMaxSeconds);
        const double seconds = std::fabs(end - told) < kMostOff * told ? end : told;
        length_ = static_cast<int64_t>(seconds * rate_);
        module_.set_position_seconds(0.0);
    }

    // A module may continue anywhere after its end. The library does not say where, so play over the end and see.
    void FindLoopStart() {
        constexpr double kBefore = 0.05, kBeyond = 0.01;
        const double length = static_cast<double>(length_) / rate_;
        const double reached = module_.set_position_seconds(std::max(0.0, length - kBefore));
        const double seconds = std::clamp(length + kBeyond - reached, 0.0, kMaxDropSeconds);
        std::vector<float> dropped(static_cast<size_t>(seconds * rate_) * kStereo);
        module_.read_interleaved_stereo(static_cast<int32_t>(rate_), dropped.size() / kStereo, dropped.data());
        const int32_t order = module_.get_current_order(), row = module_.get_current_row();
        const double start = module_.set_position_order_row(order, row);
        // An estimate for a row that is played more than once; an implausible one is ignored.
        if (start < length - kBeyond) loopStart_ = static_cast<int64_t>(start * rate_);
        module_.set_position_seconds(0.0);
    }

    size_t Render(float* out, size_t frames) {
        if (loop_ != repeats_) module_.set_repeat_count((repeats_ = loop_) ? -1 : 0);
        const int64_t left = repeats_ ? INT64_MAX : static_cast<int64_t>(kMaxSeconds * rate_) - position_;
        const auto now = static_cast<size_t>(std::clamp<int64_t>(left, 0, static_cast<int64_t>(frames)));
        const size_t got = module_.read_interleaved_stereo(static_cast<int32_t>(rate_), now, out);
        position_ += static_cast<int64_t>(got);
        return got;
    }

    // The library seeks to a row near the position, possibly the one after it. Returns the frame where that row begins.
    int64_t GoToRowBefore(int64_t frame) {
        int64_t reached = 0;
        for (const double back : {0.0, 0.25, 1.0, 4.0, 16.0}) {
            const double seconds = std::max(0.0, static_cast<double>(frame) / rate_ - back);
            reached = static_cast<int64_t>(module_.set_position_seconds(seconds) * rate_);
            if (reached <= frame) break;
        }
        return reached;
    }

    void DropUntil(int64_t frame) {
        if (frame - position_ > static_cast<int64_t>(kMaxDropSeconds * rate_)) return;
        std::vector<float> dropped(1024 * kStereo);
        while (position_ < frame) {
            const auto now = static_cast<size_t>(std::min<int64_t>(1024, frame - position_));
            if (Render(dropped.data(), now) == 0) return;
        }
    }

    void End() {
        ended_ = true;
        length_ = position_;  // slightly longer than computed, because the last notes fade out
    }

    uint32_t rate_;
    std::atomic<bool> loop_;
    bool repeats_;            // as set in the module
    std::ostringstream log_;  // swallows the library's messages
    openmpt::module module_;
    std::string title_;
    int64_t position_ = 0;
    int64_t loopStart_ = 0;
    bool ended_ = false;
    std::atomic<int64_t> length_{0};
};

// Checks the first bytes, so that a large file of another type is not read. Packed modules are refused: their memory
// use shows only when they are unpacked.
bool MayBeModule(const std::string& path, int& error) {
    const std::filesystem::path file = PathFromUtf8(path);
    std::error_code unknown;
    std::ifstream in;
    if (std::filesystem::is_regular_file(file, unknown)) in.open(file, std::ios::binary);
    if (!in.is_open()) return error = BASS_ERROR_FILEOPEN, false;
    const auto may = [&](uint64_t kinds) {
        in.clear();
        in.seekg(0);
        return openmpt::probe_file_header(kinds, in) != openmpt::probe_file_header_result_failure;
    };
    return may(openmpt::probe_file_header_flags_modules2) && !may(openmpt::probe_file_header_flags_containers2);
}

// Asks the library for the type, because it checks more than the name and the first bytes.
bool IsFair(const std::string& file) {
    if (ModuleSampleBytes(file) > kFairSampleBytes + file.size() * 8) return false;
    std::ostringstream log;
    const openmpt::module module(file.data(), file.size(), log,
                                 {{"load.skip_samples", "1"}, {"load.skip_subsongs_init", "1"}});
    return std::find(kFairTypes.begin(), kFairTypes.end(), module.get_metadata("type")) != kFairTypes.end();
}

}  // namespace

std::unique_ptr<Source> OpenModuleSource(const SourceRequest& request, int& error) {
    error = BASS_ERROR_FILEOPEN;
    if (!IsUtf8(request.path)) return nullptr;
    error = BASS_ERROR_FILEFORM;
    try {
        if (!MayBeModule(request.path, error)) return nullptr;
        const std::optional<std::string> file = ReadWholeFile(request.path, kMaxFileBytes);
        if (!file || !IsFair(*file)) return nullptr;
        auto source = std::make_unique<ModuleSource>(request, *file);
        error = BASS_OK;
        return source;
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace hullrider
