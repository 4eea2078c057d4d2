#include "playback/song_title.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <span>

#include "audio/bass.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr size_t kMaxBytes = 300;  // anything longer is not a title
constexpr std::string_view kBlanks = " \t\r\n\v\f";

// What programs write when there is no title, possibly followed by a number.
constexpr std::array<std::string_view, 20> kNoTitles{
    "",           "track",  "audio track", "audiotrack", "untitled", "untitled track", "unknown",
    "no title",   "noname", "no name",     "unnamed",    "new song", "unknown title",  "<unknown>",
    "sin titulo", "piste",  "pista",       "titel",      "titre",    "unbenannt"};
constexpr std::array<std::string_view, 6> kNoArtists{"unknown artist", "unknown", "<unknown>",
                                                     "no artist",      "artist",  "n/a"};
// What sequencers call the first track, and instrument names found there.
constexpr std::array<std::string_view, 36> kNoSongNames{
    "",          "conductor", "conductor track", "tempo",        "tempo track",    "tempo map", "control track",
    "master",    "sequence",  "master track",    "seq",          "midi",           "midi out",  "midi track",
    "song",      "default",   "system setup",    "setup",        "copyright",      "piano",     "acoustic piano",
    "staff",     "voice",     "grand piano",     "melody",       "acoustic grand", "lead",      "acoustic grand piano",
    "right hand", "guitar",   "bass",            "drums",        "strings",        "vocals",    "instrument",
    "channel"};

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    for (char& c : lowered) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lowered;
}

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool IsAmong(std::span<const std::string_view> words, std::string_view text) {
    return std::find(words.begin(), words.end(), text) != words.end();
}

// "Track 01", "01.", "Untitled (3)": one of the words, or none, with a number. A bare number may be a title.
bool IsNumbered(std::span<const std::string_view> words, std::string_view text) {
    const std::string lowered = Lowered(text);
    const std::string_view word = Trimmed(lowered, " #()[]._-0123456789");
    const bool isNumber = !lowered.empty() && lowered.find_first_not_of("0123456789") == std::string::npos;
    return IsAmong(words, word) && (!isNumber || lowered.front() == '0');
}

// Control characters, including C1, and those that change the writing direction.
bool HasControls(std::string_view text) {
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 || byte == 0x7F) return true;
        const std::string_view rest = text.substr(i);
        if (byte == 0xC2 && rest.size() > 1 && static_cast<unsigned char>(rest[1]) < 0xA0) return true;
        const bool changesDirection = (rest >= "\u202A" && rest < "\u202F") || (rest >= "\u2066" && rest < "\u206A");
        if (changesDirection || rest.starts_with("\uFFFD")) return true;
    }
    return false;
}

// A letter or a digit of any script.
bool SaysSomething(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || (byte >= '0' && byte <= '9') || ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z');
    });
}

// Trimmed; empty when the text is not a usable name.
std::string_view NameIn(std::string_view text) {
    const std::string_view name = Trimmed(text, kBlanks);
    const bool isName = name.size() <= kMaxBytes && IsUtf8(name) && !HasControls(name) && SaysSomething(name);
    return isName ? name : std::string_view();
}

std::string FileTitle(const std::string& path) {
    const std::u8string stem = PathFromUtf8(path).stem().u8string();
    return {stem.begin(), stem.end()};
}

// The value of the first "NAME=value" in a block of zero-terminated texts.
std::string_view ValueIn(const char* block, std::string_view name) {
    for (; block != nullptr && *block != '\0'; block += std::strlen(block) + 1) {
        const std::string_view pair = block;
        if (pair.starts_with(name) && pair.substr(name.size()).starts_with('=')) return pair.substr(name.size() + 1);
    }
    return {};
}

}  // namespace

SongTitle ChooseSongTitle(std::string_view title, std::string_view artist, const std::string& path) {
    const std::string_view name = NameIn(title), by = NameIn(artist);
    if (IsNumbered(kNoTitles, name)) return {FileTitle(path), {}};
    const bool isArtist = !IsAmong(kNoArtists, Lowered(by));
    return {std::string(name), isArtist ? std::string(by) : std::string()};
}

bool MayBeSongName(std::string_view trackName) {
    return !IsNumbered(kNoSongNames, NameIn(trackName));
}

SongTitle ReadSongTitle(uint32_t handle, const std::string& path) {
    for (const uint32_t kind : {BASS_TAG_OGG, BASS_TAG_MP4}) {
        if (const char* const tags = BASS_ChannelGetTags(handle, kind)) {
            return ChooseSongTitle(ValueIn(tags, "TITLE"), ValueIn(tags, "ARTIST"), path);
        }
    }
    if (const char* const title = BASS_ChannelGetTags(handle, BASS_TAG_MUSIC_NAME)) {
        return ChooseSongTitle(title, {}, path);
    }
    const char* const track = BASS_ChannelGetTags(handle, BASS_TAG_MIDI_TRACK);
    return ChooseSongTitle(track != nullptr && MayBeSongName(track) ? track : "", {}, path);
}

std::string TitleLine(const SongTitle& song) {
    return song.artist.empty() ? song.title : song.artist + " - " + song.title;
}

}  // namespace hullrider
