// Songs that cannot be played now, as far as openings have shown, so that the draw passes them over without asking a
// drive: a disk or a network share that went away takes its time for every answer. UI thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/play_clock.h"

namespace hullrider {

class UnavailableSongs {
public:
    // What becomes of songs that have failed to play. Allowed, those that failed in the current attempt still are not.
    enum class Failed { kExcluded, kAllowed };
    bool MayPlay(const std::string& path, Failed failed) const;
    // Whether it lies below a folder that is away.
    bool IsAway(std::string_view path) const;

    // What lies below the folder, or the one file, is away. For a minute.
    void NoteAwayFolder(const std::string& folder);
    void NoteMissingFile(const std::string& path);
    // The file is there and cannot be played. For the whole run.
    void NoteBroken(const std::string& path) { broken_[path] = attempt_; }
    void NotePlayed(const std::string& path) { broken_.erase(path); }
    // The user, or the end of a song, wants an item: what failed before may fail once more.
    void BeginAttempt() { ++attempt_; }

    // Forgets what was away, because nothing else can be played. False when nothing was.
    bool LookAgain();

    // Changes with every folder that goes away or is looked for again. Forgets what was away for more than a minute.
    uint64_t Revision();

private:
    struct TextHash {
        using is_transparent = void;
        size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    using Until = std::unordered_map<std::string, PlayTime, TextHash, std::equal_to<>>;

    Until awayFolders_, missingFiles_;
    std::unordered_map<std::string, uint64_t> broken_;  // the attempt in which each failed last
    uint64_t attempt_ = 1;
    uint64_t revision_ = 0;
};

}  // namespace hullrider
