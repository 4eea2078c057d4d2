#include "playback/song_files.h"

namespace hullrider {

namespace {

std::string FolderOf(const std::string& path) {
    const size_t end = path.find_last_of("/\\");
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

}  // namespace

bool SongFiles::Exists(const std::string& path) {
    if (gone_.empty() && there_.empty() && fileExists_(path)) return true;
    const std::string album = FolderOf(path);
    const std::string music = FolderOf(album);
    if (IsGone(music) || IsGone(album)) return false;
    return fileExists_(path);
}

bool SongFiles::IsGone(const std::string& folder) {
    if (folder.empty() || there_.contains(folder)) return false;
    if (gone_.contains(folder)) return true;
    const bool there = folderExists_(folder);
    (there ? there_ : gone_).insert(folder);
    return !there;
}

}  // namespace hullrider
