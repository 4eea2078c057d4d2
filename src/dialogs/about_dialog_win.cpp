// The About window: what the program is, its version, where its files are, and which libraries it uses.
#include "dialogs/option_windows_win.h"
#include "platform/program.h"

namespace hullrider {

namespace {

constexpr int kTextWidth = 456;
constexpr const char* kWhatItIs =
    "Radio from your own music: songs from a random point, for a random length, cross-faded into the next, while you "
    "play.";
constexpr const char* kLibraries =
    "Made with FFmpeg, FluidSynth, libopenmpt, miniaudio, SoundTouch, SDL and JSON for Modern C++. Their licenses are "
    "in the program's LICENSE file and with each project.";

class AboutDialog : public Dialog {
public:
    AboutDialog(std::string versionText, std::string dataDirectory)
        : versionText_(std::move(versionText)), dataDirectory_(std::move(dataDirectory)) {}

protected:
    Form MakeForm() override {
        Form name = Row({AddIcon(), WithGap(2, Column({AddHeading("Hullrider Radio"), AddLabel(versionText_)}))});
        Form whatItIs = AddParagraph(kWhatItIs, kTextWidth);
        Form whereLabel = AddLabel("Settings, favorites and history are kept in:");
        const HWND where = AddEdit(kTextWidth, ES_READONLY, {}, {});
        SetText(where, dataDirectory_);
        Form files = WithGap(2, Column({whereLabel, where}));
        Form libraries = AddParagraph(kLibraries, kTextWidth);
        Form buttons =
            Row({AddButton("Open the &Folder", [this] { ShowFolder(dataDirectory_); }), Spring(), AddCloseButton()});
        return WithGap(kMargin, Column({name, whatItIs, files, libraries, buttons}));
    }

private:
    std::string versionText_, dataDirectory_;
};

}  // namespace

std::unique_ptr<Dialog> MakeAboutDialog(std::string versionText, std::string dataDirectory) {
    return std::make_unique<AboutDialog>(std::move(versionText), std::move(dataDirectory));
}

}  // namespace hullrider
