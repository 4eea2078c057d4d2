#include "library/cache_reader.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "library/music_type.h"
#include "platform/json.h"

namespace hullrider {

namespace {

// Including the growth of lists: even an empty object of the text is a whole record in memory.
constexpr size_t kPlaylistBytes = 3 * sizeof(Playlist);
constexpr size_t kSongBytes = 2 * sizeof(Song);

// The parser's place in the cache. Each place lies inside the one before.
enum class Place { kOutside, kRoot, kPlaylists, kPlaylist, kSongs, kSong };

Place Inside(Place place) {
    return static_cast<Place>(static_cast<int>(place) + 1);
}
Place Around(Place place) {
    return static_cast<Place>(static_cast<int>(place) - 1);
}

template <typename Number>
int32_t Int32From(Number value) {
    constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
    constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
    if (std::cmp_less(value, kLowest)) return kLowest;
    return std::cmp_greater(value, kHighest) ? kHighest : static_cast<int32_t>(value);
}

// Builds the playlists while the parser runs: a tree of the whole text would take several times their memory. Every
// function returns whether the parser should go on.
class CacheHandler final : public nlohmann::json_sax<nlohmann::json> {
public:
    CacheHandler(CacheReading& reading, size_t textBytes) : reading_(reading), bounds_(textBytes) {}

    const char* Refusal() const { return bounds_.Refusal(); }

    bool start_object(size_t /*size*/) override {
        if (!bounds_.Enter()) return false;
        if (passedOver_ > 0 || !TakesObjects()) return PassOver();
        place_ = Inside(place_);
        if (place_ == Place::kPlaylist) return AddPlaylist();
        if (place_ == Place::kSong) song_ = {};
        return true;
    }

    bool start_array(size_t /*size*/) override {
        if (!bounds_.Enter()) return false;
        if (passedOver_ > 0 || !TakesArray()) return PassOver();
        place_ = Inside(place_);
        // Of a repeated key the last one counts.
        if (place_ == Place::kPlaylists) {
            reading_.playlists.clear();
            reading_.isCache = true;
        } else {
            reading_.playlists.back().songs.clear();
        }
        return true;
    }

    bool end_object() override { return End(); }
    bool end_array() override { return End(); }

    bool key(std::string& name) override {
        if (passedOver_ == 0) key_ = name;
        return true;
    }

    bool string(std::string& text) override {
        std::string* const field = TextField();
        if (field != nullptr) field->assign(text);  // copied: the parser's buffer is as large as its longest text
        return true;
    }

    bool number_integer(int64_t value) override { return Number(Int32From(value)); }
    bool number_unsigned(uint64_t value) override { return Number(Int32From(value)); }
    bool number_float(double /*value*/, const std::string& /*text*/) override { return true; }
    bool null() override { return true; }
    bool boolean(bool /*value*/) override { return true; }
    bool binary(binary_t& /*value*/) override { return true; }

    bool parse_error(size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& error) override {
        reading_.parseError = JsonErrorText(error);
        return false;
    }

private:
    bool TakesObjects() const {
        return place_ == Place::kOutside || place_ == Place::kPlaylists || place_ == Place::kSongs;
    }
    bool TakesArray() const {
        return (place_ == Place::kRoot && key_ == "playlists") || (place_ == Place::kPlaylist && key_ == "songs");
    }

    bool PassOver() {
        ++passedOver_;
        return true;
    }

    bool End() {
        bounds_.Leave();
        if (passedOver_ > 0) {
            --passedOver_;
            return true;
        }
        const Place ended = std::exchange(place_, Around(place_));
        return ended != Place::kSong || AddSong();
    }

    bool AddPlaylist() {
        reading_.playlists.emplace_back();
        return bounds_.Take(kPlaylistBytes);
    }

    bool AddSong() {
        if (song_.musicType < kMidi || song_.musicType > kTracker) song_.musicType = MusicTypeOf(song_.songPath);
        if (song_.musicType == kUnsupported || song_.songPath.find('\0') != std::string::npos) {
            ++reading_.droppedSongs;
            return true;
        }
        const size_t bytes = kSongBytes + song_.songPath.size();
        reading_.playlists.back().songs.push_back(std::move(song_));
        return bounds_.Take(bytes);
    }

    bool Number(int32_t value) {
        int32_t* const field = NumberField();
        if (field != nullptr) *field = value;
        return true;
    }

    // The field for a value at this place; null when there is none.
    std::string* TextField() {
        if (passedOver_ > 0) return nullptr;
        if (place_ == Place::kSong && key_ == "songPath") return &song_.songPath;
        if (place_ == Place::kPlaylist && key_ == "albumName") return &reading_.playlists.back().albumName;
        return nullptr;
    }

    int32_t* NumberField() {
        if (passedOver_ > 0) return nullptr;
        if (place_ == Place::kSong) {
            if (key_ == "favoriteCount") return &song_.favoriteCount;
            if (key_ == "isFavorite") return &song_.isFavorite;
            if (key_ == "musicType") return &song_.musicType;
            if (key_ == "playCount") return &song_.playCount;
        } else if (place_ == Place::kPlaylist) {
            Playlist& playlist = reading_.playlists.back();
            if (key_ == "favoriteCount") return &playlist.favoriteCount;
            if (key_ == "iRadioMode") return &playlist.iRadioMode;
            if (key_ == "isFavorite") return &playlist.isFavorite;
        }
        return nullptr;
    }

    CacheReading& reading_;
    JsonBounds bounds_;
    Place place_ = Place::kOutside;
    size_t passedOver_ = 0;  // open objects and lists that are not the cache's
    std::string key_;        // the latest key of the object at place_
    Song song_;
};

}  // namespace

CacheReading ReadMusicLibraryCache(std::string_view text) {
    CacheReading reading;
    CacheHandler handler(reading, text.size());
    std::string error;
    if (RunJsonParser(text, handler, error)) return reading;
    if (*handler.Refusal() != '\0') error = handler.Refusal();
    CacheReading refused;
    refused.parseError = reading.parseError.empty() ? error : reading.parseError;
    return refused;
}

}  // namespace hullrider
