#include "platform/clipboard_win.h"

#include <cstring>
#include <string>

#include "platform/text_win.h"

namespace hullrider {

namespace {

// The text in the clipboard's format; null without memory.
HGLOBAL ClipboardCopy(std::string_view text) {
    std::string lines;
    for (const char c : text) {
        if (c == '\n') lines += '\r';
        lines += c;
    }
    const std::wstring wide = WideFromUtf8(lines);
    const size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory == nullptr) return nullptr;
    if (void* const place = GlobalLock(memory)) {
        std::memcpy(place, wide.c_str(), bytes);
        GlobalUnlock(memory);
    }
    return memory;
}

// Another program may have it open for a moment.
bool OpenClipboardSoon(HWND owner) {
    constexpr int kAttempts = 10;
    constexpr DWORD kStepMs = 5;
    for (int attempt = 1; OpenClipboard(owner) == 0; ++attempt) {
        if (attempt == kAttempts) return false;
        Sleep(kStepMs);
    }
    return true;
}

}  // namespace

bool CopyToClipboard(HWND owner, std::string_view text) {
    if (!OpenClipboardSoon(owner)) return false;
    EmptyClipboard();
    const HGLOBAL memory = ClipboardCopy(text);
    const bool isTaken = memory != nullptr && SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    if (!isTaken && memory != nullptr) GlobalFree(memory);
    CloseClipboard();
    return isTaken;
}

}  // namespace hullrider
