// A window with one line of text.
#include "dialogs/dialog_kinds_win.h"

namespace hullrider {

namespace {

class NoticeDialog : public Dialog {
public:
    explicit NoticeDialog(std::string text) : text_(std::move(text)) {}

protected:
    Size ClientSize() const override { return {460, 120}; }

    void AddControls() override {
        AddLabel({kMargin, kMargin, 436, 2 * kLineHeight}, text_);
        AddButton({336, 80, kButtonWidth, kButtonHeight}, "&Close", [this] { PostMessageW(Window(), WM_CLOSE, 0, 0); });
    }

private:
    std::string text_;
};

}  // namespace

std::unique_ptr<Dialog> MakeNoticeDialog(std::string text) {
    return std::make_unique<NoticeDialog>(std::move(text));
}

}  // namespace hullrider
