#include "playback/song_files.h"

#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr std::chrono::milliseconds kPatience{1000};

}  // namespace

bool SongFiles::Exists(const std::string& path) {
    if (gone_.empty() && there_.empty() && Ask(fileExists_, path)) return true;
    const std::string album(FolderOf(path));
    const std::string music(FolderOf(album));
    if (IsGone(music) || IsGone(album)) return false;
    return Ask(fileExists_, path);
}

bool SongFiles::Ask(bool (*question)(const std::string&), const std::string& path) {
    if (waited_ >= kPatience) return false;
    const auto start = std::chrono::steady_clock::now();
    const bool answer = question(path);
    waited_ += std::chrono::steady_clock::now() - start;
    return answer;
}

bool SongFiles::IsGone(const std::string& folder) {
    if (folder.empty() || there_.contains(folder)) return false;
    if (gone_.contains(folder) || waited_ >= kPatience) return true;
    const bool there = Ask(folderExists_, folder);
    (there ? there_ : gone_).insert(folder);
    return !there;
}

}  // namespace hullrider
