#include "audio/engine.h"

#include <atomic>
#include <utility>

#include "audio/bass.h"
#include "audio/channel.h"
#include "audio/error.h"
#include "audio/output_choice.h"

namespace hullrider {

namespace {

struct Current {
    std::mutex mutex;
    std::shared_ptr<Engine> engine;
};

// Never destroyed: detached workers may still call while the program ends.
Current& TheCurrent() {
    static auto* const current = new Current;
    return *current;
}

}  // namespace

uint32_t NewHandle() {
    static std::atomic<uint32_t> last{0};
    return last.fetch_add(1) + 1;
}

Engine::Engine(std::unique_ptr<Output> output)
    : mixer_(output->Rate(), output->IsLimited()),
      decoders_([this] { return mixer_.Collect(); }),
      output_(std::move(output)) {}

Engine::~Engine() = default;

bool Engine::Start() {
    return output_->Start(mixer_);
}

void Engine::Stop() {
    output_->Stop();
    channels_.ForEach([](const std::shared_ptr<Channel>& channel) { channel->Cancel(); });
}

uint32_t Engine::AddChannel(std::shared_ptr<Channel> channel) {
    if (!mixer_.Add(channel)) return 0;
    decoders_.Enlist(channel);
    return channels_.Add(std::move(channel));
}

bool Engine::FreeChannel(uint32_t handle) {
    const std::shared_ptr<Channel> channel = channels_.Take(handle);
    if (channel == nullptr) return false;
    if (channel->Frees() != 0) FreeChannel(channel->Frees());
    channel->Cancel();
    channel->Stop();
    mixer_.Remove(channel);
    channel->Effects().Close();
    decoders_.Drop(channel);
    return true;
}

FontList Engine::DefaultFonts() const {
    const std::lock_guard lock(defaultFontsMutex_);
    return defaultFonts_;
}

void Engine::SetDefaultFonts(const FontList& fonts) {
    const std::lock_guard lock(defaultFontsMutex_);
    defaultFonts_ = fonts;
}

std::shared_ptr<Engine> CurrentEngine() {
    Current& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    if (current.engine == nullptr) SetAudioError(BASS_ERROR_INIT);
    return current.engine;
}

bool InstallEngine(std::unique_ptr<Output> output) {
    Current& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    if (current.engine != nullptr) {
        SetAudioError(BASS_ERROR_ALREADY);
        return false;
    }
    auto engine = std::make_shared<Engine>(std::move(output));
    if (!engine->Start()) {
        SetAudioError(BASS_ERROR_DRIVER);
        return false;
    }
    current.engine = std::move(engine);
    return true;
}

bool RemoveEngine() {
    std::shared_ptr<Engine> engine;
    Current& current = TheCurrent();
    {
        const std::lock_guard lock(current.mutex);
        engine.swap(current.engine);
    }
    if (engine == nullptr) return Fail(BASS_ERROR_INIT);
    engine->Stop();
    return true;
}

std::string OutputDescription() {
    Current& current = TheCurrent();
    const std::lock_guard lock(current.mutex);
    return current.engine == nullptr ? "" : current.engine->TheOutput().Description();
}

}  // namespace hullrider
