#include "audio/tags.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "audio/bass.h"
#include "platform/charset.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace hullrider {

namespace {

constexpr size_t kMaxBytes = size_t{64} << 10;  // a file may contain megabytes of lyrics, or of nonsense
constexpr size_t kMaxFieldBytes = 500;

// The container's tags; in Ogg, the stream's.
const AVDictionary* DictionaryOf(const AVFormatContext& format) {
    if (av_dict_count(format.metadata) > 0) return format.metadata;
    for (unsigned i = 0; i < format.nb_streams; i++) {
        if (format.streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) return format.streams[i]->metadata;
    }
    return nullptr;
}

// FFmpeg returns ID3v1 unconverted, and decodes ID3v2 as ISO 8859-1 where the tag claims that.
std::string ValueOf(const AVDictionary* tags, const char* name) {
    const AVDictionaryEntry* entry = av_dict_get(tags, name, nullptr, 0);
    if (entry == nullptr) return {};
    return ReadableText(std::string_view(entry->value).substr(0, kMaxFieldBytes)).value_or("");
}

// A character outside ISO 8859-1 becomes a question mark.
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

// A field of fixed width, zero-padded.
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
    const int track = std::clamp(std::atoi(ValueOf(tags, "track").c_str()), 0, 255);
    AppendField(block, ValueOf(tags, "comment"), track > 0 ? 28 : 30);
    if (track > 0) block += {'\0', static_cast<char>(track)};
    block += static_cast<char>(kNoGenre);
    return block;
}

// The Vorbis name for FFmpeg's.
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
        if (block.size() + name.size() + std::strlen(entry->value) + 2 > kMaxBytes) continue;
        const std::optional<std::string> value = ReadableText(entry->value);
        if (value) block += name + '=' + *value + '\0';
    }
    if (!block.empty()) block += '\0';
    return block;
}

struct TitleField {
    size_t offset = 0, size = 0;
};

// By the formats' documents ("XM.TXT", "ITTECH.TXT", "S3M.TXT", "MTM.TXT"); a MOD has no signature at its start.
TitleField TitleFieldOf(std::string_view file) {
    if (file.starts_with("Extended Module: ")) return {17, 20};
    if (file.starts_with("IMPM")) return {4, 26};
    if (file.starts_with("MTM")) return {4, 20};
    if (file.substr(std::min<size_t>(file.size(), 44), 4) == "SCRM") return {0, 28};
    return {0, 20};
}

}  // namespace

TagBlocks TagsOf(const AVFormatContext& format) {
    const AVDictionary* tags = DictionaryOf(format);
    const std::string_view name = format.iformat->name;
    if (av_dict_count(tags) == 0) return {};
    if (name == "mp3") return {{BASS_TAG_ID3, Id3v1Block(tags)}, {BASS_TAG_OGG, CommentBlock(tags)}};
    return {{name.starts_with("mov") ? BASS_TAG_MP4 : BASS_TAG_OGG, CommentBlock(tags)}};
}

std::string ModuleTitle(std::string_view file, std::string_view title) {
    const TitleField field = TitleFieldOf(file);
    std::string_view bytes = file.substr(std::min(field.offset, file.size()), field.size);
    bytes = bytes.substr(0, bytes.find('\0'));
    const std::optional<std::string> text = IsJapanese(bytes) ? Utf8FromShiftJis(bytes) : std::nullopt;
    return text.value_or(std::string(title));
}

}  // namespace hullrider
