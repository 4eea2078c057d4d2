#include <windows.h>
//
#include <shellapi.h>

#include <memory>
#include <stop_token>
#include <utility>

#include "platform/post.h"
#include "platform/program.h"
#include "platform/stop_scope.h"
#include "platform/text_win.h"
#include "platform/worker.h"

namespace hullrider {

namespace {

using Handle = std::shared_ptr<void>;

Handle Own(HANDLE handle) {
    return {handle, [](HANDLE owned) {
                if (owned != nullptr) CloseHandle(owned);
            }};
}

void WaitForEnd(const Handle& process, const std::function<void()>& onEnd) {
    const Handle stopped = Own(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (stopped == nullptr) return;
    const std::stop_callback stop(CurrentStopToken(), [&] { SetEvent(stopped.get()); });
    const HANDLE handles[] = {process.get(), stopped.get()};
    if (WaitForMultipleObjects(2, handles, FALSE, INFINITE) == WAIT_OBJECT_0) Post(onEnd);
}

}  // namespace

bool StartElevated(const std::string& program, const std::string& folder, std::string& error,
                   std::function<void()> onEnd) {
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
    const Handle process = Own(start.hProcess);
    if (process != nullptr) StartWorker([process, onEnd = std::move(onEnd)] { WaitForEnd(process, onEnd); });
    return true;
}

bool ShowFolder(const std::string& folder) {
    const HINSTANCE shown =
        ShellExecuteW(nullptr, L"open", WideFromUtf8(folder).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(shown) > 32;  // lower values are error codes
}

}  // namespace hullrider
