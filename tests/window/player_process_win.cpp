#include "tests/window/player_process_win.h"

#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr DWORD kPatienceMs = 20000;

struct Search {
    DWORD processId;
    const wchar_t* className;
    const wchar_t* title;
    HWND found = nullptr;
    int count = 0;
};

BOOL CALLBACK Match(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    if (processId != search.processId || IsWindowVisible(window) == 0) return TRUE;
    wchar_t className[128] = {}, title[128] = {};
    GetClassNameW(window, className, 128);
    GetWindowTextW(window, title, 128);
    if (std::wstring(className) != search.className) return TRUE;
    if (search.title != nullptr && std::wstring(title) != search.title) return TRUE;
    if (search.found == nullptr) search.found = window;  // the topmost
    ++search.count;
    return TRUE;
}

}  // namespace

PlayerProcess::PlayerProcess(const std::vector<std::string>& arguments) {
    std::wstring command = L"\"" + WideFromUtf8(PLAYER_PROGRAM) + L"\"";
    for (const std::string& argument : arguments) command += L" \"" + WideFromUtf8(argument) + L"\"";
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    const HANDLE output = CreateFileW((folder_.Path() / "output.txt").c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process_);
    CloseHandle(output);
}

PlayerProcess::~PlayerProcess() {
    if (WaitForSingleObject(process_.hProcess, 0) != WAIT_OBJECT_0) {
        TerminateProcess(process_.hProcess, 99);
        WaitForSingleObject(process_.hProcess, kPatienceMs);
    }
    CloseHandle(process_.hProcess);
    CloseHandle(process_.hThread);
}

HWND PlayerProcess::WaitForWindow(const wchar_t* className, const wchar_t* title) {
    Search search{process_.dwProcessId, className, title};
    for (DWORD waited = 0; waited < kPatienceMs && search.found == nullptr; waited += 50) {
        EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
        if (search.found == nullptr) Sleep(50);
    }
    return search.found;
}

int PlayerProcess::CountWindows(const wchar_t* className) const {
    Search search{process_.dwProcessId, className, nullptr};
    EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
    return search.count;
}

int PlayerProcess::WaitForExit() {
    if (WaitForSingleObject(process_.hProcess, kPatienceMs) != WAIT_OBJECT_0) return -1;
    DWORD code = 0;
    GetExitCodeProcess(process_.hProcess, &code);
    return static_cast<int>(code);
}

bool PlayerProcess::WaitForOutput(const std::string& text, int times, DWORD patienceMs) const {
    for (DWORD waited = 0;; waited += 50) {
        const std::string output = Output();
        int found = 0;
        for (size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + 1)) ++found;
        if (found >= times) return true;
        if (waited >= patienceMs) return false;
        Sleep(50);
    }
}

std::string PlayerProcess::Output() const {
    return folder_.Read("output.txt");
}

}  // namespace hullrider
