// Folder Information: the music folders, in the order in which they are scanned, and the folder of the SoundFonts.
#include <algorithm>

#include "dialogs/dialog_kinds_win.h"
#include "dialogs/folder_rows.h"
#include "dialogs/table_win.h"
#include "platform/file_chooser_win.h"
#include "platform/folder.h"

namespace hullrider {

namespace {

constexpr int kWidth = 600, kHeight = 468, kHoldsWidth = 172;
constexpr int kInner = kWidth - 2 * kMargin;
constexpr int kButtonLeft = kWidth - kMargin - kButtonWidth;
constexpr int kListWidth = kButtonLeft - kGap - kMargin;
constexpr int kListTop = 66, kListHeight = 190;
constexpr int kUnderList = kListTop + kListHeight + kGap;
constexpr int kFontTop = 322;

class FolderDialog : public Dialog {
public:
    explicit FolderDialog(SharedHost host) : host_(std::move(host)) {}

protected:
    Size ClientSize() const override { return {kWidth, kHeight, true}; }

    void AddControls() override {
        AddMusicFolders();
        AddSoundFonts();
        AddButton({kButtonLeft, kHeight - kMargin - kButtonHeight, kButtonWidth, kButtonHeight, kMoveRight | kMoveDown},
                  "&Close", [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

    void Refresh() override {
        const std::optional<int32_t> found = host_->songsFoundByScan();
        SetText(status_, LibraryText(found, host_->state.library));
        if (found.has_value() != isScanning_) ShowProgress(found.has_value());
        if (Folders() != shownFolders_ || host_->state.library.revision != shownRevision_) ShowFolders();
        SetText(fontFolder_, host_->state.folders.soundFontDirectoryPath);
        if (fontRemark_.empty()) SetText(fontStatus_, SoundFontText(host_->state.soundFonts.soundFontFiles.size()));
    }

    bool OnKey(WPARAM key) override {
        if (key != VK_DELETE || GetFocus() != list_) return false;
        if (!KeyIsRepeated()) Remove();
        return true;
    }

private:
    std::vector<std::string>& Folders() const { return host_->state.settings.directoryPaths; }

    void AddMusicFolders() {
        UseHeadingFont(AddLabel({kMargin, kMargin, kInner, 26}, "Music folders"));
        AddLabel({kMargin, 40, kInner, kLineHeight, kGrowWide},
                 "Every folder within a music folder is an album; the songs that lie in it are played.");
        list_ = AddTable({kMargin, kListTop, kListWidth, kListHeight, kGrowWide | kGrowHigh},
                         {{"Folder", kListWidth - kHoldsWidth - 24}, {"Holds", kHoldsWidth}},
                         [this](const NMHDR& notice) { return OnList(notice); });
        table_ = TextTable(list_);
        AddFolderButton(0, "&Add...", [this] { Add(); });
        remove_ = AddFolderButton(1, "&Remove", [this] { Remove(); });
        up_ = AddFolderButton(2, "Move &Up", [this] { Move(-1); });
        down_ = AddFolderButton(3, "Move &Down", [this] { Move(1); });
        rescan_ = AddFolderButton(4, "Re&scan", [this] { Scan(); });
        status_ = AddLabel({kMargin, kUnderList, kListWidth, kLineHeight, kMoveDown}, "", kOneLine);
        bar_ = AddProgressBar({kButtonLeft, kUnderList + 2, kButtonWidth, 14, kMoveRight | kMoveDown});
        remarkLine_ =
            AddLabel({kMargin, kUnderList + kLineHeight, kInner, kLineHeight, kGrowWide | kMoveDown}, "", kOneLine);
        ShowProgress(false);
    }

    HWND AddFolderButton(int row, const char* text, Procedure onClick) {
        return AddButton({kButtonLeft, kListTop + row * (kButtonHeight + 6), kButtonWidth, kButtonHeight, kMoveRight},
                         text, std::move(onClick));
    }

    void AddSoundFonts() {
        UseHeadingFont(AddLabel({kMargin, kFontTop, kInner, 26, kMoveDown}, "SoundFonts"));
        AddLabel({kMargin, kFontTop + 28, kInner, kLineHeight, kMoveDown},
                 "MIDI songs sound through the SoundFonts (.sf2) that lie in this &folder:");
        fontFolder_ =
            AddEdit({kMargin, kFontTop + 52, kListWidth, kFieldHeight, kGrowWide | kMoveDown}, ES_READONLY, {}, {});
        AddButton({kButtonLeft, kFontTop + 50, kButtonWidth, kButtonHeight, kMoveRight | kMoveDown}, "&Browse...",
                  [this] { BrowseSoundFonts(); });
        fontStatus_ = AddLabel({kMargin, kFontTop + 82, kListWidth, kLineHeight, kGrowWide | kMoveDown}, "", kOneLine);
    }

    LRESULT OnList(const NMHDR& notice) {
        if (notice.code == LVN_ITEMCHANGED && !isFilling_) {
            remark_.clear();
            ShowWhatApplies();
        }
        return 0;
    }

    void ShowProgress(bool isScanning) {
        isScanning_ = isScanning;
        SendMessageW(bar_, PBM_SETMARQUEE, isScanning ? TRUE : FALSE, 40);
        ShowWindow(bar_, isScanning ? SW_SHOWNA : SW_HIDE);
        ShowFolders();
    }

    void ShowFolders() {
        shownFolders_ = Folders();
        shownRevision_ = host_->state.library.revision;
        rows_ = MakeFolderRows(shownFolders_, host_->state.library, isScanning_);
        TextTable::Rows cells;
        for (const FolderRow& row : rows_) cells.push_back({row.path, row.holds});
        isFilling_ = true;
        table_.Show(cells);
        if (SelectedRow(list_) < 0 && !rows_.empty()) SelectRow(list_, 0);
        isFilling_ = false;
        ShowWhatApplies();
    }

    // What was said of the last change stands until another folder is selected, or the scan has told more of this one.
    void ShowWhatApplies() {
        const int at = SelectedRow(list_);
        const auto count = static_cast<int>(rows_.size());
        const bool isSelected = at >= 0 && at < count;
        const std::string found = isSelected ? rows_[static_cast<size_t>(at)].remark : std::string();
        SetText(remarkLine_, remark_.empty() || (isTaken_ && !found.empty()) ? found : remark_);
        Enable(remove_, isSelected, list_);
        Enable(up_, isSelected && at > 0, list_);
        Enable(down_, isSelected && at + 1 < count, list_);
        Enable(rescan_, count > 0, list_);
    }

    void Scan() {
        host_->scanMusicFolders(true);
        Refresh();
    }

    void TakeChange(int toSelect) {
        host_->scanMusicFolders(false);
        Refresh();
        isFilling_ = true;
        SelectRow(list_, std::min(toSelect, static_cast<int>(rows_.size()) - 1));
        isFilling_ = false;
        ShowWhatApplies();
    }

    void Add() {
        const HWND window = Window();
        const std::string beside = Folders().empty() ? std::string() : Folders().back();
        const std::optional<std::string> chosen = ChooseFolder(window, "Choose a music folder", beside);
        if (!chosen || IsWindow(window) == 0) return;
        const FolderVerdict verdict = JudgeFolder(Folders(), *chosen, IsFolder(*chosen));
        remark_ = verdict.remark;
        isTaken_ = verdict.isTaken;
        if (!verdict.isTaken) return ShowWhatApplies();
        Folders().push_back(*chosen);
        TakeChange(static_cast<int>(Folders().size()) - 1);
    }

    void Remove() {
        const int at = SelectedRow(list_);
        if (at < 0 || at >= static_cast<int>(Folders().size())) return;
        Folders().erase(Folders().begin() + at);
        remark_.clear();
        TakeChange(at);
    }

    void Move(int step) {
        const int at = SelectedRow(list_);
        remark_.clear();
        if (at >= 0 && MoveFolder(Folders(), static_cast<size_t>(at), step)) TakeChange(at + step);
    }

    void BrowseSoundFonts() {
        const HWND window = Window();
        const std::optional<std::string> chosen =
            ChooseFolder(window, "Choose the folder of the SoundFonts", host_->state.folders.soundFontDirectoryPath);
        if (!chosen || IsWindow(window) == 0) return;
        const SharedHost host = host_;
        const bool isTaken = host->takeSoundFonts(*chosen);
        if (IsWindow(window) == 0) return;  // while an error box was open
        fontRemark_ = isTaken ? "" : "The folder stays as it was: no usable SoundFont (.sf2) in " + *chosen;
        SetText(fontStatus_, fontRemark_);
        Refresh();
    }

    SharedHost host_;
    TextTable table_;
    std::vector<FolderRow> rows_;
    std::vector<std::string> shownFolders_;
    uint64_t shownRevision_ = 0;
    bool isScanning_ = false, isFilling_ = false, isTaken_ = false;
    std::string remark_, fontRemark_;
    HWND list_ = nullptr, remove_ = nullptr, up_ = nullptr, down_ = nullptr, rescan_ = nullptr;
    HWND status_ = nullptr, bar_ = nullptr, remarkLine_ = nullptr, fontFolder_ = nullptr, fontStatus_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeFolderDialog(const SharedHost& host) {
    return std::make_unique<FolderDialog>(host);
}

}  // namespace hullrider
