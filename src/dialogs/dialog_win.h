// A top-level window of standard controls for one subject. Its controls are placed in units of 1/96 inch and follow
// the scale of the monitor and, where they say so, the size of the window. The Tab key walks them in the order in which
// they were added; Escape closes the window. UI thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

// What of a control's place follows when the window is resized; may be combined.
enum Follow : unsigned { kStay = 0, kMoveRight = 1, kMoveDown = 2, kGrowWide = 4, kGrowHigh = 8 };

// Where a control lies in the client area.
struct Place {
    int x = 0, y = 0, width = 0, height = 0;  // units of 1/96 inch
    unsigned follow = kStay;
};

// The usual sizes, in units.
inline constexpr int kMargin = 12, kGap = 8, kLineHeight = 20, kFieldHeight = 24, kButtonHeight = 28,
                     kButtonWidth = 112;

// For a line that may be longer than its place, or hold a path: an "&" in it is a letter.
inline constexpr DWORD kOneLine = SS_LEFT | SS_ENDELLIPSIS | SS_NOPREFIX;

// A field for a number and the arrows that step it.
struct NumberControls {
    HWND edit = nullptr, arrows = nullptr;
};

class Dialog {
public:
    Dialog() = default;
    virtual ~Dialog();
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Creates the window and shows it in front. False when the system refuses.
    bool Open(HINSTANCE instance, const char* className, const char* title);

    HWND Window() const { return window_; }

protected:
    struct Size {
        int width = 0, height = 0;  // of the client area, units
        bool canGrow = false;       // the user may make it larger, not smaller
    };

    virtual Size ClientSize() const = 0;
    virtual void AddControls() = 0;

    // Twice a second while the window is open, and when it comes to the front: shows what was changed elsewhere.
    virtual void Refresh() {}

    // A key before the focused control gets it. True: it is dealt with.
    virtual bool OnKey(WPARAM) { return false; }

    // The window is about to close: the last chance to take what was typed.
    virtual void OnClose() {}

    using Procedure = std::function<void()>;
    using Painter = std::function<void(HDC dc, const RECT& box)>;
    using NoticeHandler = std::function<LRESULT(const NMHDR& notice)>;

    // Texts are UTF-8. "&" before a letter makes Alt and that letter lead to the control or, for a label, to the next
    // one.
    HWND AddLabel(const Place& place, std::string_view text, DWORD style = SS_LEFT);
    HWND AddButton(const Place& place, std::string_view text, Procedure onClick);
    // A button that also tells when the focus leaves it.
    HWND AddFieldButton(const Place& place, std::string_view text, Procedure onClick, Procedure onLeave);
    HWND AddCheckBox(const Place& place, std::string_view text, bool isChecked, Procedure onClick);
    HWND AddEdit(const Place& place, DWORD style, Procedure onChange, Procedure onLeave);
    // A whole number from `lowest` to `highest`, with arrows to step it.
    NumberControls AddNumber(const Place& place, int lowest, int highest, Procedure onChange, Procedure onLeave);
    // One of a few texts, from a list that drops down.
    HWND AddChoice(const Place& place, Procedure onChange);
    HWND AddSlider(const Place& place, int lowest, int highest, int at, Procedure onChange);
    HWND AddTabs(const Place& place, const std::vector<std::string>& names, std::function<void(int)> onSelect);
    // A list in rows and columns, one row selected at a time. Widths in units; the first column also takes what the
    // others leave of the table.
    HWND AddTable(const Place& place, const std::vector<std::pair<std::string, int>>& columns, NoticeHandler onNotice,
                  DWORD style = 0);
    HWND AddProgressBar(const Place& place);  // for what takes nobody knows how long
    HWND AddIcon(const Place& place);         // the program's
    // A box that is painted by the window itself, without flicker.
    HWND AddCanvas(const Place& place, Painter paint);
    HWND AddControl(const Place& place, const wchar_t* className, std::string_view text, DWORD style,
                    DWORD extended = 0);

    // A yes-or-no question. Whoever asks must be done when the answer is no: the window may be gone by then.
    bool Confirm(std::string_view question) const;

    // How many controls there are; those that were added between two such counts can be shown and hidden together.
    size_t ControlCount() const { return controls_.size(); }
    void ShowControls(size_t from, size_t to, bool isShown) const;

    // A control that has the focus hands it on to `heir` before it is disabled: the keyboard must not be lost with it.
    static void Enable(HWND control, bool isEnabled, HWND heir);

    // Within OnKey: the key has been held since an earlier call.
    bool KeyIsRepeated() const { return keyIsRepeated_; }

    // A length in pixels of this window's monitor.
    int Pixels(int units) const;

    void UseHeadingFont(HWND control);

private:
    struct Control {
        HWND window = nullptr;
        Place place;
        bool isHeading = false, isTable = false;
        Procedure onClick, onChange, onLeave;
        Painter paint;
        NoticeHandler onNotice;
    };

    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnPlaceOrEnd(UINT message, WPARAM wParam, LPARAM lParam);
    void OnActivate(bool isActive);
    void OnCommand(int id, UINT code);
    LRESULT OnNotice(const NMHDR& notice);
    void Paint(const DRAWITEMSTRUCT& item);
    void TakeScale(int dpi);
    void PlaceControls();
    void FollowDpi(int dpi, const RECT& proposed);
    SIZE OuterSize() const;
    void TakeRoomOnScreen() const;
    HWND FocusTarget() const;
    Control* Find(HWND control);
    Control& Last() { return controls_.back(); }

    friend bool TranslateDialogMessage(MSG& message);
    friend bool IsDialog(HWND window);

    HWND window_ = nullptr;
    HINSTANCE instance_ = nullptr;
    std::vector<Control> controls_;
    HFONT font_ = nullptr, headingFont_ = nullptr;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
    HWND lastFocus_ = nullptr;
    bool keyIsRepeated_ = false;
};

// For the message loop: keys between the controls of a dialog. True when the message is dealt with.
bool TranslateDialogMessage(MSG& message);

bool IsDialog(HWND window);

void SetText(HWND control, std::string_view text);  // only when it differs, so that nothing flickers
std::string TextOf(HWND control);

void SetChecked(HWND checkBox, bool isChecked);
bool IsChecked(HWND checkBox);

}  // namespace hullrider
