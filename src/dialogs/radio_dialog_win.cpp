// Radio Options: how long songs play, how the kinds are mixed, how soon a song may come again, and how loud it all is.
#include <algorithm>
#include <array>
#include <cmath>

#include "dialogs/number_field_win.h"
#include "dialogs/option_windows_win.h"
#include "dialogs/radio_rules.h"
#include "dialogs/share_bar_win.h"
#include "library/song_counts.h"
#include "platform/text_win.h"
#include "playback/simulation.h"
#include "playback/volume.h"

namespace hullrider {

namespace {

constexpr NumberRule kLeastSec{0, 36000}, kMostSec{1, 36000};
constexpr NumberRule kFade{0, 60000, 1000, 100};  // in milliseconds, shown as seconds
constexpr NumberRule kDepth{1, 10000}, kSongsAFont{1, 1000};
constexpr int kUsualLongestSec = 110, kUsualDepth = 20, kUsualSongsAFont = 1;
constexpr int kWholeSongs = 0, kNoHistory = -1, kSameFont = 0;  // what the settings hold when the box is not ticked
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
    explicit RadioDialog(RadioPorts ports)
        : ports_(std::move(ports)),
          longest_(Settings_().songPlayDurationMax, kWholeSongs, kUsualLongestSec),
          history_(Settings_().historyDepth, kNoHistory, kUsualDepth),
          fontSongs_(Settings_().songsBeforeSoundfontChange, kSameFont, kUsualSongsAFont) {}

protected:
    // Play times and variety on the left, mix and volume on the right.
    Form MakeForm() override {
        std::vector<Form> left{AddPlayTimes(), AddVariety()};
        std::vector<Form> right{AddMix(), AddVolumes()};
        for (const auto& column : {labels_, mixLabels_}) AlignWidths(column);
        Form columns = WithGap(3 * kMargin, Row({WithGap(kMargin, Column(std::move(left))),
                                                 GrowWide(WithGap(kMargin, Column(std::move(right))))}));
        return Column({columns, Row({Spring(), AddCloseButton()})});
    }

    void Refresh() override {
        for (NumberField& field : fields_) field.Show();
        SetChecked(whole_, !longest_.IsOn());
        SetChecked(noRepeat_, history_.IsOn());
        SetChecked(newFonts_, fontSongs_.IsOn());
        SetChecked(follow_, ports_.app.playback.volume->realTimeVolume);
        ShowWhatApplies();
        ShowVolumes();
        ShowShares();
    }

    void OnClose() override {
        for (NumberField& field : fields_) field.OnLeave();
    }

private:
    Settings& Settings_() const { return ports_.app.settings; }

    size_t AddField(HWND remark, const NumberControls& controls, NumberField::Meaning meaning) {
        fields_.push_back(NumberField(controls, remark, std::move(meaning)));
        return fields_.size() - 1;
    }

    // The controls of the field that is added next.
    NumberControls AddNextNumber() {
        const size_t at = numbers_++;
        return AddNumber([this, at] { fields_[at].OnChange(); }, [this, at] { fields_[at].OnLeave(); },
                         [this, at](int steps) { fields_[at].OnArrow(steps); });
    }

    HWND AddRowLabel(const char* text) {
        labels_.push_back(AddLabel(text));
        return labels_.back();
    }

    // A time from `least` to `most`, in seconds.
    struct Range {
        int32_t& least;
        std::function<int32_t()> most;
        std::function<void(int32_t)> setMost;

        void Move(void (*moveEnd)(int32_t&, int32_t&, int32_t), int32_t value) const {
            int32_t mostSec = most();
            moveEnd(least, mostSec, value);
            setMost(mostSec);
        }
    };

    // Adds a row: label, both ends, remark. Returns the first field's index; the second one's is the next.
    size_t AddRange(std::vector<Form>& grid, const char* label, const char* to, const Range& range) {
        const HWND name = AddRowLabel(label);
        const NumberControls least = AddNextNumber();
        const HWND between = AddLabel(to);
        const NumberControls most = AddNextNumber();
        const HWND unit = AddLabel("seconds");
        const HWND remark = AddLine("As rarely as possible");
        grid.insert(grid.end(), {name, Row({least.Together(), between, most.Together(), unit}), remark});
        const size_t at = AddField(remark, least, MeaningOfLeast(range));
        AddField(remark, most, MeaningOfMost(range));
        return at;
    }

    static NumberField::Meaning MeaningOfLeast(const Range& range) {
        return {kLeastSec,
                [range] { return range.least; },
                [range](int32_t value) { range.Move(MoveLeast, value); },
                [range](int32_t value) { return value > range.most() ? "Raises the maximum" : ""; },
                {}};
    }

    static NumberField::Meaning MeaningOfMost(const Range& range) {
        return {kMostSec,
                range.most,
                [range](int32_t value) { range.Move(MoveMost, value); },
                [range](int32_t value) { return value < range.least ? "Lowers the minimum" : ""; },
                {}};
    }

    Form AddPlayTimes() {
        Form heading = AddHeading("Play time");
        whole_ = AddCheckBox("Play songs &whole", false, [this] { ToggleWhole(); });
        std::vector<Form> grid;
        songRange_ = AddRange(grid, "&Songs play for", "t&o",
                              {Settings_().songPlayDurationMin, [this] { return longest_.Number(); },
                               [this](int32_t value) { longest_.SetNumber(value); }});
        int32_t& stationMost = Settings_().iSongPlayDurationMax;
        AddRange(grid, "Stations play &for", "to",
                 {Settings_().iSongPlayDurationMin, [&stationMost] { return stationMost; },
                  [&stationMost](int32_t value) { stationMost = value; }});
        AddFade(grid);
        return Column({heading, whole_, Grid(3, std::move(grid))});
    }

    void AddFade(std::vector<Form>& grid) {
        const HWND name = AddRowLabel("Cross-fa&de");
        const NumberControls controls = AddNextNumber();
        const HWND unit = AddLabel("seconds");
        const HWND remark = AddLine();
        grid.insert(grid.end(), {name, Row({controls.Together(), unit}), remark});
        int32_t& fadeMs = Settings_().FADE_DURATION_MS;
        AddField(remark, controls,
                 {kFade, [&fadeMs] { return fadeMs; }, [&fadeMs](int32_t value) { fadeMs = value; }, {}, {}});
    }

    Form AddVariety() {
        Form heading = AddHeading("Variety");
        std::vector<Form> grid;
        noRepeat_ = AddCheckBox("No song &repeat for", false, [this] { Switch(history_, noRepeat_); });
        depth_ = AddOptional(grid, noRepeat_, "songs", history_, kDepth,
                             [this](int32_t depth) { return HistoryRemark(depth, SongCountOf(ports_.app.library)); });
        newFonts_ = AddCheckBox("&New SoundFont after", false, [this] { Switch(fontSongs_, newFonts_); });
        fontEvery_ = AddOptional(grid, newFonts_, "MIDI songs", fontSongs_, kSongsAFont, {});
        return Column({heading, Grid(3, std::move(grid))});
    }

    // Adds a row: check box, number, remark.
    size_t AddOptional(std::vector<Form>& grid, HWND box, const char* unitText, OptionalNumber& number,
                       const NumberRule& rule, std::function<std::string(int32_t)> remarkOn) {
        labels_.push_back(box);
        const NumberControls controls = AddNextNumber();
        const HWND unit = AddLabel(unitText);
        const HWND remark = AddLine("As rarely as possible");
        grid.insert(grid.end(), {box, Row({controls.Together(), unit}), remark});
        return AddField(remark, controls,
                        {rule,
                         [&number] { return number.Number(); },
                         [&number](int32_t value) { number.SetNumber(value); },
                         {},
                         std::move(remarkOn)});
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
            shares_[i] = AddLine("No MIDI songs");
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
        percent = AddLine("No MIDI songs");  // as wide as the column above it
        grid.insert(grid.end(), {mixLabels_.back(), GrowWide(slider), percent});
        return slider;
    }

    void ToggleWhole() {
        longest_.Switch(!IsChecked(whole_));
        int32_t& least = Settings_().songPlayDurationMin;
        if (longest_.IsOn()) longest_.SetNumber(std::max(longest_.Number(), least));
        Refresh();
    }

    void Switch(OptionalNumber& number, HWND box) {
        number.Switch(IsChecked(box));
        Refresh();
    }

    void ToggleFollow() { SetLoudnessFollowing(ports_.app, IsChecked(follow_)); }

    void ShowWhatApplies() {
        fields_[songRange_].Enable(longest_.IsOn(), whole_);
        fields_[songRange_ + 1].Enable(longest_.IsOn(), whole_);
        fields_[depth_].Enable(history_.IsOn(), noRepeat_);
        fields_[fontEvery_].Enable(fontSongs_.IsOn(), newFonts_);
    }

    void TakeWeight(size_t i) {
        Settings_().*kWeights[i].setting = static_cast<int32_t>(SendMessageW(sliders_[i], TBM_GETPOS, 0, 0));
        ports_.recountSongs();
        ShowShares();
    }

    // The slider that is moved stops at the other one.
    void TakePresets() {
        Settings& settings = Settings_();
        const auto volumeAt = [](HWND slider) {
            return static_cast<float>(SendMessageW(slider, TBM_GETPOS, 0, 0)) / 100.0F;
        };
        const float high = volumeAt(high_), low = volumeAt(low_);
        if (high != settings.highVolume) settings.highVolume = StoppedHigh(high, settings.lowVolume);
        if (low != settings.lowVolume) settings.lowVolume = StoppedLow(low, settings.highVolume);
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
            SetText(shares_[i], ShareText(kWeights[i].category, ShareOf(i), ports_.app.library));
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
    OptionalNumber longest_, history_, fontSongs_;
    std::vector<NumberField> fields_;
    size_t numbers_ = 0;  // made so far
    size_t songRange_ = 0, depth_ = 0, fontEvery_ = 0;
    std::vector<HWND> labels_, mixLabels_;  // each list is equally wide
    std::array<HWND, 5> sliders_{}, shares_{};
    std::array<double, 5> promised_{};
    PickerState picker_;  // its lists serve the shares
    HWND whole_ = nullptr, noRepeat_ = nullptr, newFonts_ = nullptr, follow_ = nullptr, bar_ = nullptr;
    HWND high_ = nullptr, highText_ = nullptr, low_ = nullptr, lowText_ = nullptr;
};

}  // namespace

std::unique_ptr<Dialog> MakeRadioDialog(RadioPorts ports) {
    return std::make_unique<RadioDialog>(std::move(ports));
}

}  // namespace hullrider
