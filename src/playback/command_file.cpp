#include "playback/command_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <system_error>
#include <utility>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr size_t kLargestFile = size_t{4} << 20;
constexpr size_t kLongestLine = 1000;
constexpr std::string_view kWhiteSpace = " \t\r\v\f";

enum class Arguments { kNone, kFraction, kWhole, kTwoWhole };

struct Keyword {
    std::string_view text;
    CommandWord word;
    Arguments arguments;
};

constexpr std::array<Keyword, 19> kKeywords{{
    {"NEXT_SONG", CommandWord::kNextSong, Arguments::kNone},
    {"POS", CommandWord::kPosition, Arguments::kFraction},
    {"VOL", CommandWord::kVolume, Arguments::kFraction},
    {"songPlayDurationMax", CommandWord::kSongPlayDurationMax, Arguments::kWhole},
    {"songPlayDurationMin", CommandWord::kSongPlayDurationMin, Arguments::kWhole},
    {"FADE_DURATION_MS", CommandWord::kFadeDurationMs, Arguments::kWhole},
    {"rawMidi", CommandWord::kRawMidi, Arguments::kWhole},
    {"rawTracker", CommandWord::kRawTracker, Arguments::kWhole},
    {"rawMP3", CommandWord::kRawMp3, Arguments::kWhole},
    {"rawFav", CommandWord::kRawFav, Arguments::kWhole},
    {"favoriteCount", CommandWord::kFavoriteCount, Arguments::kWhole},
    {"PLAY_SONG", CommandWord::kPlaySong, Arguments::kTwoWhole},
    {"favoritesOnly", CommandWord::kFavoritesOnly, Arguments::kNone},
    {"PREVIOUS_SONG", CommandWord::kPreviousSong, Arguments::kNone},
    {"SHUFFLE", CommandWord::kShuffle, Arguments::kNone},
    {"NEXT_PLAYLIST", CommandWord::kNextPlaylist, Arguments::kNone},
    {"NEXT_SOUNDFONT", CommandWord::kNextSoundFont, Arguments::kNone},
    {"NEXT_STATION", CommandWord::kNextStation, Arguments::kNone},
    {"PREVIOUS_STATION", CommandWord::kPreviousStation, Arguments::kNone},
}};

// Cuts off the next word; empty at the end.
std::string_view TakeWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(kWhiteSpace));
    text.remove_prefix(word.size());
    return word;
}

bool TakeNumber(std::string_view& text, double& number) {
    std::string_view word = TakeWord(text);
    if (word.starts_with('+')) word.remove_prefix(1);
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size() && std::isfinite(number);
}

bool TakeWhole(std::string_view& text, int32_t& number) {
    double read = 0.0;
    if (!TakeNumber(text, read)) return false;
    read = std::trunc(read);
    if (read < std::numeric_limits<int32_t>::min() || read > std::numeric_limits<int32_t>::max()) return false;
    number = static_cast<int32_t>(read);
    return true;
}

bool TakeArguments(std::string_view text, Arguments arguments, CommandLine& line) {
    switch (arguments) {
        case Arguments::kNone:
            return true;
        case Arguments::kFraction:
            return TakeNumber(text, line.number);
        case Arguments::kWhole:
            return TakeWhole(text, line.first);
        case Arguments::kTwoWhole:
            break;
    }
    return TakeWhole(text, line.first) && TakeWhole(text, line.second);
}

size_t SizeOf(const std::filesystem::path& file) {
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : static_cast<size_t>(size);
}

// Only if it is no longer than what was read: a line added meanwhile waits for the next time.
bool Empty(const std::filesystem::path& file, size_t readBytes) {
    if (SizeOf(file) != readBytes) return false;
    return static_cast<bool>(std::ofstream(file, std::ios::binary | std::ios::trunc));
}

}  // namespace

std::optional<CommandLine> ParseCommandLine(std::string_view line) {
    const std::string_view word = line.substr(0, line.find_first_of(kWhiteSpace));
    for (const Keyword& keyword : kKeywords) {
        if (keyword.text != word) continue;
        CommandLine parsed;
        parsed.word = keyword.word;
        if (!TakeArguments(line.substr(word.size()), keyword.arguments, parsed)) return std::nullopt;
        return parsed;
    }
    return std::nullopt;
}

std::vector<std::string> CommandFile::TakeLines(const std::string& commandFolder) {
    if (waiting_.empty()) ReadAndEmpty((commandFolder.empty() ? "." : commandFolder) + "/commands.txt");
    std::vector<std::string> lines;
    while (!waiting_.empty() && lines.size() < kLinesAtOnce) {
        lines.push_back(std::move(waiting_.front()));
        waiting_.pop_front();
    }
    return lines;
}

void CommandFile::ReadAndEmpty(const std::string& path) {
    const std::filesystem::path file = PathFromUtf8(path);
    const size_t size = SizeOf(file);
    if (size == 0) return;
    if (size > kLargestFile) {
        PrintErrorLine("Too large for a command file, emptied: " + path);
        Empty(file, size);
        return;
    }
    const std::optional<std::string> text = ReadWholeFile(path, kLargestFile);
    if (!text || text->empty()) return;
    const size_t seenBefore = std::exchange(unfinished_, 0);
    if (text->back() != '\n' && text->size() != seenBefore) {
        unfinished_ = text->size();
        return;
    }
    // Emptied before the commands run, which takes time: a line written meanwhile is then not lost. A file that cannot
    // be emptied would be executed again and again.
    if (!Empty(file, text->size())) return;
    for (size_t begin = 0; begin < text->size();) {
        const size_t end = std::min(text->find('\n', begin), text->size());
        if (end > begin && end - begin <= kLongestLine) waiting_.push_back(text->substr(begin, end - begin));
        begin = end + 1;
    }
}

}  // namespace hullrider
