#include "radio/stream_tags.h"

#include <unordered_map>

namespace hullrider {

namespace {

using HeaderTable = std::unordered_map<std::string, std::string>;

// Without the characters that may be in the middle of one at the end.
std::string Cut(std::string_view text, size_t longest) {
    if (text.size() <= longest) return std::string(text);
    size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    return std::string(text.substr(0, end));
}

// Text without the separator is ignored.
void Note(HeaderTable& table, std::string_view text, char separator) {
    const size_t at = text.find(separator);
    if (at != std::string_view::npos) table[std::string(text.substr(0, at))] = std::string(text.substr(at + 1));
}

HeaderTable TableOf(const StreamTags& tags) {
    HeaderTable table;
    for (const char* header = tags.headers; header != nullptr && *header != '\0';) {
        const std::string_view text(header);
        Note(table, text, ':');
        header += text.size() + 1;
    }
    if (tags.metadata != nullptr) Note(table, tags.metadata, '=');
    return table;
}

// "Artist - Title" from Ogg's comments, as a title block has it.
std::string TitleIn(const char* comments) {
    HeaderTable table;
    for (const char* comment = comments; comment != nullptr && *comment != '\0';) {
        const std::string_view text(comment);
        Note(table, text, '=');
        comment += text.size() + 1;
    }
    const std::string artist = table["ARTIST"], title = table["TITLE"];
    return artist.empty() || title.empty() ? title : artist + " - " + title;
}

std::string_view ValueIn(const HeaderTable& table, const char* name) {
    const auto found = table.find(name);
    return found == table.end() ? std::string_view() : std::string_view(found->second);
}

std::string Joined(const std::vector<std::string>& tags) {
    std::string text;
    for (const std::string& tag : tags) text += (text.empty() ? "" : " > ") + tag;
    return text;
}

}  // namespace

StreamNowPlaying ReadStreamTags(const StreamTags& tags, const std::vector<std::string>& stationTags) {
    const HeaderTable table = TableOf(tags);
    const std::string_view title = ValueIn(table, "StreamTitle");
    const std::string genre = Joined(stationTags);
    StreamNowPlaying playing;
    playing.stationName = Cut(ValueIn(table, "icy-name"), kLongestStationName);
    playing.songTitle = Cut(title.substr(0, title.find(';')), kLongestSongTitle);
    playing.stationDescription = Cut(ValueIn(table, "icy-description"), kLongestDescription);
    playing.stationGenre = Cut(genre.empty() ? ValueIn(table, "icy-genre") : genre, kLongestGenre);
    if (playing.songTitle.empty()) playing.songTitle = Cut(TitleIn(tags.comments), kLongestSongTitle);
    if (playing.stationName.empty()) playing.stationName = kUnknownStation;
    if (playing.songTitle.empty()) playing.songTitle = kUnknownSong;
    return playing;
}

}  // namespace hullrider
