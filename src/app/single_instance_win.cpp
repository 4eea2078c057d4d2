#include "app/single_instance_win.h"

#include <cwchar>

#include "app/handover.h"
#include "platform/console.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr DWORD kPatienceMs = 5000, kStepMs = 100;
constexpr ULONG_PTR kFilesHandedOver = 0x48524631;  // any number that others do not use

// FNV-1a, 64 bits (http://www.isthe.com/chongo/tech/comp/fnv/). Ignores case, as the file system does.
uint64_t HashOf(std::wstring path) {
    CharLowerBuffW(path.data(), static_cast<DWORD>(path.size()));
    uint64_t hash = 14695981039346656037ULL;
    for (const wchar_t unit : path) hash = (hash ^ unit) * 1099511628211ULL;
    return hash;
}

// The first player only takes note of them, so the answer comes at once unless it is busy starting or hangs.
void HandOver(HWND window, const std::vector<std::string>& files) {
    std::string text = HandoverText(files);
    COPYDATASTRUCT copy{kFilesHandedOver, static_cast<DWORD>(text.size()), text.data()};
    DWORD_PTR answer = 0;
    const LRESULT sent =
        SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copy), SMTO_NORMAL, kPatienceMs, &answer);
    if (sent == 0 || answer == 0) PrintErrorLine("The running player does not take the files.");
}

struct Search {
    const std::wstring& name;
    HWND found;
};

BOOL CALLBACK MatchMark(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    if (GetPropW(window, search.name.c_str()) == nullptr) return TRUE;
    search.found = window;
    return FALSE;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& dataDirectory, const std::vector<std::string>& files) {
    wchar_t name[64] = {};
    std::swprintf(name, 64, L"HullriderRadio-%016llx",
                  static_cast<unsigned long long>(HashOf(WideFromUtf8(dataDirectory))));
    name_ = name;
    mutex_ = CreateMutexW(nullptr, FALSE, (L"Local\\" + name_).c_str());
    // Without a mutex, start anyway.
    isFirst_ = mutex_ == nullptr;
    for (DWORD waited = 0; !isFirst_ && waited < kPatienceMs; waited += kStepMs) {
        const DWORD result = WaitForSingleObject(mutex_, kStepMs);
        isFirst_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
        if (!isFirst_ && TellFirst(files)) return;
    }
}

SingleInstance::~SingleInstance() {
    if (mutex_ == nullptr) return;
    if (isFirst_) ReleaseMutex(mutex_);
    CloseHandle(mutex_);
}

void SingleInstance::Mark(HWND window) const {
    SetPropW(window, name_.c_str(), reinterpret_cast<HANDLE>(INT_PTR{1}));
    // A player with fewer rights may send it too.
    ChangeWindowMessageFilterEx(window, ShowMessage(), MSGFLT_ALLOW, nullptr);
    ChangeWindowMessageFilterEx(window, WM_COPYDATA, MSGFLT_ALLOW, nullptr);
}

void SingleInstance::Unmark(HWND window) const {
    RemovePropW(window, name_.c_str());
}

UINT SingleInstance::ShowMessage() {
    static const UINT message = RegisterWindowMessageW(L"HullriderRadio.Show");
    return message;
}

std::vector<std::string> SingleInstance::FilesIn(LPARAM lParam) {
    const auto* const copy = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    if (copy->dwData != kFilesHandedOver || copy->lpData == nullptr) return {};
    return PathsOfHandover({static_cast<const char*>(copy->lpData), copy->cbData});
}

bool SingleInstance::TellFirst(const std::vector<std::string>& files) const {
    Search search{name_, nullptr};
    EnumWindows(MatchMark, reinterpret_cast<LPARAM>(&search));
    if (search.found == nullptr) return false;
    DWORD process = 0;
    GetWindowThreadProcessId(search.found, &process);
    AllowSetForegroundWindow(process);
    if (!files.empty()) HandOver(search.found, files);
    return PostMessageW(search.found, ShowMessage(), 0, 0) != 0;
}

}  // namespace hullrider
