#include "platform/dropped_files_win.h"

#include "platform/text_win.h"

namespace hullrider {

std::vector<std::string> TakeDroppedPaths(HDROP drop) {
    std::vector<std::string> paths(DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0));
    for (size_t i = 0; i < paths.size(); ++i) {
        const auto index = static_cast<UINT>(i);
        std::wstring path(DragQueryFileW(drop, index, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, index, path.data(), static_cast<UINT>(path.size())));
        paths[i] = Utf8FromWide(path);
    }
    DragFinish(drop);
    return paths;
}

}  // namespace hullrider
