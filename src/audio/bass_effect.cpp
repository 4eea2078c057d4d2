// Effects of a channel.
#include "audio/channel_call.h"

using namespace hullrider;

namespace {

struct FilterParameters {
    FilterShape shape;
    int band = 0;
};

// False when a value is meaningless; whether it makes a valid filter is decided later.
bool Read(const BASS_BFX_BQF& from, FilterParameters& to) {
    if (from.lFilter < BASS_BFX_BQF_LOWPASS || from.lFilter > BASS_BFX_BQF_HIGHSHELF) return false;
    to.shape = {static_cast<FilterType>(from.lFilter), from.fCenter, from.fGain, from.fBandwidth, from.fQ, from.fS};
    return from.lChannel == BASS_BFX_CHANALL;
}

bool Read(const BASS_BFX_PEAKEQ& from, FilterParameters& to) {
    to.shape = {FilterType::kPeaking, from.fCenter, from.fGain, from.fBandwidth, from.fQ, 0.0f};
    to.band = from.lBand;
    return from.lChannel == BASS_BFX_CHANALL && from.lBand >= 0;
}

bool Read(uint32_t type, const void* from, FilterParameters& to) {
    if (from == nullptr) return false;
    if (type == BASS_FX_BFX_BQF) return Read(*static_cast<const BASS_BFX_BQF*>(from), to);
    return Read(*static_cast<const BASS_BFX_PEAKEQ*>(from), to);
}

void Write(uint32_t type, const FilterParameters& from, void* to) {
    const FilterShape& s = from.shape;
    if (type == BASS_FX_BFX_BQF) {
        *static_cast<BASS_BFX_BQF*>(to) = {static_cast<int>(s.type), s.centerHz, s.gainDb, s.bandwidth, s.q, s.slope,
                                           BASS_BFX_CHANALL};
    } else {
        *static_cast<BASS_BFX_PEAKEQ*>(to) = {from.band, s.bandwidth, s.q, s.centerHz, s.gainDb, BASS_BFX_CHANALL};
    }
}

// The effect of a handle; one with handle 0, and the error set, when there is none.
Effect FindEffect(HFX fx) {
    const std::shared_ptr<Engine> engine = CurrentEngine();
    if (engine == nullptr) return {};
    Effect found;
    engine->Channels().ForEach([&](const std::shared_ptr<Channel>& channel) {
        if (found.handle == 0) found = channel->Effects().FindFilter(fx);
    });
    SetAudioError(found.handle == 0 ? BASS_ERROR_HANDLE : BASS_OK);
    return found;
}

// 0, with the error set, when the channel was freed meanwhile.
uint32_t Add(const ChannelCall& call, const Effect& effect) {
    if (!call.channel->Effects().Add(effect)) return Fail(BASS_ERROR_HANDLE);
    return effect.handle;
}

}  // namespace

HDSP BASS_ChannelSetDSP(uint32_t handle, DSPPROC* procedure, void* user, int priority) {
    const ChannelCall call(handle);
    if (!call) return 0;
    if (procedure == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    Effect effect;
    effect.handle = NewHandle();
    effect.priority = priority;
    effect.procedure = procedure;
    effect.user = user;
    effect.channel = handle;
    return Add(call, effect);
}

bool BASS_ChannelRemoveDSP(uint32_t handle, HDSP dsp) {
    const ChannelCall call(handle);
    if (!call) return false;
    return call.channel->Effects().RemoveProcedure(dsp) || Fail(BASS_ERROR_HANDLE);
}

HFX BASS_ChannelSetFX(uint32_t handle, uint32_t type, int priority) {
    const ChannelCall call(handle);
    if (!call) return 0;
    if (type != BASS_FX_BFX_BQF && type != BASS_FX_BFX_PEAKEQ) return Fail(BASS_ERROR_ILLTYPE);
    Effect effect;
    effect.handle = NewHandle();
    effect.priority = priority;
    effect.type = type;
    effect.filter = std::make_shared<Filter>(call.engine->Rate());
    return Add(call, effect);
}

bool BASS_ChannelRemoveFX(uint32_t handle, HFX fx) {
    const ChannelCall call(handle);
    if (!call) return false;
    return call.channel->Effects().RemoveFilter(fx) || Fail(BASS_ERROR_HANDLE);
}

bool BASS_FXSetParameters(HFX fx, const void* parameters) {
    const Effect effect = FindEffect(fx);
    if (effect.handle == 0) return false;
    FilterParameters wanted;
    if (!Read(effect.type, parameters, wanted)) return Fail(BASS_ERROR_ILLPARAM);
    return effect.filter->Shape(wanted.shape, wanted.band) || Fail(BASS_ERROR_ILLPARAM);
}

bool BASS_FXGetParameters(HFX fx, void* parameters) {
    const Effect effect = FindEffect(fx);
    if (effect.handle == 0) return false;
    if (parameters == nullptr) return Fail(BASS_ERROR_ILLPARAM);
    Write(effect.type, {effect.filter->Shape(), effect.filter->Band()}, parameters);
    return true;
}
