// ImageButtonTestSupport: an image button on a real window, an event recorder, solid pictures and pixel probes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "controls/ctlUniButtonImageXP.h"
#include "frame/Win32Surface.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace imagebuttontest {

// Every event the host sees, as one line ("MouseDown 1", "KeyPress 32", "Click").
class RecordingEvents final : public ctlUniButtonImageXPEvents {
public:
    std::vector<std::string> log;
    void Click() override { log.push_back("Click"); }
    void DblClick() override { log.push_back("DblClick"); }
    void MouseDown(int16_t& Button, int16_t&, float&, float&) override { log.push_back("MouseDown " + std::to_string(Button)); }
    void MouseMove(int16_t& Button, int16_t&, float&, float&) override { log.push_back("MouseMove " + std::to_string(Button)); }
    void MouseUp(int16_t& Button, int16_t&, float&, float&) override { log.push_back("MouseUp " + std::to_string(Button)); }
    void KeyDown(int16_t& KeyCode, int16_t&) override { log.push_back("KeyDown " + std::to_string(KeyCode)); }
    void KeyPress(int16_t& KeyAscii) override {
        log.push_back("KeyPress " + std::to_string(KeyAscii));
        if (KeyAscii == 'x') KeyAscii = 0;       // a handler that swallows a key
        if (KeyAscii == 'y') KeyAscii = 32;      // and one that turns a key into Space
    }
    void KeyUp(int16_t& KeyCode, int16_t&) override { log.push_back("KeyUp " + std::to_string(KeyCode)); }
    void Resize() override { log.push_back("Resize"); }
};

// A button on a child window of its own host, in Arial 12 so the tests can measure text alike.
struct ButtonFixture {
    explicit ButtonFixture(int width = 120, int height = 60, int32_t dpi = 0)
        : surface(host.get(), 10, 10, width, height) {
        if (dpi != 0) surface.OverrideDpi(dpi);
        surface.Font(std::make_shared<StdFont>(u"Arial", 12.0F));
        button = std::make_unique<ctlUniButtonImageXP>(surface, &events);
    }
    HWND hwnd() const { return surface.hWnd(); }
    testsupport::TestHostWindow host;
    Win32Surface surface;
    RecordingEvents events;
    std::unique_ptr<ctlUniButtonImageXP> button;
};

// A bitmap of one colour (0x00BBGGRR), with an optional square of another in its middle.
inline std::shared_ptr<StdPicture> SolidPicture(int width, int height, COLORREF fill, int inner = 0,
                                                COLORREF innerColor = 0) {
    const HDC screen = ::GetDC(nullptr);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, width, height);
    const HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    const HGDIOBJ old = ::SelectObject(dc, bitmap);
    const HBRUSH brush = ::CreateSolidBrush(fill);
    RECT all{0, 0, width, height};
    ::FillRect(dc, &all, brush);
    ::DeleteObject(brush);
    if (inner > 0) {
        const HBRUSH innerBrush = ::CreateSolidBrush(innerColor);
        RECT middle{(width - inner) / 2, (height - inner) / 2, (width - inner) / 2 + inner, (height - inner) / 2 + inner};
        ::FillRect(dc, &middle, innerBrush);
        ::DeleteObject(innerBrush);
    }
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    return StdPicture::FromBitmap(bitmap, true);
}

// The smallest rectangle holding every pixel of `color` in the window; empty when there is none.
inline RECT BoundsOfColor(HWND hwnd, COLORREF color) {
    RECT client{};
    ::GetClientRect(hwnd, &client);
    RECT found{client.right, client.bottom, 0, 0};
    const HDC dc = ::GetDC(hwnd);
    for (int y = 0; y < client.bottom; ++y) {
        for (int x = 0; x < client.right; ++x) {
            if (::GetPixel(dc, x, y) != color) continue;
            found.left = std::min<LONG>(found.left, x);
            found.top = std::min<LONG>(found.top, y);
            found.right = std::max<LONG>(found.right, x + 1);
            found.bottom = std::max<LONG>(found.bottom, y + 1);
        }
    }
    ::ReleaseDC(hwnd, dc);
    if (found.right == 0) return RECT{0, 0, 0, 0};
    return found;
}

inline COLORREF PixelAt(HWND hwnd, int x, int y) {
    const HDC dc = ::GetDC(hwnd);
    const COLORREF c = ::GetPixel(dc, x, y);
    ::ReleaseDC(hwnd, dc);
    return c;
}

// The caption measured as the button's rule measures it, with a font the test makes itself:
// DrawText with DT_CALCRECT, DT_WORDBREAK, DT_EXPANDTABS and DT_EDITCONTROL at `width`.
inline SIZE MeasureCaption(const wchar_t* text, int width, int points = 12, int dpi = 0) {
    const HDC screen = ::GetDC(nullptr);
    if (dpi == 0) dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    const HFONT font = ::CreateFontW(-::MulDiv(points, dpi, 72), 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                                     L"Arial");
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ old = ::SelectObject(dc, font);
    RECT r{0, 0, width, 0};
    ::DrawTextW(dc, text, -1, &r, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_EDITCONTROL);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::DeleteObject(font);
    return SIZE{r.right - r.left, r.bottom - r.top};
}

}  // namespace imagebuttontest
