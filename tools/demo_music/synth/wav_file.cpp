#include <algorithm>

#include "demo_music/bytes.h"
#include "demo_music/random.h"
#include "demo_music/synth/recording.h"

namespace hullrider::demo {
namespace {

constexpr int kChannels = 2, kBytesPerSample = 2;

std::string InfoList(const std::string& title, const std::string& artist, const std::string& album) {
    Bytes list;
    list.Text("INFO");
    for (const auto& [id, text] : {std::pair{"INAM", title}, {"IART", artist}, {"IPRD", album}}) {
        list.Text(id);
        list.Little32(static_cast<uint32_t>(text.size() + 1));
        list.Text(text + '\0');
        list.PadTo(2);
    }
    return list.text();
}

void Chunk(Bytes& file, std::string_view id, const std::string& data) {
    file.Text(id);
    file.Little32(static_cast<uint32_t>(data.size()));
    file.Text(data);
}

std::string Format() {
    Bytes format;
    format.Little16(1);  // PCM
    format.Little16(kChannels);
    format.Little32(kSampleRate);
    format.Little32(kSampleRate * kChannels * kBytesPerSample);
    format.Little16(kChannels * kBytesPerSample);
    format.Little16(8 * kBytesPerSample);
    return format.text();
}

std::string Samples(const Stereo& sound) {
    Random dither(16);
    Bytes data;
    for (size_t i = 0; i < sound.frames(); ++i) {
        for (const float sample : {sound.left[i], sound.right[i]}) {
            const double value = 32767.0 * sample + dither.Unit() - dither.Unit();
            data.Little16(static_cast<int>(std::lround(std::clamp(value, -32768.0, 32767.0))));
        }
    }
    return data.text();
}

}  // namespace

std::string WriteWavFile(const Stereo& sound, const std::string& title, const std::string& artist,
                         const std::string& album) {
    Bytes chunks;
    chunks.Text("WAVE");
    Chunk(chunks, "fmt ", Format());
    Chunk(chunks, "LIST", InfoList(title, artist, album));
    Chunk(chunks, "data", Samples(sound));
    Bytes file;
    Chunk(file, "RIFF", chunks.text());
    return file.text();
}

}  // namespace hullrider::demo
