#include "frame/Win32Surface.h"

#include <gtest/gtest.h>

#include <string>

#include "support/LeakCounters.h"
#include "support/OleSession.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

namespace {

class RecordingClient final : public SurfaceClient {
public:
    std::string trace;
    int paints = 0;
    int resizes = 0;
    int allowedEffects = -1;
    void Paint() override { ++paints; }
    void Resize() override { ++resizes; }
    void Click() override { trace += "Click "; }
    void DblClick() override { trace += "DblClick "; }
    void MouseDown(int16_t& b, int16_t& s, float& x, float& y) override { record("Down", b, s, x, y); }
    void MouseUp(int16_t& b, int16_t& s, float& x, float& y) override { record("Up", b, s, x, y); }
    void KeyDown(int16_t& k, int16_t&) override { trace += "KeyDown" + std::to_string(k) + " "; }
    void KeyPress(int16_t& k) override { trace += "KeyPress" + std::to_string(k) + " "; }
    void AccessKeyPress(int16_t& k) override { trace += "Access" + std::to_string(k) + " "; }
    void OLEStartDrag(SurfaceDataObject& data, int32_t& allowed) override {
        data.SetText(u"dragged");
        trace += "StartDrag(" + std::string(data.GetFormat(13) ? "text" : "none") + ") ";
        allowed = allowedEffects;
    }
    void OLECompleteDrag(int32_t& effect) override { trace += "CompleteDrag" + std::to_string(effect) + " "; }

private:
    void record(const char* what, int16_t b, int16_t s, float x, float y) {
        trace += std::string(what) + std::to_string(b) + "," + std::to_string(s) + "@" +
                 std::to_string(static_cast<int>(x)) + "," + std::to_string(static_cast<int>(y)) + " ";
    }
};

LPARAM at(int x, int y) { return MAKELPARAM(x, y); }

TEST(Win32Surface, MouseAndKeyMessagesBecomeEvents) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 10, 10, 100, 40);
    RecordingClient client;
    surface.SetClient(&client);
    const HWND w = surface.hWnd();
    ASSERT_NE(w, nullptr);

    const struct {
        const char* name;
        std::vector<std::tuple<UINT, WPARAM, LPARAM>> messages;
        std::string expected;
    } cases[] = {
        {"left click", {{WM_LBUTTONDOWN, MK_LBUTTON, at(5, 6)}, {WM_LBUTTONUP, 0, at(5, 6)}},
         "Down1,0@5,6 Up1,0@5,6 Click "},
        // The surface clicks for every button; telling them apart is the control's business.
        {"right click with shift", {{WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, at(1, 2)}, {WM_RBUTTONUP, MK_SHIFT, at(1, 2)}},
         "Down2,1@1,2 Up2,1@1,2 Click "},
        {"released outside", {{WM_LBUTTONDOWN, MK_LBUTTON, at(5, 6)}, {WM_LBUTTONUP, 0, at(500, 6)}},
         "Down1,0@5,6 Up1,0@500,6 "},
        {"double click",
         {{WM_LBUTTONDOWN, MK_LBUTTON, at(3, 3)}, {WM_LBUTTONUP, 0, at(3, 3)}, {WM_LBUTTONDBLCLK, MK_LBUTTON, at(3, 3)},
          {WM_LBUTTONUP, 0, at(3, 3)}},
         "Down1,0@3,3 Up1,0@3,3 Click DblClick Up1,0@3,3 "},
        {"keys", {{WM_KEYDOWN, 'A', 0}, {WM_CHAR, 'a', 0}}, "KeyDown65 KeyPress97 "},
    };
    for (const auto& c : cases) {
        client.trace.clear();
        for (const auto& [message, wParam, lParam] : c.messages) ::SendMessageW(w, message, wParam, lParam);
        EXPECT_EQ(client.trace, c.expected) << c.name;
    }
    surface.SetClient(nullptr);
}

TEST(Win32Surface, SizeScaleAndExtenderUseTwips) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 10, 20, 50, 50);
    RecordingClient client;
    surface.SetClient(&client);

    // 96 dots per inch (Wine's default and Windows' at 100 %): 15 twips a pixel.
    surface.Size(1500.0F, 300.0F);
    EXPECT_EQ(surface.ScaleWidth(), 100.0F);
    EXPECT_EQ(surface.ScaleHeight(), 20.0F);
    EXPECT_GE(client.resizes, 1);
    EXPECT_FLOAT_EQ(surface.ScaleX(2540.0F, kScaleHiMetric, kScalePixels), 96.0F);

    SurfaceExtender& extender = surface.Extender();
    EXPECT_FLOAT_EQ(extender.Left(), 150.0F);
    EXPECT_FLOAT_EQ(extender.Top(), 300.0F);
    extender.Left(450.0F);
    RECT r{};
    ::GetWindowRect(surface.hWnd(), &r);
    ::MapWindowPoints(HWND_DESKTOP, host.get(), reinterpret_cast<POINT*>(&r), 2);
    EXPECT_EQ(r.left, 30);
    EXPECT_EQ(r.top, 20);
    surface.SetClient(nullptr);
}

TEST(Win32Surface, TransparentBackStyleShapesTheWindowByTheMask) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 10, 10);

    // Mask: black everywhere but a white 3 x 3 square at 2..4.
    const HDC screen = ::GetDC(nullptr);
    const HBITMAP mask = ::CreateCompatibleBitmap(screen, 10, 10);
    const HDC paint = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    const HGDIOBJ previous = ::SelectObject(paint, mask);
    RECT all{0, 0, 10, 10};
    RECT kept{2, 2, 5, 5};
    ::FillRect(paint, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    ::FillRect(paint, &kept, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    ::SelectObject(paint, previous);
    ::DeleteDC(paint);

    surface.MaskColor(0);
    surface.MaskPicture(StdPicture::FromBitmap(mask));
    surface.BackStyle(0);
    const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
    ASSERT_EQ(::GetWindowRgn(surface.hWnd(), region), SIMPLEREGION);
    RECT box{};
    ::GetRgnBox(region, &box);
    EXPECT_EQ(box.left, 2);
    EXPECT_EQ(box.top, 2);
    EXPECT_EQ(box.right, 5);
    EXPECT_EQ(box.bottom, 5);

    surface.MaskPicture(nullptr);  // transparent without a mask: nothing exists on screen
    EXPECT_EQ(::GetWindowRgn(surface.hWnd(), region), NULLREGION);

    surface.BackStyle(1);
    EXPECT_EQ(::GetWindowRgn(surface.hWnd(), region), ERROR);  // no region: the whole window
    ::DeleteObject(region);
}

TEST(Win32Surface, AutoRedrawKeepsWhatWasDrawn) {
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 20, 20, true);
    RecordingClient client;
    surface.SetClient(&client);
    const HDC dc = surface.hDC();
    ASSERT_EQ(::GetObjectType(dc), static_cast<DWORD>(OBJ_MEMDC));
    ::SetPixel(dc, 3, 4, RGB(0x12, 0x34, 0x56));
    surface.Refresh();
    testsupport::PumpMessages();
    EXPECT_EQ(client.paints, 0);  // an AutoRedraw surface shows its bitmap without asking
    surface.Size(600.0F, 600.0F);  // 40 x 40: the drawing survives the larger bitmap
    EXPECT_EQ(::GetPixel(surface.hDC(), 3, 4), RGB(0x12, 0x34, 0x56));
    surface.SetClient(nullptr);
}

TEST(Win32Surface, AccessKeysDropModeAndPropertyChanges) {
    const testsupport::OleSession ole;
    testsupport::TestHostWindow host;
    Win32Surface surface(host.get(), 0, 0, 20, 20);
    RecordingClient client;
    surface.SetClient(&client);

    surface.AccessKeys(u"o");
    MSG other{host.get(), WM_SYSCHAR, 'X', 0, 0, {}};
    EXPECT_FALSE(Win32Surface::TranslateAccessKey(other));
    MSG key{host.get(), WM_SYSCHAR, 'O', 0, 0, {}};
    EXPECT_TRUE(Win32Surface::TranslateAccessKey(key));
    EXPECT_EQ(client.trace, "Access79 ");

    std::vector<CtlString> changed;
    surface.OnPropertyChanged([&](const CtlString& name) { changed.push_back(name); });
    surface.PropertyChanged(u"Caption");
    EXPECT_EQ(changed, (std::vector<CtlString>{u"Caption"}));

    // Registered as a drop target exactly while the mode is manual.
    surface.OLEDropMode(1);
    EXPECT_EQ(surface.OLEDropMode(), 1);
    EXPECT_EQ(::RevokeDragDrop(surface.hWnd()), S_OK);
    surface.OLEDropMode(0);  // revoking again is harmless
    surface.OLEDropMode(1);
    surface.OLEDropMode(0);
    EXPECT_EQ(::RevokeDragDrop(surface.hWnd()), DRAGDROP_E_NOTREGISTERED);

    // A drag whose start handler allows nothing ends at once with no effect.
    client.trace.clear();
    client.allowedEffects = 0;
    surface.OLEDrag();
    EXPECT_EQ(client.trace, "StartDrag(text) CompleteDrag0 ");
    surface.SetClient(nullptr);
}

TEST(Win32Surface, LeavesNoObjectsOrWindowsBehind) {
    testsupport::TestHostWindow host;
    const size_t gdiBefore = testsupport::LiveGdiObjects();
    const size_t dcsBefore = testsupport::HeldWindowDCs();
    const size_t windowsBefore = testsupport::ThreadWindowCount();
    for (int i = 0; i < 200; ++i) {
        Win32Surface surface(host.get(), 0, 0, 30, 30, i % 2 == 0);
        surface.Font(std::make_shared<StdFont>(u"Arial", 9.0F + static_cast<float>(i % 3), i % 2 == 0));
        surface.Size(600.0F, 450.0F);
        surface.MaskPicture(nullptr);
        surface.BackStyle(0);
        surface.Refresh();
    }
    EXPECT_EQ(testsupport::LiveGdiObjects(), gdiBefore);
    EXPECT_EQ(testsupport::HeldWindowDCs(), dcsBefore);
    EXPECT_EQ(testsupport::ThreadWindowCount(), windowsBefore);
}

}  // namespace
