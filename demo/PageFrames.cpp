// Gallery page: frames in both looks and several scripts, with controls inside them, and tips on
// every control while a tooltip manager is alive on the page.
#include <memory>
#include <vector>

#include "GalleryPage.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "controls/ctlUniTooltipManager.h"
#include "frame/Win32Surface.h"
#include "graphics/clsFontHDC.h"
#include "graphics/modCommonDraw.h"

namespace {

int S(int pixels) { return GalleryScale(pixels); }

struct PlacedFrame {
    std::unique_ptr<Win32Surface> surface;
    std::unique_ptr<ctlUniFrameXP> frame;  // declared after the surface: goes first
};

struct PlacedLabel {
    std::unique_ptr<Win32Surface> surface;
    std::unique_ptr<ctlUniLabel> label;
};

class FramesPage : public GalleryPage {
public:
    void Create(HWND parent, const RECT& area) override {
        m_origin = POINT{area.left, area.top};
        // The manager first: it has no look at run time, and while it lives every control's Tip shows.
        m_managerSurface = std::make_unique<Win32Surface>(parent, area.left, area.top, S(24), S(24));
        m_manager = std::make_unique<ctlUniTooltipManager>(*m_managerSurface);
        m_manager->InitProperties();
        m_manager->PersistentTip(true);

        const struct {
            const char16_t* caption;
            const char16_t* tip;
            bool vista, shadow, enabled;
            int32_t back, fore, titleBack;
        } frames[] = {
            {u"Title bar", u"VistaStyle True: the bar fades from left to right", true, false, true, 0x00F0E8E0,
             0x00202020, -1},
            {u"Own title colour, shadow", u"TitleBackColor set, UseShadow True", true, true, true, 0x00F8F0E8,
             0x00FFFFFF, 0x00A05020},
            {u"\u0413\u0440\u0443\u043F\u043F\u0430 \u2014 \u0437\u0430\u0433\u043E\u043B\u043E\u0432\u043E\u043A",
             u"\u041F\u043E\u0434\u0441\u043A\u0430\u0437\u043A\u0430 \u043D\u0430 \u0440\u0443\u0441\u0441\u043A\u043E\u043C",
             true, false, true, 0x00E0F0E0, 0x00004000, -1},
            {u"Classic groove", u"VistaStyle False: the title sits in the groove", false, false, true, 0x00F0F0F0,
             0x00202020, -1},
            {u"\u5206\u7EC4\u6846 \u30B0\u30EB\u30FC\u30D7",
             u"\u63D0\u793A\uFF1A\u4E2D\u6587 \u65E5\u672C\u8A9E \u05E2\u05D1\u05E8\u05D9\u05EA", false, true, true,
             0x00E8E8F8, 0x00400000, -1},
            {u"Disabled", u"Enabled False: greyed, and so are the controls inside", true, false, false,
             0x00F0F0F0, 0x00202020, -1},
        };
        for (int i = 0; i < 6; ++i) {
            const int x = 12 + (i % 3) * 300;
            const int y = 40 + (i / 3) * 170;
            auto surface = std::make_unique<Win32Surface>(parent, m_origin.x + S(x), m_origin.y + S(y), S(286), S(150));
            surface->Font(std::make_shared<StdFont>(GalleryFaceFor(frames[i].caption), 10.0F, true));
            auto frame = std::make_unique<ctlUniFrameXP>(*surface);
            frame->Caption(frames[i].caption);
            frame->Tip(frames[i].tip);
            frame->VistaStyle(frames[i].vista);
            frame->UseShadow(frames[i].shadow);
            frame->BackColor(frames[i].back);
            frame->ForeColor(frames[i].fore);
            frame->TitleBackColor(frames[i].titleBack);
            if (!frames[i].enabled) frame->Enabled(false);
            // Two controls inside, in the frame's own window.
            addLabel(surface->hWnd(), 12, 40, u"A label inside the frame", u"Labels show their tips too");
            addLabel(surface->hWnd(), 12, 80, u"\u05EA\u05D5\u05D5\u05D9\u05EA \u05D1\u05E2\u05D1\u05E8\u05D9\u05EA",
                     u"\u05D8\u05D9\u05E4 \u05D1\u05E2\u05D1\u05E8\u05D9\u05EA");
            m_frames.push_back({std::move(surface), std::move(frame)});
        }
    }

    void Paint(HDC hdc, const RECT& area) override {
        clsFontHDC font;
        try {
            font.SetFontToDC(hdc, GalleryFaceFor(), GalleryPoints(hdc, 10), 0x00202020, true);
        } catch (...) {
        }
        ::SetBkMode(hdc, TRANSPARENT);
        DrawTextCoords(hdc, u"ctlUniFrameXP in both looks; rest the mouse on any control for its tip", area.left + S(40),
                       area.top + S(10), area.left + S(900), area.top + S(30), DT_SINGLELINE | DT_NOPREFIX);
    }

private:
    void addLabel(HWND frameWindow, int x, int y, const CtlString& caption, const CtlString& tip) {
        auto surface = std::make_unique<Win32Surface>(frameWindow, S(x), S(y), S(260), S(26));
        surface->Font(std::make_shared<StdFont>(GalleryFaceFor(caption), 9.0F));
        auto label = std::make_unique<ctlUniLabel>(*surface);
        label->Caption(caption);
        label->Tip(tip);
        label->BorderStyle(UniLabel_BS_Border);
        label->BackColor(0x00FFFFFF);
        label->VAlignment(UniLabel_VAlign_Middle);
        m_labels.push_back({std::move(surface), std::move(label)});
    }

    POINT m_origin{0, 0};
    std::unique_ptr<Win32Surface> m_managerSurface;
    std::unique_ptr<ctlUniTooltipManager> m_manager;
    std::vector<PlacedFrame> m_frames;
    // Declared after the frames: the labels, whose windows are the frames' children, go first.
    std::vector<PlacedLabel> m_labels;
};

}  // namespace

TC_GALLERY_PAGE(FramesPage, 24, L"Frames and tips")
