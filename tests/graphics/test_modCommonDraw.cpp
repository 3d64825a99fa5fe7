// Colour arithmetic, bit packing, tables and small helpers of the common drawing routines.
#include <gtest/gtest.h>

#include "graphics/modCommonDraw.h"

namespace {

int32_t rgb(int32_t r, int32_t g, int32_t b) { return r | (g << 8) | (b << 16); }
int32_t sys(int index) { return static_cast<int32_t>(::GetSysColor(index)); }

TEST(ColourArithmetic, ColorIncClipsEachChannel) {
    struct Case {
        int32_t colour;
        int16_t delta;
        int32_t expected;
    };
    const Case cases[] = {
        {0x00FF0000, 51, 0x00FF3333},              // saturated blue stays at 255
        {0x00102030, -0x20, 0x00000010},           // two channels clip at 0
        {0x00FFFFFF, -68, 0x00BBBBBB},             // the derived border of a white button
        {0x00000000, -5, 0x00000000},
        {0x00808080, 300, 0x00FFFFFF},
        {rgb(1, 2, 3), 0, rgb(1, 2, 3)},
        {rgb(200, 100, 0), 55, rgb(255, 155, 55)},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ColorInc(c.colour, c.delta), c.expected) << std::hex << c.colour << " " << std::dec << c.delta;
    }
    // A system colour is translated before the arithmetic.
    const int32_t face = sys(COLOR_BTNFACE);
    const int32_t r = face & 0xFF, g = (face >> 8) & 0xFF, b = (face >> 16) & 0xFF;
    EXPECT_EQ(ColorInc(static_cast<int32_t>(0x8000000Fu), 10),
              rgb(std::min(r + 10, 255), std::min(g + 10, 255), std::min(b + 10, 255)));
}

TEST(ColourArithmetic, LuminanceRoundsHalfToEven) {
    struct Case {
        int32_t colour;
        int32_t expected;
    };
    const Case cases[] = {
        {0x00FFFFFF, 255}, {0x00000000, 0},
        {rgb(5, 0, 0), 2},    // 1.5
        {rgb(15, 0, 0), 4},   // 4.5: half to even, not up
        {rgb(25, 0, 0), 8},   // 7.5
        {rgb(35, 0, 0), 10},  // 10.5
        {rgb(0, 128, 0), 76}, // 75.52
        {rgb(0, 0, 255), 28}, // 28.05
        {rgb(255, 0, 0), 76}, // 76.5
    };
    for (const Case& c : cases) EXPECT_EQ(GetColorLuminance(c.colour), c.expected) << std::hex << c.colour;

    // SetColorLuminance shifts all channels by target - luminance, so it can miss after clipping.
    EXPECT_EQ(SetColorLuminance(0x00F0F0F0, 208), 0x00D0D0D0);
    EXPECT_EQ(SetColorLuminance(rgb(255, 0, 0), 170), rgb(255, 94, 94));  // 170 - 76 = 94
    EXPECT_EQ(SetColorLuminance(0x00FFFFFF, 300), 0x00FFFFFF);
    EXPECT_EQ(GetColorLuminance(static_cast<int32_t>(0x8000000Fu)), GetColorLuminance(sys(COLOR_BTNFACE)));
}

TEST(ColourArithmetic, BlendInSinglePrecisionHalfToEven) {
    const int32_t a = rgb(2, 4, 6);
    const int32_t b = rgb(3, 5, 7);
    struct Case {
        int32_t first;
        int32_t second;
        int32_t percent;
        int32_t expected;
    };
    const Case cases[] = {
        {a, b, 0, a},
        {a, b, 100, b},
        {a, b, -5, a},   // clipped to 0
        {a, b, 250, b},  // clipped to 100
        {a, b, 50, rgb(2, 4, 6)},  // 2.5, 4.5, 6.5 all go to the even neighbour
        // Single precision: 1 - 0.9f is a little above 0.1, so 34.5 becomes 34.500008 and rounds up;
        // in double it would be an exact tie going down to 34.
        {rgb(10, 10, 10), 0x00FFFFFF, 10, rgb(35, 35, 35)},
        {rgb(25, 25, 25), 0x00FFFFFF, 5, rgb(37, 37, 37)},  // 36.500004
        {0x00000000, 0x00FFFFFF, 50, rgb(128, 128, 128)},  // 127.5 -> 128
        {rgb(255, 0, 0), rgb(0, 0, 255), 50, rgb(128, 0, 128)},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(BlendColors(c.first, c.second, c.percent), c.expected)
            << std::hex << c.first << " " << c.second << std::dec << " " << c.percent;
    }
    EXPECT_EQ(BlendColors(static_cast<int32_t>(0x8000000Fu), 0, 0), sys(COLOR_BTNFACE));
}

TEST(ColourArithmetic, OleColoursAndComponents) {
    EXPECT_EQ(ConvertOLEColor(0x00123456), 0x00123456);
    EXPECT_EQ(ConvertOLEColor(static_cast<int32_t>(0x80000005u)), sys(COLOR_WINDOW));
    // Only the low five bits pick the system colour.
    EXPECT_EQ(ConvertOLEColor(static_cast<int32_t>(0x80000025u)), sys(5));
    int16_t r = -1, g = -1, b = -1;
    ColorToComponents(0x00C08040, r, g, b);
    EXPECT_EQ(r, 0x40);
    EXPECT_EQ(g, 0x80);
    EXPECT_EQ(b, 0xC0);
    const int32_t clips[][2] = {{-1, 0}, {0, 0}, {128, 128}, {255, 255}, {256, 255}, {-40000, 0}, {70000, 255}};
    for (const auto& c : clips) EXPECT_EQ(ClipByte(c[0]), c[1]) << c[0];
}

TEST(ColourArithmetic, DisabledTextColourKeepsForeOnNearlyGreyBack) {
    const int32_t gray = sys(COLOR_GRAYTEXT);
    const int32_t fore = 0x00112233;
    const int32_t grayText = static_cast<int32_t>(0x80000011u);
    const auto withRed = [&](int d) {
        const int32_t red = std::clamp((gray & 0xFF) + d, 0, 255);
        return (gray & 0x00FFFF00) | red;
    };
    // Far from the system grey: grey text is readable, so it is used.
    const int sign = (gray & 0xFF) >= 128 ? -1 : 1;
    EXPECT_EQ(pvDisabledTextColor(fore, withRed(100 * sign)), grayText);
    // Within 4 in every channel: grey text would vanish, the control's colour stays.
    EXPECT_EQ(pvDisabledTextColor(fore, gray), fore);
    EXPECT_EQ(pvDisabledTextColor(fore, withRed(4 * sign)), fore);
    EXPECT_EQ(pvDisabledTextColor(fore, withRed(5 * sign)), grayText);
}

TEST(BitPacking, SignedAcrossTheSignBit) {
    EXPECT_EQ(LoByte(static_cast<int16_t>(0x8123)), 0x23);
    EXPECT_EQ(HiByte(static_cast<int16_t>(0x8123)), 0x81);
    EXPECT_EQ(HiByte(-1), 0xFF);
    EXPECT_EQ(MakeWord(0xFF, 0xFF), -1);
    EXPECT_EQ(MakeWord(0x00, 0x80), -32768);
    EXPECT_EQ(MakeWord(0x34, 0x12), 0x1234);
    EXPECT_EQ(LoWord(static_cast<int32_t>(0x8000FFFFu)), -1);
    EXPECT_EQ(HiWord(static_cast<int32_t>(0x8000FFFFu)), -32768);
    EXPECT_EQ(LoWord(0x00017FFF), 32767);
    EXPECT_EQ(HiWord(0x00017FFF), 1);
    EXPECT_EQ(MakeDWord(-1, 0), 65535);
    EXPECT_EQ(MakeDWord(0, -1), -65536);
    EXPECT_EQ(MakeDWord(-1, -1), -1);
    EXPECT_EQ(MakeDWord(0x1234, 0x5678), 0x56781234);
    EXPECT_EQ(LoLong(0x00000001FFFFFFFFll), -1);
    EXPECT_EQ(HiLong(0x00000001FFFFFFFFll), 1);
    EXPECT_EQ(HiLong(-1), -1);
    EXPECT_EQ(MakeDLong(-1, 0), 4294967295ll);
    EXPECT_EQ(MakeDLong(0, -1), -4294967296ll);
    EXPECT_EQ(MakeDLong(-1, -1), -1ll);
    // Round trips over the awkward values.
    for (const int32_t v : {0, 1, -1, INT32_MIN, INT32_MAX, 0x7FFF8000, static_cast<int32_t>(0x8000FFFFu)}) {
        EXPECT_EQ(MakeDWord(LoWord(v), HiWord(v)), v) << v;
    }
}

TEST(Tables, CursorResources) {
    const int32_t expected[] = {32512, 32512, 32515, 32513, 32641, 32640, 32643, 32645,
                                32642, 32644, 32516, 32514, 32648, 32650, 32651, 32646};
    for (int32_t i = 0; i < 16; ++i) EXPECT_EQ(pvCursorResource(i), expected[i]) << i;
    EXPECT_EQ(pvCursorResource(-1), 0);
    EXPECT_EQ(pvCursorResource(16), 0);
    EXPECT_FALSE(InIDE());
}

TEST(DcState, BkModeAndColourOnADcAndOnNone) {
    const HDC dc = ::CreateCompatibleDC(nullptr);
    CommonDraw::SetBkMode(dc, TRANSPARENT);
    EXPECT_EQ(CommonDraw::GetBkMode(dc), TRANSPARENT);
    CommonDraw::SetBkColor(dc, static_cast<int32_t>(0x80000005u));
    EXPECT_EQ(CommonDraw::GetBkColor(dc), sys(COLOR_WINDOW));
    EXPECT_EQ(CommonDraw::GetBkMode(nullptr), 0);
    EXPECT_EQ(CommonDraw::SetBkColor(nullptr, 0), 0);
    ::DeleteDC(dc);
}

TEST(Fonts, InstalledFontLookupIgnoresCaseAndBlanks) {
    // Any family the system enumerates will do; asked for apart from the routine under test.
    struct First {
        static int CALLBACK take(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM target) {
            *reinterpret_cast<CtlString*>(target) = FromWide(font->lfFaceName);
            return 0;
        }
    };
    CtlString face;
    LOGFONTW query{};
    query.lfCharSet = DEFAULT_CHARSET;
    const HDC screen = ::GetDC(nullptr);
    ::EnumFontFamiliesExW(screen, &query, First::take, reinterpret_cast<LPARAM>(&face), 0);
    ::ReleaseDC(nullptr, screen);
    ASSERT_FALSE(face.empty());
    EXPECT_TRUE(IsFontInstalled(face));
    CtlString shouted = u"  ";
    for (char16_t c : face) shouted.push_back((c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c);
    shouted += u" ";
    EXPECT_TRUE(IsFontInstalled(shouted));
    EXPECT_FALSE(IsFontInstalled(u"No Such Font Tarnwick 93"));
    EXPECT_FALSE(IsFontInstalled(u""));
}

class FakeControl : public IFontHolder {
public:
    explicit FakeControl(bool hasFont, bool throws = false) : m_hasFont(hasFont), m_throws(throws) {}
    bool HasFont() const override { return m_hasFont; }
    void SetFontName(const CtlString& name) override {
        if (m_throws) throw std::runtime_error("read-only font");
        name_ = name;
    }
    void ReassignFont() override { ++reassigned; }
    CtlString name_ = u"old";
    int reassigned = 0;

private:
    bool m_hasFont;
    bool m_throws;
};

class FakeForm : public IFormWithControls {
public:
    bool HasFont() const override { return true; }
    void SetFontName(const CtlString& name) override { name_ = name; }
    void ReassignFont() override {}
    std::vector<IFontHolder*> Controls() override { return controls; }
    CtlString name_ = u"old";
    std::vector<IFontHolder*> controls;
};

TEST(Fonts, ApplyFontToFormSkipsControlsWithoutFontAndFailures) {
    FakeControl plain(true), noFont(false), failing(true, true), last(true);
    FakeForm form;
    form.controls = {&plain, &noFont, nullptr, &failing, &last};
    ApplyFontToForm(&form, u"Tahoma");
    EXPECT_EQ(form.name_, u"Tahoma");
    EXPECT_EQ(plain.name_, u"Tahoma");
    EXPECT_EQ(plain.reassigned, 1);
    EXPECT_EQ(noFont.name_, u"old");
    EXPECT_EQ(noFont.reassigned, 0);
    // A failing statement is skipped; the next one and the next control still run.
    EXPECT_EQ(failing.name_, u"old");
    EXPECT_EQ(failing.reassigned, 1);
    EXPECT_EQ(last.name_, u"Tahoma");
    ApplyFontToForm(nullptr, u"Tahoma");
}

}  // namespace
