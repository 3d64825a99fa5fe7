// DrawButton, pixel for pixel, against a small independent evaluator of the style recipes.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <thread>
#include <vector>

#include "DibCanvas.h"
#include "graphics/DrawButton.h"
#include "graphics/modCommonDraw.h"

namespace {

constexpr int32_t kBack = 0x00123456;
constexpr int32_t kWhite = 0x00FFFFFF;
constexpr int32_t kUnknown = -2;  // a pixel whose colour the reference does not claim

// ---- the reference: colour rules written out again, on an array of pixels ----------------------

int32_t ch(int32_t c, int shift) { return (c >> shift) & 0xFF; }
int32_t make(int32_t r, int32_t g, int32_t b) { return r | (g << 8) | (b << 16); }
int32_t clip(int32_t v) { return v < 0 ? 0 : (v > 255 ? 255 : v); }

// Half to even by hand, without the library's helper.
int32_t halfEven(double v) {
    const double low = std::floor(v);
    const double rest = v - low;
    if (rest > 0.5) return static_cast<int32_t>(low) + 1;
    if (rest < 0.5) return static_cast<int32_t>(low);
    return (static_cast<int64_t>(low) % 2 == 0) ? static_cast<int32_t>(low) : static_cast<int32_t>(low) + 1;
}
int32_t sysTranslate(int32_t c) { return c < 0 ? static_cast<int32_t>(::GetSysColor(c & 31)) : c; }
int32_t Inc(int32_t c, int d) {
    c = sysTranslate(c);
    return make(clip(ch(c, 0) + d), clip(ch(c, 8) + d), clip(ch(c, 16) + d));
}
int32_t Lum(int32_t c) {
    c = sysTranslate(c);
    return clip(halfEven(0.3 * ch(c, 0) + 0.59 * ch(c, 8) + 0.11 * ch(c, 16)));
}
int32_t SetLum(int32_t c, int l) { return Inc(c, l - Lum(c)); }
int32_t Blend(int32_t a, int32_t b, int p) {
    a = sysTranslate(a);
    b = sysTranslate(b);
    const volatile float wa = static_cast<float>(100 - p) / 100.0f;
    const volatile float wb = 1.0f - wa;
    const auto one = [&](int shift) {
        const volatile float x = static_cast<float>(ch(a, shift)) * wa;
        const volatile float y = static_cast<float>(ch(b, shift)) * wb;
        const volatile float sum = x + y;
        return halfEven(sum);
    };
    return make(one(0), one(8), one(16));
}

struct Ref {
    int32_t w, h;
    std::vector<int32_t> px;
    Ref(int32_t width, int32_t height) : w(width), h(height), px(static_cast<size_t>(width * height), kBack) {}
    void set(int32_t x, int32_t y, int32_t c) {
        if (x >= 0 && y >= 0 && x < w && y < h) px[static_cast<size_t>(y * w + x)] = sysTranslate(c);
    }
    void fill(int32_t l, int32_t t, int32_t r, int32_t b, int32_t c) {
        for (int32_t y = t; y < b; ++y)
            for (int32_t x = l; x < r; ++x) set(x, y, c);
    }
    void frame(int32_t l, int32_t t, int32_t r, int32_t b, int32_t c) {
        for (int32_t x = l; x < r; ++x) {
            set(x, t, c);
            set(x, b - 1, c);
        }
        for (int32_t y = t; y < b; ++y) {
            set(l, y, c);
            set(r - 1, y, c);
        }
    }
    static int32_t fadeColour(int32_t s, int32_t e, float t) {
        const auto one = [&](int shift) {
            const volatile float a = static_cast<float>(ch(s, shift)) * t;
            const volatile float b = static_cast<float>(ch(e, shift)) * (1.0f - t);
            const volatile float sum = a + b;
            return halfEven(std::fabs(sum));
        };
        return make(one(0), one(8), one(16));
    }
    // Steps along y (vertical) or x: rows y1..y2-1 over columns x1..x2-1 (x1 == x2: the one column
    // x1), or the same with the axes swapped.
    void fade(bool vertical, int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t s, int32_t e) {
        s = sysTranslate(s);
        e = sysTranslate(e);
        const int32_t from = vertical ? x1 : y1, to = vertical ? x2 : y2, start = vertical ? y1 : x1;
        const int32_t n = vertical ? y2 - y1 : x2 - x1;
        if (n < 1) return;
        const float step = 1.0f / static_cast<float>(n);
        float t = 1.0f;
        for (int32_t i = 0; i < n; ++i) {
            const int32_t c = fadeColour(s, e, t);
            for (int32_t across = from; across < (to == from ? from + 1 : to); ++across) {
                vertical ? set(across, start + i, c) : set(start + i, across, c);
            }
            t = std::max(0.0f, t - step);
        }
    }
    void fadeY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t s, int32_t e) { fade(true, x1, y1, x2, y2, s, e); }
    void fadeX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t s, int32_t e) { fade(false, x1, y1, x2, y2, s, e); }
};

struct Args {
    int32_t style;
    int32_t back;
    bool pressed;
    bool rounded;
    bool border;
    int32_t borderColour = -1;
    int32_t outColour = -1;
    bool adapt = true;
};

// The recipe tables, evaluated on the reference array.
void referenceButton(Ref& ref, const CTL_RECT& rc, const Args& a) {
    const int32_t b = sysTranslate(a.back);
    const int32_t f = a.borderColour == -1 ? Inc(b, -68) : sysTranslate(a.borderColour);
    const int32_t o = a.outColour == -1 ? b : sysTranslate(a.outColour);
    const int32_t l = rc.left, t = rc.top, r = rc.right, B = rc.bottom;
    const int32_t h = (B - t) / 2;
    const int32_t lum = Lum(b);
    const int32_t d = Inc(b, -51);
    const int32_t eXp2Glass = (!a.adapt || lum < 171) ? SetLum(b, 204) : kWhite;
    const int32_t g = (!a.adapt || lum >= 102) ? Inc(b, 85) : SetLum(b, 204);
    const bool p = a.pressed;
    switch (a.style) {
    case 0: {
        ref.fill(l, t, r, B, b);
        if (p) {
            const int32_t e = (!a.adapt || lum >= 64) ? Inc(b, 34) : SetLum(b, 170);
            ref.fadeY(l, B - 5, r, B, b, e);
            ref.fadeX(r - 5, t, r, B, b, e);
            ref.fadeY(l, t, r, t + 6, Inc(b, -34), b);
            ref.fadeX(l, t, l + 6, B, Inc(b, -34), b);
        }
        break;
    }
    case 1:
        p ? ref.fadeY(l, t, r, B, Inc(b, -17), Inc(b, 51)) : ref.fadeY(l, t, r, B, Inc(b, 51), Inc(b, -17));
        break;
    case 2:
        if (p) {
            ref.fadeY(l, t, r, t + h, Inc(b, 51), Inc(b, -17));
            ref.fadeY(l, t + h, r, B, Inc(b, -17), Inc(b, 51));
        } else {
            ref.fadeY(l, t, r, t + h, Inc(b, -17), Inc(b, 51));
            ref.fadeY(l, t + h, r, B, Inc(b, 51), Inc(b, -17));
        }
        break;
    case 3: {
        const int32_t h3 = (B - t) / 3 + 2;
        if (p) {
            ref.fadeY(l, t, r, t + h3, Inc(b, -17), b);
            ref.fadeY(l, t + h3, r, B, Inc(b, -17), Inc(b, 51));
        } else {
            ref.fadeY(l, t, r, t + h3, Inc(b, 34), b);
            ref.fadeY(l, t + h3, r, B, Inc(b, -17), b);
        }
        break;
    }
    case 5:
    case 6:
    case 7:
        if (p) {
            ref.fadeY(l, t, r, t + h, Inc(b, -17), b);
            ref.fadeY(l, t + h, r, B, Inc(b, -17), Inc(b, 51));
        } else if (a.style == 5) {
            ref.fadeY(l, t, r, t + h, Inc(b, 34), b);
            ref.fadeY(l, t + h, r, B, Inc(b, -51), b);
        } else if (a.style == 6) {
            ref.fadeY(l, t, r, t + h, Inc(b, 128), Inc(b, 32));
            ref.fadeY(l, t + h, r, B, Inc(b, -51), b);
        } else {
            ref.fadeY(l, t, r, t + 7, kWhite, Inc(b, 85));
            ref.fadeY(l, t + 7, r, t + h, Inc(b, 85), b);
            ref.fadeY(l, t + h, r, B, Inc(b, -51), g);
        }
        break;
    case 8:
        ref.fadeY(l, t, r, t + 4, p ? d : eXp2Glass, b);
        ref.fill(l, t + 4, r, B - 4, b);
        ref.fadeY(l, B - 4, r, B, b, p ? eXp2Glass : d);
        break;
    case 4:
        if (p) {
            ref.fadeY(l, t, r, t + 5, d, b);
            ref.fill(l, t + 5, r, t + 15, b);
            ref.fadeY(l, t + 15, r, B, b, eXp2Glass);
        } else {
            ref.fadeY(l, t, r, B, d, eXp2Glass);
            const int32_t q = (B - t) / 4;
            const int32_t pct = halfEven(static_cast<double>(q + 3) / (B - t) * 100.0);
            const int32_t m = Blend(d, eXp2Glass, pct);
            if (a.rounded) {
                ref.fill(l + 4, t + 2, r - 4, t + 3, eXp2Glass);
                ref.fadeY(l + 3, t + 3, r - 3, t + 3 + q, eXp2Glass, m);
                ref.fill(l + 4, t + 3 + q, r - 4, t + 4 + q, m);
            } else {
                ref.fadeY(l + 2, t + 2, r - 2, t + 3 + q, eXp2Glass, m);
            }
        }
        break;
    }
    if (!a.border) return;
    if (a.rounded) {
        ref.frame(l, t, r, B, o);
        // The round rectangle with corner 4: straight edges between the rounded corners.
        for (int32_t x = l + 1; x < r - 1; ++x) {
            ref.set(x, t, f);
            ref.set(x, B - 1, f);
        }
        for (int32_t y = t + 1; y < B - 1; ++y) {
            ref.set(l, y, f);
            ref.set(r - 1, y, f);
        }
    } else {
        ref.frame(l, t, r, B, f);
    }
    const int32_t il = l + 1, it = t + 1, ir = r - 1, iB = B - 1;
    int32_t ct = 0, cb = 0;
    const auto half = [&](int32_t c) { return Blend(f, c, 50); };
    const auto vistaPressed = [&] {
        ref.fadeY(il, it, il, iB, b, Inc(b, 51));
        ref.fadeY(ir - 1, it, ir - 1, iB, b, Inc(b, 51));
        ct = half(b);
        cb = half(Inc(b, 51));
    };
    switch (a.style) {
    case 0: ct = cb = half(b); break;
    case 1:
        ct = p ? half(b) : half(Inc(b, 51));
        cb = p ? half(Inc(b, 51)) : half(b);
        break;
    case 2: ct = cb = p ? half(Inc(b, 51)) : half(Inc(b, -17)); break;
    case 3:
    case 5:
    case 6:
        if (p) {
            vistaPressed();
        } else {
            const int32_t top = Inc(b, a.style == 6 ? 128 : 51);
            ref.fadeY(il, it, il, iB, top, b);
            ref.fadeY(ir - 1, it, ir - 1, iB, top, b);
            ct = half(a.style == 3 ? Inc(b, 34) : top);
            cb = half(b);
        }
        break;
    case 7:
        if (p) {
            vistaPressed();
        } else {
            ref.fadeY(il, it, il, iB, kWhite, Inc(b, 34));
            ref.fadeY(ir - 1, it, ir - 1, iB, kWhite, Inc(b, 85));
            ref.fadeX(il, it, ir, it, Inc(b, 85), kWhite);
            ct = half(kWhite);
            cb = half(g);
        }
        break;
    case 8:
        ref.fadeY(il, it, il, it + 10, p ? d : eXp2Glass, b);
        ref.fadeY(ir - 1, iB - 10, ir - 1, iB, b, p ? eXp2Glass : d);
        ct = half(p ? d : eXp2Glass);
        cb = half(p ? eXp2Glass : d);
        break;
    case 4:
        if (p) ref.fadeY(il, it, il, it + 10, d, b);
        ct = half(d);
        cb = half(eXp2Glass);
        break;
    }
    if (a.rounded) {
        ref.set(il, it, ct);
        ref.set(ir - 1, it, ct);
        ref.set(il, iB - 1, cb);
        ref.set(ir - 1, iB - 1, cb);
        const int32_t s = Blend(f, b, 30);
        for (const auto& xy : {std::pair{l + 1, t}, {l, t + 1}, {r - 2, t}, {r - 1, t + 1}, {l + 1, B - 1}, {l, B - 2},
                               {r - 2, B - 1}, {r - 1, B - 2}}) {
            ref.set(xy.first, xy.second, s);
        }
    }
}

void expectMatchesReference(const Args& a, const CTL_RECT& rc) {
    DibCanvas canvas(40, 44, kBack);
    CTL_RECT work = rc;
    DrawButton(canvas.dc(), work, a.back, a.border, a.borderColour, a.pressed, false, false, false, a.rounded,
               a.style, a.outColour, a.adapt);
    ASSERT_EQ(work, rc) << "rWork must come back unchanged";
    Ref ref(40, 44);
    referenceButton(ref, rc, a);
    int mismatches = 0;
    for (int32_t y = 0; y < 44 && mismatches < 5; ++y) {
        for (int32_t x = 0; x < 40 && mismatches < 5; ++x) {
            const int32_t want = ref.px[static_cast<size_t>(y * 40 + x)];
            if (want == kUnknown) continue;
            const int32_t got = canvas.At(x, y);
            if (got != want) {
                ++mismatches;
                ADD_FAILURE() << "style " << a.style << " back " << std::hex << a.back << std::dec << " pressed "
                              << a.pressed << " rounded " << a.rounded << " border " << a.border << " rect "
                              << rc.left << "," << rc.top << "," << rc.right << "," << rc.bottom << ": pixel " << x
                              << "," << y << " is " << std::hex << got << ", expected " << want;
            }
        }
    }
}

TEST(DrawButton, EveryStyleMatchesItsRecipe) {
    // Light (luminance above 171 and 208), mid, dark (below 64 and 102), coloured, and a system colour.
    const int32_t backs[] = {0x00F0F0F0, 0x00D08040, 0x00303030, 0x00808080, static_cast<int32_t>(0x8000000Fu)};
    const CTL_RECT sizes[] = {{3, 4, 19, 16}, {5, 3, 29, 33}, {2, 2, 13, 9}};
    for (int32_t style = 0; style <= 8; ++style)
        for (const int32_t back : backs)
            for (const CTL_RECT& rc : sizes)
                for (const bool pressed : {false, true})
                    for (const bool rounded : {false, true})
                        for (const bool border : {false, true}) {
                            // Below 9 rows the Xp2 fill rectangle turns inside out: left to the platform.
                            if (style == 8 && rc.bottom - rc.top < 9) continue;
                            expectMatchesReference(Args{style, back, pressed, rounded, border}, rc);
                        }
}

// Explicit border and outer colours; and without the light adaptation, where the Flat, Vista4, Xp2
// and Glass ends no longer depend on luminance.
TEST(DrawButton, ExplicitColoursAndNoLightAdaptation) {
    for (int32_t style = 0; style <= 8; ++style) {
        for (const bool rounded : {false, true}) {
            expectMatchesReference(Args{style, 0x00D08040, false, rounded, true, 0x000000FF, 0x0000FF00},
                                   CTL_RECT{3, 4, 25, 30});
        }
    }
    for (const int32_t style : {0, 4, 7, 8})
        for (const int32_t back : {0x00F8F8F8, 0x00202020, 0x00D08040})
            for (const bool pressed : {false, true})
                expectMatchesReference(Args{style, back, pressed, true, true, -1, -1, false}, CTL_RECT{3, 4, 25, 30});
}

// A few values worked out on paper, so the reference itself is checked.
TEST(DrawButton, HandWorkedPixels) {
    DibCanvas canvas(20, 10, kBack);
    CTL_RECT rc{0, 0, 6, 4};
    // Xp, back 0x808080, four rows from Inc(b,51) = 0xB3 to Inc(b,-17) = 0x6F:
    // 179, 179*.75+111*.25 = 162, 145, 179*.25+111*.75 = 128.
    DrawButton(canvas.dc(), rc, 0x00808080, false, -1, false, false, false, false, false, iCtlBtnStyle_Xp, -1);
    const int32_t rows[] = {0x00B3B3B3, 0x00A2A2A2, 0x00919191, 0x00808080};
    for (int32_t y = 0; y < 4; ++y) EXPECT_EQ(canvas.At(2, y), rows[y]) << y;
    EXPECT_EQ(canvas.At(6, 1), kBack);
    EXPECT_EQ(canvas.At(2, 4), kBack);

    // White with a derived border: Inc(white, -68) = 0xBBBBBB; the flat body stays white.
    canvas.Fill(kBack);
    rc = CTL_RECT{1, 1, 9, 7};
    DrawButton(canvas.dc(), rc, kWhite, true, -1, false, false, false, false, false, iCtlBtnStyle_Flat, -1);
    EXPECT_EQ(canvas.At(1, 1), 0x00BBBBBB);
    EXPECT_EQ(canvas.At(8, 6), 0x00BBBBBB);
    EXPECT_EQ(canvas.At(4, 4), kWhite);
    EXPECT_EQ(canvas.At(9, 4), kBack);

    // Glass with no height has no highlight ratio: the drawing stops, the default frame included.
    canvas.Fill(kBack);
    rc = CTL_RECT{2, 3, 12, 3};
    DrawButton(canvas.dc(), rc, 0x00D08040, true, -1, false, true, false, false, false, iCtlBtnStyle_Glass, -1);
    EXPECT_EQ(canvas.Snapshot(), std::vector<int32_t>(20 * 10, kBack));

    // One row high: Xp paints exactly its start colour in one row.
    canvas.Fill(kBack);
    rc = CTL_RECT{0, 2, 5, 3};
    DrawButton(canvas.dc(), rc, 0x00808080, false, -1, false, false, false, false, false, iCtlBtnStyle_Xp, -1);
    EXPECT_EQ(canvas.At(0, 2), 0x00B3B3B3);
    EXPECT_EQ(canvas.At(0, 1), kBack);
    EXPECT_EQ(canvas.At(0, 3), kBack);
}

TEST(DrawButton, DefaultCancelAndFocusMarks) {
    const auto draw = [](bool isDefault, bool isCancel, bool focus) {
        DibCanvas canvas(30, 20, kBack);
        CTL_RECT rc{2, 2, 22, 16};
        DrawButton(canvas.dc(), rc, 0x00D08040, true, -1, false, isDefault, isCancel, focus, false,
                   iCtlBtnStyle_Vista, -1);
        return canvas.Snapshot();
    };
    const std::vector<int32_t> plain = draw(false, false, false);
    const auto at = [](const std::vector<int32_t>& pixels, int32_t x, int32_t y) { return pixels[y * 30 + x]; };
    struct Case {
        bool isDefault;
        bool isCancel;
        int32_t frame;  // colour of the rectangle inset by 1
    };
    for (const Case& c : {Case{true, false, 0x00ECBEA0}, Case{false, true, 0x00808080}, Case{true, true, 0x00ECBEA0}}) {
        const std::vector<int32_t> marked = draw(c.isDefault, c.isCancel, false);
        for (int32_t y = 0; y < 20; ++y) {
            for (int32_t x = 0; x < 30; ++x) {
                const bool inside = x >= 3 && x < 21 && y >= 3 && y < 15;
                const bool onFrame = inside && (x == 3 || x == 20 || y == 3 || y == 14);
                ASSERT_EQ(at(marked, x, y), onFrame ? c.frame : at(plain, x, y)) << x << "," << y;
            }
        }
    }
    // Focus: a dotted rectangle inset by 2 changes pixels on that outline and nowhere else.
    const std::vector<int32_t> focused = draw(false, false, true);
    int changed = 0;
    for (int32_t y = 0; y < 20; ++y) {
        for (int32_t x = 0; x < 30; ++x) {
            if (at(focused, x, y) == at(plain, x, y)) continue;
            ++changed;
            const bool inside = x >= 4 && x < 20 && y >= 4 && y < 14;
            EXPECT_TRUE(inside && (x == 4 || x == 19 || y == 4 || y == 13)) << x << "," << y;
        }
    }
    EXPECT_GT(changed, 10);
}

TEST(DrawButton, DefaultStyleAndUnknownStyles) {
    const CTL_RECT rc{1, 1, 15, 13};
    const auto draw = [&](int32_t style, bool withDefault) {
        auto canvas = std::make_unique<DibCanvas>(16, 14, kBack);
        CTL_RECT work = rc;
        DrawButton(canvas->dc(), work, 0x00D08040, true, -1, false, withDefault, false, false, true, style, -1);
        return canvas->Snapshot();
    };
    // Never set on this thread: -1 draws as Vista.
    std::thread([&] {
        EXPECT_EQ(GetDefaultButtonStyle(), iCtlBtnStyle_Vista);
        EXPECT_EQ(draw(-1, false), draw(iCtlBtnStyle_Vista, false));
        SetDefaultButtonStyle(iCtlBtnStyle_Glass);
        EXPECT_EQ(GetDefaultButtonStyle(), iCtlBtnStyle_Glass);
        EXPECT_EQ(draw(-1, false), draw(iCtlBtnStyle_Glass, false));
        // -1 stored: no style, so no body and no border; the default frame still comes.
        SetDefaultButtonStyle(-1);
        const std::vector<int32_t> none = draw(-1, true);
        EXPECT_EQ(none, draw(42, true));
        DibCanvas expected(16, 14, kBack);
        DrawRectCoords(expected.dc(), 2, 2, 14, 12, 0x00ECBEA0, false);
        EXPECT_EQ(none, expected.Snapshot());
    }).join();
    // Module state is per thread: this thread is still at the initial default.
    EXPECT_EQ(GetDefaultButtonStyle(), iCtlBtnStyle_Vista);
}

TEST(DrawButton, FlatFrame) {
    const CTL_RECT rc{1, 1, 13, 11};
    const int32_t back = 0x00D08040;
    const int32_t f = Inc(back, -68);
    struct Case {
        bool rounded;
        bool thin;
    };
    for (const Case c : {Case{false, false}, Case{true, false}, Case{false, true}}) {
        DibCanvas canvas(14, 12, kBack);
        pvDrawFlatFrame(canvas.dc(), rc, back, -1, c.rounded, 0x0000FF00, c.thin);
        Ref ref(14, 12);
        ref.frame(2, 2, 12, 10, back);
        if (c.thin) {
            ref.frame(1, 1, 13, 11, back);
            ref.fill(2, 10, 12, 11, f);
        } else if (!c.rounded) {
            ref.frame(1, 1, 13, 11, f);
        } else {
            ref.frame(1, 1, 13, 11, 0x0000FF00);
            ref.fill(2, 1, 12, 2, f);
            ref.fill(2, 10, 12, 11, f);
            ref.fill(1, 2, 2, 10, f);
            ref.fill(12, 2, 13, 10, f);
            for (const auto& xy : {std::pair{2, 2}, {11, 2}, {2, 9}, {11, 9}}) ref.set(xy.first, xy.second, Blend(f, back, 50));
            for (const auto& xy : {std::pair{2, 1}, {1, 2}, {11, 1}, {12, 2}, {2, 10}, {1, 9}, {11, 10}, {12, 9}}) {
                ref.set(xy.first, xy.second, Blend(f, back, 30));
            }
        }
        // The inside is not painted.
        EXPECT_EQ(canvas.At(6, 6), kBack);
        EXPECT_EQ(canvas.Snapshot(), ref.px) << "rounded " << c.rounded << " thin " << c.thin;
    }
}

}  // namespace
