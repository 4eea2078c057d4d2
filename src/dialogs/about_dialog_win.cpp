// The About window: what the program is, its version, where its files lie, and whose work it stands on.
#include "dialogs/dialog_kinds_win.h"
#include "platform/program.h"

namespace hullrider {

namespace {

constexpr const char* kWhatItIs =
    "Radio from your own music: songs from a random point, for a random length, cross-faded into the next, while you "
    "play.";
constexpr const char* kLibraries =
    "Made with FFmpeg, FluidSynth, libopenmpt, miniaudio, SoundTouch, SDL and JSON for Modern C++. The "
    "licenses "
    "are in the program's LICENSE file and at the makers'.";

class AboutDialog : public Dialog {
public:
    explicit AboutDialog(SharedHost host) : host_(std::move(host)) {}

protected:
    Size ClientSize() const override { return {480, 284}; }

    void AddControls() override {
        constexpr int kWide = 456;
        AddIcon({kMargin, kMargin, 40, 40});
        UseHeadingFont(AddLabel({64, 16, 404, 28}, "Hullrider Radio"));
        AddLabel({64, 46, 404, kLineHeight}, host_->versionText);
        AddLabel({kMargin, 80, kWide, 2 * kLineHeight}, kWhatItIs);
        AddLabel({kMargin, 124, kWide, kLineHeight}, "Settings, favorites and history are kept in:");
        SetText(AddEdit({kMargin, 146, kWide, kFieldHeight}, ES_READONLY, {}, {}), host_->state.shell.dataDirectory);
        AddLabel({kMargin, 180, kWide, 3 * kLineHeight}, kLibraries);
        AddButton({kMargin, 244, kButtonWidth + 24, kButtonHeight}, "Open the &Folder",
                  [this] { ShowFolder(host_->state.shell.dataDirectory); });
        AddButton({356, 244, kButtonWidth, kButtonHeight}, "&Close",
                  [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

private:
    SharedHost host_;
};

}  // namespace

std::unique_ptr<Dialog> MakeAboutDialog(const SharedHost& host) {
    return std::make_unique<AboutDialog>(host);
}

}  // namespace hullrider
