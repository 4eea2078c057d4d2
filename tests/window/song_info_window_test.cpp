// Song Information in the real program.
#include <windows.h>

#include <commctrl.h>

#include <numeric>

#include "tests/window/controls_win.h"
#include "tests/window/window_fixture_win.h"

namespace hullrider {
namespace {

std::string ClipboardText() {
    if (OpenClipboard(nullptr) == 0) return {};
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    const auto* const text = data == nullptr ? nullptr : static_cast<const wchar_t*>(GlobalLock(data));
    const std::string copied = text == nullptr ? std::string() : Utf8FromWide(text);
    if (text != nullptr) GlobalUnlock(data);
    CloseClipboard();
    return copied;
}

using SongInfoWindow = PlayerWindowTest;

TEST_F(SongInfoWindow, CopiesWhatItSaysToTheClipboard) {
    folder_.Write("music/\xC3\x81lbum/t\xC3\xB6ne.mp3", ToneWav(440.0, 100.0));
    PlayerProcess& player = StartWithMusic();
    EXPECT_TRUE(Eventually([&] {  // the play counts after five seconds
        return folder_.Has("data/MusicLibraryPlayCount.json") &&
               folder_.Read("data/MusicLibraryPlayCount.json").find(".mp3\":1") != std::string::npos;
    }));
    Choose(kSongInfoCommand);
    const HWND info = player.WaitForWindow(L"CustomInfoDialogClass", L"Song Information");
    ASSERT_NE(info, nullptr);
    PostMessageW(FindControl(info, L"BUTTON", L"Co&py"), BM_CLICK, 0, 0);
    EXPECT_TRUE(Eventually([] {
        const std::string text = ClipboardText();
        return text.starts_with("Title\tt\xC3\xB6ne\r\nAlbum\t\xC3\x81lbum\r\n") &&
               text.find("\r\nt\xC3\xB6ne\t\xC3\x81lbum\t1\r\n") != std::string::npos &&
               text.find("\r\nnow\tt\xC3\xB6ne\t\xC3\x81lbum\r\n") != std::string::npos;
    })) << ClipboardText();
}

std::vector<int> ColumnsOf(HWND table) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(table, LVM_GETHEADER, 0, 0));
    std::vector<int> widths(static_cast<size_t>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)));
    for (size_t i = 0; i < widths.size(); ++i) {
        widths[i] = static_cast<int>(SendMessageW(table, LVM_GETCOLUMNWIDTH, i, 0));
    }
    return widths;
}

bool IsFilled(HWND table) {
    RECT client;
    GetClientRect(table, &client);
    const std::vector<int> widths = ColumnsOf(table);
    return std::accumulate(widths.begin(), widths.end(), 0) == client.right;
}

TEST_F(SongInfoWindow, TheColumnsFillTheirTablesAtEverySize) {
    folder_.Write("music/Album/tone.mp3", ToneWav(440.0, 100.0));
    PlayerProcess& player = StartWithMusic();
    Choose(kSongInfoCommand);
    const HWND info = player.WaitForWindow(L"CustomInfoDialogClass", L"Song Information");
    ASSERT_NE(info, nullptr);
    const HWND kinds = FindWindowExW(info, nullptr, WC_LISTVIEWW, nullptr);
    const HWND mostPlayed = FindWindowExW(info, kinds, WC_LISTVIEWW, nullptr);
    std::vector<int> before(3);
    for (const int width : {850, 1300}) {
        SetWindowPos(info, nullptr, 0, 0, width, 800, SWP_NOZORDER);
        EXPECT_TRUE(Eventually([&] { return IsFilled(kinds) && IsFilled(mostPlayed); })) << width;
        const std::vector<int> columns = ColumnsOf(mostPlayed);
        ASSERT_EQ(columns.size(), before.size());
        EXPECT_GT(columns[0], before[0]) << width;
        EXPECT_GT(columns[1], before[1]) << "not one column alone takes the width";
        before = columns;
    }
}

}  // namespace
}  // namespace hullrider
