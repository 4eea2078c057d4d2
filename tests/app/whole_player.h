// Whole players without a front, on folders of a test's own.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/folder_scan.h"
#include "app/heartbeat.h"
#include "app/settings_file.h"
#include "app/shutdown.h"
#include "app/startup.h"
#include "tests/console_capture.h"
#include "tests/error_boxes.h"
#include "tests/eventually.h"
#include "tests/inline_workers.h"
#include "tests/temporary_folder.h"
#include "tests/tone_wav.h"

namespace hullrider {

class WholePlayerTest : public testing::Test {
protected:
    using json = nlohmann::json;

    ~WholePlayerTest() override {
        if (player_) SaveAndShutdown(*player_);
    }

    // Before the scan that goes on beside the music is over.
    Player& Begin(RunOptions options = {}, const std::string& companionFolder = {}) {
        player_ = std::make_unique<Player>();
        player_->companionEdition = !companionFolder.empty();
        if (player_->companionEdition) player_->programFolder = companionFolder;
        player_->options = std::move(options);
        player_->options.dataDir = folder_.At("data");
        player_->options.output.kind = OutputKind::kNull;
        console_.reset();
        console_.emplace();
        StartPlayer(*player_);
        return *player_;
    }

    Player& Start(RunOptions options = {}, const std::string& companionFolder = {}) {
        Player& player = Begin(std::move(options), companionFolder);
        EXPECT_TRUE(ScanEnds(player));
        return player;
    }

    static bool ScanEnds(Player& player) {
        return Eventually([&] {
            PollFolderScan(player);
            return !SongsFoundByScan(player);
        });
    }

    void Stop(Player& player) {
        SaveAndShutdown(player);
        output_ = console_->Output();
    }

    int TimesPrinted(const std::string& text) const {
        int times = 0;
        for (size_t at = output_.find(text); at != std::string::npos; at = output_.find(text, at + 1)) ++times;
        return times;
    }

    json StateFile(const std::string& name) const { return json::parse(folder_.Read("data/" + name)); }

    void ConfigureMusic(const std::vector<std::string>& folders = {"music"}) {
        Settings settings;
        for (const std::string& name : folders) settings.directoryPaths.push_back(folder_.At(name));
        folder_.Write("data/MusicSettings.json", SettingsText(settings));
    }

    // Three songs of which none can be played.
    void WriteMusic() {
        for (const char* song : {"music/Album/one.mp3", "music/Album/two.mid", "music/Z\xC3\xBCrich/three.xm"}) {
            folder_.Write(song, "not music at all");
        }
    }

    ErrorBoxes errorBoxes_;
    InlineWorkers inline_;
    TemporaryFolder folder_;
    std::optional<ConsoleCapture> console_;
    std::unique_ptr<Player> player_;
    std::string output_;
};

}  // namespace hullrider
