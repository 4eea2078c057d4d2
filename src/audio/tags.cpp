#include "audio/tags.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "audio/bass.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace hullrider {

namespace {

constexpr size_t kMaxBytes = size_t{64} << 10;  // a file may bring megabytes of lyrics, or of nonsense

// The container's tags or, in Ogg, those of the stream.
const AVDictionary* DictionaryOf(const AVFormatContext& format) {
    if (av_dict_count(format.metadata) > 0) return format.metadata;
    for (unsigned i = 0; i < format.nb_streams; i++) {
        if (format.streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) return format.streams[i]->metadata;
    }
    return nullptr;
}

std::string_view ValueOf(const AVDictionary* tags, const char* name) {
    const AVDictionaryEntry* entry = av_dict_get(tags, name, nullptr, 0);
    return entry == nullptr ? std::string_view() : entry->value;
}

// A character that ISO 8859-1 does not have becomes a question mark.
std::string Latin1FromUtf8(std::string_view text) {
    std::string latin;
    for (size_t i = 0; i < text.size(); i++) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if (byte < 0x80) {
            latin += text[i];
        } else if ((byte == 0xC2 || byte == 0xC3) && (next & 0xC0) == 0x80) {
            latin += static_cast<char>((byte & 3) << 6 | (next & 0x3F));
            i++;
        } else if ((byte & 0xC0) != 0x80) {
            latin += '?';
        }
    }
    return latin;
}

// A field of fixed width, filled up with zeros.
void AppendField(std::string& block, std::string_view text, size_t width) {
    std::string field = Latin1FromUtf8(text);
    field.resize(width);
    block += field;
}

std::string Id3v1Block(const AVDictionary* tags) {
    constexpr int kNoGenre = 255;
    std::string block = "TAG";
    AppendField(block, ValueOf(tags, "title"), 30);
    AppendField(block, ValueOf(tags, "artist"), 30);
    AppendField(block, ValueOf(tags, "album"), 30);
    AppendField(block, ValueOf(tags, "date"), 4);
    // Version 1.1: the last two bytes of the comment hold a zero and the track.
    const int track = std::clamp(std::atoi(std::string(ValueOf(tags, "track")).c_str()), 0, 255);
    AppendField(block, ValueOf(tags, "comment"), track > 0 ? 28 : 30);
    if (track > 0) block += {'\0', static_cast<char>(track)};
    block += static_cast<char>(kNoGenre);
    return block;
}

// Containers name these otherwise, and FFmpeg names them alike.
std::string_view CommentName(std::string_view name) {
    if (name == "track") return "TRACKNUMBER";
    if (name == "disc") return "DISCNUMBER";
    if (name == "album_artist") return "ALBUMARTIST";
    return name;
}

std::string CommentBlock(const AVDictionary* tags) {
    std::string block;
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_iterate(tags, entry)) != nullptr) {
        std::string name(CommentName(entry->key));
        for (char& c : name) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        const std::string_view value = entry->value;
        if (block.size() + name.size() + value.size() + 2 > kMaxBytes) continue;
        block += name;
        block += '=';
        block += value;
        block += '\0';
    }
    if (!block.empty()) block += '\0';
    return block;
}

}  // namespace

TagBlock TagsOf(const AVFormatContext& format) {
    const AVDictionary* tags = DictionaryOf(format);
    const std::string_view name = format.iformat->name;
    if (av_dict_count(tags) == 0) return {};
    if (name == "mp3") return {BASS_TAG_ID3, Id3v1Block(tags)};
    if (name == "flac" || name == "ogg") return {BASS_TAG_OGG, CommentBlock(tags)};
    if (name.starts_with("mov")) return {BASS_TAG_MP4, CommentBlock(tags)};
    return {};
}

}  // namespace hullrider
