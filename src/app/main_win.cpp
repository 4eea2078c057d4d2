// HullriderRadio.exe: the process entry of the player with its window.
#include <windows.h>
//
#include <commctrl.h>
#include <shellapi.h>
#include <shellscalingapi.h>

#include <exception>

#include "app/main_window_win.h"
#include "app/options.h"
#include "app/player.h"
#include "app/startup.h"
#include "audio/output_choice.h"
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
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

int Run(HINSTANCE instance, int showCommand, const RunOptions& options) {
    SetProcessDpiAwareness(PROCESS_PER_MONITOR_DPI_AWARE);
    ULONG_PTR gdiplusToken = 0;
    const Gdiplus::GdiplusStartupInput gdiplusInput;
    Gdiplus::GdiplusStartup(&gdiplusToken, &gdiplusInput, nullptr);
    const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), 255};
    InitCommonControlsEx(&controls);

    Player player;
    player.options = options;
    const HWND window = CreateMainWindow(instance, player);
    if (window == nullptr) return -1;

    StartPlayer(player);
    PrintLine("Output: " + OutputDescription());
    ActivateMainWindow(window, player);
    interruptedWindow = window;
    OnInterrupt([] { PostMessageW(interruptedWindow, WM_CLOSE, 0, 0); });
    ShowWindow(window, showCommand);
    UpdateWindow(window);
    const int exitCode = RunMessageLoop();

    Gdiplus::GdiplusShutdown(gdiplusToken);
    return exitCode;
}

int Main(HINSTANCE instance, int showCommand) {
    RunOptions options;
    std::string error;
    if (!ParseOptions(CommandLineArguments(), options, error)) {
        PrintErrorLine(error);
        return 2;
    }
    if (options.showHelp || options.showVersion) {
        PrintLine(options.showHelp ? HelpText() : VersionText());
        return 0;
    }
    try {
        return Run(instance, showCommand, options);
    } catch (const std::exception& failure) {
        PrintErrorLine(failure.what());
        ShowErrorBox(failure.what());
        return 1;
    }
}

}  // namespace
}  // namespace hullrider

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int showCommand) {
    hullrider::AttachParentConsole();
    const int exitCode = hullrider::Main(instance, showCommand);
    hullrider::ReleaseConsole();
    return exitCode;
}
