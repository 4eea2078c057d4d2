#include <windows.h>
//
#include <shellapi.h>

#include <thread>

#include "platform/console.h"
#include "platform/program.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

// Owns the process's handle until its end.
void WatchProcess(HANDLE process) {
    std::thread([process] {
        WaitForSingleObject(process, INFINITE);
        CloseHandle(process);
        PrintLine("The game has ended.");
    }).detach();
}

}  // namespace

bool StartElevated(const std::string& program, const std::string& folder, std::string& error) {
    const std::wstring file = WideFromUtf8(program), directory = WideFromUtf8(folder);
    SHELLEXECUTEINFOW start{};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    start.lpVerb = L"runas";
    start.lpFile = file.c_str();
    start.lpDirectory = directory.c_str();
    start.nShow = SW_SHOWNORMAL;
    if (ShellExecuteExW(&start) == 0) {
        error = SystemErrorText(GetLastError());
        return false;
    }
    if (start.hProcess != nullptr) WatchProcess(start.hProcess);
    return true;
}

bool ShowFolder(const std::string& folder) {
    const HINSTANCE shown =
        ShellExecuteW(nullptr, L"open", WideFromUtf8(folder).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(shown) > 32;  // what is below are error codes
}

}  // namespace hullrider
