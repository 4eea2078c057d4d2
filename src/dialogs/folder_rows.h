// What the folder window shows of the music folders, and which folders it takes. Folders are compared by their ASCII
// letters in any case, whatever their separators. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

struct FolderRow {
    std::string path;
    std::string holds;   // "3 albums, 1,234 songs"
    std::string remark;  // one line on a folder without songs; empty: nothing to say
};

// While a scan is under way nothing is known yet of folders that the library has no songs of.
std::vector<FolderRow> MakeFolderRows(const std::vector<std::string>& folders, const MusicLibrary& library,
                                      bool isScanning);

struct FolderVerdict {
    bool isTaken = false;
    std::string remark;  // one line: why it is not taken, or what follows from it
};

// On a folder that is to be added to the list.
FolderVerdict JudgeFolder(const std::vector<std::string>& folders, const std::string& added, bool isThere);

// Moves the folder at an index up (-1) or down (1). False at the list's ends.
bool MoveFolder(std::vector<std::string>& folders, size_t at, int step);

// How the library stands: the songs found so far by the scan that is under way, else what there is.
std::string LibraryText(std::optional<int32_t> foundByScan, const MusicLibrary& library);

std::string SoundFontText(size_t count);

}  // namespace hullrider
