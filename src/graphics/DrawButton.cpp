// DrawButton: body recipes and border stage of the nine button styles; pvDrawFlatFrame.
#include "graphics/DrawButton.h"

#include <algorithm>
#include <cmath>

#include "graphics/FocusRect.h"
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
thread_local DefaultButtonStyleListener t_defaultStyleListener = nullptr;

int32_t inc(int32_t c, int d) { return ColorInc(c, static_cast<int16_t>(d)); }

// A length designed at 96 DPI, at the DPI of the drawing.
struct Scale {
    int32_t dpi = 96;
    int32_t operator()(int32_t pixels) const { return dpi == 96 || dpi <= 0 ? pixels : ::MulDiv(pixels, dpi, 96); }
    // The width of a one-pixel line: at least 1.
    int32_t line() const { return std::max<int32_t>(1, (*this)(1)); }
};

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
bool paintBody(HDC hdc, const CTL_RECT& r, int32_t style, bool pressed, bool rounded, const Palette& p,
               const Scale& px) {
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
            FadeToYCoords(hdc, l, B - px(5), rr, B, b, p.e);
            FadeToXCoords(hdc, rr - px(5), t, rr, B, b, p.e);
            FadeToYCoords(hdc, l, t, rr, t + px(6), inc(b, -34), b);
            FadeToXCoords(hdc, l, t, l + px(6), B, inc(b, -34), b);
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
        const int32_t third = (B - t) / 3 + px(2);
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
            fadeRows(hdc, r, t, t + px(7), kWhite, inc(b, 85));
            fadeRows(hdc, r, t + px(7), t + h, inc(b, 85), b);
            fadeRows(hdc, r, t + h, B, inc(b, -51), p.g);
        }
        break;
    case iCtlBtnStyle_Xp2:
        fadeRows(hdc, r, t, t + px(4), pressed ? p.d : p.e, b);
        DrawRectCoords(hdc, l, t + px(4), rr, B - px(4), b, true);
        fadeRows(hdc, r, B - px(4), B, b, pressed ? p.e : p.d);
        break;
    case iCtlBtnStyle_Glass:
        if (pressed) {
            fadeRows(hdc, r, t, t + px(5), p.d, b);
            DrawRectCoords(hdc, l, t + px(5), rr, t + px(15), b, true);
            fadeRows(hdc, r, t + px(15), B, b, p.e);
        } else {
            fadeRows(hdc, r, t, B, p.d, p.e);
            if (B == t) return false;
            const int32_t q = (B - t) / 4;
            const double ratio = static_cast<double>(q + px(3)) / static_cast<double>(B - t) * 100.0;
            const int32_t percent = static_cast<int32_t>(std::nearbyint(ratio));
            const int32_t m = BlendColors(p.d, p.e, percent);
            if (rounded) {
                for (int32_t i = 0; i < px.line(); ++i) {
                    DrawLineCoords(hdc, l + px(4), t + px(2) + i, rr - px(4), t + px(2) + i, p.e);
                }
                FadeToYCoords(hdc, l + px(3), t + px(3), rr - px(3), t + px(3) + q, p.e, m);
                for (int32_t i = 0; i < px.line(); ++i) {
                    DrawLineCoords(hdc, l + px(4), t + px(3) + q + i, rr - px(4), t + px(3) + q + i, m);
                }
            } else {
                FadeToYCoords(hdc, l + px(2), t + px(2), rr - px(2), t + px(3) + q, p.e, m);
            }
        }
        break;
    default:
        break;
    }
    return true;
}

// A vertical strip one line wide, inward from x (to the right, or to the left with `fromRight`).
void stripY(HDC hdc, const Scale& px, int32_t x, bool fromRight, int32_t y1, int32_t y2, int32_t cStart,
            int32_t cStop) {
    for (int32_t i = 0; i < px.line(); ++i) {
        const int32_t at = fromRight ? x - i : x + i;
        FadeToYCoords(hdc, at, y1, at, y2, cStart, cStop);
    }
}

// The strips one line wide inside the border, and the inner corner colours (ct top, cb bottom).
void paintStrips(HDC hdc, const CTL_RECT& in, int32_t style, bool pressed, const Palette& p, const Scale& px,
                 int32_t& ct, int32_t& cb) {
    const int32_t l = in.left;
    const int32_t t = in.top;
    const int32_t r = in.right;
    const int32_t B = in.bottom;
    const int32_t b = p.b;
    const int32_t f = p.f;
    const auto half = [f](int32_t c) { return BlendColors(f, c, 50); };
    const auto vistaPressed = [&] {
        stripY(hdc, px, l, false, t, B, b, inc(b, 51));
        stripY(hdc, px, r - 1, true, t, B, b, inc(b, 51));
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
            stripY(hdc, px, l, false, t, B, light, b);
            stripY(hdc, px, r - 1, true, t, B, light, b);
            ct = half(style == iCtlBtnStyle_Vista ? inc(b, 34) : light);
            cb = half(b);
        }
        break;
    case iCtlBtnStyle_Vista4:
        if (pressed) {
            vistaPressed();
        } else {
            stripY(hdc, px, l, false, t, B, kWhite, inc(b, 34));
            stripY(hdc, px, r - 1, true, t, B, kWhite, inc(b, 85));
            for (int32_t i = 0; i < px.line(); ++i) FadeToXCoords(hdc, l, t + i, r, t + i, inc(b, 85), kWhite);
            ct = half(kWhite);
            cb = half(p.g);
        }
        break;
    case iCtlBtnStyle_Xp2:
        stripY(hdc, px, l, false, t, t + px(10), pressed ? p.d : p.e, b);
        stripY(hdc, px, r - 1, true, B - px(10), B, b, pressed ? p.e : p.d);
        ct = half(pressed ? p.d : p.e);
        cb = half(pressed ? p.e : p.d);
        break;
    case iCtlBtnStyle_Glass:
        if (pressed) stripY(hdc, px, l, false, t, t + px(10), p.d, b);
        ct = half(p.d);
        cb = half(p.e);
        break;
    default:
        break;
    }
}

// A dot one line wide and high, at x,y growing towards the inside of `r`.
void paintDot(HDC hdc, const CTL_RECT& r, const Scale& px, int32_t x, int32_t y, int32_t color) {
    const int32_t n = px.line();
    if (n == 1) {
        DrawPixel(hdc, x, y, color);
        return;
    }
    const int32_t x1 = x * 2 < r.left + r.right ? x : x - n + 1;
    const int32_t y1 = y * 2 < r.top + r.bottom ? y : y - n + 1;
    DrawRectCoords(hdc, x1, y1, x1 + n, y1 + n, color, true);
}

void paintInnerCorners(HDC hdc, const CTL_RECT& in, const Scale& px, int32_t ct, int32_t cb) {
    paintDot(hdc, in, px, in.left, in.top, ct);
    paintDot(hdc, in, px, in.right - 1, in.top, ct);
    paintDot(hdc, in, px, in.left, in.bottom - 1, cb);
    paintDot(hdc, in, px, in.right - 1, in.bottom - 1, cb);
}

// The eight pixels beside the outer corners that soften a rounded border.
void paintCornerShoulders(HDC hdc, const CTL_RECT& r, const Scale& px, int32_t color) {
    const int32_t l = r.left;
    const int32_t t = r.top;
    const int32_t rr = r.right;
    const int32_t B = r.bottom;
    const int32_t n = px.line();
    paintDot(hdc, r, px, l + n, t, color);
    paintDot(hdc, r, px, l, t + n, color);
    paintDot(hdc, r, px, rr - 1 - n, t, color);
    paintDot(hdc, r, px, rr - 1, t + n, color);
    paintDot(hdc, r, px, l + n, B - 1, color);
    paintDot(hdc, r, px, l, B - 1 - n, color);
    paintDot(hdc, r, px, rr - 1 - n, B - 1, color);
    paintDot(hdc, r, px, rr - 1, B - 1 - n, color);
}

CTL_RECT inset(const CTL_RECT& r, int32_t by) { return CTL_RECT{r.left + by, r.top + by, r.right - by, r.bottom - by}; }

// The outline one line wide; a rounded one as nested round rectangles, each corner a little tighter.
void paintOutline(HDC hdc, const CTL_RECT& r, bool rounded, int32_t border, int32_t out, const Scale& px) {
    for (int32_t i = 0; i < px.line(); ++i) {
        const CTL_RECT ring = inset(r, i);
        if (rounded) {
            DrawRect(hdc, ring, out, false);
        } else {
            DrawRect(hdc, ring, border, false);
        }
    }
    if (!rounded) return;
    for (int32_t i = 0; i < px.line(); ++i) {
        DrawRRect(hdc, inset(r, i), false, 0, border, 1, PS_SOLID, std::max<int32_t>(2, px(4) - 2 * i));
    }
}

}  // namespace

int32_t GetDefaultButtonStyle() { return t_defaultStyle.set ? t_defaultStyle.style : iCtlBtnStyle_Vista; }

void SetDefaultButtonStyle(int32_t style) {
    t_defaultStyle.style = style;
    t_defaultStyle.set = true;
    if (t_defaultStyleListener != nullptr) t_defaultStyleListener(style);
}

void SetDefaultButtonStyleListener(DefaultButtonStyleListener listener) noexcept { t_defaultStyleListener = listener; }

void DrawButton(HDC lHdc, CTL_RECT& rWork, int32_t lBackColor, bool bUseBorder, int32_t lBorderColor, bool bPressed,
                bool bDefault, bool bCancel, bool bDrawFocus, bool bRounded, int32_t iBtnStyle,
                int32_t lBackColorOut, bool bAdaptLight, int32_t iDpi) {
    if (lHdc == nullptr) return;
    const Scale px{iDpi};
    const int32_t line = px.line();
    const int32_t style = (iBtnStyle == iCtlBtnStyle_UseDefault) ? GetDefaultButtonStyle() : iBtnStyle;
    const Palette p = makePalette(style, lBackColor, lBorderColor, lBackColorOut, bAdaptLight);
    const CTL_RECT r = rWork;

    if (!paintBody(lHdc, r, style, bPressed, bRounded, p, px)) return;

    // A style without a recipe paints neither body nor border; the marks below still run.
    const bool known = style >= iCtlBtnStyle_Flat && style <= iCtlBtnStyle_Xp2;
    if (bUseBorder && known) {
        paintOutline(lHdc, r, bRounded, p.f, p.o, px);
        const CTL_RECT in = inset(r, line);
        int32_t ct = 0;
        int32_t cb = 0;
        paintStrips(lHdc, in, style, bPressed, p, px, ct, cb);
        if (bRounded) {
            paintInnerCorners(lHdc, in, px, ct, cb);
            paintCornerShoulders(lHdc, r, px, BlendColors(p.f, p.b, 30));
        }
    }

    for (int32_t i = 0; i < line && (bDefault || bCancel); ++i) {
        DrawRect(lHdc, inset(r, line + i), bDefault ? kDefaultFrame : kCancelFrame, false);
    }
    if (bDrawFocus) {
        const CTL_RECT focus = inset(r, 2 * line);
        const RECT area{focus.left, focus.top, focus.right, focus.bottom};
        DrawFocusRectDpi(lHdc, area, iDpi);
    }
}

void pvDrawFlatFrame(HDC hdc, const CTL_RECT& r, int32_t lBack, int32_t lBorder, bool bRounded, int32_t lOut,
                     bool bThinLine, int32_t iDpi) {
    if (hdc == nullptr) return;
    const Palette p = makePalette(iCtlBtnStyle_Flat, lBack, lBorder, lOut, true);
    const Scale px{iDpi};
    const int32_t line = px.line();
    for (int32_t i = 0; i < line; ++i) DrawRect(hdc, inset(r, line + i), p.b, false);
    if (bThinLine) {
        for (int32_t i = 0; i < line; ++i) {
            DrawRect(hdc, inset(r, i), p.b, false);
            DrawLineCoords(hdc, r.left + line, r.bottom - 1 - i, r.right - line, r.bottom - 1 - i, p.f);
        }
        return;
    }
    paintOutline(hdc, r, bRounded, p.f, p.o, px);
    if (bRounded) {
        const int32_t corner = BlendColors(p.f, p.b, 50);
        paintInnerCorners(hdc, inset(r, line), px, corner, corner);
        paintCornerShoulders(hdc, r, px, BlendColors(p.f, p.b, 30));
    }
}
