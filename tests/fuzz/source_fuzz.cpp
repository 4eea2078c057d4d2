// The whole way of a file into sound: whatever opens is read in odd sizes, sought in and read again, as a stream, as
// MIDI through a SoundFont or as a module. The sum of its bytes chooses the sizes. tests/fuzz/make_corpus makes files
// to begin with.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

#include "audio/bass.h"
#include "audio/ring.h"
#include "audio/source.h"
#include "tests/temporary_folder.h"

namespace {

using namespace hullrider;

constexpr size_t kMostFrames = 9600;
constexpr uint32_t kMixRate = 44100;
constexpr float kUnwritten = 12345.0f;

FontList TestFonts() {
    int error = BASS_OK;
    std::shared_ptr<const Font> font = LoadFont(HULLRIDER_TEST_SOUNDFONT, error);
    return font == nullptr ? FontList() : FontList{{.font = std::move(font)}};
}

// One call, which may write what it says and nothing behind it.
SourceRead ReadSome(Source& source, std::vector<float>& out, size_t frames) {
    out[frames * kStereo] = kUnwritten;
    const SourceRead read = source.Read(out.data(), frames);
    if (read.frames > frames || out[frames * kStereo] != kUnwritten) std::abort();
    return read;
}

void Try(Source& source, std::minstd_rand& random) {
    std::vector<float> out((kMostFrames + 1) * kStereo);
    const int64_t length = std::max<int64_t>(source.Length(), 0);
    for (const int64_t frame : {int64_t{-1}, length / 2, length / 7, length - 1, int64_t{0}, length * 2, length / 3}) {
        if (frame >= 0 && !source.Seek(frame)) continue;
        for (const size_t frames : {size_t{1}, random() % kMostFrames, random() % 300, kMostFrames}) {
            if (ReadSome(source, out, frames).atEnd) break;
        }
    }
    source.Cancel();
    ReadSome(source, out, kMostFrames);
    if (source.Tags().text.size() > size_t{1} << 20) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const TemporaryFolder folder;
    static const FontList fonts = TestFonts();
    std::minstd_rand random(std::accumulate(data, data + size, 1u));
    const SourceRequest request{folder.Write("song", {reinterpret_cast<const char*>(data), size}), kMixRate,
                                random() % 2 == 0};
    int error = BASS_OK;
    const auto stream = OpenStreamSource(request, fonts, error);
    if ((stream == nullptr) == (error == BASS_OK)) std::abort();
    if (stream != nullptr) Try(*stream, random);
    if (stream != nullptr) return 0;
    if (const auto module = OpenModuleSource(request, error)) Try(*module, random);
    return 0;
}
