// Benchmark: one full repaint (WM_PAINT through UpdateWindow) of a 200 x 24 ctlUniLabel with a
// caption, against a "STATIC" control of the same size, font and text, in the same run. Rounds
// alternate between the two and each keeps its best round, so a slow moment of the machine hits
// both alike.
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "controls/ctlUniLabel.h"
#include "frame/Win32Surface.h"

namespace {

constexpr int kPaintsPerRound = 2000;
constexpr int kRounds = 7;

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

}  // namespace

int main() {
    const CtlString caption = u"Label caption \u0416\u03A9";
    const HWND host = ::CreateWindowExW(0, L"STATIC", L"bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                        400, 200, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    Win32Surface surface(host, 10, 10, 200, 24);
    ctlUniLabel label(surface);
    surface.Font(std::make_shared<StdFont>(u"Tahoma", 8.0F));
    label.Caption(caption);
    label.BorderStyle(UniLabel_BS_Border);

    const HWND native = ::CreateWindowExW(0, L"STATIC", AsWide(caption), WS_CHILD | WS_VISIBLE | SS_LEFT, 10, 50, 200,
                                          24, host, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    const HFONT font = ::CreateFontW(-::MulDiv(8, dpi, 72), 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    ::SendMessageW(native, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    pump();

    double bestLabel = 1e9;
    double bestNative = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        bestNative = std::min(bestNative, secondsForPaints(native));
        bestLabel = std::min(bestLabel, secondsForPaints(surface.hWnd()));
    }
    const double perLabel = bestLabel / kPaintsPerRound * 1e6;
    const double perNative = bestNative / kPaintsPerRound * 1e6;
    std::printf("label paint 200x24:  %.2f us per paint (best of %d rounds of %d)\n", perLabel, kRounds, kPaintsPerRound);
    std::printf("STATIC paint 200x24: %.2f us per paint (baseline, same run)\n", perNative);
    std::printf("ratio label / STATIC: %.2f\n", perLabel / perNative);

    ::DestroyWindow(native);
    ::DeleteObject(font);
    ::DestroyWindow(host);
    return 0;
}
