#include "display/panel_view_win.h"

#include <windowsx.h>

#include <algorithm>

#include "display/lcd.h"
#include "display/window_sight_win.h"

namespace hullrider {

namespace {

constexpr UINT kMotionMs = 33;
constexpr double kLongestStepSec = 0.25;  // nothing jumps after a pause of the timer

double SecondsNow() {
    return static_cast<double>(GetTickCount64()) / 1000.0;
}

std::optional<PanelKey> MeaningOf(WPARAM key, bool isRepeated) {
    if (GetKeyState(VK_CONTROL) < 0) return std::nullopt;
    if (key == VK_TAB) return GetKeyState(VK_SHIFT) < 0 ? PanelKey::kBack : PanelKey::kForward;
    if (key == VK_ESCAPE) return PanelKey::kLeave;
    if (key == VK_LEFT || key == VK_DOWN) return PanelKey::kLess;
    if (key == VK_RIGHT || key == VK_UP) return PanelKey::kMore;
    if (!isRepeated && (key == VK_RETURN || key == VK_SPACE)) return PanelKey::kAct;
    return std::nullopt;
}

}  // namespace

void PanelView::Attach(HWND window) {
    window_ = window;
    tooltips_.Create(window);
}

bool PanelView::CanBeSeen() {
    if (window_ != nullptr && hullrider::CanBeSeen(window_)) return true;
    StopMotion();
    return false;
}

void PanelView::Show(const PanelModel& model, const PanelTheme& theme) {
    if (theme != theme_) {
        theme_ = theme;
        painter_.Release();
        surface_.reset();
        InvalidateRect(window_, nullptr, FALSE);
    }
    LetGoOfOldSong(model);
    mouse_.Enable(EnabledElements(model));
    keys_.Enable(EnabledElements(model));
    const PanelModel before = look_.model;
    PanelLook look = look_;
    look.model = model;
    look.volumeIsNews = volumeNotice_.Follow(model.volume, SecondsNow());
    look.pointed = mouse_.PointedInSong();
    look.focus = keys_.Focus();
    const bool isOther = model.title != before.title || UpperLine(look) != UpperLine(look_);
    if (isOther || model.transport == Transport::kStopped) look.motion.shownSec = 0.0;
    Look(look);
    RenewTooltip(before);
    if (model.transport == Transport::kPlaying || !IsMeterAtRest()) StartMotion();
}

// The bar is not dragged on into another song.
void PanelView::LetGoOfOldSong(const PanelModel& model) {
    const bool isOther = model.title != look_.model.title || model.album != look_.model.album;
    if (!isOther || mouse_.Pressed() != PanelElement::kSongBar) return;
    mouse_.LoseCapture();
    if (GetCapture() == window_) ReleaseCapture();
}

void PanelView::RenewTooltip(const PanelModel& before) const {
    if (look_.hover && TooltipOf(*look_.hover, before) != TooltipOf(*look_.hover, look_.model)) {
        tooltips_.Renew(*look_.hover);
    }
}

std::optional<LRESULT> PanelView::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;  // Paint covers every pixel
        case WM_TIMER:
            if (wParam != kPanelMotionTimer) return std::nullopt;
            OnMotion();
            return 0;
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_MOUSELEAVE:
        case WM_CAPTURECHANGED:
            OnMouse(message, lParam);
            return 0;
        case WM_MOUSEWHEEL:
            OnWheel(wParam);
            return 0;
        case WM_KEYDOWN:
            return OnKey(wParam, (HIWORD(lParam) & KF_REPEAT) != 0) ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_KILLFOCUS:
            keys_.Leave();
            FollowFocus();
            return std::nullopt;
        case WM_NOTIFY:
            if (const NMTTDISPINFOW* const request = tooltips_.Request(lParam)) {
                tooltips_.Answer(lParam, TooltipOf(static_cast<PanelElement>(request->hdr.idFrom), look_.model));
                return 0;
            }
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

void PanelView::Release() {
    StopMotion();
    tooltips_.Destroy();
    painter_.Release();
    surface_.reset();
}

void PanelView::MakeSurface(LONG width, LONG height) {
    painter_.Release();
    surface_ = std::make_unique<Surface>(width, height);
    if (surface_->Pixels() == nullptr) return;
    painter_.Begin({surface_->Pixels(), surface_->Width(), surface_->Height()}, theme_);
    spoilt_.set();
    tooltips_.Place(painter_.Scale());
}

void PanelView::Paint() {
    PAINTSTRUCT paint;
    const HDC target = BeginPaint(window_, &paint);
    RECT client;
    GetClientRect(window_, &client);
    if (client.right > 0 && client.bottom > 0) {
        GdiFlush();  // the system may still be reading the pixels
        if (!surface_ || surface_->Width() != client.right || surface_->Height() != client.bottom) {
            MakeSurface(client.right, client.bottom);
        }
        painter_.Paint(spoilt_, look_);
        spoilt_.reset();
        const HDC source = CreateCompatibleDC(target);
        const HGDIOBJ old = SelectObject(source, surface_->Bitmap());
        const RECT& box = paint.rcPaint;
        BitBlt(target, box.left, box.top, box.right - box.left, box.bottom - box.top, source, box.left, box.top,
               SRCCOPY);
        SelectObject(source, old);
        DeleteDC(source);
    }
    EndPaint(window_, &paint);
}

void PanelView::Look(const PanelLook& look) {
    const ElementSet changed = ElementsToRepaint(look_, look) | painter_.MovedLines(look, look_.motion, look.motion);
    look_ = look;
    Spoil(changed);
}

void PanelView::Spoil(const ElementSet& elements) {
    spoilt_ |= elements;
    if (!surface_) return;
    for (size_t i = 0; i < kElementCount; ++i) {
        if (!elements.test(i)) continue;
        const PixelBox box = painter_.Scale().ToPixels(BoxOf(static_cast<PanelElement>(i)));
        const RECT area{box.x, box.y, box.x + box.width, box.y + box.height};
        InvalidateRect(window_, &area, FALSE);
    }
}

void PanelView::OnMouse(UINT message, LPARAM lParam) {
    const DesignPoint place = painter_.Scale().ToDesign(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    if (message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) {
        tooltips_.Relay(message, 0, lParam);
    }
    switch (message) {
        case WM_MOUSEMOVE: {
            TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window_, 0};
            TrackMouseEvent(&leave);
            Act(mouse_.Move(place));
            break;
        }
        case WM_LBUTTONDOWN: {
            mouse_.Press(place, static_cast<double>(look_.model.volume));
            if (mouse_.Holds()) SetCapture(window_);
            keys_.Leave();
            FollowFocus();
            break;
        }
        case WM_LBUTTONUP: {
            const std::optional<PanelAction> action = mouse_.Release(place);
            if (GetCapture() == window_) ReleaseCapture();
            Act(action);
            break;
        }
        case WM_MOUSELEAVE:
            mouse_.Leave();
            break;
        default:
            mouse_.LoseCapture();
            break;
    }
    FollowMouse();
}

void PanelView::OnWheel(WPARAM wParam) {
    const double notches = static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA;
    Act(mouse_.Wheel(notches, static_cast<double>(look_.model.volume)));
}

bool PanelView::OnKey(WPARAM key, bool isRepeated) {
    const std::optional<PanelKey> meaning = MeaningOf(key, isRepeated);
    std::optional<PanelAction> action;
    if (!meaning || !keys_.Press(*meaning, look_.model, action)) return false;
    FollowFocus();
    Act(action);
    return true;
}

void PanelView::FollowFocus() {
    PanelLook look = look_;
    look.focus = keys_.Focus();
    Look(look);
}

void PanelView::FollowMouse() {
    PanelLook look = look_;
    look.hover = mouse_.Hover();
    look.pressed = mouse_.Pressed();
    look.pointed = mouse_.PointedInSong();
    if (UpperLine(look) != UpperLine(look_)) look.motion.shownSec = 0.0;
    Look(look);
}

void PanelView::Act(const std::optional<PanelAction>& action) {
    if (action && ports_.act) ports_.act(*action);
}

void PanelView::StartMotion() {
    if (moving_) return;
    moving_ = SetTimer(window_, kPanelMotionTimer, kMotionMs, nullptr) != 0;
    lastMotion_ = std::chrono::steady_clock::now();
}

void PanelView::StopMotion() {
    if (moving_) KillTimer(window_, kPanelMotionTimer);
    moving_ = false;
}

void PanelView::OnMotion() {
    if (IsWindowVisible(window_) == 0 || IsIconic(window_) != 0) return StopMotion();
    const auto now = std::chrono::steady_clock::now();
    const double elapsedSec = std::min(std::chrono::duration<double>(now - lastMotion_).count(), kLongestStepSec);
    lastMotion_ = now;
    const bool playing = look_.model.transport == Transport::kPlaying;
    if (playing) {
        const StereoLevel level = ports_.level ? ports_.level() : StereoLevel{};
        left_.Step(level.left, elapsedSec);
        right_.Step(level.right, elapsedSec);
    } else {
        left_.Fall(elapsedSec);
        right_.Fall(elapsedSec);
    }

    PanelLook look = look_;
    const auto bar = [](const MeterBallistics& channel) {
        return MeterBar{LitSegments(channel.Level(), kMeterSegments), LitSegments(channel.Peak(), kMeterSegments)};
    };
    look.meter = {bar(left_), bar(right_)};
    if (playing) look.motion.shownSec += elapsedSec;
    Look(look);
    if (!playing && IsMeterAtRest()) StopMotion();
}

}  // namespace hullrider
