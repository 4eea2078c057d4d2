// Favorite Options: the favorites and how often each is drawn. The table asks for the texts of the rows that it shows,
// so that it opens at once however many there are.
#include <algorithm>

#include "dialogs/dialog_kinds_win.h"
#include "dialogs/favorites_rows.h"
#include "dialogs/table_win.h"
#include "library/favorites.h"
#include "library/favorites_file.h"
#include "platform/file_chooser_win.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr int kWidth = 680, kHeight = 440, kWideButton = 140;
constexpr int kInner = kWidth - 2 * kMargin;
constexpr int kButtonLeft = kWidth - kMargin - kWideButton;
constexpr int kListWidth = kButtonLeft - kGap - kMargin;
constexpr int kListTop = 66, kListHeight = 332;
constexpr int kAlbumWidth = 160, kKindWidth = 94, kCountWidth = 72;

class FavoritesDialog : public Dialog {
public:
    explicit FavoritesDialog(SharedHost host) : host_(std::move(host)) {}

protected:
    Size ClientSize() const override { return {kWidth, kHeight, true}; }

    void AddControls() override {
        UseHeadingFont(AddLabel({kMargin, kMargin, kInner, 26}, "Favorites"));
        AddLabel({kMargin, 40, kInner, kLineHeight, kGrowWide},
                 "A favorite with the count 3 is drawn four times as often as a song that is none.");
        AddList();
        play_ = AddSideButton(0, "&Play Now", [this] { Play(); });
        up_ = AddSideButton(1, "Count &Up  (+)", [this] { ChangeCount(1); });
        down_ = AddSideButton(2, "Count &Down  (\xE2\x88\x92)", [this] { ChangeCount(-1); });
        remove_ = AddSideButton(3, "&Remove", [this] { Remove(); });
        AddSideButton(5, "&Merge from File...", [this] { Merge(); });
        clear_ = AddSideButton(6, "Clear &All Favorites", [this] { Clear(); });
        status_ = AddLabel({kMargin, kListTop + kListHeight + kGap, kListWidth, kLineHeight, kGrowWide | kMoveDown}, "",
                           kOneLine);
        AddButton({kButtonLeft, kHeight - kMargin - kButtonHeight, kWideButton, kButtonHeight, kMoveRight | kMoveDown},
                  "&Close", [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

    // Every change of the favorites, whoever makes it, is followed by a recount.
    void Refresh() override {
        if (shownRevision_ != host_->state.library.revision || rows_.size() != Favorites().list.size()) ShowRows();
    }

    bool OnKey(WPARAM key) override {
        if (GetFocus() != list_ || GetKeyState(VK_MENU) < 0 || GetKeyState(VK_CONTROL) < 0) return false;
        switch (key) {
            case VK_RETURN:
                if (!KeyIsRepeated()) Play();
                return true;
            case VK_DELETE:
                if (!KeyIsRepeated()) Remove();
                return true;
            case VK_ADD:
            case VK_OEM_PLUS:
                ChangeCount(1);
                return true;
            case VK_SUBTRACT:
            case VK_OEM_MINUS:
                ChangeCount(-1);
                return true;
            default:
                return false;
        }
    }

private:
    FavoritesState& Favorites() const { return host_->state.favorites; }

    void AddList() {
        list_ = AddTable(
            {kMargin, kListTop, kListWidth, kListHeight, kGrowWide | kGrowHigh},
            {{"Song", 200}, {"Album", kAlbumWidth}, {"Kind", kKindWidth}, {"Count", kCountWidth}},
            [this](const NMHDR& notice) { return OnList(notice); }, LVS_OWNERDATA);
        AlignRight(list_, static_cast<int>(FavoriteColumn::kCount));
    }

    HWND AddSideButton(int row, const char* text, Procedure onClick) {
        return AddButton({kButtonLeft, kListTop + row * (kButtonHeight + 6), kWideButton, kButtonHeight, kMoveRight},
                         text, std::move(onClick));
    }

    LRESULT OnList(const NMHDR& notice) {
        switch (notice.code) {
            case LVN_GETDISPINFOW:
                GiveText(reinterpret_cast<const NMLVDISPINFOW&>(notice).item);
                return 0;
            case LVN_ODFINDITEMW: {
                const auto& search = reinterpret_cast<const NMLVFINDITEMW&>(notice);
                if ((search.lvfi.flags & (LVFI_PARAM | LVFI_NEARESTXY)) != 0) return -1;
                return FindFavoriteRow(rows_, Utf8FromWide(search.lvfi.psz), search.iStart);
            }
            case LVN_COLUMNCLICK:
                order_ = OrderAfterClick(
                    order_, static_cast<FavoriteColumn>(reinterpret_cast<const NMLISTVIEW&>(notice).iSubItem));
                ShowRows();
                return 0;
            case LVN_ITEMCHANGED:
                ShowWhatApplies();
                return 0;
            case NM_DBLCLK:
                Play();
                return 0;
            case NM_CUSTOMDRAW:
                return Color(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(notice)));
            default:
                return 0;
        }
    }

    void GiveText(const LVITEMW& item) const {
        if ((item.mask & LVIF_TEXT) == 0 || item.cchTextMax <= 0) return;
        item.pszText[0] = L'\0';
        if (item.iItem < 0 || static_cast<size_t>(item.iItem) >= rows_.size()) return;
        const std::string text =
            CellText(rows_[static_cast<size_t>(item.iItem)], static_cast<FavoriteColumn>(item.iSubItem));
        lstrcpynW(item.pszText, WideFromUtf8(text).c_str(), item.cchTextMax);
    }

    // What cannot be played now is gray.
    LRESULT Color(NMLVCUSTOMDRAW& draw) const {
        if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
        const size_t at = draw.nmcd.dwItemSpec;
        if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && at < rows_.size() && !rows_[at].IsInLibrary()) {
            draw.clrText = GetSysColor(COLOR_GRAYTEXT);
        }
        return CDRF_DODEFAULT;
    }

    const FavoriteRow* Selected() const {
        const int at = SelectedRow(list_);
        return at < 0 || static_cast<size_t>(at) >= rows_.size() ? nullptr : &rows_[static_cast<size_t>(at)];
    }

    // The same favorite stays selected wherever it goes; of one that is gone, the next takes the place.
    void ShowRows() {
        const int placeBefore = SelectedRow(list_);
        const FavoriteRow* const before = Selected();
        const std::string path = before == nullptr ? std::string() : before->path;
        shownRevision_ = host_->state.library.revision;
        rows_ = MakeFavoriteRows(Favorites(), order_);
        SendMessageW(list_, LVM_SETITEMCOUNT, rows_.size(), LVSICF_NOSCROLL);
        int place = RowOfFavorite(rows_, path);
        if (place < 0) place = std::min(std::max(placeBefore, 0), static_cast<int>(rows_.size()) - 1);
        if (place != placeBefore) SelectRow(list_, -1);
        if (place >= 0) SelectRow(list_, place);
        ShowSortColumn(list_, static_cast<int>(order_.column), order_.isDescending);
        InvalidateRect(list_, nullptr, FALSE);
        ShowStatus("");
        ShowWhatApplies();
    }

    void ShowStatus(const std::string& remark) { SetText(status_, remark.empty() ? FavoritesSummary(rows_) : remark); }

    void ShowWhatApplies() const {
        const FavoriteRow* const row = Selected();
        Enable(play_, row != nullptr && row->IsInLibrary(), list_);
        Enable(up_, row != nullptr, list_);
        Enable(down_, row != nullptr && row->count > 1, list_);
        Enable(remove_, row != nullptr, list_);
        Enable(clear_, !rows_.empty(), list_);
    }

    void Play() {
        Refresh();  // a scan may have moved the song since
        const FavoriteRow* const row = Selected();
        if (row != nullptr && row->IsInLibrary()) host_->playSong(row->position);
    }

    void TakeChange() {
        host_->recountSongs();
        ShowRows();
    }

    // Down to 1: what has nothing left is removed by its own button only.
    void ChangeCount(int step) {
        const FavoriteRow* const row = Selected();
        if (row == nullptr) return;
        const int64_t count = std::clamp<int64_t>(int64_t{row->count} + step, 1, INT32_MAX);
        if (count == row->count) return;
        SetFavoriteCountAt(Favorites(), host_->state.library, row->path, static_cast<int32_t>(count));
        TakeChange();
    }

    void Remove() {
        const FavoriteRow* const row = Selected();
        if (row == nullptr) return;
        SetFavoriteCountAt(Favorites(), host_->state.library, row->path, 0);
        TakeChange();
    }

    void Clear() {
        if (!Confirm("Clear all favorites? Every song is drawn as often as any other again. This cannot be undone.")) {
            return;
        }
        ClearFavorites(Favorites(), host_->state.library);
        TakeChange();
    }

    void Merge() {
        const HWND window = Window();
        const std::optional<std::string> chosen =
            ChooseFile(window, "Choose a favorites file to merge", "Favorites (favorite.json)", "*.json");
        if (!chosen || IsWindow(window) == 0) return;
        const size_t before = Favorites().list.size();
        const FavoritesLoad load = LoadFavorites(*chosen, Favorites());
        MatchFavorites(Favorites(), host_->state.library);
        TakeChange();
        ShowStatus(MergeText(load, Favorites().list.size() - before));
    }

    SharedHost host_;
    FavoriteOrder order_;
    std::vector<FavoriteRow> rows_;
    uint64_t shownRevision_ = UINT64_MAX;
    HWND list_ = nullptr, status_ = nullptr;
    HWND play_ = nullptr, up_ = nullptr, down_ = nullptr, remove_ = nullptr, clear_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeFavoritesDialog(const SharedHost& host) {
    return std::make_unique<FavoritesDialog>(host);
}

}  // namespace hullrider
