// A tag of any encoding: what is shown of it is text, and never empty where the file has a name.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/charset.h"
#include "platform/paths.h"
#include "playback/song_title.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(data, data + size);
    const auto text = hullrider::ReadableText(bytes);
    if (text && !hullrider::IsUtf8(*text)) std::abort();
    for (const std::string& title : {bytes, text.value_or("")}) {
        const hullrider::SongTitle song = hullrider::ChooseSongTitle(title, bytes, "/music/file.mp3");
        if (song.title.empty() || !hullrider::IsUtf8(hullrider::TitleLine(song))) std::abort();
        hullrider::MayBeSongName(title);
    }
    return 0;
}
