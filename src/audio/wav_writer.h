// Writes a stereo 32-bit float WAV file that is playable at any time while it grows, and after a kill. Past 4 GiB it
// becomes RF64 (EBU Tech 3306): the chunk for the long sizes is reserved from the beginning. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

namespace hullrider {

class WavWriter {
public:
    // Creates or truncates `path` (UTF-8). False when that fails.
    bool Open(const std::string& path, uint32_t rate);

    // Appends. False when the disk is full or gone: the file is closed and plays up to the last header.
    bool Write(const float* frames, size_t count);

    // Updates the header to what has been written. False as in Write.
    bool UpdateHeader();

    bool IsOpen() const { return data_.is_open(); }
    void Close();

private:
    uint32_t rate_ = 0;
    uint64_t dataBytes_ = 0;
    // Two streams on one file, so that patching the start does not move the append position.
    std::ofstream data_;
    std::fstream header_;
};

// The header of a file with that many bytes of data; public for tests, which cannot write 4 GiB.
std::string WavHeader(uint32_t rate, uint64_t dataBytes);

}  // namespace hullrider
