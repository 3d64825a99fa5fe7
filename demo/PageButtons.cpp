// Gallery page 1: every DrawButton style in several back colours, the marks, field frames and image helpers.
#include "GalleryPage.h"

#include "graphics/DrawButton.h"
#include "graphics/clsFontHDC.h"
#include "graphics/modCommonDraw.h"

namespace {

const char16_t* const kStyleNames[] = {u"Flat", u"Xp", u"XpEx", u"Vista", u"Glass",
                                       u"Vista2", u"Vista3", u"Vista4", u"Xp2"};
constexpr int32_t kBacks[] = {0x00F0F0F0, 0x00FFFFFF, 0x00404040, 0x00D08040};
const char16_t* const kBackNames[] = {u"0xF0F0F0", u"0xFFFFFF", u"0x404040", u"0xD08040"};

int32_t textOn(int32_t back) { return GetColorLuminance(back) < 128 ? 0x00FFFFFF : 0x00202020; }

// The page is designed at 96 DPI; every length goes through S, every DrawButton gets the DPI.
int32_t S(int32_t pixels) { return GalleryScale(pixels); }

class ButtonStylesPage : public GalleryPage {
public:
    void Paint(HDC hdc, const RECT& area) override {
        const CtlString face = GalleryFaceFor();
        const int32_t dpi = GalleryDpi();
        ::SetBkMode(hdc, TRANSPARENT);
        const int32_t left = area.left + S(12);
        int32_t y = area.top + S(10);
        {
            clsFontHDC font;
            font.SetFontToDC(hdc, face, GalleryPoints(hdc, 11), 0x00202020, true);
            DrawTextCoords(hdc, u"DrawButton: nine styles from one back colour", left, y, area.right, y + S(22),
                           DT_SINGLELINE | DT_NOPREFIX);
        }
        y += S(28);
        clsFontHDC font;
        font.SetFontToDC(hdc, face, GalleryPoints(hdc, 8), 0x00202020);
        const int32_t labelWidth = S(70), cell = S(96), gap = S(6), group = S(2 * (96 + 6) + 10);
        const int32_t rowHeight = S(28);
        for (int k = 0; k < 4; ++k) {
            const int32_t x = left + labelWidth + k * group;
            DrawTextColorCoords(hdc, CtlString(u"back ") + kBackNames[k] + u": normal, pressed", x, y,
                                x + 2 * (cell + gap), y + S(16), DT_SINGLELINE | DT_NOPREFIX, 0x00202020);
        }
        y += S(20);
        for (int32_t s = 0; s <= 8; ++s) {
            DrawTextColorCoords(hdc, kStyleNames[s], left, y, left + labelWidth, y + rowHeight,
                                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX, 0x00202020);
            for (int k = 0; k < 4; ++k) {
                for (int pressed = 0; pressed < 2; ++pressed) {
                    const int32_t x = left + labelWidth + k * group + pressed * (cell + gap);
                    CTL_RECT box{x, y, x + cell, y + rowHeight};
                    DrawButton(hdc, box, kBacks[k], true, -1, pressed != 0, false, false, false, pressed == 0, s, -1,
                               true, dpi);
                    DrawTextColorCoords(hdc, kStyleNames[s], x, y, x + cell, y + rowHeight,
                                        DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX, textOn(kBacks[k]));
                }
            }
            y += S(34);
        }

        // Marks, field frames and gradients.
        y += S(8);
        struct Mark {
            const char16_t* text;
            bool isDefault, isCancel, focus;
        };
        const Mark marks[] = {{u"Default", true, false, false}, {u"Cancel", false, true, false},
                              {u"Focus", false, false, true}, {u"All three", true, true, true}};
        int32_t x = left;
        for (const Mark& mark : marks) {
            CTL_RECT box{x, y, x + S(110), y + S(30)};
            DrawButton(hdc, box, static_cast<int32_t>(0x8000000Fu), true, -1, false, mark.isDefault, mark.isCancel,
                       mark.focus, true, iCtlBtnStyle_UseDefault, -1, true, dpi);
            DrawTextColorCoords(hdc, mark.text, x, y, x + S(110), y + S(30),
                                DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX, 0x00202020);
            x += S(118);
        }
        const char16_t* const frames[] = {u"Square field", u"Rounded field", u"Underline only"};
        for (int i = 0; i < 3; ++i) {
            CTL_RECT field{x, y + S(4), x + S(120), y + S(26)};
            DrawRect(hdc, field, 0x00FFFFFF, true);
            pvDrawFlatFrame(hdc, field, 0x00FFFFFF, 0x00A0A0A0, i == 1, -1, i == 2, dpi);
            DrawTextColorCoords(hdc, frames[i], x + S(6), y + S(4), x + S(120), y + S(26),
                                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX, 0x00404040);
            x += S(128);
        }
        y += S(42);
        FadeToXCoords(hdc, left, y, left + S(400), y + S(16), 0x00D08040, 0x00FFFFFF);
        FadeToXCoords(hdc, left + S(410), y, left + S(810), y + S(16), 0x00404040, 0x0040C0F0);
        y += S(26);

        // Images: a system icon as it is and grayed.
        const HICON icon = ::LoadIconW(nullptr, MAKEINTRESOURCEW(32516));
        const CtlPictureRef picture{icon, kPicTypeIcon};
        OverlapImageCoords(hdc, left, y, left + S(40), y + S(40), false, picture);
        OverlapImageCoords(hdc, left + S(44), y, left + S(84), y + S(40), true, picture);
        DrawTextColorCoords(hdc, u"an icon, and grayed", left + S(92), y, left + S(400), y + S(40),
                            DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX, 0x00202020);
        y += S(50);

        clsFontHDC large;
        large.SetFontToDC(hdc, face, GalleryPoints(hdc, 12), 0x00202020);
        DrawTextCoords(hdc,
                       u"UTF-16 end to end: English \u00B7 Fran\u00E7ais \u00B7 \u0395\u03BB\u03BB\u03B7\u03BD\u03B9"
                       u"\u03BA\u03AC \u00B7 \u0420\u0443\u0441\u0441\u043A\u0438\u0439 \u00B7 \u05E2\u05D1\u05E8"
                       u"\u05D9\u05EA \u00B7 \u0627\u0644\u0639\u0631\u0628\u064A\u0629 \u00B7 \u0544\u0561\u0575"
                       u"\u0580\u0565\u0576\u056B",
                       left, y, area.right - S(12), y + S(26), DT_SINGLELINE | DT_NOPREFIX);
        y += S(30);
        // Scripts that the general face lacks, each in a face that holds it.
        const char16_t* const samples[] = {
            u"\u0939\u093F\u0928\u094D\u0926\u0940 \u0928\u092E\u0938\u094D\u0924\u0947",
            u"\u4E2D\u6587 \u4F60\u597D\uFF0C\u4E16\u754C",
            u"\u65E5\u672C\u8A9E \u3053\u3093\u306B\u3061\u306F \u30AB\u30BF\u30AB\u30CA",
            u"Emoji \U0001F600 \U0001F30D \U0001F680 \u2764",
        };
        int32_t sampleLeft = left;
        for (const char16_t* sample : samples) {
            clsFontHDC sampleFont;
            sampleFont.SetFontToDC(hdc, GalleryFaceFor(sample), GalleryPoints(hdc, 12), 0x00202020);
            DrawTextCoords(hdc, sample, sampleLeft, y, sampleLeft + S(240), y + S(26), DT_SINGLELINE | DT_NOPREFIX);
            sampleLeft += S(250);
        }
    }
};

}  // namespace

TC_GALLERY_PAGE(ButtonStylesPage, 10, L"Button styles")
