#include "playback/channel_facts.h"

#include "audio/bass.h"
#include "playback/stream_slots.h"

namespace hullrider {

ChannelFacts ReadChannelFacts(const PlaybackState& playback, const SoundFontState& fonts) {
    const StreamSlot handle = CurrentHandle(playback);
    BASS_CHANNELINFO info{};
    if (handle == 0 || !BASS_ChannelGetInfo(handle, &info)) return {};
    ChannelFacts facts{ReadSongTitle(handle, playback.item.address), info.freq, info.chans, {}};
    if (info.ctype == BASS_CTYPE_STREAM_MIDI) facts.soundFont = CurrentSlotFont(playback, fonts);
    return facts;
}

}  // namespace hullrider
