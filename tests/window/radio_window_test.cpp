// Radio Options in the real program.
#include <windows.h>

#include "tests/window/controls_win.h"
#include "tests/window/window_fixture_win.h"

namespace hullrider {
namespace {

class RadioWindowTest : public PlayerWindowTest {
protected:
    HWND Open(const std::string& settings = "{}") {
        folder_.Write("music/A/tone.mp3", ToneWav(440.0, 100.0));
        folder_.Write("data/MusicSettings.json", settings);
        StartWithMusic();
        Choose(kRadioOptionsCommand);
        radio_ = player_->WaitForWindow(L"CustomRadioDialogClass", L"Radio Options");
        EXPECT_NE(radio_, nullptr) << player_->Output();
        return radio_;
    }

    // The control that follows the one with that text.
    HWND After(const wchar_t* text) const { return GetWindow(FindControl(radio_, nullptr, text), GW_HWNDNEXT); }

    void Tick(const wchar_t* box) const { PostMessageW(FindControl(radio_, L"BUTTON", box), BM_CLICK, 0, 0); }

    // As with the mouse and the keyboard: the field has the focus.
    static void Type(HWND field, const wchar_t* text) {
        SendMessageW(field, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        SendMessageW(field, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    }

    static bool Says(HWND control, const wchar_t* text) {
        return Eventually([&] { return TextIn(control) == text; });
    }

    bool IsSaved(const std::string& text) const { return FileHolds("data/MusicSettings.json", text); }

    HWND radio_ = nullptr;
};

TEST_F(RadioWindowTest, WhatABoxSwitchesOffComesBackAsItWas) {
    ASSERT_NE(Open(), nullptr);
    const struct {
        const wchar_t *box, *before;  // the field's label or the box itself
        const wchar_t* number;
        const char *off, *on;
    } table[] = {
        {L"No song &repeat for", L"No song &repeat for", L"20", "\"historyDepth\": -1", "\"historyDepth\": 20"},
        {L"&New SoundFont after", L"&New SoundFont after", L"1", "\"songsBeforeSoundfontChange\": 0",
         "\"songsBeforeSoundfontChange\": 1"},
        {L"Play songs &whole", L"t&o", L"110", "\"songPlayDurationMax\": 0", "\"songPlayDurationMax\": 110"}};
    for (const auto& row : table) {
        EXPECT_EQ(TextIn(After(row.before)), row.number);
        Tick(row.box);
    }
    for (const auto& row : table) {
        EXPECT_TRUE(IsSaved(row.off)) << row.off;
        EXPECT_EQ(IsWindowEnabled(After(row.before)), 0) << row.off;
        EXPECT_EQ(TextIn(After(row.before)), row.number) << row.off;
        Tick(row.box);
    }
    for (const auto& row : table) EXPECT_TRUE(IsSaved(row.on)) << row.on;
    EXPECT_NE(FindControl(radio_, L"STATIC", L"No MIDI songs"), nullptr);
    EXPECT_NE(FindControl(radio_, L"STATIC", L"100 %"), nullptr);
    EXPECT_EQ(Exit(), 0);
}

TEST_F(RadioWindowTest, SecondsHaveTenthsAndTheEndsOfATimeDoNotCross) {
    ASSERT_NE(Open(), nullptr);
    const HWND fade = After(L"Cross-fa&de");
    EXPECT_EQ(TextIn(fade), L"8.0");
    Type(fade, L"2.5");
    EXPECT_TRUE(IsSaved("\"FADE_DURATION_MS\": 2500"));
    SendMessageW(fade, WM_KEYDOWN, VK_UP, 1);
    EXPECT_TRUE(Says(fade, L"2.6"));

    const HWND least = After(L"&Songs play for"), most = After(L"t&o");
    Type(least, L"200");
    EXPECT_NE(FindControl(radio_, L"STATIC", L"Raises the maximum"), nullptr);
    EXPECT_EQ(TextIn(most), L"110") << "not while it is typed";
    Type(most, L"200");  // the first field loses the focus
    EXPECT_TRUE(Says(most, L"200"));
    EXPECT_TRUE(IsSaved("\"songPlayDurationMin\": 200"));
    EXPECT_TRUE(IsSaved("\"songPlayDurationMax\": 200"));
    Type(most, L"9");
    PostMessageW(radio_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsSaved("\"songPlayDurationMin\": 9"));
    EXPECT_EQ(Exit(), 0);
}

TEST_F(RadioWindowTest, ANumberOutsideTheBoundsIsShownWholeWithThem) {
    std::string settings;
    {
        PlayerProcess player(Arguments({"--for", "0"}));
        ASSERT_EQ(player.WaitForExit(), 0);
        settings = folder_.Read("data/MusicSettings.json");
    }
    const std::string key = "\"songsBeforeSoundfontChange\": 1";
    ASSERT_NE(settings.find(key), std::string::npos);
    settings.replace(settings.find(key), key.size(), "\"songsBeforeSoundfontChange\": 999999");
    ASSERT_NE(Open(settings), nullptr);
    const HWND field = After(L"&New SoundFont after");
    EXPECT_EQ(TextIn(field), L"999999");
    EXPECT_NE(FindControl(radio_, L"STATIC", L"From 1 to 1000"), nullptr);
    Type(field, L"x");
    Type(After(L"Cross-fa&de"), L"8.0");
    EXPECT_TRUE(Says(field, L"999999")) << "what makes no sense changes nothing";
    EXPECT_EQ(Exit(), 0);
}

}  // namespace
}  // namespace hullrider
