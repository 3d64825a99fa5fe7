// What the check box and radio tests share: a control on a real window, an event recorder, and
// pixels read back from the window.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frame/Win32Surface.h"
#include "support/TestHostWindow.h"

namespace checkradio {

constexpr int32_t kBack = 0x00C0C0C0;     // control back colour
constexpr int32_t kBoxBack = 0x00FFFFFF;  // box back colour
constexpr int32_t kMark = 0x00008000;     // tick and dot: green
constexpr int32_t kBorder = 0x000000FF;   // red

// Records every event in order, with the pressed state the control had when Click came.
template <class Events>
class Recorder final : public Events {
public:
    std::vector<std::string> log;
    std::function<bool()> pressedAtClick;
    int16_t vetoKey = -1;  // KeyPress sets this code to 0
    void Click() override { log.push_back(pressedAtClick && pressedAtClick() ? "Click+" : "Click-"); }
    void DblClick() override { log.push_back("DblClick"); }
    void MouseDown(int16_t& b, int16_t&, float&, float&) override { log.push_back("MouseDown" + std::to_string(b)); }
    void MouseUp(int16_t& b, int16_t&, float&, float&) override { log.push_back("MouseUp" + std::to_string(b)); }
    void KeyDown(int16_t& k, int16_t&) override { log.push_back("KeyDown" + std::to_string(k)); }
    void KeyPress(int16_t& k) override {
        log.push_back("KeyPress" + std::to_string(k));
        if (k == vetoKey) k = 0;
    }
    void KeyUp(int16_t& k, int16_t&) override { log.push_back("KeyUp" + std::to_string(k)); }
};

// One visible host window for all these tests: under Wine without a window manager, destroying a
// visible top-level window waits about two seconds.
inline HWND SharedHost() {
    static testsupport::TestHostWindow host;
    return host.get();
}

// A control of type Control with its recorder, on a surface of the given size.
template <class Control, class Events>
struct Hosted {
    explicit Hosted(int width = 160, int height = 18)
        : surface(SharedHost(), 5, 5, width, height), control(surface, &events) {
        control.InitProperties();
        control.BackColor(kBack);
        events.pressedAtClick = [this] { return control.Pressed(); };
    }
    Win32Surface surface;
    Recorder<Events> events;
    Control control;
};

inline void Repaint(HWND hwnd) { ::RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }

inline COLORREF PixelAt(HWND hwnd, int x, int y) {
    const HDC dc = ::GetDC(hwnd);
    const COLORREF c = ::GetPixel(dc, x, y);
    ::ReleaseDC(hwnd, dc);
    return c;
}

// The first row from the top of column x whose pixel is not `back`, or -1.
inline int FirstRowNotOf(HWND hwnd, int x, COLORREF back, int height) {
    for (int y = 0; y < height; ++y) {
        if (PixelAt(hwnd, x, y) != back) return y;
    }
    return -1;
}

inline void Send(HWND hwnd, UINT message, WPARAM wParam = 0, int x = 3, int y = 3) {
    ::SendMessageW(hwnd, message, wParam, MAKELPARAM(x, y));
}

}  // namespace checkradio
