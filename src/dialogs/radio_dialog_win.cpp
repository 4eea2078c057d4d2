// Radio Options: how long songs play, how the kinds are mixed, how soon a song may come again, and how loud it all is.
#include <algorithm>
#include <array>
#include <cmath>

#include "dialogs/dialog_kinds_win.h"
#include "dialogs/number_field_win.h"
#include "dialogs/share_bar_win.h"
#include "library/song_counts.h"
#include "platform/text_win.h"
#include "playback/simulation.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

// Two columns: how long and how often at the left, what and how loud at the right. The second headings are in step.
constexpr int kLabelWidth = 164, kNumberWidth = 76, kUnitWidth = 128, kRemarkWidth = 80, kRow = 30;
constexpr int kUnitLeft = kMargin + kLabelWidth + kNumberWidth + kGap, kRemarkLeft = kUnitLeft + kUnitWidth + kGap;
constexpr int kRight = kRemarkLeft + kRemarkWidth + 2 * kMargin;
constexpr int kSliderLeft = kRight + 120, kSliderWidth = 220, kPercentLeft = kSliderLeft + kSliderWidth + kGap;
constexpr int kWidth = kPercentLeft + 48 + kMargin, kRightWidth = kWidth - kMargin - kRight;
constexpr int kSecondTop = 232, kButtonTop = 364, kHeight = kButtonTop + kButtonHeight + kMargin;
constexpr int kLongestSec = 36000, kLongestFadeMs = 60000, kMostSongsAFont = 1000;
constexpr int kWholeSongs = 0;      // as songPlayDurationMax
constexpr int kUsualLongest = 110;  // when songs are not to play whole any more
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
    {"Fa&vourites", kFavoritesCategory, &Settings::rawFav, kFavoriteColor},
    {"&Internet radio", kRadioCategory, &Settings::rawRadio, kStationColor},
}};

class RadioDialog : public Dialog {
public:
    explicit RadioDialog(SharedHost host) : host_(std::move(host)) {}

protected:
    Size ClientSize() const override { return {kWidth, kHeight}; }

    void AddControls() override {
        AddPlayTimes();
        AddRepeats();
        AddMix();
        AddVolumes();
        AddButton({kWidth - kMargin - kButtonWidth, kButtonTop, kButtonWidth, kButtonHeight}, "&Close",
                  [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

    void Refresh() override {
        for (const NumberField& field : fields_) field.Show();
        SetChecked(whole_, Settings_().songPlayDurationMax <= kWholeSongs);
        SetChecked(noRepeat_, Settings_().historyDepth >= 0);
        SetChecked(follow_, host_->state.playback.volume->realTimeVolume);
        ShowWhatApplies();
        ShowVolumes();
        ShowShares();
    }

private:
    Settings& Settings_() const { return host_->state.settings; }

    void AddHeading(int x, int y, const char* text) { UseHeadingFont(AddLabel({x, y, kRightWidth, 26}, text)); }

    // A labeled number with its unit, and room for a remark at its right.
    size_t AddField(int y, const char* label, const char* unit, int lowest, int highest, int32_t Settings::*setting) {
        AddLabel({kMargin, y + 3, kLabelWidth, kLineHeight}, label);
        const size_t at = fields_.size();
        const NumberControls controls = AddNumber(
            {kMargin + kLabelWidth, y, kNumberWidth, kFieldHeight}, lowest, highest,
            [this, at] { fields_[at].OnChange(); }, [this, at] { fields_[at].OnLeave(); });
        AddLabel({kUnitLeft, y + 3, kUnitWidth, kLineHeight}, unit);
        const HWND remark = AddLabel({kRemarkLeft, y + 3, kRemarkWidth, kLineHeight}, "");
        fields_.push_back(NumberField(controls, remark,
                                      {lowest, highest, [this, setting] { return Settings_().*setting; },
                                       [this, setting](int32_t value) {
                                           Settings_().*setting = value;
                                           TakeBounds();
                                       }}));
        return at;
    }

    void AddPlayTimes() {
        AddHeading(kMargin, kMargin, "Play time");
        whole_ = AddCheckBox({kMargin, 40, 300, kLineHeight}, "Play songs &whole", false, [this] { ToggleWhole(); });
        least_ = AddField(66, "Songs play at &least", "seconds", 0, kLongestSec, &Settings::songPlayDurationMin);
        most_ = AddField(66 + kRow, "and at m&ost", "seconds", 1, kLongestSec, &Settings::songPlayDurationMax);
        stationLeast_ = AddField(66 + 2 * kRow, "&Stations play at least", "seconds", 0, kLongestSec,
                                 &Settings::iSongPlayDurationMin);
        stationMost_ =
            AddField(66 + 3 * kRow, "a&nd at most", "seconds", 1, kLongestSec, &Settings::iSongPlayDurationMax);
        AddField(66 + 4 * kRow, "Cross-&fade", "milliseconds", 0, kLongestFadeMs, &Settings::FADE_DURATION_MS);
    }

    void AddMix() {
        AddHeading(kRight, kMargin, "Mix");
        int y = 40;
        for (size_t i = 0; i < kWeights.size(); ++i, y += 26) {
            AddCanvas({kRight, y + 5, 12, 12}, [i](HDC dc, const RECT& box) { FillWith(dc, box, kWeights[i].color); });
            AddLabel({kRight + 20, y + 2, kSliderLeft - kRight - 20, kLineHeight}, kWeights[i].label);
            sliders_[i] = AddSlider({kSliderLeft, y, kSliderWidth, 24}, 0, kHighestWeight,
                                    Settings_().*kWeights[i].setting, [this, i] { TakeWeight(i); });
            shares_[i] = AddPercent(y);
        }
        bar_ = AddCanvas({kRight, y + 4, kRightWidth, 22}, [this](HDC dc, const RECT& box) { PaintBar(dc, box); });
    }

    void AddRepeats() {
        AddHeading(kMargin, kSecondTop, "Variety");
        noRepeat_ = AddCheckBox({kMargin, kSecondTop + 28, 300, kLineHeight}, "No song &repeat", false,
                                [this] { ToggleNoRepeat(); });
        depth_ =
            AddField(kSecondTop + 54, "A son&g comes again after", "others", 0, kLongestSec, &Settings::historyDepth);
        AddField(kSecondTop + 54 + kRow, "New Soun&dFont every", "MIDI songs; 0: never", 0, kMostSongsAFont,
                 &Settings::songsBeforeSoundfontChange);
    }

    void AddVolumes() {
        AddHeading(kRight, kSecondTop, "Volume");
        follow_ =
            AddCheckBox({kRight, kSecondTop + 28, kRightWidth, kLineHeight},
                        "Play every song e&qually loud, however it was mastered", false, [this] { ToggleFollow(); });
        high_ = AddPreset(kSecondTop + 56, "&High preset", highText_);
        low_ = AddPreset(kSecondTop + 56 + 26, "Low &preset", lowText_);
    }

    HWND AddPreset(int y, const char* label, HWND& percent) {
        AddLabel({kRight, y + 2, kSliderLeft - kRight, kLineHeight}, label);
        const HWND slider = AddSlider({kSliderLeft, y, kSliderWidth, 24}, 0, 100, 0, [this] { TakePresets(); });
        percent = AddPercent(y);
        return slider;
    }

    HWND AddPercent(int y) { return AddLabel({kPercentLeft, y + 2, kWidth - kMargin - kPercentLeft, kLineHeight}, ""); }

    void ToggleWhole() {
        int32_t& longest = Settings_().songPlayDurationMax;
        longest = IsChecked(whole_) ? kWholeSongs : std::max(kUsualLongest, Settings_().songPlayDurationMin);
        Refresh();
    }

    void ToggleNoRepeat() {
        Settings_().historyDepth = IsChecked(noRepeat_) ? std::min(kUsualDepth, DeepestHistory()) : -1;
        Refresh();
    }

    void ToggleFollow() {
        SetLoudnessFollowing(host_->state, IsChecked(follow_));
    }

    // So many others that one song is left to be drawn.
    int32_t DeepestHistory() const {
        return static_cast<int32_t>(std::clamp<int64_t>(SongCountOf(host_->state.library) - 1, 0, kLongestSec));
    }

    // The least is at most the most, and a song can come again only after as many others as there are.
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
        EnableField(least_, isWindowed, whole_);
        EnableField(most_, isWindowed, whole_);
        EnableField(depth_, Settings_().historyDepth >= 0, noRepeat_);
    }

    void EnableField(size_t at, bool isEnabled, HWND heir) {
        const NumberControls& controls = fields_[at].Controls();
        Enable(controls.edit, isEnabled, heir);
        EnableWindow(controls.arrows, isEnabled ? TRUE : FALSE);
    }

    void TakeWeight(size_t i) {
        Settings_().*kWeights[i].setting = static_cast<int32_t>(SendMessageW(sliders_[i], TBM_GETPOS, 0, 0));
        host_->recountSongs();
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

    // What the mix comes to with the music that there is.
    void ShowShares() {
        const std::array<double, 5> promised = CategoryShares(host_->state, picker_);
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

    SharedHost host_;
    std::vector<NumberField> fields_;
    size_t least_ = 0, most_ = 0, stationLeast_ = 0, stationMost_ = 0, depth_ = 0;
    std::array<HWND, 5> sliders_{}, shares_{};
    std::array<double, 5> promised_{};
    PickerState picker_;  // its lists serve the shares
    HWND whole_ = nullptr, noRepeat_ = nullptr, follow_ = nullptr, bar_ = nullptr;
    HWND high_ = nullptr, highText_ = nullptr, low_ = nullptr, lowText_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeRadioDialog(const SharedHost& host) {
    return std::make_unique<RadioDialog>(host);
}

}  // namespace hullrider
