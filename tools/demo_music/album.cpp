#include "demo_music/album.h"

#include "demo_music/pieces/midi_pieces.h"
#include "demo_music/pieces/module_pieces.h"
#include "demo_music/pieces/recorded_pieces.h"

namespace hullrider::demo {
namespace {

constexpr auto kArtist = "Hullrider Radio";
constexpr auto kMidiAlbum = "Paper Lanterns", kModuleAlbum = "Pixel Weather", kRecordedAlbum = "Tide and Timber";

MusicFile MidiFile(const MidiSong& song) {
    return {std::string(kMidiAlbum) + "/" + song.title + ".mid", WriteMidiFile(song)};
}

MusicFile ModuleFile(const TrackerPiece& piece, const char* extension, std::string (*write)(const Module&)) {
    return {std::string(kModuleAlbum) + "/" + piece.title + extension, write(Sequence(piece))};
}

MusicFile RecordedFile(const Recording& recording) {
    return {std::string(kRecordedAlbum) + "/" + recording.title + "." + recording.extension + ".wav",
            WriteWavFile(Perform(recording), recording.title, kArtist, kRecordedAlbum)};
}

}  // namespace

bool MakeAlbums(const std::function<bool(const MusicFile&)>& take) {
    return take(MidiFile(ComposeQuietHarbour())) && take(MidiFile(ComposeCornerTable())) &&
           take(MidiFile(ComposeNeonBoulevard())) && take(ModuleFile(ComposeCloudJumper(), ".s3m", WriteS3m)) &&
           take(ModuleFile(ComposeBackstreetShuffle(), ".mod", WriteMod)) &&
           take(ModuleFile(ComposeSlowAurora(), ".xm", WriteXm)) && take(RecordedFile(ComposeMorningFerry())) &&
           take(RecordedFile(ComposeGlassGarden())) && take(RecordedFile(ComposeCafeLanterns()));
}

}  // namespace hullrider::demo
