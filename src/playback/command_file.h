// "commands.txt", through which a game beside the player sends commands: one a line, a word followed by its numbers. UI
// thread.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

enum class CommandWord {
    kNextSong,
    kPosition,  // number: seconds
    kVolume,    // number: 0 to 1
    kSongPlayDurationMax,
    kSongPlayDurationMin,
    kFadeDurationMs,
    kRawMidi,
    kRawTracker,
    kRawMp3,
    kRawFav,
    kFavoriteCount,
    kPlaySong,  // playlist and song index
    kFavoritesOnly,
    kPreviousSong,
    kShuffle,
    kNextPlaylist,
    kNextSoundFont,
    kNextStation,
    kPreviousStation,
};

struct CommandLine {
    CommandWord word = CommandWord::kNextSong;
    double number = 0.0;  // of commands that take a fraction
    int32_t first = 0;    // of commands that take whole numbers; fractions are truncated
    int32_t second = 0;
};

// Parses a line. Nothing for an unknown command or a missing number: numbers must be finite, and whole numbers must fit
// 32 bits. Anything after the numbers is ignored. Pure.
std::optional<CommandLine> ParseCommandLine(std::string_view line);

// The command file of one folder, polled.
class CommandFile {
public:
    // The next few lines in order; when kLinesAtOnce come, there may be more. Empties the file once its text has been
    // read. A last line without a line end is taken only when the file has not grown since the last call, because it
    // may be half written. An empty folder is the working directory. A missing file is not an error.
    std::vector<std::string> TakeLines(const std::string& commandFolder);

    // Few, so that a long file does not stall the window.
    static constexpr size_t kLinesAtOnce = 10;

private:
    void ReadAndEmpty(const std::string& path);

    std::deque<std::string> waiting_;
    size_t unfinished_ = 0;  // the file's size when its last line had no line end
};

}  // namespace hullrider
