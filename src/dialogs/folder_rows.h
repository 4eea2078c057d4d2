// What the folder window shows of the music folders, and which folders it accepts. Folders are compared ignoring ASCII
// case and the kind of separator. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "state/music_library.h"

namespace hullrider {

struct FolderRow {
    std::string path;
    std::string holds;     // "3 albums, 1,234 songs"
    std::string remark;    // one line on a missing or empty folder; else empty
    bool isEmpty = false;  // it is there, and the scan has found nothing in it
};

// During a scan, folders without songs in the library are shown as being scanned.
std::vector<FolderRow> MakeFolderRows(const std::vector<std::string>& folders, const MusicLibrary& library,
                                      bool isScanning);

bool IsSameFolder(const std::string& one, const std::string& other);

struct FolderVerdict {
    bool isTaken = false;
    std::string remark;  // one line: why it is refused, or what adding it means
};

// Judges a folder to be added to the list.
FolderVerdict JudgeFolder(const std::vector<std::string>& folders, const std::string& added, bool isThere);

// Moves the folder at an index up (-1) or down (1). False at the list's ends.
bool MoveFolder(std::vector<std::string>& folders, size_t at, int step);

// The library in one line: the songs found so far by the running scan, else its content.
std::string LibraryText(std::optional<int32_t> foundByScan, const MusicLibrary& library);

std::string SoundFontText(size_t count);

}  // namespace hullrider
