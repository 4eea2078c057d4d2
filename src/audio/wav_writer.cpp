#include "audio/wav_writer.h"

#include <limits>

#include "audio/ring.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr uint32_t kFrameBytes = kStereo * sizeof(float);
constexpr uint32_t kUnknown32 = std::numeric_limits<uint32_t>::max();

void Append(std::string& text, uint64_t value, int bytes) {
    for (int i = 0; i < bytes; i++) text += static_cast<char>(value >> (8 * i) & 0xFF);
}

void AppendChunkHead(std::string& text, const char* name, uint32_t bytes) {
    text += name;
    Append(text, bytes, 4);
}

}  // namespace

std::string WavHeader(uint32_t rate, uint64_t dataBytes) {
    constexpr uint32_t kLongSizesBytes = 28, kFormatBytes = 18, kFactBytes = 4;
    constexpr uint32_t kHeaderBytes = 12 + 8 + kLongSizesBytes + 8 + kFormatBytes + 8 + kFactBytes + 8;
    const uint64_t riffBytes = kHeaderBytes - 8 + dataBytes;
    const uint64_t frames = dataBytes / kFrameBytes;
    const bool isLong = riffBytes >= kUnknown32;
    const auto size32 = [&](uint64_t size) { return isLong ? kUnknown32 : static_cast<uint32_t>(size); };

    std::string text;
    AppendChunkHead(text, isLong ? "RF64" : "RIFF", size32(riffBytes));
    text += "WAVE";
    AppendChunkHead(text, isLong ? "ds64" : "JUNK", kLongSizesBytes);
    Append(text, isLong ? riffBytes : 0, 8);
    Append(text, isLong ? dataBytes : 0, 8);
    Append(text, isLong ? frames : 0, 8);
    Append(text, 0, 4);  // no table of other long chunks
    AppendChunkHead(text, "fmt ", kFormatBytes);
    Append(text, 3, 2);  // IEEE float
    Append(text, kStereo, 2);
    Append(text, rate, 4);
    Append(text, uint64_t{rate} * kFrameBytes, 4);
    Append(text, kFrameBytes, 2);
    Append(text, 32, 2);
    Append(text, 0, 2);  // no extension
    AppendChunkHead(text, "fact", kFactBytes);
    Append(text, size32(frames), 4);
    AppendChunkHead(text, "data", size32(dataBytes));
    return text;
}

bool WavWriter::Open(const std::string& path, uint32_t rate) {
    rate_ = rate;
    dataBytes_ = 0;
    if (!IsUtf8(path)) return false;
    const std::filesystem::path file = PathFromUtf8(path);
    data_.open(file, std::ios::binary | std::ios::trunc);
    const std::string header = WavHeader(rate_, 0);
    data_.write(header.data(), static_cast<std::streamsize>(header.size()));
    data_.flush();
    header_.open(file, std::ios::binary | std::ios::in | std::ios::out);
    if (data_ && header_) return true;
    Close();
    return false;
}

bool WavWriter::Write(const float* frames, size_t count) {
    data_.write(reinterpret_cast<const char*>(frames), static_cast<std::streamsize>(count * kFrameBytes));
    if (!data_) {
        Close();
        return false;
    }
    dataBytes_ += count * kFrameBytes;
    return true;
}

bool WavWriter::UpdateHeader() {
    data_.flush();  // the header must never promise missing data
    const std::string header = WavHeader(rate_, dataBytes_);
    header_.seekp(0);
    header_.write(header.data(), static_cast<std::streamsize>(header.size()));
    header_.flush();
    if (data_ && header_) return true;
    Close();
    return false;
}

void WavWriter::Close() {
    data_.close();
    data_.clear();
    header_.close();
    header_.clear();
}

}  // namespace hullrider
