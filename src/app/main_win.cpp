// HullriderRadio.exe: the process entry of the player with its window.
#include <windows.h>
//
#include <commctrl.h>
#include <shellapi.h>
#include <shellscalingapi.h>

#include "app/commands.h"
#include "app/data_directory.h"
#include "app/front.h"
#include "app/main_window_win.h"
#include "app/player.h"
#include "app/single_instance_win.h"
#include "app/startup.h"
#include "app/window_place_win.h"
#include "audio/output_choice.h"
#include "dialogs/dialogs_win.h"
#include "display/gdiplus_win.h"
#include "platform/console.h"
#include "platform/message_box.h"
#include "platform/text_win.h"

namespace hullrider {
namespace {

HWND interruptedWindow = nullptr;

std::vector<std::string> CommandLineArguments() {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; wide != nullptr && i < count; ++i) arguments.push_back(Utf8FromWide(wide[i]));
    LocalFree(wide);
    return arguments;
}

int RunMessageLoop() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateDialogMessage(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

class GdiplusSession {
public:
    GdiplusSession() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~GdiplusSession() { Gdiplus::GdiplusShutdown(token_); }
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;

private:
    ULONG_PTR token_ = 0;
};

void PrintErrorBox(std::string_view text) {
    PrintErrorLine("Error: " + std::string(text));
}

int Run(HINSTANCE instance, int showCommand, const RunOptions& options) {
    SetProcessDpiAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
    const GdiplusSession gdiplus;
    const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), 255};
    InitCommonControlsEx(&controls);

    const SingleInstance instanceOfFolder(ChooseDataDirectory(options), options.files);
    if (!instanceOfFolder.IsFirst()) {
        PrintLine("The player is already running.");
        return 0;
    }

    Player player;
    player.options = options;
    if (options.forSec) SetErrorBoxHandler(PrintErrorBox);  // nobody may be there to close a box
    MainWindow window(instance, player);
    if (window.Handle() == nullptr) {
        PrintErrorLine("The window could not be created.");
        return -1;
    }
    instanceOfFolder.Mark(window.Handle());
    window.OnEnd([&] { instanceOfFolder.Unmark(window.Handle()); });
    StartPlayer(player);
    PrintLine("Output: " + OutputDescription());
    if (!player.shutDown) window.Activate();
    if (player.shutDown) return RunMessageLoop();  // ended while an error box was open
    showCommand = RestorePlace(window.Handle(), player.state.shell.options, showCommand);
    interruptedWindow = window.Handle();
    OnInterrupt([] { PostMessageW(interruptedWindow, WM_COMMAND, kExitCommand, 0); });
    ShowWindow(window.Handle(), showCommand);
    UpdateWindow(window.Handle());
    return RunMessageLoop();
}

void TellFailure(const std::string& failure) {
    PrintErrorLine(failure);
    ShowErrorBox(failure);
}

}  // namespace
}  // namespace hullrider

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int showCommand) {
    using namespace hullrider;
    AttachParentConsole();
    const auto run = [&](const RunOptions& options) { return Run(instance, showCommand, options); };
    const int exitCode = RunFront(CommandLineArguments(), run, TellFailure);
    ReleaseConsole();
    return exitCode;
}
