// Song Information in the real program.
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

}  // namespace
}  // namespace hullrider
