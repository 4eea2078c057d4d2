// Radio Options: how long songs play, how the kinds are mixed, how soon a song may come again, and how loud it all is.
#include <algorithm>
#include <array>
#include <cmath>

#include "dialogs/number_field_win.h"
#include "dialogs/option_windows_win.h"
#include "dialogs/share_bar_win.h"
#include "library/song_counts.h"
#include "platform/text_win.h"
#include "playback/simulation.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr int kLongestSec = 36000, kLongestFadeMs = 60000, kMostSongsAFont = 1000;
constexpr int kWholeSongs = 0;      // as songPlayDurationMax
constexpr int kUsualLongest = 110;  // when "Play songs whole" is switched off
constexpr int kUsualDepth = 20;
constexpr int kHighestWeight = 100;

struct Weight {
    const char* label;
    Category category;
    int32_t Settings::*setting;
    COLORREF color;
};

// In the order in which the bar shows them.
constexpr std::array<Weight, 5> kWeights{{
    {"&MIDI", kMidiCategory, &Settings::rawMIDI, kMidiColor},
    {"A&udio files", kMp3Category, &Settings::rawMP3, kAudioFileColor},
    {"&Tracker modules", kTrackerCategory, &Settings::rawTracker, kTrackerColor},
    {"Fa&vorites", kFavoritesCategory, &Settings::rawFav, kFavoriteColor},
    {"&Internet radio", kRadioCategory, &Settings::rawRadio, kStationColor},
}};

class RadioDialog : public Dialog {
public:
    explicit RadioDialog(RadioPorts ports) : ports_(std::move(ports)) {}

protected:
    // Play times and variety on the left, mix and volume on the right.
    Form MakeForm() override {
        std::vector<Form> left{AddPlayTimes(), AddVariety()};
        std::vector<Form> right{AddMix(), AddVolumes()};
        for (const auto& column : {labels_, edits_, units_, mixLabels_}) AlignWidths(column);
        Form columns = WithGap(3 * kMargin, Row({WithGap(kMargin, Column(std::move(left))),
                                                 GrowWide(WithGap(kMargin, Column(std::move(right))))}));
        return Column({columns, Row({Spring(), AddCloseButton()})});
    }

    void Refresh() override {
        for (const NumberField& field : fields_) field.Show();
        SetChecked(whole_, Settings_().songPlayDurationMax <= kWholeSongs);
        SetChecked(noRepeat_, Settings_().historyDepth >= 0);
        SetChecked(follow_, ports_.app.playback.volume->realTimeVolume);
        ShowWhatApplies();
        ShowVolumes();
        ShowShares();
    }

private:
    Settings& Settings_() const { return ports_.app.settings; }

    // Adds a row of a grid with four columns: label, number, unit, remark.
    size_t AddField(std::vector<Form>& grid, const char* label, const char* unit, int lowest, int highest,
                    int32_t Settings::*setting) {
        labels_.push_back(AddLabel(label));
        const size_t at = fields_.size();
        const NumberControls controls = AddNumber(
            lowest, highest, [this, at] { fields_[at].OnChange(); }, [this, at] { fields_[at].OnLeave(); });
        edits_.push_back(controls.edit);
        units_.push_back(AddLabel(unit));
        const HWND remark = AddLine("0 to " + std::to_string(kLongestFadeMs));
        grid.insert(grid.end(), {labels_.back(), controls.Together(), units_.back(), remark});
        fields_.push_back(NumberField(controls, remark,
                                      {lowest, highest, [this, setting] { return Settings_().*setting; },
                                       [this, setting](int32_t value) {
                                           Settings_().*setting = value;
                                           TakeBounds();
                                       }}));
        return at;
    }

    Form AddPlayTimes() {
        Form heading = AddHeading("Play time");
        whole_ = AddCheckBox("Play songs &whole", false, [this] { ToggleWhole(); });
        std::vector<Form> grid;
        least_ = AddField(grid, "Songs play at &least", "seconds", 0, kLongestSec, &Settings::songPlayDurationMin);
        most_ = AddField(grid, "and at m&ost", "seconds", 1, kLongestSec, &Settings::songPlayDurationMax);
        stationLeast_ =
            AddField(grid, "&Stations play at least", "seconds", 0, kLongestSec, &Settings::iSongPlayDurationMin);
        stationMost_ = AddField(grid, "a&nd at most", "seconds", 1, kLongestSec, &Settings::iSongPlayDurationMax);
        AddField(grid, "Cross-&fade", "milliseconds", 0, kLongestFadeMs, &Settings::FADE_DURATION_MS);
        return Column({heading, whole_, Grid(4, std::move(grid))});
    }

    Form AddVariety() {
        Form heading = AddHeading("Variety");
        noRepeat_ = AddCheckBox("No song &repeat", false, [this] { ToggleNoRepeat(); });
        std::vector<Form> grid;
        depth_ = AddField(grid, "A son&g comes again after", "others", 0, kLongestSec, &Settings::historyDepth);
        AddField(grid, "New Soun&dFont every", "MIDI songs; 0: never", 0, kMostSongsAFont,
                 &Settings::songsBeforeSoundfontChange);
        return Column({heading, noRepeat_, Grid(4, std::move(grid))});
    }

    Form AddMix() {
        Form heading = AddHeading("Mix");
        std::vector<Form> grid;
        for (size_t i = 0; i < kWeights.size(); ++i) {
            const Weight& weight = kWeights[i];
            const HWND swatch =
                AddCanvas({12, 12}, [i](HDC dc, const RECT& box) { FillWith(dc, box, kWeights[i].color); });
            mixLabels_.push_back(AddLabel(weight.label));
            sliders_[i] = AddSlider(0, kHighestWeight, Settings_().*weight.setting, [this, i] { TakeWeight(i); });
            shares_[i] = AddLine("100 %");
            grid.insert(grid.end(), {Row({swatch, mixLabels_.back()}), GrowWide(sliders_[i]), shares_[i]});
        }
        bar_ = AddCanvas({0, 22}, [this](HDC dc, const RECT& box) { PaintBar(dc, box); });
        return Column({heading, WithGap(4, Grid(3, std::move(grid))), bar_});
    }

    Form AddVolumes() {
        Form heading = AddHeading("Volume");
        follow_ =
            AddCheckBox("Play every song e&qually loud, however it was mastered", false, [this] { ToggleFollow(); });
        std::vector<Form> grid;
        high_ = AddPreset(grid, "&High preset", highText_);
        low_ = AddPreset(grid, "Low &preset", lowText_);
        return Column({heading, follow_, WithGap(4, Grid(3, std::move(grid)))});
    }

    HWND AddPreset(std::vector<Form>& grid, const char* label, HWND& percent) {
        mixLabels_.push_back(AddLabel(label));
        const HWND slider = AddSlider(0, 100, 0, [this] { TakePresets(); });
        percent = AddLine("100 %");
        grid.insert(grid.end(), {mixLabels_.back(), GrowWide(slider), percent});
        return slider;
    }

    void ToggleWhole() {
        int32_t& longest = Settings_().songPlayDurationMax;
        longest = IsChecked(whole_) ? kWholeSongs : std::max(kUsualLongest, Settings_().songPlayDurationMin);
        Refresh();
    }

    void ToggleNoRepeat() {
        Settings_().historyDepth = IsChecked(noRepeat_) ? std::min(kUsualDepth, DeepestHistory()) : -1;
        Refresh();
    }

    void ToggleFollow() { SetLoudnessFollowing(ports_.app, IsChecked(follow_)); }

    // Leaves one song to draw.
    int32_t DeepestHistory() const {
        return static_cast<int32_t>(std::clamp<int64_t>(SongCountOf(ports_.app.library) - 1, 0, kLongestSec));
    }

    // A minimum may not exceed its maximum, and the history must leave a song to draw.
    void TakeBounds() {
        const Settings& settings = Settings_();
        fields_[least_].SetBounds(0, std::max(settings.songPlayDurationMax, 1));
        fields_[most_].SetBounds(std::max(settings.songPlayDurationMin, 1), kLongestSec);
        fields_[stationLeast_].SetBounds(0, std::max(settings.iSongPlayDurationMax, 1));
        fields_[stationMost_].SetBounds(std::max(settings.iSongPlayDurationMin, 1), kLongestSec);
        fields_[depth_].SetBounds(0, DeepestHistory());
    }

    void ShowWhatApplies() {
        TakeBounds();
        const bool isWindowed = Settings_().songPlayDurationMax > kWholeSongs;
        fields_[least_].Enable(isWindowed, whole_);
        fields_[most_].Enable(isWindowed, whole_);
        fields_[depth_].Enable(Settings_().historyDepth >= 0, noRepeat_);
    }

    void TakeWeight(size_t i) {
        Settings_().*kWeights[i].setting = static_cast<int32_t>(SendMessageW(sliders_[i], TBM_GETPOS, 0, 0));
        ports_.recountSongs();
        ShowShares();
    }

    void TakePresets() {
        Settings_().highVolume = static_cast<float>(SendMessageW(high_, TBM_GETPOS, 0, 0)) / 100.0F;
        Settings_().lowVolume = static_cast<float>(SendMessageW(low_, TBM_GETPOS, 0, 0)) / 100.0F;
        ShowVolumes();
    }

    void ShowVolumes() {
        const auto show = [](HWND slider, HWND text, float volume) {
            const auto percent = static_cast<int>(std::lround(volume * 100.0F));
            if (SendMessageW(slider, TBM_GETPOS, 0, 0) != percent) SendMessageW(slider, TBM_SETPOS, TRUE, percent);
            SetText(text, std::to_string(percent) + " %");
        };
        show(high_, highText_, Settings_().highVolume);
        show(low_, lowText_, Settings_().lowVolume);
    }

    // The shares that the weights yield with the music in the library.
    void ShowShares() {
        const std::array<double, 5> promised = CategoryShares(ports_.app, picker_);
        if (promised != promised_) InvalidateRect(bar_, nullptr, FALSE);
        promised_ = promised;
        for (size_t i = 0; i < kWeights.size(); ++i) {
            SetText(shares_[i], std::to_string(std::lround(ShareOf(i) * 100.0)) + " %");
            const int32_t weight = std::clamp(Settings_().*kWeights[i].setting, 0, kHighestWeight);
            if (SendMessageW(sliders_[i], TBM_GETPOS, 0, 0) != weight) {
                SendMessageW(sliders_[i], TBM_SETPOS, TRUE, weight);
            }
        }
    }

    double ShareOf(size_t i) const { return promised_[static_cast<size_t>(kWeights[i].category)]; }

    void PaintBar(HDC dc, const RECT& box) const {
        std::array<BarPart, kWeights.size()> parts;
        for (size_t i = 0; i < parts.size(); ++i) parts[i] = {ShareOf(i), kWeights[i].color};
        PaintShareBar(dc, box, parts);
    }

    RadioPorts ports_;
    std::vector<NumberField> fields_;
    size_t least_ = 0, most_ = 0, stationLeast_ = 0, stationMost_ = 0, depth_ = 0;
    std::vector<HWND> labels_, edits_, units_, mixLabels_;  // each list is equally wide
    std::array<HWND, 5> sliders_{}, shares_{};
    std::array<double, 5> promised_{};
    PickerState picker_;  // its lists serve the shares
    HWND whole_ = nullptr, noRepeat_ = nullptr, follow_ = nullptr, bar_ = nullptr;
    HWND high_ = nullptr, highText_ = nullptr, low_ = nullptr, lowText_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeRadioDialog(RadioPorts ports) {
    return std::make_unique<RadioDialog>(std::move(ports));
}

}  // namespace hullrider
