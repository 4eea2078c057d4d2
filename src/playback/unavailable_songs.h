// Songs known to be unplayable from failed openings, so that draws skip them without touching the drive: a disk or
// network share that went away is slow to answer. UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/play_clock.h"

namespace hullrider {

class UnavailableSongs {
public:
    // What becomes of songs that have failed to play. Even when allowed, those that failed in the current attempt are
    // excluded.
    enum class Failed { kExcluded, kAllowed };
    bool MayPlay(const std::string& path, Failed failed) const;
    // Whether it lies below a missing folder.
    bool IsAway(std::string_view path) const;

    // Everything below the folder, or the one file, is away: skipped for a minute.
    void NoteAwayFolder(const std::string& folder);
    void NoteMissingFile(const std::string& path);
    // The file exists but cannot be played: avoided for the whole run.
    void NoteBroken(const std::string& path) { broken_[path] = attempt_; }
    void NotePlayed(const std::string& path) { broken_.erase(path); }
    // The user, or the end of a song, asks for an item: songs that failed earlier may be tried once more.
    void BeginAttempt() { ++attempt_; }

    // Forgets what was away, because nothing else can be played. False when nothing was away.
    bool LookAgain();

    // Changes with every folder that goes away or is forgotten. Forgets what has been away for more than a minute.
    uint64_t Revision();

private:
    struct TextHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    using Until = std::unordered_map<std::string, PlayTime, TextHash, std::equal_to<>>;

    Until awayFolders_, missingFiles_;
    std::unordered_map<std::string, uint64_t> broken_;  // the attempt in which each last failed
    uint64_t attempt_ = 1;
    uint64_t revision_ = 0;
};

}  // namespace hullrider
