// The surface's DPI: where it comes from, the scaling of self-chosen sizes, and the DPI messages.
#include "frame/WindowDpi.h"

#include <gtest/gtest.h>

#include <memory>

#include "frame/Win32Surface.h"
#include "support/TestHostWindow.h"

namespace {

constexpr UINT kDpiChanged = 0x02E0;
constexpr UINT kDpiChangedAfterParent = 0x02E3;

class DpiClient final : public SurfaceClient {
public:
    int changes = 0;
    void DpiChanged() override { ++changes; }
};

int fontHeightOf(HDC dc) {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc, &metrics);
    return metrics.tmHeight;
}

// The height of Arial at `points` made by the test itself for `dpi`.
int referenceHeight(int points, int dpi) {
    const HFONT font = ::CreateFontW(-::MulDiv(points, dpi, 72), 0, 0, 0, 400, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                                     L"Arial");
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = ::SelectObject(dc, font);
    const int height = fontHeightOf(dc);
    ::SelectObject(dc, previous);
    ::DeleteDC(dc);
    ::DeleteObject(font);
    return height;
}

TEST(WindowDpi, ScalesFromNinetySixRoundingHalfAway) {
    const struct {
        int32_t pixels, dpi, expected;
    } cases[] = {
        {2, 96, 2}, {2, 192, 4}, {1, 144, 2}, {2, 144, 3}, {4, 144, 6}, {2, 120, 3}, {1, 120, 1},
        {5, 288, 15}, {-2, 192, -4}, {0, 192, 0}, {7, 0, 7},  // 0: no DPI known, unchanged
    };
    for (const auto& c : cases) EXPECT_EQ(ScaleToDpi(c.pixels, c.dpi), c.expected) << c.pixels << " at " << c.dpi;
}

TEST(WindowDpi, SurfaceFollowsItsWindowUnlessOverridden) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 100, 30);
    surface.Font(std::make_shared<StdFont>(u"Arial", 12.0F));
    // Wine 8 answers GetDpiForWindow with LogPixels, as the screen DC does.
    const HDC screen = ::GetDC(nullptr);
    const int32_t screenDpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    EXPECT_EQ(WindowDpi(host.get()), screenDpi);
    EXPECT_EQ(WindowDpi(nullptr), screenDpi);
    EXPECT_EQ(surface.Dpi(), screenDpi);
    const int height = fontHeightOf(surface.hDC());
    EXPECT_EQ(height, referenceHeight(12, screenDpi));

    // The surface's font is made at the DPI it answers.
    surface.OverrideDpi(2 * screenDpi);
    EXPECT_EQ(surface.Dpi(), 2 * screenDpi);
    EXPECT_EQ(fontHeightOf(surface.hDC()), referenceHeight(12, 2 * screenDpi));
    EXPECT_GT(fontHeightOf(surface.hDC()), 2 * height - 2);
    surface.OverrideDpi(0);
    EXPECT_EQ(surface.Dpi(), screenDpi);
    EXPECT_EQ(fontHeightOf(surface.hDC()), height);

    // Surfaces created while a host asks for a DPI answer it; later ones follow their windows again.
    Win32Surface::OverrideDpiForNewSurfaces(144);
    Win32Surface chosen(host.get(), 0, 40, 100, 30);
    Win32Surface::OverrideDpiForNewSurfaces(0);
    Win32Surface plain(host.get(), 0, 80, 100, 30);
    EXPECT_EQ(chosen.Dpi(), 144);
    EXPECT_EQ(plain.Dpi(), screenDpi);
}

TEST(WindowDpi, BothDpiMessagesReachTheClientOnce) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 5, 5, 100, 30);
    DpiClient client;
    surface.SetClient(&client);
    ::SendMessageW(surface.hWnd(), kDpiChangedAfterParent, 0, 0);
    EXPECT_EQ(client.changes, 1);
    // A child window ignores the suggested rectangle of WM_DPICHANGED: its parent places it.
    RECT suggested{0, 0, 400, 400};
    ::SendMessageW(surface.hWnd(), kDpiChanged, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
    EXPECT_EQ(client.changes, 2);
    RECT r{};
    ::GetClientRect(surface.hWnd(), &r);
    EXPECT_EQ(r.right, 100);
    EXPECT_EQ(r.bottom, 30);
    surface.SetClient(nullptr);
}

}  // namespace
