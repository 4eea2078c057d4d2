// Creating and freeing streams and modules.
#include <atomic>
#include <chrono>

#include "audio/bass.h"
#include "audio/channel.h"
#include "audio/channel_call.h"
#include "audio/engine.h"
#include "audio/error.h"
#include "audio/network_source.h"
#include "audio/source.h"
#include "platform/stop_scope.h"

using namespace hullrider;

namespace {

std::atomic<uint32_t> networkTimeoutMs{10'000};

SourceRequest RequestFor(const Engine& engine, const char* file, uint32_t flags) {
    return {.path = file, .mixRate = engine.Rate(), .loop = (flags & BASS_SAMPLE_LOOP) != 0};
}

uint32_t AddChannel(Engine& engine, std::unique_ptr<Source> source, const SourceRequest& request, uint32_t flags,
                    int error) {
    if (source == nullptr) return Fail(error);
    const auto channel = std::make_shared<Channel>(std::move(source), request, flags);
    const bool decodes = (flags & BASS_STREAM_DECODE) != 0;
    const uint32_t handle = decodes ? engine.AddDecodingChannel(channel) : engine.AddChannel(channel);
    SetAudioError(handle == 0 ? BASS_ERROR_NOCHAN : BASS_OK);
    return handle;
}

}  // namespace

bool BASS_SetConfig(uint32_t option, uint32_t value) {
    if (option != BASS_CONFIG_NET_TIMEOUT || value == 0) return Fail(BASS_ERROR_ILLPARAM);
    networkTimeoutMs = value;
    return Succeed();
}

HSTREAM BASS_StreamCreateFile(bool fromMemory, const char* file, uint64_t offset, uint64_t length, uint32_t flags) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return 0;
    if (fromMemory || file == nullptr || offset != 0 || length != 0) return Fail(BASS_ERROR_ILLPARAM);
    const SourceRequest request = RequestFor(*engine, file, flags);
    int error = BASS_OK;
    std::unique_ptr<Source> source = OpenStreamSource(request, engine->DefaultFonts(), error);
    return AddChannel(*engine, std::move(source), request, flags, error);
}

HMUSIC BASS_MusicLoad(bool fromMemory, const char* file, uint64_t offset, uint32_t length, uint32_t flags, uint32_t) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return 0;
    if (fromMemory || file == nullptr || offset != 0 || length != 0) return Fail(BASS_ERROR_ILLPARAM);
    const SourceRequest request = RequestFor(*engine, file, flags);
    int error = BASS_OK;
    std::unique_ptr<Source> source = OpenModuleSource(request, error);
    return AddChannel(*engine, std::move(source), request, flags, error);
}

HSTREAM BASS_StreamCreateURL(const char* url, uint32_t offset, uint32_t flags, DOWNLOADPROC* procedure, void*) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return 0;
    if (url == nullptr || offset != 0 || procedure != nullptr) return Fail(BASS_ERROR_ILLPARAM);
    const SourceRequest request = RequestFor(*engine, url, flags);
    int error = BASS_OK;
    std::unique_ptr<Source> source =
        OpenNetworkSource(request, std::chrono::milliseconds(networkTimeoutMs), CurrentStopToken(), error);
    return AddChannel(*engine, std::move(source), request, flags, error);
}

uint64_t BASS_StreamGetFilePosition(HSTREAM handle, uint32_t mode) {
    const ChannelCall call(handle);
    if (!call) return BASS_QWORD_ERROR;
    if (mode == BASS_FILEPOS_BUFFER) return call.channel->BytesAhead();
    if (mode == BASS_FILEPOS_CONNECTED) return call.channel->IsConnected() ? 1 : 0;
    return Fail(BASS_ERROR_ILLPARAM), BASS_QWORD_ERROR;
}

bool BASS_StreamFree(HSTREAM handle) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return false;
    return engine->FreeChannel(handle) ? Succeed() : Fail(BASS_ERROR_HANDLE);
}

bool BASS_MusicFree(HMUSIC handle) {
    return BASS_StreamFree(handle);
}
