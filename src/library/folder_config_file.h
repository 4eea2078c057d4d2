// "config.json", which keeps the two folders of FolderConfig, and the folders inside the companion game's. UI thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "state/folder_config.h"

namespace hullrider {

// Reads the file: a JSON object with "soundFontDirectoryPath" and "hullriderPath". A missing key leaves its field
// alone. A missing file is not an error. A file that is not understood, or a value that is not a text, is reported on
// the error stream, and the file is kept as "PATH.bad". True when the file existed and was fully understood.
bool LoadFolderConfig(const std::string& path, FolderConfig& config);

// Writes both keys, replacing the file. False, with a line on the error stream, when that failed.
bool SaveFolderConfig(const std::string& path, const FolderConfig& config);

// Parses the text of such a file. On false `error` says why; valid fields are taken all the same.
bool ReadFolderConfig(std::string_view text, FolderConfig& config, std::string& error);

// The companion game's music folders, in the order in which the directories are configured, and its SoundFonts.
std::vector<std::string> CompanionMusicFolders(const std::string& hullriderPath);
std::string CompanionSoundFontFolder(const std::string& hullriderPath);

}  // namespace hullrider
