// Gallery page: labels in every alignment, back style, border, autosize, round region and button
// style, with captions in many scripts.
#include <memory>
#include <vector>

#include "GalleryPage.h"
#include "controls/ctlUniLabel.h"
#include "controls/ctlUniLabelNoFlick.h"
#include "frame/MemoryPropertyBag.h"
#include "frame/Win32Surface.h"
#include "graphics/DrawButton.h"
#include "graphics/clsFontHDC.h"
#include "graphics/modCommonDraw.h"

namespace {

// Below the tallest column above it (six labels of 28 pixels). The layout is designed at 96 DPI:
// add() and Paint scale it to the gallery's.
constexpr int kAutoSizeTop = 34 + 6 * 28 + 36;

int S(int pixels) { return GalleryScale(pixels); }

struct Placed {
    std::unique_ptr<Win32Surface> surface;
    std::unique_ptr<UniLabelBase> label;  // declared after the surface: goes first
};

class LabelsPage : public GalleryPage {
public:
    void Create(HWND parent, const RECT& area) override {
        m_face = GalleryFaceFor();
        m_origin = POINT{area.left, area.top};
        const int left = 12;
        int y = 34;

        // Alignment on both axes.
        const struct {
            eUniLabel_TextAlign h;
            const char16_t* name;
        } horizontal[] = {{UniLabel_Align_Left, u"Left"}, {UniLabel_Align_Center, u"Centre"}, {UniLabel_Align_Right, u"Right"}};
        const struct {
            eUniLabel_TextVAlign v;
            const char16_t* name;
        } vertical[] = {{UniLabel_VAlign_Top, u"top"}, {UniLabel_VAlign_Middle, u"middle"}, {UniLabel_VAlign_Bottom, u"bottom"}};
        for (int row = 0; row < 3; ++row) {
            for (int col = 0; col < 3; ++col) {
                ctlUniLabel& label = add(parent, left + col * 112, y + row * 46, 106, 42);
                label.Caption(CtlString(horizontal[col].name) + u", " + vertical[row].name);
                label.Alignment(horizontal[col].h);
                label.VAlignment(vertical[row].v);
                label.BorderStyle(UniLabel_BS_Border);
                label.BackColor(0x00FFFFFF);
            }
        }

        // Borders, rounded borders, round regions, colours.
        int x = left + 350;
        const struct {
            const char16_t* caption;
            bool border, rounded, region;
            int32_t back, fore;
        } frames[] = {
            {u"No border", false, false, false, 0x00F4E8D8, 0x00202020},
            {u"Border", true, false, false, 0x00F4E8D8, 0x00202020},
            {u"Rounded border", true, true, false, 0x00D8F0D8, 0x00004000},
            {u"Round region", true, true, true, 0x00404040, 0x00FFFFFF},
            {u"Derived border, back out", true, true, false, 0x00C08040, 0x00FFFFFF},
        };
        for (int i = 0; i < 5; ++i) {
            ctlUniLabel& label = add(parent, x, y + i * 28, 190, 24);
            label.Caption(frames[i].caption);
            label.BorderStyle(frames[i].border ? UniLabel_BS_Border : UniLabel_BS_None);
            label.RoundedBorders(frames[i].rounded);
            if (frames[i].region) label.UseRoundRegions(true);
            label.BackColor(frames[i].back);
            label.ForeColor(frames[i].fore);
            label.Alignment(UniLabel_Align_Center);
            label.VAlignment(UniLabel_VAlign_Middle);
            if (i == 4) label.BackColorOut(0x008080FF);
        }
        ctlUniLabel& disabled = add(parent, x, y + 5 * 28, 190, 24);
        disabled.Caption(u"Disabled (grey text)");
        disabled.BorderStyle(UniLabel_BS_Border);
        disabled.VAlignment(UniLabel_VAlign_Middle);
        disabled.Enabled(false);

        // Back styles: opaque, and transparent with the window shaped by the glyphs.
        x = left + 560;
        ctlUniLabel& opaque = add(parent, x, y, 200, 40);
        opaque.Caption(u"Opaque");
        opaque.BackColor(0x00E0E0FF);
        opaque.BorderStyle(UniLabel_BS_Border);
        opaque.Font(std::make_shared<StdFont>(m_face, 18.0F, true));
        ctlUniLabel& transparent = addTransparent(parent, x, y + 46, 200, 40, u"Transparent");
        (void)transparent;
        auto noFlickSurface = std::make_unique<Win32Surface>(parent, m_origin.x + S(x), m_origin.y + S(y + 92), S(260),
                                                             S(40), true);
        auto noFlick = std::make_unique<ctlUniLabelNoFlick>(*noFlickSurface);
        noFlickSurface->Font(std::make_shared<StdFont>(m_face, 18.0F, true));
        noFlick->Caption(u"No-flicker label");
        noFlick->ForeColor(0x00006000);
        noFlick->BackStyle(UniLabel_BS_Transparent);
        m_labels.push_back({std::move(noFlickSurface), std::move(noFlick)});

        // AutoSize: anchored by alignment (left grows right, centre both ways, right grows left).
        y = kAutoSizeTop;
        const struct {
            eUniLabel_TextAlign h;
            const char16_t* caption;
        } sized[] = {{UniLabel_Align_Left, u"AutoSize, left\r\nsecond line"},
                     {UniLabel_Align_Center, u"AutoSize, centre\r\nthree\r\nlines"},
                     {UniLabel_Align_Right, u"AutoSize, right: grows to the left"}};
        for (int i = 0; i < 3; ++i) {
            // Each starts 40 wide, centred on its column mark.
            ctlUniLabel& label = add(parent, left + 130 + i * 250, y, 40, 20);
            label.Alignment(sized[i].h);
            label.BorderStyle(UniLabel_BS_Border);
            label.Margin(S(4));  // the page is the user here, and sets it for its DPI
            label.BackColor(0x00E8FFFF);
            label.Caption(sized[i].caption);
            label.AutoSize(true);
            m_sizedByContent.push_back(Surface(label));
        }

        // Every button style as a background.
        y += 76;
        const char16_t* const styles[] = {u"Flat", u"Xp", u"XpEx", u"Vista", u"Glass", u"Vista2", u"Vista3", u"Vista4", u"Xp2"};
        for (int s = 0; s <= 8; ++s) {
            ctlUniLabel& label = add(parent, left + s * 110, y, 104, 28);
            label.Caption(styles[s]);
            label.Style(s);
            label.BorderStyle(UniLabel_BS_Border);
            label.RoundedBorders(s % 2 == 1);
            label.BackColor(0x00D08040);
            label.ForeColor(0x00FFFFFF);
            label.Alignment(UniLabel_Align_Center);
            label.VAlignment(UniLabel_VAlign_Middle);
        }
        ctlUniLabel& followsDefault = add(parent, left, y + 32, 300, 24);
        followsDefault.Caption(u"Style -1: the library's default style");
        followsDefault.Style(iCtlBtnStyle_UseDefault);
        followsDefault.BorderStyle(UniLabel_BS_Border);
        followsDefault.VAlignment(UniLabel_VAlign_Middle);

        // Scripts.
        y += 86;
        const struct {
            const char16_t* caption;
            eUniLabel_TextAlign h;
        } scripts[] = {
            {u"Latin: Quick brown fox, \u00E9\u00E8\u00E7\u00F1\u00DF", UniLabel_Align_Left},
            {u"Greek: \u039A\u03B1\u03BB\u03B7\u03BC\u03AD\u03C1\u03B1 \u03BA\u03CC\u03C3\u03BC\u03B5", UniLabel_Align_Left},
            {u"Cyrillic: \u0417\u0434\u0440\u0430\u0432\u0441\u0442\u0432\u0443\u0439, \u043C\u0438\u0440", UniLabel_Align_Left},
            {u"\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD :Hebrew", UniLabel_Align_Right},
            {u"\u0645\u0631\u062D\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645 :Arabic", UniLabel_Align_Right},
            {u"Devanagari: \u0928\u092E\u0938\u094D\u0924\u0947 \u0926\u0941\u0928\u093F\u092F\u093E", UniLabel_Align_Left},
            {u"Chinese: \u4F60\u597D\uFF0C\u4E16\u754C", UniLabel_Align_Left},
            {u"Japanese: \u3053\u3093\u306B\u3061\u306F\u4E16\u754C \u30AB\u30BF\u30AB\u30CA", UniLabel_Align_Left},
            {u"Emoji: \U0001F600 \U0001F30D \U0001F680 (surrogate pairs)", UniLabel_Align_Left},
        };
        for (int i = 0; i < 9; ++i) {
            ctlUniLabel& label = add(parent, left + (i % 3) * 330, y + (i / 3) * 30, 320, 26);
            label.Caption(scripts[i].caption);
            label.Alignment(scripts[i].h);
            label.VAlignment(UniLabel_VAlign_Middle);
            label.BorderStyle(UniLabel_BS_Border);
            label.BackColor(0x00FFFFFF);
            label.Font(std::make_shared<StdFont>(GalleryFaceFor(scripts[i].caption), 10.0F));
        }
        m_scriptsTop = y;
    }

    void Paint(HDC hdc, const RECT& area) override {
        clsFontHDC font;
        try {
            font.SetFontToDC(hdc, m_face, GalleryPoints(hdc, 10), 0x00202020, true);
        } catch (...) {
        }
        ::SetBkMode(hdc, TRANSPARENT);
        // Design coordinates (96 DPI, from the page's corner) to the page at the gallery's DPI.
        const auto text = [&](const char16_t* caption, int l, int t, int r, int b) {
            DrawTextCoords(hdc, caption, area.left + S(l), area.top + S(t), area.left + S(r), area.top + S(b),
                           DT_SINGLELINE | DT_NOPREFIX);
        };
        const auto bar = [&](int l, int t, int r, int b, int32_t colour) {
            DrawRectCoords(hdc, area.left + S(l), area.top + S(t), area.left + S(r), area.top + S(b), colour, true);
        };
        const int left = 12;
        text(u"ctlUniLabel: alignment on both axes", left, 10, left + 340, 30);
        text(u"Borders and regions", left + 350, 10, left + 550, 30);
        text(u"Back styles (opaque, glyph-shaped)", left + 560, 10, left + 900, 30);
        // A striped backdrop behind the transparent labels, so that the holes between glyphs show.
        for (int i = 0; i < 26; ++i) bar(left + 560 + i * 10, 80, left + 565 + i * 10, 166, 0x00B0B0B0);
        const int autoTop = kAutoSizeTop;
        text(u"AutoSize (the marks show where each label started)", left, autoTop - 22, left + 600, autoTop - 4);
        for (int i = 0; i < 3; ++i) bar(left + 130 + i * 250, autoTop - 4, left + 170 + i * 250, autoTop - 2, 0x000000C0);
        text(u"Every button style as background", left, autoTop + 56, left + 600, autoTop + 74);
        text(u"Captions in many scripts", left, m_scriptsTop - 22, left + 600, m_scriptsTop - 4);
    }

    bool SizedByContent(HWND child) const override {
        for (const HWND sized : m_sizedByContent) {
            if (sized == child) return true;
        }
        return false;
    }

private:
    // `x`, `y`, `width`, `height` in the page's design pixels (96 DPI, from the page's corner).
    ctlUniLabel& add(HWND parent, int x, int y, int width, int height) {
        auto surface =
            std::make_unique<Win32Surface>(parent, m_origin.x + S(x), m_origin.y + S(y), S(width), S(height));
        auto label = std::make_unique<ctlUniLabel>(*surface);
        surface->Font(std::make_shared<StdFont>(m_face, 9.0F));
        ctlUniLabel& ref = *label;
        m_labels.push_back({std::move(surface), std::move(label)});
        return ref;
    }

    // BackStyle of ctlUniLabel comes only through its bag, as in a designer.
    ctlUniLabel& addTransparent(HWND parent, int x, int y, int width, int height, const CtlString& caption) {
        ctlUniLabel& label = add(parent, x, y, width, height);
        MemoryPropertyBag bag;
        bag.Set(u"BackStyle", int32_t{0});
        bag.Set(u"Caption", pvStringToBag(caption));
        bag.Set(u"ForeColor", int32_t{0x00800000});
        bag.Set(u"Font", std::make_shared<StdFont>(m_face, 18.0F, true));
        label.ReadProperties(bag);
        return label;
    }

    HWND Surface(const ctlUniLabel& label) const {
        for (const Placed& placed : m_labels) {
            if (placed.label.get() == &label) return placed.surface->hWnd();
        }
        return nullptr;
    }

    CtlString m_face;
    POINT m_origin{0, 0};
    int m_scriptsTop = 0;  // design pixels
    std::vector<Placed> m_labels;
    std::vector<HWND> m_sizedByContent;
};

}  // namespace

TC_GALLERY_PAGE(LabelsPage, 20, L"Labels")
