// A window with one line of text.
#include "dialogs/option_windows_win.h"

namespace hullrider {

namespace {

class NoticeDialog : public Dialog {
public:
    explicit NoticeDialog(std::string text) : text_(std::move(text)) {}

protected:
    Form MakeForm() override {
        Form text = AddParagraph(text_, 436);
        return WithGap(kMargin, Column({text, Row({Spring(), AddCloseButton()})}));
    }

private:
    std::string text_;
};

}  // namespace

std::unique_ptr<Dialog> MakeNoticeDialog(std::string text) {
    return std::make_unique<NoticeDialog>(std::move(text));
}

}  // namespace hullrider
