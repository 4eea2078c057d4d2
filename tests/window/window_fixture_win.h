// A running program with its window, on folders of the test's own.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "app/commands.h"
#include "platform/text_win.h"
#include "tests/eventually.h"
#include "tests/tone_wav.h"
#include "tests/window/player_process_win.h"

namespace hullrider {

inline constexpr wchar_t kClass[] = L"HelloWorldClass";
inline constexpr wchar_t kTitle[] = L"Hullrider Radio";

class PlayerWindowTest : public testing::Test {
protected:
    std::vector<std::string> Arguments(std::vector<std::string> more = {}) const {
        more.insert(more.end(), {"--data-dir", folder_.At("data"), "--output", "null"});
        return more;
    }

    // A player with its window up.
    PlayerProcess& Start(std::vector<std::string> more = {}) {
        player_ = std::make_unique<PlayerProcess>(Arguments(std::move(more)));
        window_ = player_->WaitForWindow(kClass, kTitle);
        EXPECT_NE(window_, nullptr) << player_->Output();
        return *player_;
    }

    // One that plays.
    PlayerProcess& StartWithMusic() {
        PlayerProcess& player = Start({"--music", folder_.At("music")});
        EXPECT_TRUE(player.WaitForOutput("Playing: ", 1)) << player.Output();
        return player;
    }

    // As from the menu.
    void Choose(int32_t command) const { PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(command), 0); }

    // Looks seldom: while a file is being read it cannot be replaced.
    template <typename Claim>
    bool FileFits(const std::string& name, const Claim& claim) const {
        return Eventually([&] { return claim(folder_.Read(name)); }, std::chrono::milliseconds(250));
    }

    bool FileHolds(const std::string& name, const std::string& text) const {
        return FileFits(name, [&](const std::string& file) { return file.find(text) != std::string::npos; });
    }

    int Exit() {
        Choose(kExitCommand);
        return player_->WaitForExit();
    }

    TemporaryFolder folder_;
    std::unique_ptr<PlayerProcess> player_;
    HWND window_ = nullptr;
};

}  // namespace hullrider
