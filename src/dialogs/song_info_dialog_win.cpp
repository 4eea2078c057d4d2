// Song Information: what plays, what was heard in this run and of all time, the most played songs, and the latest ones.
#include <cmath>
#include <ctime>

#include "dialogs/option_windows_win.h"
#include "dialogs/share_bar_win.h"
#include "dialogs/song_info.h"
#include "dialogs/table_win.h"
#include "library/type_names.h"
#include "platform/clipboard_win.h"
#include "platform/text_win.h"
#include "playback/listening.h"

namespace hullrider {

namespace {

constexpr int kMostPlayedWidth = 330, kRecentWidth = 394, kKindsWidth = kMostPlayedWidth + kMargin + kRecentWidth;
constexpr int kKindsHeight = 118, kListHeight = 120;
constexpr int kBarHeight = 20, kSwatch = 12, kLegendWidth = 172;

// In the order of their names.
constexpr std::array<COLORREF, kTypeNames.size()> kKindColors{kMidiColor, kAudioFileColor, kTrackerColor,
                                                              kStationColor};

// Columns of names grow, columns of numbers and times keep their widths.
template <size_t count>
std::vector<TableColumn> Columns(const std::array<const char*, count>& headings, const std::array<int, count>& widths,
                                 const std::array<bool, count>& grows) {
    std::vector<TableColumn> columns;
    for (size_t i = 0; i < count; ++i) columns.push_back({headings[i], widths[i], grows[i]});
    return columns;
}

class SongInfoDialog : public Dialog {
public:
    explicit SongInfoDialog(const AppState& app) : app_(app) {}

protected:
    Form MakeForm() override {
        Form playing = AddPlaying();
        Form totals = AddTotals();
        Form songs = AddSongs();
        AlignWidths(playingNames_);
        const HWND copy = AddButton("Co&py", [this] { Copy(); });
        copied_ = AddLine();
        return Column({playing, totals, songs, Row({copy, GrowWide(copied_), AddCloseButton()})});
    }

    void Refresh() override {
        TakeInfo();
        for (size_t i = 0; i < playing_.size(); ++i) SetText(playing_[i], info_.playing[i]);
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
        UpdateSongInfo(info_, app_, StatisticsSoFar(app_), static_cast<int64_t>(std::time(nullptr)));
        info_.playing = MakePlayingInfo(app_, picker_, ReadChannelFacts(app_.playback, app_.soundFonts));
    }

    // What plays: names and values in two columns, and below them those that may be long.
    Form AddPlaying() {
        constexpr size_t kRows = 4;
        std::vector<Form> columns{AddPlayingRows(0, kRows), AddPlayingRows(kRows, 2 * kRows)};
        Form below = AddPlayingRows(2 * kRows, kPlayingNames.size());
        return WithGap(2, Column({WithGap(kMargin, Row(std::move(columns))), below}));
    }

    Form AddPlayingRows(size_t begin, size_t end) {
        std::vector<Form> names, values;
        for (size_t i = begin; i < end; ++i) {
            names.push_back(AddLabel(kPlayingNames[i]));
            values.push_back(playing_[i] = AddLine());
            playingNames_.push_back(static_cast<HWND>(names.back().control));
        }
        Form wide = GrowWide(WithGap(2, Column(std::move(values))));
        return GrowWide(Row({WithGap(2, Column(std::move(names))), wide}));
    }

    Form AddTotals() {
        const HWND kinds =
            AddTable({kKindsWidth, kKindsHeight},
                     Columns(kKindColumns, {222, 104, 104, 96, 110, 96}, {true, true, true, true, true, true}), {});
        for (int column = 1; column < static_cast<int>(kKindColumns.size()); ++column) AlignRight(kinds, column);
        kinds_ = TextTable(kinds);
        Form caption = AddLabel("Time heard, by kind");
        chart_ =
            AddCanvas({kKindsWidth, 2 * kBarHeight + kGap}, [this](HDC dc, const RECT& box) { PaintChart(dc, box); });
        library_ = AddLine();
        runs_ = AddLine();
        return WithGap(2, Column({kinds, caption, chart_, library_, runs_}));
    }

    Form AddSongs() {
        const HWND mostPlayed = AddTable({kMostPlayedWidth, kListHeight},
                                         Columns(kMostPlayedColumns, {150, 104, 60}, {true, true, false}), {});
        AlignRight(mostPlayed, 2);
        mostPlayed_ = TextTable(mostPlayed);
        const HWND recent =
            AddTable({kRecentWidth, kListHeight}, Columns(kRecentColumns, {118, 146, 114}, {false, true, true}), {});
        recent_ = TextTable(recent);
        return WithGap(kMargin, Row({Grow(mostPlayed), Grow(recent)}));
    }

    // The bar with its legend below.
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
        SetText(copied_, isCopied ? "Copied as text." : "Another program is using the clipboard.");
    }

    const AppState& app_;
    PickerState picker_;  // its lists serve the chances
    std::array<HWND, kPlayingNames.size()> playing_{};
    std::vector<HWND> playingNames_;
    TextTable kinds_, mostPlayed_, recent_;
    SongInfo info_;
    std::array<double, 4> painted_{};  // the shares in the chart
    HWND chart_ = nullptr, library_ = nullptr, runs_ = nullptr, copied_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeSongInfoDialog(const AppState& app) {
    return std::make_unique<SongInfoDialog>(app);
}

}  // namespace hullrider
