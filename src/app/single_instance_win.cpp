#include "app/single_instance_win.h"

#include <cwchar>

#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr DWORD kPatienceMs = 5000, kStepMs = 100;

// FNV-1a, 64 bits (http://www.isthe.com/chongo/tech/comp/fnv/). Ignores case, as the file system does.
uint64_t HashOf(std::wstring path) {
    CharLowerBuffW(path.data(), static_cast<DWORD>(path.size()));
    uint64_t hash = 14695981039346656037ULL;
    for (const wchar_t unit : path) hash = (hash ^ unit) * 1099511628211ULL;
    return hash;
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

SingleInstance::SingleInstance(const std::string& dataDirectory) {
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
        if (!isFirst_ && TellFirst()) return;
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
}

void SingleInstance::Unmark(HWND window) const {
    RemovePropW(window, name_.c_str());
}

UINT SingleInstance::ShowMessage() {
    static const UINT message = RegisterWindowMessageW(L"HullriderRadio.Show");
    return message;
}

bool SingleInstance::TellFirst() const {
    Search search{name_, nullptr};
    EnumWindows(MatchMark, reinterpret_cast<LPARAM>(&search));
    if (search.found == nullptr) return false;
    DWORD process = 0;
    GetWindowThreadProcessId(search.found, &process);
    AllowSetForegroundWindow(process);
    return PostMessageW(search.found, ShowMessage(), 0, 0) != 0;
}

}  // namespace hullrider
