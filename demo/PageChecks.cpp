// Gallery page: check boxes and radios in every button style, both alignments, enabled and
// disabled, captions in several scripts, and two radio groups in two containers of one form.
#include <memory>
#include <vector>

#include "GalleryPage.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniRadioXP.h"
#include "frame/HostForm.h"
#include "frame/Win32Surface.h"
#include "graphics/DrawButton.h"
#include "graphics/clsFontHDC.h"
#include "graphics/modCommonDraw.h"

namespace {

int S(int pixels) { return GalleryScale(pixels); }

const char16_t* const kCaptions[] = {
    u"Use defaults",          u"Flat",        u"XP",          u"XP extended",      u"Vista",
    u"Glass",                 u"Vista 2",     u"Vista 3",     u"Vista 4",          u"XP 2"};
const char16_t* const kScripts[] = {
    u"\u0416\u0443\u0440\u043D\u0430\u043B \u0441\u043E\u0431\u044B\u0442\u0438\u0439",  // Russian
    u"\u65E5\u672C\u8A9E\u306E\u8868\u793A",                                            // Japanese
    u"\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD",                               // Hebrew
    u"\u0928\u092E\u0938\u094D\u0924\u0947 \u0926\u0941\u0928\u093F\u092F\u093E",       // Hindi
    u"Smile \U0001F600 &&more",
};

struct Placed {
    std::unique_ptr<Win32Surface> surface;
    std::unique_ptr<CheckRadioBase> control;  // declared after the surface: goes first
};

class ChecksPage : public GalleryPage {
public:
    void Create(HWND parent, const RECT& area) override {
        m_origin = POINT{area.left, area.top};
        const int left = 12;
        // One check box per style, every other one ticked.
        for (int style = -1; style <= 8; ++style) {
            auto& check = add<ctlUniCheckXP>(parent, kCaptions[style + 1], left, 34 + (style + 1) * 24, 170, 22);
            check.Style(style);
            check.Pressed(style % 2 == 0);
            check.Tip(u"Style " + std::u16string(kCaptions[style + 1]));
        }
        // Scripts, the box at the right, colours, disabled.
        for (int i = 0; i < 5; ++i) {
            auto& check = add<ctlUniCheckXP>(parent, kScripts[i], left + 190, 34 + i * 24, 220, 22);
            check.Style(iCtlBtnStyle_Vista);
            check.Align(i % 2);
            check.Pressed(i != 2);
        }
        auto& coloured = add<ctlUniCheckXP>(parent, u"&Coloured box", left + 190, 34 + 5 * 24, 220, 22);
        coloured.CheckBackColor(0x00E0F0FF);
        coloured.CheckForeColor(0x000060C0);
        coloured.BorderColor(0x000080FF);
        coloured.Pressed(true);
        auto& disabled = add<ctlUniCheckXP>(parent, u"Disabled, ticked", left + 190, 34 + 6 * 24, 220, 22);
        disabled.Pressed(true);
        disabled.Enabled(false);
        add<ctlUniCheckXP>(parent, u"A caption of two lines\r\nis centred by its height", left + 190, 34 + 7 * 24, 220,
                           34);

        // Two groups: pressing a radio releases only the others of its own container.
        const struct {
            const char16_t* container;
            int x;
        } groups[] = {{u"fraSize", left + 430}, {u"fraScript", left + 640}};
        for (const auto& group : groups) {
            for (int i = 0; i < 4; ++i) {
                const char16_t* caption = group.x == groups[0].x ? kCaptions[i + 1] : kScripts[i];
                auto& radio = add<ctlUniRadioXP>(parent, caption, group.x + 8, 54 + i * 24, 190, 22, group.container, i);
                radio.Style(i == 3 ? iCtlBtnStyle_Glass : iCtlBtnStyle_UseDefault);
                radio.Align(group.x == groups[0].x ? 0 : i % 2);
                if (i == 1) radio.Pressed(true);
            }
        }
        auto& radioOff = add<ctlUniRadioXP>(parent, u"Disabled, selected", left + 438, 160, 190, 22, u"fraOff", 0);
        radioOff.Pressed(true);
        radioOff.Enabled(false);
        auto& radioColour =
            add<ctlUniRadioXP>(parent, u"Coloured dot and ring", left + 648, 160, 190, 22, u"fraOff", 1);
        radioColour.RadioBackColor(0x00D0FFD0);
        radioColour.RadioForeColor(0x00008000);
        radioColour.BorderColor(0x00409040);
    }

    void Paint(HDC hdc, const RECT& area) override {
        clsFontHDC font;
        try {
            font.SetFontToDC(hdc, GalleryFaceFor(), GalleryPoints(hdc, 10), 0x00202020, true);
        } catch (...) {
        }
        ::SetBkMode(hdc, TRANSPARENT);
        const auto text = [&](const char16_t* caption, int l, int t, int r) {
            DrawTextCoords(hdc, caption, area.left + S(l), area.top + S(t), area.left + S(r), area.top + S(t + 20),
                           DT_SINGLELINE | DT_NOPREFIX);
        };
        const int left = 12;
        text(u"ctlUniCheckXP: styles", left, 10, left + 185);
        text(u"Scripts, alignment, colours", left + 190, 10, left + 420);
        text(u"ctlUniRadioXP: group one", left + 430, 10, left + 630);
        text(u"group two (its own container)", left + 640, 10, left + 860);
        // A frame around each radio group: each is a container of its own.
        for (const int x : {left + 430, left + 640}) {
            RECT box{area.left + S(x), area.top + S(44), area.left + S(x + 204), area.top + S(154)};
            ::DrawEdge(hdc, &box, EDGE_ETCHED, BF_RECT);
        }
    }

private:
    template <class Control>
    Control& add(HWND parent, const char16_t* caption, int x, int y, int width, int height,
                 const char16_t* container = nullptr, int index = -1) {
        auto surface = std::make_unique<Win32Surface>(parent, m_origin.x + S(x), m_origin.y + S(y), S(width), S(height));
        surface->Font(std::make_shared<StdFont>(GalleryFaceFor(caption), 9.0F));
        if (container != nullptr) {
            surface->HostExtender().Name(u"optChoice");
            surface->HostExtender().Index(int16_t(index));
            surface->HostExtender().Container(container);
            m_form.Add(*surface);
        }
        auto control = std::make_unique<Control>(*surface);
        control->InitProperties();
        control->Caption(caption);
        Control& ref = *control;
        m_controls.push_back({std::move(surface), std::move(control)});
        return ref;
    }

    POINT m_origin{};
    HostForm m_form;  // declared before the controls: they leave it as they go
    std::vector<Placed> m_controls;
};

}  // namespace

TC_GALLERY_PAGE(ChecksPage, 23, L"Checks and radios")
