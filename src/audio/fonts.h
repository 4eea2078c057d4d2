// SoundFonts. A font stands for its file as it was when it was loaded; streams that use it open it again. Only the
// samples that some stream's song uses are in memory, once for all streams, and only while a stream uses them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace hullrider {

struct Font {
    std::string path;     // UTF-8
    int64_t written = 0;  // the file's time, in the system's own units
};

struct FontEntry {
    std::shared_ptr<const Font> font;
    int bank = 0;  // added to the bank numbers of the font's presets
};

// The first font that has a preset plays it.
using FontList = std::vector<FontEntry>;

// Checks that the file is a SoundFont, and prepares it. Null on failure, with a BASS_ERROR code. Any thread.
std::shared_ptr<const Font> LoadFont(const std::string& path, int& error);

}  // namespace hullrider
