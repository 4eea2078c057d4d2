#include "platform/file_chooser_win.h"

#include <shobjidl.h>

#include <memory>

#include "platform/console.h"
#include "platform/message_box.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};

template <typename T>
using ComPtr = std::unique_ptr<T, Releaser>;

// Initializes COM on this thread for its lifetime.
class ComSession {
public:
    ComSession() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComSession() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComSession(const ComSession&) = delete;
    ComSession& operator=(const ComSession&) = delete;

private:
    HRESULT result_;
};

ComPtr<IFileOpenDialog> MakeChooser(const std::string& title, FILEOPENDIALOGOPTIONS more) {
    IFileOpenDialog* chooser = nullptr;
    const HRESULT result = CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                                            reinterpret_cast<void**>(&chooser));
    if (FAILED(result)) {
        PrintErrorLine("Failed to open the file dialog: " + SystemErrorText(static_cast<DWORD>(result)));
        return nullptr;
    }
    FILEOPENDIALOGOPTIONS options = 0;
    chooser->GetOptions(&options);
    chooser->SetOptions(options | more | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR | FOS_PATHMUSTEXIST);
    chooser->SetTitle(WideFromUtf8(title).c_str());
    return ComPtr<IFileOpenDialog>(chooser);
}

std::optional<std::string> PathOf(IShellItem& item) {
    wchar_t* wide = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &wide))) return std::nullopt;
    std::string path = Utf8FromWide(wide);
    CoTaskMemFree(wide);
    return path;
}

std::optional<std::string> Ask(HWND owner, IFileOpenDialog& chooser) {
    const ModalOperation modal;
    if (FAILED(chooser.Show(owner))) return std::nullopt;  // also when the user has canceled
    IShellItem* item = nullptr;
    if (FAILED(chooser.GetResult(&item))) return std::nullopt;
    return PathOf(*ComPtr<IShellItem>(item));
}

}  // namespace

std::optional<std::string> ChooseFolder(HWND owner, const std::string& title, const std::string& startAt) {
    const ComSession com;
    const ComPtr<IFileOpenDialog> chooser = MakeChooser(title, FOS_PICKFOLDERS);
    if (chooser == nullptr) return std::nullopt;
    IShellItem* start = nullptr;
    if (!startAt.empty() && SUCCEEDED(SHCreateItemFromParsingName(WideFromUtf8(startAt).c_str(), nullptr,
                                                                  IID_IShellItem, reinterpret_cast<void**>(&start)))) {
        chooser->SetFolder(start);
        start->Release();
    }
    return Ask(owner, *chooser);
}

std::optional<std::string> ChooseFile(HWND owner, const std::string& title, const std::string& kind,
                                      const std::string& pattern) {
    const ComSession com;
    const ComPtr<IFileOpenDialog> chooser = MakeChooser(title, FOS_FILEMUSTEXIST);
    if (chooser == nullptr) return std::nullopt;
    const std::wstring wideKind = WideFromUtf8(kind), widePattern = WideFromUtf8(pattern);
    const COMDLG_FILTERSPEC filters[] = {{wideKind.c_str(), widePattern.c_str()}, {L"All files", L"*.*"}};
    chooser->SetFileTypes(2, filters);
    return Ask(owner, *chooser);
}

}  // namespace hullrider
