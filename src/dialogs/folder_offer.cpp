#include "dialogs/folder_offer.h"

#include <algorithm>

#include "dialogs/folder_rows.h"
#include "library/song_counts.h"

namespace hullrider {

namespace {

constexpr size_t kLongestPath = 48;

std::string SongsText(int64_t songs) {
    return " (" + Counted(songs, "song") + ")";
}

std::vector<std::string> NotListed(const std::vector<std::string>& folders, const std::vector<std::string>& listed) {
    std::vector<std::string> others;
    std::copy_if(folders.begin(), folders.end(), std::back_inserter(others), [&](const std::string& folder) {
        return std::none_of(listed.begin(), listed.end(),
                            [&](const std::string& one) { return IsSameFolder(one, folder); });
    });
    return others;
}

FolderOffer OfferBelow(const AlbumsFound& below, const std::vector<std::string>& listed) {
    FolderOffer offer{"The albums lie deeper: a music folder must hold them directly.", "",
                      NotListed(below.folders, listed)};
    if (offer.folders.empty()) return {"The folders below it that hold albums are in the list.", "", {}};
    const bool isOne = offer.folders.size() == 1;
    const std::string what =
        isOne ? ShortPath(offer.folders[0], kLongestPath)
              : "these " + FormatWithThousands(static_cast<int64_t>(offer.folders.size())) + " folders";
    offer.button = "Add " + what + SongsText(below.songs);
    return offer;
}

FolderOffer OfferBeside(const AlbumsFound& beside, const std::vector<std::string>& listed) {
    if (beside.folders.empty()) return {"It is an album itself. Move it into a folder, and add that one.", "", {}};
    FolderOffer offer{"It is an album itself: a music folder holds albums.", "", NotListed(beside.folders, listed)};
    const std::string parent = ShortPath(beside.folders[0], kLongestPath);
    if (offer.folders.empty()) return {"It is an album of " + parent + ", which is in the list.", "", {}};
    offer.button = "Add " + parent + ", which holds this album" + SongsText(beside.songs);
    return offer;
}

}  // namespace

FolderOffer MakeFolderOffer(const AlbumSearch& search, const std::vector<std::string>& listed) {
    if (!search.isReadable) return {"It cannot be read: " + search.error, "", {}};
    // Loose songs beside a tree of albums do not make the tree an album.
    if (search.below.songs > 0 && search.below.songs >= search.ownSongs) return OfferBelow(search.below, listed);
    if (search.ownSongs > 0) return OfferBeside(search.beside, listed);
    if (search.files == 0) return {"It is empty. Put folders with songs into it, or remove it from the list.", "", {}};
    return {"None of its files can be played: only MIDI, mp3, m4a, flac, mod, xm, s3m, it and mtm.", "", {}};
}

std::string ShortPath(const std::string& path, size_t most) {
    if (path.size() <= most) return path;
    size_t from = path.size() - most;
    const size_t separator = path.find_first_of("/\\", from);
    if (separator != std::string::npos) from = separator;
    while (from < path.size() && (static_cast<unsigned char>(path[from]) & 0xC0U) == 0x80U) ++from;  // whole letters
    return "..." + path.substr(from);
}

}  // namespace hullrider
