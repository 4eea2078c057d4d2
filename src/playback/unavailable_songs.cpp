#include "playback/unavailable_songs.h"

#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr std::chrono::minutes kForgetAfter{1};

}  // namespace

bool UnavailableSongs::MayPlay(const std::string& path, Failed failed) const {
    const auto missing = missingFiles_.find(path);
    if (IsAway(path) || (missing != missingFiles_.end() && missing->second > PlayNow())) return false;
    const auto broken = broken_.find(path);
    if (broken == broken_.end()) return true;
    return failed == Failed::kAllowed && broken->second != attempt_;
}

void UnavailableSongs::NoteAwayFolder(const std::string& folder) {
    awayFolders_[folder] = PlayNow() + kForgetAfter;
    ++revision_;
}

void UnavailableSongs::NoteMissingFile(const std::string& path) {
    missingFiles_[path] = PlayNow() + kForgetAfter;
}

bool UnavailableSongs::LookAgain() {
    const bool wasAnyAway = !awayFolders_.empty() || !missingFiles_.empty();
    awayFolders_.clear();
    missingFiles_.clear();
    if (wasAnyAway) ++revision_;
    return wasAnyAway;
}

uint64_t UnavailableSongs::Revision() {
    const auto isOver = [now = PlayNow()](const auto& entry) { return entry.second <= now; };
    std::erase_if(missingFiles_, isOver);
    if (std::erase_if(awayFolders_, isOver) > 0) ++revision_;
    return revision_;
}

bool UnavailableSongs::IsAway(std::string_view path) const {
    if (awayFolders_.empty()) return false;
    for (std::string_view folder = FolderOf(path); !folder.empty(); folder = FolderOf(folder)) {
        if (awayFolders_.contains(folder)) return true;
    }
    return false;
}

}  // namespace hullrider
