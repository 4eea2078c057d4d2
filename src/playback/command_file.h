// "commands.txt", the file through which another program, a game that runs beside the player, gives its commands: one a
// line, a word followed by its numbers. UI thread.
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
};

struct CommandLine {
    CommandWord word = CommandWord::kNextSong;
    double number = 0.0;  // of those that take a fraction
    int32_t first = 0;    // of those that take whole numbers, whose fraction is cut off
    int32_t second = 0;
};

// What a line says. Nothing for a line that is no command or lacks one of its numbers: a number must be finite, whole
// numbers must fit 32 bits. What follows the numbers is passed over. Pure.
std::optional<CommandLine> ParseCommandLine(std::string_view line);

// The command file of one folder, read again and again.
class CommandFile {
public:
    // The next few lines in their order; more are there when as many as `kLinesAtOnce` came. Empties the file when it
    // has taken what stood in it. A last line without its end is taken when it has not grown since the last call, so
    // that no half line is. An empty folder is the working directory; a missing file is no failure.
    std::vector<std::string> TakeLines(const std::string& commandFolder);

    // Few, so that a file that has waited for long does not stop the window.
    static constexpr size_t kLinesAtOnce = 10;

private:
    void ReadAndEmpty(const std::string& path);

    std::deque<std::string> waiting_;
    size_t unfinished_ = 0;  // the file's size when it was seen with a last line without its end
};

}  // namespace hullrider
