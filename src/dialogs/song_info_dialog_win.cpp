// Song Information: what was heard in this run and in all, the songs played most, and the latest ones.
#include <cmath>
#include <ctime>

#include "dialogs/dialog_kinds_win.h"
#include "dialogs/share_bar_win.h"
#include "dialogs/song_info.h"
#include "dialogs/table_win.h"
#include "library/type_names.h"
#include "platform/clipboard_win.h"
#include "platform/text_win.h"
#include "playback/listening.h"

namespace hullrider {

namespace {

constexpr int kWidth = 760, kHeight = 548, kInner = kWidth - 2 * kMargin;
constexpr int kMostPlayedWidth = 330, kRecentWidth = kInner - kMostPlayedWidth - kMargin;
constexpr int kBarHeight = 20, kSwatch = 12, kLegendWidth = 172;

// In the order of their names.
constexpr std::array<COLORREF, kTypeNames.size()> kKindColors{kMidiColor, kAudioFileColor, kTrackerColor,
                                                              kStationColor};

template <size_t count>
std::vector<std::pair<std::string, int>> Columns(const std::array<const char*, count>& headings,
                                                 const std::array<int, count>& widths) {
    std::vector<std::pair<std::string, int>> columns;
    for (size_t i = 0; i < count; ++i) columns.emplace_back(headings[i], widths[i]);
    return columns;
}

class SongInfoDialog : public Dialog {
public:
    explicit SongInfoDialog(SharedHost host) : host_(std::move(host)) {}

protected:
    Size ClientSize() const override { return {kWidth, kHeight, true}; }

    void AddControls() override {
        AddTotals();
        AddSongs();
        AddButton({kMargin, kHeight - 40, kButtonWidth, kButtonHeight, kMoveDown}, "Co&py", [this] { Copy(); });
        copied_ = AddLabel({kMargin + kButtonWidth + kGap, kHeight - 36, 300, kLineHeight, kMoveDown}, "");
        AddButton({kWidth - kMargin - kButtonWidth, kHeight - 40, kButtonWidth, kButtonHeight, kMoveRight | kMoveDown},
                  "&Close", [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

    void Refresh() override {
        TakeInfo();
        kinds_.Show(info_.kinds);
        mostPlayed_.Show(info_.mostPlayed);
        recent_.Show(info_.recent);
        SetText(library_, info_.library);
        SetText(runs_, info_.thisRun + ".   " + info_.allTime + ".");
        if (info_.timeShare != painted_) InvalidateRect(chart_, nullptr, FALSE);
        painted_ = info_.timeShare;
    }

private:
    void TakeInfo() {
        UpdateSongInfo(info_, host_->state, StatisticsSoFar(host_->state), static_cast<int64_t>(std::time(nullptr)));
    }

    void AddTotals() {
        const HWND kinds = AddTable({kMargin, kMargin, kInner, 140, kGrowWide},
                                    Columns(kKindColumns, {222, 104, 104, 96, 110, 96}), {});
        for (int column = 1; column < static_cast<int>(kKindColumns.size()); ++column) AlignRight(kinds, column);
        kinds_ = TextTable(kinds);
        AddLabel({kMargin, 160, kInner, kLineHeight}, "Time heard, by kind");
        chart_ = AddCanvas({kMargin, 180, kInner, 2 * kBarHeight + kGap, kGrowWide},
                           [this](HDC dc, const RECT& box) { PaintChart(dc, box); });
        library_ = AddLabel({kMargin, 236, kInner, kLineHeight, kGrowWide}, "");
        runs_ = AddLabel({kMargin, 256, kInner, kLineHeight, kGrowWide}, "");
    }

    void AddSongs() {
        constexpr int kTop = 284, kTableHeight = kHeight - kTop - 52;
        const HWND mostPlayed = AddTable({kMargin, kTop, kMostPlayedWidth, kTableHeight, kGrowHigh},
                                         Columns(kMostPlayedColumns, {150, 104, 52}), {});
        AlignRight(mostPlayed, 2);
        mostPlayed_ = TextTable(mostPlayed);
        recent_ = TextTable(
            AddTable({2 * kMargin + kMostPlayedWidth, kTop, kRecentWidth, kTableHeight, kGrowWide | kGrowHigh},
                     Columns(kRecentColumns, {112, 146, 114}), {}));
    }

    // The bar, and below it what its colors mean.
    void PaintChart(HDC dc, const RECT& box) const {
        std::array<BarPart, kKindColors.size()> parts;
        for (size_t i = 0; i < parts.size(); ++i) parts[i] = {info_.timeShare[i], kKindColors[i]};
        RECT bar = box;
        bar.bottom = bar.top + Pixels(kBarHeight);
        PaintShareBar(dc, bar, parts);
        for (size_t i = 0; i < kKindColors.size(); ++i) {
            const int left = static_cast<int>(box.left) + Pixels(static_cast<int>(i) * kLegendWidth);
            const int top = static_cast<int>(bar.bottom) + Pixels(kGap + (kBarHeight - kSwatch) / 2);
            FillWith(dc, {left, top, left + Pixels(kSwatch), top + Pixels(kSwatch)}, kKindColors[i]);
            RECT text{left + Pixels(kSwatch + kGap), bar.bottom + Pixels(kGap), left + Pixels(kLegendWidth),
                      box.bottom};
            const std::string percent = std::to_string(std::lround(info_.timeShare[i] * 100.0)) + " %";
            const std::wstring wide = WideFromUtf8(std::string(kTypeNames[i].many) + "  " + percent);
            DrawTextW(dc, wide.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        }
    }

    void Copy() {
        TakeInfo();
        const bool isCopied = CopyToClipboard(Window(), SongInfoText(info_));
        SetText(copied_, isCopied ? "Copied as text." : "Another program keeps the clipboard.");
    }

    SharedHost host_;
    TextTable kinds_, mostPlayed_, recent_;
    SongInfo info_;
    std::array<double, 4> painted_{};  // the shares in the chart
    HWND chart_ = nullptr, library_ = nullptr, runs_ = nullptr, copied_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeSongInfoDialog(const SharedHost& host) {
    return std::make_unique<SongInfoDialog>(host);
}

}  // namespace hullrider
