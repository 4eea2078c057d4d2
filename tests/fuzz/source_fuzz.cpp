// The whole way of a file into sound: whatever opens is read, sought in and read again, as a stream and as a module.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "audio/ring.h"
#include "audio/source.h"
#include "tests/temporary_folder.h"

namespace {

using namespace hullrider;

void Try(Source& source) {
    std::vector<float> out(4410 * kStereo);
    for (const int64_t frame : {int64_t{0}, source.Length() / 2, source.Length() - 1}) {
        if (frame > 0 && !source.Seek(frame)) continue;
        for (int i = 0; i < 5 && !source.Read(out.data(), 4410).atEnd; i++) {
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const TemporaryFolder folder;
    const SourceRequest request{folder.Write("song", {reinterpret_cast<const char*>(data), size}), 44100,
                                size % 2 == 0};
    int error = 0;
    if (const auto source = OpenStreamSource(request, {}, error)) Try(*source);
    if (const auto source = OpenModuleSource(request, error)) Try(*source);
    return 0;
}
