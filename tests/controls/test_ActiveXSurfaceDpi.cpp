// The ActiveX surface at another DPI: its font, without a window and in place, is made from the
// font's points at the surface's DPI, and made again when the DPI changes.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "com/ActiveXSurface.h"
#include "controls/ctlUniLabel.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

using testsupport::PumpMessages;
using tc::com::ActiveXSurface;

constexpr UINT kDpiChangedAfterParent = 0x02E3;
constexpr int kPoints = 12;
const wchar_t* const kCaption = L"Scaled";

// The height a font of `points` gets at `dpi`, as CreateFont is asked for it.
LONG fontHeightAt(int points, int dpi) { return -static_cast<LONG>(std::lround(points * dpi / 72.0)); }

LONG selectedFontHeight(HDC dc) {
    LOGFONTW lf{};
    const HGDIOBJ font = ::GetCurrentObject(dc, OBJ_FONT);
    if (font == nullptr || ::GetObjectW(font, sizeof(lf), &lf) == 0) return 0;
    return lf.lfHeight;
}

struct LabelOnActiveX {
    explicit LabelOnActiveX(int32_t dpi) : surface(true) {
        surface.OverrideDpi(dpi);
        surface.PixelExtent(40, 20);
        surface.Font(std::make_shared<StdFont>(u"Arial", static_cast<float>(kPoints)));
        label = std::make_unique<ctlUniLabel>(surface);
        label->Caption(reinterpret_cast<const char16_t*>(kCaption));
    }
    ~LabelOnActiveX() {
        label.reset();
        surface.DestroyWindow();
    }
    ActiveXSurface surface;
    std::unique_ptr<ctlUniLabel> label;
};

TEST(ActiveXSurfaceDpi, FontFollowsTheDpiWithAndWithoutAWindow) {
    testsupport::TestHostWindow host;
    for (const int dpi : {96, 144, 192}) {
        SCOPED_TRACE(dpi);
        LabelOnActiveX l(dpi);
        // Without a window the surface draws into its own bitmap, with its own font.
        EXPECT_EQ(l.surface.Dpi(), dpi);
        EXPECT_EQ(selectedFontHeight(l.surface.hDC()), fontHeightAt(kPoints, dpi));

        // In place, the window carries the DPI and makes the font for it.
        l.surface.CreateWindowIn(host.get(), RECT{10, 10, 50, 30});
        ASSERT_NE(l.surface.hWnd(), nullptr);
        PumpMessages();
        EXPECT_EQ(l.surface.Dpi(), dpi);
        EXPECT_EQ(selectedFontHeight(l.surface.hDC()), fontHeightAt(kPoints, dpi));
    }
}

TEST(ActiveXSurfaceDpi, TheInPlaceWindowRebuildsItsFontWhenItsParentChangesDpi) {
    testsupport::TestHostWindow host;
    LabelOnActiveX l(96);
    l.surface.CreateWindowIn(host.get(), RECT{10, 10, 50, 30});
    const HWND hwnd = l.surface.hWnd();
    ASSERT_NE(hwnd, nullptr);
    PumpMessages();
    struct Step {
        int dpi;
    };
    for (const Step step : {Step{192}, Step{144}, Step{96}}) {
        SCOPED_TRACE(step.dpi);
        // What a parent moved to a monitor of another DPI passes to its children.
        l.surface.OverrideDpi(step.dpi);
        ::SendMessageW(hwnd, kDpiChangedAfterParent, 0, 0);
        PumpMessages();
        EXPECT_EQ(selectedFontHeight(l.surface.hDC()), fontHeightAt(kPoints, step.dpi));
        EXPECT_EQ(l.surface.Dpi(), step.dpi);
    }
    // Back without a window, the surface's own font is made for the DPI it answers now.
    l.surface.OverrideDpi(192);
    l.surface.DestroyWindow();
    EXPECT_EQ(selectedFontHeight(l.surface.hDC()), fontHeightAt(kPoints, 192));
    // Without an override and a site, the screen's DPI.
    l.surface.OverrideDpi(0);
    const HDC screen = ::GetDC(nullptr);
    const int screenDpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    EXPECT_EQ(l.surface.Dpi(), screenDpi);
    EXPECT_EQ(selectedFontHeight(l.surface.hDC()), fontHeightAt(kPoints, screenDpi));
}

}  // namespace
