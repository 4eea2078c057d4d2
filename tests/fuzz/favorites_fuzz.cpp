// The text of a favorites file: whatever it says, only favorites come out that may stand in the list, and the list
// that they make is written and read again as it is.
#include <cstdint>
#include <cstdlib>

#include "library/favorites.h"
#include "library/favorites_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace hullrider;
    const std::string text(data, data + size);
    FavoritesReading reading = ReadFavorites(text);
    if (!reading.entries.empty() && !reading.isFavorites) std::abort();
    if (!reading.isFavorites && reading.error.empty()) std::abort();
    for (const FavoriteEntry& entry : reading.entries) {
        if (entry.favoriteCount < 1 || entry.songPath.empty()) std::abort();
        if (entry.songPath.find('\0') != std::string::npos) std::abort();
    }
    FavoritesState favorites;
    MergeFavorites(favorites, reading.entries);
    reading = ReadFavorites(FavoritesText(favorites.list));
    if (!reading.error.empty() || reading.dropped > 0) std::abort();
    if (reading.entries.size() != favorites.list.size()) std::abort();
    for (size_t i = 0; i < favorites.list.size(); ++i) {
        if (reading.entries[i].songPath != favorites.list[i].songPath) std::abort();
        if (reading.entries[i].favoriteCount != favorites.list[i].favoriteCount) std::abort();
    }
    return 0;
}
