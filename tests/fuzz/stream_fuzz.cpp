// The bytes of a network stream: cut into sound and titles, into parts, and decoded. No byte of the sound may get lost.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "audio/bass.h"
#include "audio/icy_cutter.h"
#include "audio/ogg_parts.h"
#include "audio/stream_decoder.h"

namespace hullrider {
namespace {

// Fills the buffer as a receiver does.
void Receive(const std::string& stream, size_t interval, StreamBuffer& buffer) {
    IcyCutter titles(interval);
    OggParts parts;
    size_t sound = 0, passed = 0;
    const auto onPart = [&] { buffer.AddJoint(); };
    const auto onBytes = [&](std::string_view bytes) {
        passed += bytes.size();
        return buffer.Append(bytes);
    };
    const auto onSound = [&](std::string_view bytes) {
        sound += bytes.size();
        return parts.Feed(bytes, onBytes, onPart);
    };
    const auto onTitle = [&](std::string_view title) {
        if (title.size() > 255 * 16 || title.find('\0') != std::string_view::npos) std::abort();
        buffer.AddTitle(title);
        return true;
    };
    titles.Feed(stream, onSound, onTitle);
    constexpr size_t kLongestPageHead = 27 + 255;
    if (passed > sound || sound - passed > kLongestPageHead) std::abort();
}

void Decode(StreamBuffer& buffer) {
    do {
        StreamDecoder decoder(buffer);
        if (decoder.Open() != BASS_OK) continue;
        for (int frames = 0; frames < 2000 && decoder.Next() != nullptr; frames++) buffer.TakeTitle(decoder.Place());
    } while (buffer.PassJoint());
}

}  // namespace
}  // namespace hullrider

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    hullrider::StreamBuffer buffer;
    const size_t interval = data[0] | size_t{data[1]} << 8;
    hullrider::Receive(std::string(data + 2, data + size), interval, buffer);
    buffer.End(BASS_OK);
    hullrider::Decode(buffer);
    return 0;
}
