// Opening and closing the library, and its plug-ins.
#include <algorithm>
#include <array>
#include <mutex>
#include <string_view>

#include "audio/bass.h"
#include "audio/engine.h"
#include "audio/error.h"
#include "audio/output_choice.h"
#include "audio/synth_pool.h"

namespace hullrider {

namespace {

constexpr uint32_t kMinRate = 8000, kMaxRate = 96000;  // what every source can be rendered at

std::mutex choiceMutex;
OutputChoice outputChoice;

OutputChoice ChosenOutput() {
    const std::lock_guard lock(choiceMutex);
    return outputChoice;
}

std::unique_ptr<Output> OpenOutput(int device, uint32_t rate, int& error) {
    error = BASS_OK;
    const OutputChoice choice = device == -1 ? ChosenOutput() : OutputChoice{OutputKind::kNull, ""};
    switch (choice.kind) {
        case OutputKind::kNull:
            return OpenNullOutput(rate);
        case OutputKind::kWav:
            return OpenWavOutput(choice.wavPath, rate, error);
        case OutputKind::kDefault:
            break;
    }
    return OpenDeviceOutput(error);
}

bool HasEngine() {
    const bool has = CurrentEngine() != nullptr;
    SetAudioError(BASS_OK);
    return has;
}

}  // namespace

void ChooseOutput(const OutputChoice& choice) {
    const std::lock_guard lock(choiceMutex);
    outputChoice = choice;
}

}  // namespace hullrider

using namespace hullrider;

bool BASS_Init(int device, uint32_t freq, uint32_t, void*, const void*) {
    if (HasEngine()) return Fail(BASS_ERROR_ALREADY);
    if (device != -1 && device != 0) return Fail(BASS_ERROR_DEVICE);
    if (freq < kMinRate || freq > kMaxRate) return Fail(BASS_ERROR_ILLPARAM);
    int error = BASS_OK;
    std::unique_ptr<Output> output = OpenOutput(device, freq, error);
    if (output == nullptr) return Fail(error);
    return InstallEngine(std::move(output)) && Succeed();
}

bool BASS_Free() {
    if (!RemoveEngine()) return false;
    DropIdleSynth();
    return Succeed();
}

HPLUGIN BASS_PluginLoad(const char* file, uint32_t) {
    constexpr std::array<std::string_view, 3> kBuiltIn = {"bassmidi.dll", "bass_aac.dll", "BASSFLAC.dll"};
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return 0;
    if (file == nullptr || std::find(kBuiltIn.begin(), kBuiltIn.end(), file) == kBuiltIn.end()) {
        return Fail(BASS_ERROR_FILEOPEN);
    }
    Succeed();
    return engine->Plugins().Add(std::make_shared<const std::string>(file));
}

bool BASS_PluginFree(HPLUGIN plugin) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return false;
    return engine->Plugins().Take(plugin) != nullptr ? Succeed() : Fail(BASS_ERROR_HANDLE);
}
