// Makes the dialogs; each is described where it is made. UI thread.
#pragma once

#include <memory>

#include "dialogs/dialog_host.h"
#include "dialogs/dialog_win.h"

namespace hullrider {

using SharedHost = std::shared_ptr<DialogHost>;

std::unique_ptr<Dialog> MakeRadioDialog(const SharedHost& host);
std::unique_ptr<Dialog> MakeAboutDialog(const SharedHost& host);
std::unique_ptr<Dialog> MakeFavoritesDialog(const SharedHost& host);
std::unique_ptr<Dialog> MakeFolderDialog(const SharedHost& host);
std::unique_ptr<Dialog> MakeHotkeyDialog(const SharedHost& host);
std::unique_ptr<Dialog> MakeSongInfoDialog(const SharedHost& host);

// For a subject that has no window yet: says so.
std::unique_ptr<Dialog> MakeNoticeDialog(std::string text);

}  // namespace hullrider
