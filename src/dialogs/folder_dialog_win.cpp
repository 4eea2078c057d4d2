// Folder Information: the music folders, in the order in which they are scanned, and the folder of the SoundFonts.
#include <algorithm>
#include <map>

#include "dialogs/folder_offer.h"
#include "dialogs/folder_rows.h"
#include "dialogs/option_windows_win.h"
#include "dialogs/table_win.h"
#include "platform/file_chooser_win.h"
#include "platform/folder.h"
#include "platform/post.h"
#include "platform/worker.h"

namespace hullrider {

namespace {

constexpr int kFolderWidth = 280, kListHeight = 190;

class FolderDialog : public Dialog {
public:
    explicit FolderDialog(FolderPorts ports) : ports_(std::move(ports)) {}

protected:
    Form MakeForm() override {
        Form music = AddMusicFolders();
        Form fonts = AddSoundFonts();
        return Column({music, fonts, Row({Spring(), AddCloseButton()})});
    }

    void Refresh() override {
        const std::optional<int32_t> found = ports_.songsFoundByScan();
        SetText(status_, LibraryText(found, ports_.library));
        if (found.has_value() != isScanning_) ShowProgress(found.has_value());
        if (Folders() != shownFolders_ || ports_.library.revision != shownRevision_) ShowFolders();
        SetText(fontFolder_, ports_.soundFontFolder);
        if (fontRemark_.empty()) SetText(fontStatus_, SoundFontText(ports_.soundFonts.size()));
    }

    bool OnKey(WPARAM key) override {
        if (key != VK_DELETE || GetFocus() != list_) return false;
        if (!KeyIsRepeated()) Remove();
        return true;
    }

private:
    std::vector<std::string>& Folders() const { return ports_.musicFolders; }

    Form AddMusicFolders() {
        Form heading = AddHeading("Music folders");
        Form hint = AddLabel("Every folder inside a music folder is an album; the songs in it are played.");
        const int holdsWidth = TextWidth("9,999 albums, 9,999,999 songs") + 2 * kMargin;
        list_ =
            AddTable({kFolderWidth + holdsWidth, kListHeight}, {{"Folder", kFolderWidth}, {"Holds", holdsWidth, false}},
                     [this](const NMHDR& notice) { return OnList(notice); });
        table_ = TextTable(list_);
        const HWND add = AddButton("&Add...", [this] { Add(); });
        remove_ = AddButton("&Remove", [this] { Remove(); });
        up_ = AddButton("Move &Up", [this] { Move(-1); });
        down_ = AddButton("Move &Down", [this] { Move(1); });
        rescan_ = AddButton("Re&scan", [this] { Scan(); });
        status_ = AddLine();
        bar_ = AddProgressBar();
        remarkLine_ = AddLine();
        offerButton_ = AddButton("", [this] { TakeOffer(); });
        ShowWindow(offerButton_, SW_HIDE);
        ShowProgress(false);
        Form buttons = WithGap(6, Column({add, remove_, up_, down_, rescan_}));
        return Column(
            {heading, hint, Row({Grow(list_), buttons}), Row({GrowWide(status_), bar_}), remarkLine_, offerButton_});
    }

    Form AddSoundFonts() {
        Form heading = AddHeading("SoundFonts");
        Form hint = AddLabel("MIDI songs are played with the SoundFonts (.sf2) in this &folder:");
        fontFolder_ = AddEdit(kFolderWidth, ES_READONLY, {}, {});
        const HWND browse = AddButton("&Browse...", [this] { BrowseSoundFonts(); });
        fontStatus_ = AddLine();
        return Column({heading, hint, Row({GrowWide(fontFolder_), browse}), fontStatus_});
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
        offers_.clear();  // the folders may have changed
        SendMessageW(bar_, PBM_SETMARQUEE, isScanning ? TRUE : FALSE, 40);
        ShowWindow(bar_, isScanning ? SW_SHOWNA : SW_HIDE);
        ShowFolders();
    }

    void ShowFolders() {
        shownFolders_ = Folders();
        shownRevision_ = ports_.library.revision;
        rows_ = MakeFolderRows(shownFolders_, ports_.library, isScanning_);
        TextTable::Rows cells;
        for (const FolderRow& row : rows_) cells.push_back({row.path, row.holds});
        isFilling_ = true;
        table_.Show(cells);
        if (SelectedRow(list_) < 0 && !rows_.empty()) SelectRow(list_, 0);
        isFilling_ = false;
        ShowWhatApplies();
    }

    // The remark on the last change stays until another folder is selected or the scan has a remark on this one.
    void ShowWhatApplies() {
        const int at = SelectedRow(list_);
        const auto count = static_cast<int>(rows_.size());
        const bool isSelected = at >= 0 && at < count;
        const FolderOffer offer = isSelected ? OfferFor(rows_[static_cast<size_t>(at)]) : FolderOffer();
        SetText(remarkLine_, remark_.empty() || (isTaken_ && !offer.remark.empty()) ? offer.remark : remark_);
        ShowOffer(offer.button);
        EnableControl(remove_, isSelected, list_);
        EnableControl(up_, isSelected && at > 0, list_);
        EnableControl(down_, isSelected && at + 1 < count, list_);
        EnableControl(rescan_, count > 0, list_);
    }

    // What to say of the row, and to offer. Looks further into a folder without songs, once.
    FolderOffer OfferFor(const FolderRow& row) {
        if (!row.isEmpty) return {row.remark, "", {}};
        const auto known = offers_.find(row.path);
        if (known != offers_.end()) return known->second;
        LookInto(row.path);
        return {row.remark + " Looking further down...", "", {}};
    }

    void LookInto(const std::string& path) {
        if (lookingInto_ == path) return;
        lookingInto_ = path;
        look_.Start([this, path](const std::stop_token& stop) {
            const AlbumSearch search = SearchAlbums(path, stop);
            Post([this, path, search] {
                lookingInto_.clear();
                offers_[path] = MakeFolderOffer(search, Folders());
                ShowWhatApplies();
            });
        });
    }

    void ShowOffer(std::string text) {
        // "&" in a path is no mark of a key.
        for (size_t at = text.find('&'); at != std::string::npos; at = text.find('&', at + 2)) text.insert(at, 1, '&');
        SetText(offerButton_, text);
        if (text.empty() && GetFocus() == offerButton_) SetFocus(list_);
        ShowWindow(offerButton_, text.empty() ? SW_HIDE : SW_SHOWNA);
    }

    // The folders of the offer take the place of the one without songs.
    void TakeOffer() {
        const int at = SelectedRow(list_);
        if (at < 0 || at >= static_cast<int>(rows_.size()) || shownFolders_ != Folders()) return;
        const auto offer = offers_.find(rows_[static_cast<size_t>(at)].path);
        if (offer == offers_.end() || offer->second.folders.empty()) return;
        const std::vector<std::string> folders = offer->second.folders;
        Folders().erase(Folders().begin() + at);
        Folders().insert(Folders().begin() + at, folders.begin(), folders.end());
        remark_.clear();
        TakeChange(at);
    }

    void Scan() {
        ports_.scanMusicFolders(true);
        Refresh();
    }

    void TakeChange(int toSelect) {
        ports_.scanMusicFolders(false);
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
            ChooseFolder(window, "Choose the folder of the SoundFonts", ports_.soundFontFolder);
        if (!chosen || IsWindow(window) == 0) return;
        const auto takeSoundFonts = ports_.takeSoundFonts;
        const bool isTaken = takeSoundFonts(*chosen);
        if (IsWindow(window) == 0) return;  // while an error box was open
        fontRemark_ = isTaken ? "" : "The folder was not changed: no usable SoundFont (.sf2) in " + *chosen;
        SetText(fontStatus_, fontRemark_);
        Refresh();
    }

    FolderPorts ports_;
    TextTable table_;
    std::vector<FolderRow> rows_;
    std::vector<std::string> shownFolders_;
    uint64_t shownRevision_ = 0;
    bool isScanning_ = false, isFilling_ = false, isTaken_ = false;
    std::string remark_, fontRemark_;
    std::map<std::string, FolderOffer> offers_;  // for folders without songs, as far as they were looked into
    std::string lookingInto_;
    Worker look_;
    HWND list_ = nullptr, remove_ = nullptr, up_ = nullptr, down_ = nullptr, rescan_ = nullptr;
    HWND offerButton_ = nullptr, status_ = nullptr, bar_ = nullptr, remarkLine_ = nullptr, fontFolder_ = nullptr,
         fontStatus_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeFolderDialog(FolderPorts ports) {
    return std::make_unique<FolderDialog>(std::move(ports));
}

}  // namespace hullrider
