#include "app/simulate.h"

#include <array>
#include <cstdio>
#include <unordered_map>
#include <vector>

#include "app/data_directory.h"
#include "app/folder_scan.h"
#include "app/library_loading.h"
#include "app/listening_files.h"
#include "audio/bass.h"
#include "audio/manual_output.h"
#include "library/song_counts.h"
#include "library/type_names.h"
#include "platform/paths.h"
#include "platform/state_files.h"
#include "playback/simulation.h"
#include "playback/stream_time.h"

namespace hullrider {

namespace {

constexpr uint32_t kMixingRateHz = 44100;

// Opening files takes most of the time: later songs get lengths drawn from the measured songs of their type.
constexpr size_t kMostMeasured = 500;

class SongLengths {
public:
    explicit SongLengths(Random& random) : random_(random) {}

    double operator()(const Song& song) {
        const auto known = measured_.find(song.songPath);
        if (known != measured_.end()) return known->second;
        std::vector<double>& ofType = ofType_[static_cast<size_t>(song.musicType)];
        if (measured_.size() >= kMostMeasured && !ofType.empty()) return ofType[random_.Index(ofType.size())];
        const double lengthSec = Measure(song);
        measured_.emplace(song.songPath, lengthSec);
        if (lengthSec >= 0.0) ofType.push_back(lengthSec);
        return lengthSec;
    }

    size_t MeasuredCount() const { return measured_.size(); }

private:
    static double Measure(const Song& song) {
        const char* const path = song.songPath.c_str();
        const StreamSlot handle = song.musicType == kTracker
                                      ? BASS_MusicLoad(false, path, 0, 0, BASS_SAMPLE_FLOAT, 0)
                                      : BASS_StreamCreateFile(false, path, 0, 0, BASS_SAMPLE_FLOAT);
        if (handle == 0) return -1.0;
        const double lengthSec = LengthSec(handle);
        BASS_StreamFree(handle);
        return lengthSec;
    }

    Random& random_;
    std::unordered_map<std::string, double> measured_;
    std::array<std::vector<double>, 3> ofType_;
};

// Loads all that the selection depends on, as start-up does, and nothing that would be saved.
void LoadForSimulation(Player& player) {
    AppState& app = player.state;
    app.shell.dataDirectory = ChooseDataDirectory(player.options);
    if (player.options.music.empty()) {
        app.shell.libraryCachePath = StatePath(app.shell.dataDirectory, kLibraryCacheFile);
        LoadLibrary(app);
    }
    LoadSettingsFile(app);
    FillLibrary(player);
    app.shell.libraryCachePath.clear();
    ScanAtOnce(player);
    LoadSongHistoryFile(app);
}

std::string Number(double value, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

std::string ShareLine(const char* what, double drawn, double promised) {
    std::array<char, 96> line{};
    std::snprintf(line.data(), line.size(), "  %-22s%8.2f %%  %8.2f %%\n", what, drawn * 100.0, promised * 100.0);
    return line.data();
}

std::string ReportText(const AppState& app, const Rotation& rotation, const RotationShares& promised, size_t measured) {
    const int32_t depth = app.settings.historyDepth;
    std::string text = "Simulated " + std::to_string(rotation.plays) + " songs of a library of " +
                       std::to_string(SongCountOf(app.library)) + ".\n" +
                       "                             drawn    promised\n";
    for (size_t i = 0; i < kTypeNames.size(); ++i) {
        text += ShareLine(kTypeNames[i].many, rotation.drawn.byType[i], promised.byType[i]);
    }
    text += ShareLine("Favorites of any kind", rotation.drawn.favorites, promised.favorites);
    if (depth >= 0) {
        text +=
            "Repeats within the last " + std::to_string(depth) + " songs: " + std::to_string(rotation.repeats) + '\n';
    }
    text += "Picks that could not be played: " + std::to_string(rotation.unplayable) + '\n';
    text += "Mean play time: " + Number(rotation.meanPlaySec, 1) + " s, by the lengths of " + std::to_string(measured) +
            " files";
    if (rotation.meanPlaySec > 0.0) text += "\nSongs an hour: " + Number(3600.0 / rotation.meanPlaySec, 1);
    return text;
}

}  // namespace

std::string SimulationText(const RunOptions& options) {
    Player player;
    player.options = options;
    LoadForSimulation(player);
    InitManualOutput(kMixingRateHz);
    const RotationShares promised = PromisedShares(player.state, player.picker);
    Random lengthRandom;
    SongLengths lengths(lengthRandom);
    const Rotation rotation = SimulateRotation(player.state, player.picker, options.simulate.value_or(0),
                                               [&](const Song& song) { return lengths(song); });
    BASS_Free();
    return ReportText(player.state, rotation, promised, lengths.MeasuredCount());
}

}  // namespace hullrider
