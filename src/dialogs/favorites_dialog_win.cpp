// Favorite Options: the favorites and how often each is drawn. The table asks for texts only of visible rows, so that
// it opens at once with any number of favorites.
#include <algorithm>

#include "dialogs/favorites_rows.h"
#include "dialogs/option_windows_win.h"
#include "dialogs/table_win.h"
#include "library/favorites.h"
#include "library/favorites_file.h"
#include "platform/file_chooser_win.h"
#include "platform/text_win.h"

namespace hullrider {

namespace {

constexpr int kSongWidth = 176, kAlbumWidth = 160, kKindWidth = 94, kCountWidth = 72;
constexpr int kListHeight = 332;

class FavoritesDialog : public Dialog {
public:
    explicit FavoritesDialog(FavoritesPorts ports) : ports_(std::move(ports)) {}

protected:
    Form MakeForm() override {
        Form heading = AddHeading("Favorites");
        Form hint = AddLabel("A favorite with the count 3 is drawn four times as often as other songs.");
        AddList();
        play_ = AddButton("&Play Now", [this] { Play(); });
        up_ = AddButton("Count &Up  (+)", [this] { ChangeCount(1); });
        down_ = AddButton("Count &Down  (\xE2\x88\x92)", [this] { ChangeCount(-1); });
        remove_ = AddButton("&Remove", [this] { Remove(); });
        const HWND merge = AddButton("&Merge from File...", [this] { Merge(); });
        clear_ = AddButton("Clear &All Favorites", [this] { Clear(); });
        status_ = AddLine();
        Form ofSong = WithGap(6, Column({play_, up_, down_, remove_}));
        Form ofAll = WithGap(6, Column({merge, clear_}));
        Form buttons = WithGap(4 * kGap, Column({ofSong, ofAll}));
        return Column({heading, hint, Row({Grow(list_), buttons}), Row({GrowWide(status_), AddCloseButton()})});
    }

    // Every change of the favorites, here or elsewhere, is followed by a recount.
    void Refresh() override {
        if (shownRevision_ != ports_.library.revision || rows_.size() != Favorites().list.size()) ShowRows();
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
    FavoritesState& Favorites() const { return ports_.favorites; }

    void AddList() {
        list_ = AddTable(
            {kSongWidth + kAlbumWidth + kKindWidth + kCountWidth, kListHeight},
            {{"Song", kSongWidth}, {"Album", kAlbumWidth}, {"Kind", kKindWidth, false}, {"Count", kCountWidth, false}},
            [this](const NMHDR& notice) { return OnList(notice); }, LVS_OWNERDATA);
        AlignRight(list_, static_cast<int>(FavoriteColumn::kCount));
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

    // Favorites that cannot be played now are gray.
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

    // Keeps the same favorite selected when it moves; if it is gone, selects the next one.
    void ShowRows() {
        const int placeBefore = SelectedRow(list_);
        const FavoriteRow* const before = Selected();
        const std::string path = before == nullptr ? std::string() : before->path;
        shownRevision_ = ports_.library.revision;
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
        EnableControl(play_, row != nullptr && row->IsInLibrary(), list_);
        EnableControl(up_, row != nullptr, list_);
        EnableControl(down_, row != nullptr && row->count > 1, list_);
        EnableControl(remove_, row != nullptr, list_);
        EnableControl(clear_, !rows_.empty(), list_);
    }

    void Play() {
        Refresh();  // a scan may have moved the song since
        const FavoriteRow* const row = Selected();
        if (row != nullptr && row->IsInLibrary()) ports_.playSong(row->position);
    }

    void TakeChange() {
        ports_.recountSongs();
        ShowRows();
    }

    // Not below 1: only the Remove button removes a favorite.
    void ChangeCount(int step) {
        const FavoriteRow* const row = Selected();
        if (row == nullptr) return;
        const int64_t count = std::clamp<int64_t>(int64_t{row->count} + step, 1, INT32_MAX);
        if (count == row->count) return;
        SetFavoriteCountAt(Favorites(), ports_.library, row->path, static_cast<int32_t>(count));
        TakeChange();
    }

    void Remove() {
        const FavoriteRow* const row = Selected();
        if (row == nullptr) return;
        SetFavoriteCountAt(Favorites(), ports_.library, row->path, 0);
        TakeChange();
    }

    void Clear() {
        if (!Confirm("Clear all favorites? All songs will be drawn equally often. This cannot be undone.")) {
            return;
        }
        ClearFavorites(Favorites(), ports_.library);
        TakeChange();
    }

    void Merge() {
        const HWND window = Window();
        const std::optional<std::string> chosen =
            ChooseFile(window, "Choose a favorites file to merge", "Favorites (favorite.json)", "*.json");
        if (!chosen || IsWindow(window) == 0) return;
        const size_t before = Favorites().list.size();
        const FavoritesLoad load = LoadFavorites(*chosen, Favorites());
        MatchFavorites(Favorites(), ports_.library);
        TakeChange();
        ShowStatus(MergeText(load, Favorites().list.size() - before));
    }

    FavoritesPorts ports_;
    FavoriteOrder order_;
    std::vector<FavoriteRow> rows_;
    uint64_t shownRevision_ = UINT64_MAX;
    HWND list_ = nullptr, status_ = nullptr;
    HWND play_ = nullptr, up_ = nullptr, down_ = nullptr, remove_ = nullptr, clear_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeFavoritesDialog(FavoritesPorts ports) {
    return std::make_unique<FavoritesDialog>(std::move(ports));
}

}  // namespace hullrider
