#include "platform/console.h"

#include <windows.h>

#include <cstdio>
#include <mutex>
#include <string>

namespace hullrider {

namespace {

void (*interruptHandler)() = nullptr;
UINT codePageBefore = 0;  // of the parent's console, to be restored

// Straight to the handle: the C streams of a program started without a console stay unbound.
void WriteLine(DWORD stream, std::string_view text) {
    static std::mutex oneLineAtATime;
    const HANDLE handle = GetStdHandle(stream);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return;
    std::string line(text);
    line += "\r\n";
    DWORD written = 0;
    const std::lock_guard lock(oneLineAtATime);
    WriteFile(handle, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

void OpenConsoleFor(DWORD stream) {
    const HANDLE current = GetStdHandle(stream);
    if (current != nullptr && current != INVALID_HANDLE_VALUE && GetFileType(current) != FILE_TYPE_UNKNOWN) return;
    const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
    if (console != INVALID_HANDLE_VALUE) SetStdHandle(stream, console);
}

BOOL WINAPI HandleConsoleEvent(DWORD event) {
    interruptHandler();
    // When this handler returns from a closing console or session, Windows ends the process: allow time for an orderly
    // end.
    if (event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT) Sleep(4000);
    return TRUE;
}

}  // namespace

void PrintLine(std::string_view text) {
    WriteLine(STD_OUTPUT_HANDLE, text);
}
void PrintErrorLine(std::string_view text) {
    WriteLine(STD_ERROR_HANDLE, text);
}

void AttachParentConsole() {
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
    codePageBefore = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    OpenConsoleFor(STD_OUTPUT_HANDLE);
    OpenConsoleFor(STD_ERROR_HANDLE);
}

void ReleaseConsole() {
    if (codePageBefore != 0) SetConsoleOutputCP(codePageBefore);
    FreeConsole();
}

void OnInterrupt(void (*handler)()) {
    interruptHandler = handler;
    SetConsoleCtrlHandler(HandleConsoleEvent, TRUE);
}

}  // namespace hullrider
