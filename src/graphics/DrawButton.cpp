// DrawButton: body recipes and border stage of the nine button styles; pvDrawFlatFrame.
#include "graphics/DrawButton.h"

#include <cmath>

#include "graphics/modCommonDraw.h"

namespace {

constexpr int32_t kWhite = 0x00FFFFFF;
constexpr int32_t kDefaultFrame = 0x00ECBEA0;
constexpr int32_t kCancelFrame = 0x00808080;

struct ButtonDefaultStyle {
    int32_t style = iCtlBtnStyle_Vista;
    bool set = false;
};
thread_local ButtonDefaultStyle t_defaultStyle;

int32_t inc(int32_t c, int d) { return ColorInc(c, static_cast<int16_t>(d)); }

// Colours shared by the body and the border of one drawing.
struct Palette {
    int32_t b = 0;  // back
    int32_t f = 0;  // border
    int32_t o = 0;  // outside the rounded corners
    int32_t e = 0;  // light end (Flat, Xp2, Glass)
    int32_t d = 0;  // dark end (Xp2, Glass)
    int32_t g = 0;  // Vista4 lower end
};

Palette makePalette(int32_t style, int32_t lBackColor, int32_t lBorderColor, int32_t lBackColorOut,
                    bool bAdaptLight) {
    Palette p;
    p.b = ConvertOLEColor(lBackColor);
    if (lBorderColor == -1) {
        // The luminance cap below was computed and dropped in the original look; its result
        // never reaches the border, and changing that would change every derived border.
        if (GetColorLuminance(p.b) > 208) (void)SetColorLuminance(p.b, 208);
        p.f = inc(p.b, -68);
    } else {
        p.f = ConvertOLEColor(lBorderColor);
    }
    p.o = (lBackColorOut == -1) ? p.b : ConvertOLEColor(lBackColorOut);
    const int32_t lum = GetColorLuminance(p.b);
    p.d = inc(p.b, -51);
    if (style == iCtlBtnStyle_Flat) {
        p.e = (!bAdaptLight || lum >= 64) ? inc(p.b, 34) : SetColorLuminance(p.b, 170);
    } else {
        p.e = (!bAdaptLight || lum < 171) ? SetColorLuminance(p.b, 204) : kWhite;
    }
    p.g = (!bAdaptLight || lum >= 102) ? inc(p.b, 85) : SetColorLuminance(p.b, 204);
    return p;
}

void fadeRows(HDC hdc, const CTL_RECT& r, int32_t y1, int32_t y2, int32_t cStart, int32_t cStop) {
    FadeToYCoords(hdc, r.left, y1, r.right, y2, cStart, cStop);
}

// Returns false when the drawing has to stop (a Glass body of height 0 has no highlight ratio).
bool paintBody(HDC hdc, const CTL_RECT& r, int32_t style, bool pressed, bool rounded, const Palette& p) {
    const int32_t l = r.left;
    const int32_t t = r.top;
    const int32_t rr = r.right;
    const int32_t B = r.bottom;
    const int32_t h = (B - t) / 2;
    const int32_t b = p.b;
    switch (style) {
    case iCtlBtnStyle_Flat:
        DrawRect(hdc, r, b, true);
        if (pressed) {
            FadeToYCoords(hdc, l, B - 5, rr, B, b, p.e);
            FadeToXCoords(hdc, rr - 5, t, rr, B, b, p.e);
            FadeToYCoords(hdc, l, t, rr, t + 6, inc(b, -34), b);
            FadeToXCoords(hdc, l, t, l + 6, B, inc(b, -34), b);
        }
        break;
    case iCtlBtnStyle_Xp:
        if (pressed) {
            fadeRows(hdc, r, t, B, inc(b, -17), inc(b, 51));
        } else {
            fadeRows(hdc, r, t, B, inc(b, 51), inc(b, -17));
        }
        break;
    case iCtlBtnStyle_XpEx:
        if (pressed) {
            fadeRows(hdc, r, t, t + h, inc(b, 51), inc(b, -17));
            fadeRows(hdc, r, t + h, B, inc(b, -17), inc(b, 51));
        } else {
            fadeRows(hdc, r, t, t + h, inc(b, -17), inc(b, 51));
            fadeRows(hdc, r, t + h, B, inc(b, 51), inc(b, -17));
        }
        break;
    case iCtlBtnStyle_Vista: {
        const int32_t third = (B - t) / 3 + 2;
        if (pressed) {
            fadeRows(hdc, r, t, t + third, inc(b, -17), b);
            fadeRows(hdc, r, t + third, B, inc(b, -17), inc(b, 51));
        } else {
            fadeRows(hdc, r, t, t + third, inc(b, 34), b);
            fadeRows(hdc, r, t + third, B, inc(b, -17), b);
        }
        break;
    }
    case iCtlBtnStyle_Vista2:
    case iCtlBtnStyle_Vista3:
    case iCtlBtnStyle_Vista4:
        if (pressed) {
            fadeRows(hdc, r, t, t + h, inc(b, -17), b);
            fadeRows(hdc, r, t + h, B, inc(b, -17), inc(b, 51));
        } else if (style == iCtlBtnStyle_Vista2) {
            fadeRows(hdc, r, t, t + h, inc(b, 34), b);
            fadeRows(hdc, r, t + h, B, inc(b, -51), b);
        } else if (style == iCtlBtnStyle_Vista3) {
            fadeRows(hdc, r, t, t + h, inc(b, 128), inc(b, 32));
            fadeRows(hdc, r, t + h, B, inc(b, -51), b);
        } else {
            fadeRows(hdc, r, t, t + 7, kWhite, inc(b, 85));
            fadeRows(hdc, r, t + 7, t + h, inc(b, 85), b);
            fadeRows(hdc, r, t + h, B, inc(b, -51), p.g);
        }
        break;
    case iCtlBtnStyle_Xp2:
        fadeRows(hdc, r, t, t + 4, pressed ? p.d : p.e, b);
        DrawRectCoords(hdc, l, t + 4, rr, B - 4, b, true);
        fadeRows(hdc, r, B - 4, B, b, pressed ? p.e : p.d);
        break;
    case iCtlBtnStyle_Glass:
        if (pressed) {
            fadeRows(hdc, r, t, t + 5, p.d, b);
            DrawRectCoords(hdc, l, t + 5, rr, t + 15, b, true);
            fadeRows(hdc, r, t + 15, B, b, p.e);
        } else {
            fadeRows(hdc, r, t, B, p.d, p.e);
            if (B == t) return false;
            const int32_t q = (B - t) / 4;
            const double ratio = static_cast<double>(q + 3) / static_cast<double>(B - t) * 100.0;
            const int32_t percent = static_cast<int32_t>(std::nearbyint(ratio));
            const int32_t m = BlendColors(p.d, p.e, percent);
            if (rounded) {
                DrawLineCoords(hdc, l + 4, t + 2, rr - 4, t + 2, p.e);
                FadeToYCoords(hdc, l + 3, t + 3, rr - 3, t + 3 + q, p.e, m);
                DrawLineCoords(hdc, l + 4, t + 3 + q, rr - 4, t + 3 + q, m);
            } else {
                FadeToYCoords(hdc, l + 2, t + 2, rr - 2, t + 3 + q, p.e, m);
            }
        }
        break;
    default:
        break;
    }
    return true;
}

void stripY(HDC hdc, int32_t x, int32_t y1, int32_t y2, int32_t cStart, int32_t cStop) {
    FadeToYCoords(hdc, x, y1, x, y2, cStart, cStop);
}

// The one-pixel strips inside the border, and the inner corner colours (ct top, cb bottom).
void paintStrips(HDC hdc, const CTL_RECT& in, int32_t style, bool pressed, const Palette& p, int32_t& ct,
                 int32_t& cb) {
    const int32_t l = in.left;
    const int32_t t = in.top;
    const int32_t r = in.right;
    const int32_t B = in.bottom;
    const int32_t b = p.b;
    const int32_t f = p.f;
    const auto half = [f](int32_t c) { return BlendColors(f, c, 50); };
    const auto vistaPressed = [&] {
        stripY(hdc, l, t, B, b, inc(b, 51));
        stripY(hdc, r - 1, t, B, b, inc(b, 51));
        ct = half(b);
        cb = half(inc(b, 51));
    };
    switch (style) {
    case iCtlBtnStyle_Flat:
        ct = cb = half(b);
        break;
    case iCtlBtnStyle_Xp:
        ct = pressed ? half(b) : half(inc(b, 51));
        cb = pressed ? half(inc(b, 51)) : half(b);
        break;
    case iCtlBtnStyle_XpEx:
        ct = cb = pressed ? half(inc(b, 51)) : half(inc(b, -17));
        break;
    case iCtlBtnStyle_Vista:
    case iCtlBtnStyle_Vista2:
    case iCtlBtnStyle_Vista3:
        if (pressed) {
            vistaPressed();
        } else {
            // Both side strips fade from the light top down to the back colour.
            const int32_t light = inc(b, style == iCtlBtnStyle_Vista3 ? 128 : 51);
            stripY(hdc, l, t, B, light, b);
            stripY(hdc, r - 1, t, B, light, b);
            ct = half(style == iCtlBtnStyle_Vista ? inc(b, 34) : light);
            cb = half(b);
        }
        break;
    case iCtlBtnStyle_Vista4:
        if (pressed) {
            vistaPressed();
        } else {
            stripY(hdc, l, t, B, kWhite, inc(b, 34));
            stripY(hdc, r - 1, t, B, kWhite, inc(b, 85));
            FadeToXCoords(hdc, l, t, r, t, inc(b, 85), kWhite);
            ct = half(kWhite);
            cb = half(p.g);
        }
        break;
    case iCtlBtnStyle_Xp2:
        stripY(hdc, l, t, t + 10, pressed ? p.d : p.e, b);
        stripY(hdc, r - 1, B - 10, B, b, pressed ? p.e : p.d);
        ct = half(pressed ? p.d : p.e);
        cb = half(pressed ? p.e : p.d);
        break;
    case iCtlBtnStyle_Glass:
        if (pressed) stripY(hdc, l, t, t + 10, p.d, b);
        ct = half(p.d);
        cb = half(p.e);
        break;
    default:
        break;
    }
}

void paintInnerCorners(HDC hdc, const CTL_RECT& in, int32_t ct, int32_t cb) {
    DrawPixel(hdc, in.left, in.top, ct);
    DrawPixel(hdc, in.right - 1, in.top, ct);
    DrawPixel(hdc, in.left, in.bottom - 1, cb);
    DrawPixel(hdc, in.right - 1, in.bottom - 1, cb);
}

// The eight pixels beside the outer corners that soften a rounded border.
void paintCornerShoulders(HDC hdc, const CTL_RECT& r, int32_t color) {
    const int32_t l = r.left;
    const int32_t t = r.top;
    const int32_t rr = r.right;
    const int32_t B = r.bottom;
    DrawPixel(hdc, l + 1, t, color);
    DrawPixel(hdc, l, t + 1, color);
    DrawPixel(hdc, rr - 2, t, color);
    DrawPixel(hdc, rr - 1, t + 1, color);
    DrawPixel(hdc, l + 1, B - 1, color);
    DrawPixel(hdc, l, B - 2, color);
    DrawPixel(hdc, rr - 2, B - 1, color);
    DrawPixel(hdc, rr - 1, B - 2, color);
}

void paintOutline(HDC hdc, const CTL_RECT& r, bool rounded, int32_t border, int32_t out) {
    if (rounded) {
        DrawRect(hdc, r, out, false);
        DrawRRect(hdc, r, false, 0, border, 1, PS_SOLID, 4);
    } else {
        DrawRect(hdc, r, border, false);
    }
}

CTL_RECT inset(const CTL_RECT& r, int32_t by) { return CTL_RECT{r.left + by, r.top + by, r.right - by, r.bottom - by}; }

}  // namespace

int32_t GetDefaultButtonStyle() { return t_defaultStyle.set ? t_defaultStyle.style : iCtlBtnStyle_Vista; }

void SetDefaultButtonStyle(int32_t style) {
    t_defaultStyle.style = style;
    t_defaultStyle.set = true;
}

void DrawButton(HDC lHdc, CTL_RECT& rWork, int32_t lBackColor, bool bUseBorder, int32_t lBorderColor, bool bPressed,
                bool bDefault, bool bCancel, bool bDrawFocus, bool bRounded, int32_t iBtnStyle,
                int32_t lBackColorOut, bool bAdaptLight) {
    if (lHdc == nullptr) return;
    const int32_t style = (iBtnStyle == iCtlBtnStyle_UseDefault) ? GetDefaultButtonStyle() : iBtnStyle;
    const Palette p = makePalette(style, lBackColor, lBorderColor, lBackColorOut, bAdaptLight);
    const CTL_RECT r = rWork;

    if (!paintBody(lHdc, r, style, bPressed, bRounded, p)) return;

    // A style without a recipe paints neither body nor border; the marks below still run.
    const bool known = style >= iCtlBtnStyle_Flat && style <= iCtlBtnStyle_Xp2;
    if (bUseBorder && known) {
        paintOutline(lHdc, r, bRounded, p.f, p.o);
        const CTL_RECT in = inset(r, 1);
        int32_t ct = 0;
        int32_t cb = 0;
        paintStrips(lHdc, in, style, bPressed, p, ct, cb);
        if (bRounded) {
            paintInnerCorners(lHdc, in, ct, cb);
            paintCornerShoulders(lHdc, r, BlendColors(p.f, p.b, 30));
        }
    }

    if (bDefault) {
        DrawRect(lHdc, inset(r, 1), kDefaultFrame, false);
    } else if (bCancel) {
        DrawRect(lHdc, inset(r, 1), kCancelFrame, false);
    }
    if (bDrawFocus) {
        const CTL_RECT focus = inset(r, 2);
        const RECT area{focus.left, focus.top, focus.right, focus.bottom};
        ::DrawFocusRect(lHdc, &area);
    }
}

void pvDrawFlatFrame(HDC hdc, const CTL_RECT& r, int32_t lBack, int32_t lBorder, bool bRounded, int32_t lOut,
                     bool bThinLine) {
    if (hdc == nullptr) return;
    const Palette p = makePalette(iCtlBtnStyle_Flat, lBack, lBorder, lOut, true);
    DrawRect(hdc, inset(r, 1), p.b, false);
    if (bThinLine) {
        DrawRect(hdc, r, p.b, false);
        DrawLineCoords(hdc, r.left + 1, r.bottom - 1, r.right - 1, r.bottom - 1, p.f);
        return;
    }
    paintOutline(hdc, r, bRounded, p.f, p.o);
    if (bRounded) {
        const int32_t corner = BlendColors(p.f, p.b, 50);
        paintInnerCorners(hdc, inset(r, 1), corner, corner);
        paintCornerShoulders(hdc, r, BlendColors(p.f, p.b, 30));
    }
}
