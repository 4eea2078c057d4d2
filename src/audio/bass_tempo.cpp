// Tempo streams.
#include "audio/channel_call.h"
#include "audio/tempo_source.h"

using namespace hullrider;

HSTREAM BASS_FX_TempoCreate(uint32_t handle, uint32_t flags) {
    const ChannelCall call(handle);
    if (!call) return 0;
    if ((call.channel->Flags() & BASS_STREAM_DECODE) == 0) return Fail(BASS_ERROR_DECODE);
    const SourceRequest request{.path = call.channel->Path(), .mixRate = call.engine->Rate(), .loop = false};
    std::unique_ptr<Source> source = OpenTempoSource(call.channel, request.mixRate);
    if (source == nullptr) return Fail(BASS_ERROR_ALREADY);
    const uint32_t frees = (flags & BASS_FX_FREESOURCE) != 0 ? handle : 0;
    const HSTREAM tempo = call.engine->AddChannel(std::make_shared<Channel>(std::move(source), request, flags, frees));
    SetAudioError(tempo == 0 ? BASS_ERROR_NOCHAN : BASS_OK);
    return tempo;
}
