// Benchmark: one full repaint (WM_PAINT through UpdateWindow) of a 120 x 28 ctlUniButtonImageXP
// with a 16 x 16 picture (left of the caption, see-through by its pixel at 0,0), against a
// BS_OWNERDRAW "BUTTON" of the same size whose WM_DRAWITEM draws the frame (DrawFrameControl),
// the same picture as an icon (DrawIconEx) and the same text (DrawTextW), in the same run. Rounds
// alternate between the two and each keeps its best round.
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "controls/ctlUniButtonImageXP.h"
#include "frame/Win32Surface.h"
#include "graphics/DrawButton.h"

namespace {

constexpr int kPaintsPerRound = 2000;
constexpr int kRounds = 7;
constexpr int kWidth = 120;
constexpr int kHeight = 28;
const wchar_t kCaption[] = L"Save \u0416\u03A9";

HICON g_icon = nullptr;
HFONT g_font = nullptr;

double secondsForPaints(HWND window) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kPaintsPerRound; ++i) {
        ::InvalidateRect(window, nullptr, TRUE);
        ::UpdateWindow(window);
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void pump() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
}

// The owner of the native button draws it: frame, icon left of the text, text centred.
LRESULT CALLBACK hostProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DRAWITEM) {
        const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        RECT r = item->rcItem;
        ::DrawFrameControl(item->hDC, &r, DFC_BUTTON, DFCS_BUTTONPUSH | ((item->itemState & ODS_SELECTED) ? DFCS_PUSHED : 0));
        ::DrawIconEx(item->hDC, r.left + 8, (r.bottom - 16) / 2, g_icon, 16, 16, 0, nullptr, DI_NORMAL);
        const HGDIOBJ old = ::SelectObject(item->hDC, g_font);
        ::SetBkMode(item->hDC, TRANSPARENT);
        RECT text{r.left + 27, r.top, r.right - 4, r.bottom};
        ::DrawTextW(item->hDC, kCaption, -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        ::SelectObject(item->hDC, old);
        return TRUE;
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

// A 16 x 16 picture: a blue square on magenta, as a bitmap for the image button and as an icon
// (colour + mask) for the native one.
HBITMAP makeBitmap(HDC screen) {
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 16, 16);
    const HDC dc = ::CreateCompatibleDC(screen);
    const HGDIOBJ old = ::SelectObject(dc, bitmap);
    const HBRUSH magenta = ::CreateSolidBrush(RGB(255, 0, 255));
    const HBRUSH blue = ::CreateSolidBrush(RGB(0, 64, 192));
    RECT all{0, 0, 16, 16};
    RECT inner{3, 3, 13, 13};
    ::FillRect(dc, &all, magenta);
    ::FillRect(dc, &inner, blue);
    ::DeleteObject(magenta);
    ::DeleteObject(blue);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    return bitmap;
}

}  // namespace

int main() {
    WNDCLASSW host{};
    host.lpfnWndProc = hostProc;
    host.hInstance = ::GetModuleHandleW(nullptr);
    host.lpszClassName = L"BenchImageButtonHost";
    host.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
    ::RegisterClassW(&host);
    const HWND form = ::CreateWindowExW(0, host.lpszClassName, L"bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN,
                                        0, 0, 400, 200, nullptr, nullptr, host.hInstance, nullptr);
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    const HBITMAP colour = makeBitmap(screen);
    const HBITMAP picture = makeBitmap(screen);
    ::ReleaseDC(nullptr, screen);
    // The icon's mask: white (transparent) where the bitmap is magenta.
    const BYTE maskBits[32] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xE0, 0x07, 0xE0, 0x07, 0xE0, 0x07, 0xE0, 0x07,
                               0xE0, 0x07, 0xE0, 0x07, 0xE0, 0x07, 0xE0, 0x07, 0xE0, 0x07, 0xE0, 0x07, 0xFF, 0xFF,
                               0xFF, 0xFF, 0xFF, 0xFF};
    const HBITMAP mask = ::CreateBitmap(16, 16, 1, 1, maskBits);
    ICONINFO info{TRUE, 0, 0, mask, colour};
    g_icon = ::CreateIconIndirect(&info);
    g_font = ::CreateFontW(-::MulDiv(8, dpi, 72), 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");

    Win32Surface surface(form, 10, 10, kWidth, kHeight);
    surface.Font(std::make_shared<StdFont>(u"Tahoma", 8.0F));
    ctlUniButtonImageXP button(surface);
    button.Caption(reinterpret_cast<const char16_t*>(kCaption));
    button.Picture(StdPicture::FromBitmap(picture, true));
    button.ImagePos(eubiip_Left);
    button.Style(iCtlBtnStyle_Flat);

    const HWND native = ::CreateWindowExW(0, L"BUTTON", kCaption, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 10, 50, kWidth,
                                          kHeight, form, nullptr, host.hInstance, nullptr);
    pump();

    double bestButton = 1e9;
    double bestNative = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        bestNative = std::min(bestNative, secondsForPaints(native));
        bestButton = std::min(bestButton, secondsForPaints(surface.hWnd()));
    }
    const double perButton = bestButton / kPaintsPerRound * 1e6;
    const double perNative = bestNative / kPaintsPerRound * 1e6;
    std::printf("image button paint 120x28, 16x16 picture: %.2f us per paint (best of %d rounds of %d)\n", perButton,
                kRounds, kPaintsPerRound);
    std::printf("owner-drawn BUTTON paint 120x28, icon:     %.2f us per paint (baseline, same run)\n", perNative);
    std::printf("ratio image button / owner-drawn BUTTON: %.2f\n", perButton / perNative);

    ::DestroyWindow(native);
    ::DestroyWindow(form);
    ::DestroyIcon(g_icon);
    ::DeleteObject(mask);
    ::DeleteObject(colour);
    ::DeleteObject(g_font);
    return 0;
}
