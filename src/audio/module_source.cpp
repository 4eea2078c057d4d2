#include <algorithm>
#include <atomic>
#include <exception>
#include <libopenmpt/libopenmpt.hpp>
#include <optional>
#include <sstream>

#include "audio/bass.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr size_t kMaxFileBytes = size_t{128} << 20;
constexpr double kMaxSeconds = 6.0 * 3600.0;  // a module that claims more ends there
constexpr double kMaxRowSeconds = 10.0;       // decoded and dropped to reach a place inside a row

class ModuleSource : public Source {
public:
    // Throws openmpt::exception when `file` is no module.
    ModuleSource(const SourceRequest& request, const std::string& file)
        : rate_(request.mixRate), loop_(request.loop), module_(file.data(), file.size(), log_) {
        module_.select_subsong(0);
        module_.set_repeat_count(0);
        module_.set_render_param(openmpt::module::RENDER_INTERPOLATIONFILTER_LENGTH, 8);
        const double seconds = std::clamp(module_.get_duration_seconds(), 0.0, kMaxSeconds);
        length_ = static_cast<int64_t>(seconds * rate_);
    }

    SourceFormat Format() const override { return {rate_, kStereo, BASS_CTYPE_MUSIC_MOD}; }
    int64_t Length() const override { return length_; }
    int64_t LoopLength() const override { return loopLength_; }

    SourceRead Read(float* out, size_t frames) override try {
        size_t done = 0;
        while (done < frames && !ended_) {
            const size_t now = Render(out + done * kStereo, frames - done);
            done += now;
            if (now == 0) ended_ = !ComeRound();
        }
        return {done, ended_};
    } catch (const std::exception&) {
        ended_ = true;
        return {0, true};
    }

    bool Seek(int64_t frame) override try {
        const double seconds = static_cast<double>(frame) / rate_;
        const double reached = module_.set_position_seconds(seconds);
        ended_ = false;
        // A row begins there, before the place wanted.
        position_ = static_cast<int64_t>(reached * rate_);
        DropUntil(frame);
        return true;
    } catch (const std::exception&) {
        ended_ = true;
        return false;
    }

private:
    size_t Render(float* out, size_t frames) {
        const int64_t left = static_cast<int64_t>(kMaxSeconds * rate_) - position_;
        const size_t now = std::min(frames, static_cast<size_t>(std::max<int64_t>(0, left)));
        const size_t got = module_.read_interleaved_stereo(static_cast<int32_t>(rate_), now, out);
        position_ += static_cast<int64_t>(got);
        return got;
    }

    void DropUntil(int64_t frame) {
        if (frame - position_ > static_cast<int64_t>(kMaxRowSeconds * rate_)) return;
        std::vector<float> dropped(1024 * kStereo);
        while (position_ < frame) {
            const auto now = static_cast<size_t>(std::min<int64_t>(1024, frame - position_));
            if (Render(dropped.data(), now) == 0) return;
        }
    }

    bool ComeRound() {
        length_ = position_;
        if (!loop_ || position_ <= 0) return false;
        loopLength_ = position_;
        module_.set_position_seconds(0.0);
        position_ = 0;
        return true;
    }

    uint32_t rate_;
    bool loop_;
    std::ostringstream log_;  // what the library has to say of a file is of no use to a listener
    openmpt::module module_;
    int64_t position_ = 0;
    bool ended_ = false;
    std::atomic<int64_t> length_{0}, loopLength_{0};
};

}  // namespace

std::unique_ptr<Source> OpenModuleSource(const SourceRequest& request, int& error) {
    const std::optional<std::string> file = ReadWholeFile(request.path, kMaxFileBytes);
    if (!file) {
        error = BASS_ERROR_FILEOPEN;
        return nullptr;
    }
    try {
        error = BASS_OK;
        return std::make_unique<ModuleSource>(request, *file);
    } catch (const std::exception&) {
        error = BASS_ERROR_FILEFORM;
        return nullptr;
    }
}

}  // namespace hullrider
