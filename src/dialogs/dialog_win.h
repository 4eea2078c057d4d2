// A top-level window of standard controls for one subject. A Form lays the controls out by their texts, the monitor's
// scale and the window's size. Tab visits them in the order in which they were added; Escape closes the window. UI
// thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/form.h"
#include "dialogs/table_columns.h"

namespace hullrider {

// Lengths are in units of 1/96 inch.
inline constexpr int kMargin = 12, kGap = 8;

// For a line that may be too long or hold a path: cut off with an ellipsis, and "&" is plain text.
inline constexpr DWORD kOneLine = SS_LEFT | SS_ENDELLIPSIS | SS_NOPREFIX;

// A number field and its arrows.
struct NumberControls {
    HWND edit = nullptr, arrows = nullptr;

    Form Together() const { return WithGap(0, Row({edit, arrows})); }
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
    // Adds the controls and returns their layout within the window's margins. The window is as large as the form needs;
    // the user may enlarge it if a part of the form grows.
    virtual Form MakeForm() = 0;

    // Shows changes made elsewhere. Called twice a second while the window is open, and when it comes to the front.
    virtual void Refresh() {}

    // A key, before the focused control gets it. True: it has been handled.
    virtual bool OnKey(WPARAM) { return false; }

    // The user closes the window. False keeps it open; it may also be gone by then, while a question was open.
    virtual bool MayClose() { return true; }

    // The window is about to close: the last chance to apply what was typed.
    virtual void OnClose() {}

    using Procedure = std::function<void()>;
    using Painter = std::function<void(HDC dc, const RECT& box)>;
    using NoticeHandler = std::function<LRESULT(const NMHDR& notice)>;

    // Texts are UTF-8. "&" before a letter makes Alt and that letter select the control or, for a label, the next one.
    HWND AddLabel(std::string_view text, DWORD style = SS_LEFT);
    HWND AddHeading(std::string_view text);
    // A text wrapped at that width.
    HWND AddParagraph(std::string_view text, int width);
    // A line whose text changes, with room for `widest`; longer texts are cut off.
    HWND AddLine(std::string_view widest = "");
    HWND AddButton(std::string_view text, Procedure onClick);
    HWND AddCloseButton();
    // A button that shows a value, with room for `widest`, and also reports when it loses the focus.
    HWND AddFieldButton(std::string_view widest, Procedure onClick, Procedure onLeave);
    HWND AddCheckBox(std::string_view text, bool isChecked, Procedure onClick);
    HWND AddEdit(int width, DWORD style, Procedure onChange, Procedure onLeave);
    // A number with arrows, which report the steps that the user asks for: up is above 0.
    NumberControls AddNumber(Procedure onChange, Procedure onLeave, std::function<void(int)> onArrow);
    // A drop-down list with room for `widest`.
    HWND AddChoice(std::string_view widest, Procedure onChange);
    HWND AddSlider(int lowest, int highest, int at, Procedure onChange);
    HWND AddTabs(const std::vector<std::string>& names, std::function<void(int)> onSelect);
    // A list in rows and columns with single selection. The columns always fill its width.
    HWND AddTable(FormSize least, const std::vector<TableColumn>& columns, NoticeHandler onNotice, DWORD style = 0);
    HWND AddProgressBar();  // for work of unknown duration
    HWND AddIcon();         // the program's
    // A box that the window paints itself, without flicker.
    HWND AddCanvas(FormSize size, Painter paint);

    // Gives these controls the width of the widest one, so that they align across grids.
    void AlignWidths(const std::vector<HWND>& controls);

    // Asks a yes-or-no question. After a no, the caller must touch nothing: the window may be gone.
    bool Confirm(std::string_view question) const;

    // The same with a third choice, which is also the answer when the window is gone.
    enum class Answer { kYes, kNo, kCancel };
    Answer Ask(std::string_view question) const;

    // How many controls there are. ShowControls shows or hides those added between two such counts.
    size_t ControlCount() const { return controls_.size(); }
    void ShowControls(size_t from, size_t to, bool isShown) const;

    // Within OnKey: the key is auto-repeated.
    bool KeyIsRepeated() const { return keyIsRepeated_; }

    // Converts a length to pixels of this window's monitor, and back; Units rounds up.
    int Pixels(int units) const;
    int Units(int pixels) const;

    int TextWidth(std::string_view text) const;  // units

private:
    struct Control {
        HWND window = nullptr;
        std::function<FormSize()> size;  // needed at the current scale, units
        FormSize measured;               // what `size` last returned
        bool isHeading = false;
        std::vector<bool> growingColumns;  // of a table; else empty
        int fittedWidth = 0;               // of a table, when its columns were last fitted, pixels
        int listHeight = 0;                // of a choice, whose height includes the open list for the system
        size_t sameWidth = 0;              // controls with the same number, other than 0, are equally wide
        Procedure onClick, onChange, onLeave;
        Painter paint;
        NoticeHandler onNotice;
    };

    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnPlaceOrEnd(UINT message, WPARAM wParam, LPARAM lParam);
    HWND AddControl(const wchar_t* className, std::string_view text, DWORD style, std::function<FormSize()> size,
                    DWORD extended = 0);
    void OnActivate(bool isActive);
    void RefreshAll();
    void FitTables();
    LRESULT Close(bool isAsked);
    void OnCommand(int id, UINT code);
    LRESULT OnNotice(const NMHDR& notice);
    void Paint(const DRAWITEMSTRUCT& item);
    void TakeScale(int dpi);
    FormSize TextSize(std::string_view text, HFONT font, int width = 0) const;
    int LineHeight() const;
    int FieldHeight() const;
    void MeasureControls();
    void MeasureToFit();
    FormSize SizeOf(void* control) const { return Find(static_cast<HWND>(control))->measured; }
    FormSize ClientSize() const;
    DWORD Style() const;
    void PlaceControls();
    void FollowDpi(int dpi, const RECT& proposed);
    SIZE OuterSize() const;
    void TakeRoomOnScreen() const;
    HWND FocusTarget() const;
    const Control* Find(HWND control) const;
    Control* Find(HWND control);
    Control& Last() { return controls_.back(); }

    friend bool TranslateDialogMessage(MSG& message);
    friend bool IsDialog(HWND window);
    friend void CloseUnasked(HWND dialog);

    HWND window_ = nullptr;
    HINSTANCE instance_ = nullptr;
    std::vector<Control> controls_;
    Form form_;
    size_t widthGroups_ = 0;
    HFONT font_ = nullptr, headingFont_ = nullptr;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
    int tableCut_ = 0;  // by how much tables are lower than they should be, units
    HWND lastFocus_ = nullptr;
    bool keyIsRepeated_ = false, isAsking_ = false;
};

// For the message loop: keyboard navigation in a dialog. True when the message has been handled.
bool TranslateDialogMessage(MSG& message);

bool IsDialog(HWND window);

// Closes a dialog without asking: the program ends.
void CloseUnasked(HWND dialog);

void SetText(HWND control, std::string_view text);  // only when it differs, so that nothing flickers
std::string TextOf(HWND control);

// A focused control passes the focus to `heir` before it is disabled; otherwise no control would get keys.
void EnableControl(HWND control, bool isEnabled, HWND heir);

void SetChecked(HWND checkBox, bool isChecked);
bool IsChecked(HWND checkBox);

}  // namespace hullrider
