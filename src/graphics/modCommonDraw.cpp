// Colours, gradients, shapes, text, bit packing, keys, message boxes, fonts, shell, dropped files, cursors.
#include "graphics/modCommonDraw.h"

#include <shlobj.h>
#include <shellapi.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "common/KeyedCollection.h"
#include "graphics/GdiRaii.h"

namespace {

// Round half to even, the rounding of the language runtime's conversions. The default
// floating-point environment rounds to nearest even; nearbyint honours it.
int32_t roundHalfEven(double value) { return static_cast<int32_t>(std::nearbyint(value)); }
int32_t roundHalfEvenSingle(float value) { return static_cast<int32_t>(std::nearbyintf(value)); }

int32_t redOf(int32_t c) { return c & 0xFF; }
int32_t greenOf(int32_t c) { return (c >> 8) & 0xFF; }
int32_t blueOf(int32_t c) { return (c >> 16) & 0xFF; }
int32_t rgbOf(int32_t r, int32_t g, int32_t b) { return r | (g << 8) | (b << 16); }

COLORREF asColorRef(int32_t lColor) { return static_cast<COLORREF>(ConvertOLEColor(lColor)); }

// One solid span of rows or columns: the same pixels a one-pixel pen line would give, without
// creating a pen per line. ExtTextOutW with ETO_OPAQUE fills with the background colour.
void fillSpan(HDC hdc, int32_t left, int32_t top, int32_t right, int32_t bottom, COLORREF color) {
    // One pixel (the strips of the button borders): SetPixelV is the cheaper call.
    if (right - left == 1 && bottom - top == 1) {
        ::SetPixelV(hdc, left, top, color);
        return;
    }
    ::SetBkColor(hdc, color);
    const RECT area{left, top, right, bottom};
    ::ExtTextOutW(hdc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

// The pixels of LineTo from a to b along one axis: a included, b left out.
void lineSpan(int32_t a, int32_t b, int32_t& from, int32_t& to) {
    if (b >= a) {
        from = a;
        to = (b == a) ? a + 1 : b;
    } else {
        from = b + 1;
        to = a + 1;
    }
}

// The colour of gradient step t (1 at the start, towards 0 at the end).
int32_t fadeColor(int32_t start, int32_t stop, float t) {
    const float u = 1.0f - t;
    // Each product and the sum rounded to single precision, also where the compiler would
    // keep more (x87): the rounding of ties depends on it.
    const auto channel = [&](int32_t s, int32_t e) {
        const float first = static_cast<float>(s) * t;
        const float second = static_cast<float>(e) * u;
        const float sum = first + second;
        return roundHalfEvenSingle(std::fabs(sum));
    };
    return rgbOf(channel(redOf(start), redOf(stop)), channel(greenOf(start), greenOf(stop)),
                 channel(blueOf(start), blueOf(stop)));
}

template <class PaintStep>
void fade(int32_t count, int32_t cStart, int32_t cStop, PaintStep paintStep) {
    if (count < 1) return;
    const int32_t start = ConvertOLEColor(cStart);
    const int32_t stop = ConvertOLEColor(cStop);
    const float step = 1.0f / static_cast<float>(count);
    float t = 1.0f;
    for (int32_t i = 0; i < count; ++i) {
        paintStep(i, static_cast<COLORREF>(fadeColor(start, stop, t)));
        t -= step;
        if (t < 0.0f) t = 0.0f;
    }
}

void drawShape(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bFilled, int32_t lBackColor,
               int32_t lBorderColor, int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth, bool ellipse) {
    if (lHdc == nullptr) return;
    BrushOwner brush(bFilled ? CreateColorBrush(lBackColor) : nullptr);
    const HGDIOBJ brushToUse = bFilled ? static_cast<HGDIOBJ>(brush.get()) : ::GetStockObject(NULL_BRUSH);
    const bool withPen = iBorderWidth > 0;
    PenOwner pen(withPen ? CreateColorPen(PsPen, iBorderWidth, lBorderColor) : ::CreatePen(PS_NULL, 0, 0));
    const ScopedSelect selectBrush(lHdc, brushToUse);
    const ScopedSelect selectPen(lHdc, pen.get());
    // Without a pen the platform leaves out the right and bottom edge.
    const int32_t right = withPen ? X2 : X2 + 1;
    const int32_t bottom = withPen ? Y2 : Y2 + 1;
    if (ellipse) {
        ::Ellipse(lHdc, X1, Y1, right, bottom);
    } else {
        ::RoundRect(lHdc, X1, Y1, right, bottom, iRoundWidth, iRoundWidth);
    }
}

CtlString trimmedSpaces(const CtlString& s) {
    const size_t first = s.find_first_not_of(u' ');
    if (first == CtlString::npos) return CtlString();
    const size_t last = s.find_last_not_of(u' ');
    return s.substr(first, last - first + 1);
}

CtlString lowerCased(CtlString s) {
    if (!s.empty()) {
        ::CharLowerBuffW(reinterpret_cast<wchar_t*>(s.data()), static_cast<DWORD>(s.size()));
    }
    return s;
}

int CALLBACK collectFontName(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM target) {
    auto* names = reinterpret_cast<KeyedCollection<bool>*>(target);
    const CtlString name = lowerCased(FromWide(font->lfFaceName));
    if (!name.empty() && !names->Contains(name)) names->Add(true, name);
    return 1;
}

}  // namespace

// ---- colours ----------------------------------------------------------------------------------

int32_t ConvertOLEColor(int32_t lColor) {
    if (lColor < 0) return static_cast<int32_t>(::GetSysColor(lColor & 31));
    return lColor;
}

int32_t ClipByte(int32_t i) { return std::clamp(i, 0, 255); }

int32_t ColorInc(int32_t lColor, int16_t iIncFactor) {
    const int32_t c = ConvertOLEColor(lColor);
    return rgbOf(ClipByte(redOf(c) + iIncFactor), ClipByte(greenOf(c) + iIncFactor), ClipByte(blueOf(c) + iIncFactor));
}

int32_t GetColorLuminance(int32_t lColor) {
    const int32_t c = ConvertOLEColor(lColor);
    return ClipByte(roundHalfEven(0.3 * redOf(c) + 0.59 * greenOf(c) + 0.11 * blueOf(c)));
}

int32_t SetColorLuminance(int32_t lColor, int32_t lLuminance) {
    const int32_t delta = std::clamp(lLuminance - GetColorLuminance(lColor), -32768, 32767);
    return ColorInc(lColor, static_cast<int16_t>(delta));
}

int32_t BlendColors(int32_t lColor1, int32_t lColor2, int32_t iPercent) {
    const int32_t a = ConvertOLEColor(lColor1);
    const int32_t b = ConvertOLEColor(lColor2);
    const int32_t p = std::clamp(iPercent, 0, 100);
    const float wa = static_cast<float>(100 - p) / 100.0f;
    const float wb = 1.0f - wa;
    const auto channel = [&](int32_t x, int32_t y) {
        const float first = static_cast<float>(x) * wa;
        const float second = static_cast<float>(y) * wb;
        const float mixed = first + second;
        return ClipByte(roundHalfEvenSingle(mixed));
    };
    return rgbOf(channel(redOf(a), redOf(b)), channel(greenOf(a), greenOf(b)), channel(blueOf(a), blueOf(b)));
}

void ColorToComponents(int32_t lColor, int16_t& iRed, int16_t& iGrn, int16_t& iBlu) {
    const int32_t c = ConvertOLEColor(lColor);
    iRed = static_cast<int16_t>(redOf(c));
    iGrn = static_cast<int16_t>(greenOf(c));
    iBlu = static_cast<int16_t>(blueOf(c));
}

HBRUSH CreateColorBrush(int32_t lColor) { return ::CreateSolidBrush(asColorRef(lColor)); }

HPEN CreateColorPen(int32_t nPenStyle, int32_t nWidth, int32_t lColor) {
    return ::CreatePen(nPenStyle, nWidth, asColorRef(lColor));
}

int32_t pvDisabledTextColor(int32_t lFore, int32_t lBack) {
    constexpr int32_t kGrayText = static_cast<int32_t>(0x80000011u);
    const int32_t back = ConvertOLEColor(lBack);
    const int32_t gray = ConvertOLEColor(kGrayText);
    const bool differs = std::abs(redOf(back) - redOf(gray)) >= 5 || std::abs(greenOf(back) - greenOf(gray)) >= 5 ||
                         std::abs(blueOf(back) - blueOf(gray)) >= 5;
    return differs ? kGrayText : lFore;
}

// ---- gradients --------------------------------------------------------------------------------

namespace {

// One fade for both directions: by rows (each row spans X1..X2) or by columns (each spans Y1..Y2).
void fadeAlong(HDC hdc, bool byRows, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop) {
    if (hdc == nullptr) return;
    int32_t from = 0;
    int32_t to = 0;
    byRows ? lineSpan(X1, X2, from, to) : lineSpan(Y1, Y2, from, to);
    const ScopedBkColor keepBk(hdc);
    fade(byRows ? Y2 - Y1 : X2 - X1, cStart, cStop, [&](int32_t i, COLORREF color) {
        byRows ? fillSpan(hdc, from, Y1 + i, to, Y1 + i + 1, color) : fillSpan(hdc, X1 + i, from, X1 + i + 1, to, color);
    });
}

}  // namespace

void FadeToYCoords(HDC hdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop) {
    fadeAlong(hdc, true, X1, Y1, X2, Y2, cStart, cStop);
}

void FadeToY(HDC hdc, const CTL_RECT& r, int32_t cStart, int32_t cStop) {
    FadeToYCoords(hdc, r.left, r.top, r.right, r.bottom, cStart, cStop);
}

void FadeToXCoords(HDC hdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop) {
    fadeAlong(hdc, false, X1, Y1, X2, Y2, cStart, cStop);
}

void FadeToX(HDC hdc, const CTL_RECT& r, int32_t cStart, int32_t cStop) {
    FadeToXCoords(hdc, r.left, r.top, r.right, r.bottom, cStart, cStop);
}

// ---- shapes -----------------------------------------------------------------------------------

void DrawRectCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t lColor, bool bFilled) {
    if (lHdc == nullptr) return;
    const BrushOwner brush(CreateColorBrush(lColor));
    if (!brush) return;
    const RECT area{X1, Y1, X2, Y2};
    if (bFilled) {
        ::FillRect(lHdc, &area, brush.get());
    } else {
        ::FrameRect(lHdc, &area, brush.get());
    }
}

void DrawRect(HDC lHdc, const CTL_RECT& r, int32_t lColor, bool bFilled) {
    DrawRectCoords(lHdc, r.left, r.top, r.right, r.bottom, lColor, bFilled);
}

void DrawLineCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t lForeColor, int32_t iLineWidth,
                    int32_t PsPen) {
    if (lHdc == nullptr) return;
    const PenOwner pen(CreateColorPen(PsPen, iLineWidth, lForeColor));
    if (!pen) return;
    const ScopedSelect select(lHdc, pen.get());
    POINT previous{};
    ::MoveToEx(lHdc, X1, Y1, &previous);
    ::LineTo(lHdc, X2, Y2);
    ::MoveToEx(lHdc, previous.x, previous.y, nullptr);
}

void DrawLine(HDC lHdc, const CTL_RECT& r, int32_t lForeColor, int32_t iLineWidth, int32_t PsPen) {
    DrawLineCoords(lHdc, r.left, r.top, r.right, r.bottom, lForeColor, iLineWidth, PsPen);
}

void DrawRRectCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bFilled, int32_t lBackColor,
                     int32_t lBorderColor, int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth) {
    drawShape(lHdc, X1, Y1, X2, Y2, bFilled, lBackColor, lBorderColor, iBorderWidth, PsPen, iRoundWidth, false);
}

void DrawRRect(HDC lHdc, const CTL_RECT& r, bool bFilled, int32_t lBackColor, int32_t lBorderColor,
               int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth) {
    DrawRRectCoords(lHdc, r.left, r.top, r.right, r.bottom, bFilled, lBackColor, lBorderColor, iBorderWidth, PsPen,
                    iRoundWidth);
}

void pvDrawEllipse(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bFilled, int32_t lBackColor,
                   int32_t lBorderColor, int32_t iBorderWidth, int32_t PsPen) {
    drawShape(lHdc, X1, Y1, X2, Y2, bFilled, lBackColor, lBorderColor, iBorderWidth, PsPen, 0, true);
}

void DrawPixel(HDC lHdc, int32_t x, int32_t y, int32_t lColor) {
    if (lHdc == nullptr) return;
    ::SetPixel(lHdc, x, y, asColorRef(lColor));
}

HRGN CreateRoundRegion(int32_t lWidth, int32_t lHeight, int32_t lCorner) {
    return ::CreateRoundRectRgn(0, 0, lWidth + 1, lHeight + 1, lCorner, lCorner);
}

// ---- text -------------------------------------------------------------------------------------

void CalculateStringDimEx(HDC lHdc, const CtlString& sPartString, int32_t lAdditionalFlags, int32_t& wDim,
                          int32_t& hMax) {
    wDim = 0;
    hMax = 0;
    if (lHdc == nullptr) return;
    RECT area{0, 0, 0, 0};
    ::DrawTextW(lHdc, AsWide(sPartString), static_cast<int>(sPartString.size()), &area,
                static_cast<UINT>(lAdditionalFlags | DT_CALCRECT | DT_SINGLELINE));
    wDim = area.right - area.left;
    hMax = area.bottom - area.top;
}

void CalculateStringDim(HDC lHdc, const CtlString& sPartString, bool bUseFlag_NoPrefix, int32_t& wDim,
                        int32_t& hMax) {
    CalculateStringDimEx(lHdc, sPartString, bUseFlag_NoPrefix ? DT_NOPREFIX : 0, wDim, hMax);
}

void TextOut(HDC lHdc, const CtlString& s, int32_t x, int32_t y) {
    if (lHdc == nullptr) return;
    ::TextOutW(lHdc, x, y, AsWide(s), static_cast<int>(s.size()));
}

void TextOutColor(HDC lHdc, const CtlString& s, int32_t x, int32_t y, int32_t lForeColor) {
    if (lHdc == nullptr) return;
    ::SetTextColor(lHdc, asColorRef(lForeColor));
    TextOut(lHdc, s, x, y);
}

void DrawText(HDC lHdc, const CtlString& s, CTL_RECT& r, int32_t wFormat) {
    if (lHdc == nullptr) return;
    RECT area{r.left, r.top, r.right, r.bottom};
    ::DrawTextW(lHdc, AsWide(s), static_cast<int>(s.size()), &area, static_cast<UINT>(wFormat));
    // DT_CALCRECT reports the measured rectangle back.
    r = CTL_RECT{area.left, area.top, area.right, area.bottom};
}

void DrawTextCoords(HDC lHdc, const CtlString& s, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t wFormat) {
    CTL_RECT area{X1, Y1, X2, Y2};
    DrawText(lHdc, s, area, wFormat);
}

void DrawTextColor(HDC lHdc, const CtlString& s, CTL_RECT& r, int32_t wFormat, int32_t lForeColor) {
    if (lHdc == nullptr) return;
    ::SetTextColor(lHdc, asColorRef(lForeColor));
    DrawText(lHdc, s, r, wFormat);
}

void DrawTextColorCoords(HDC lHdc, const CtlString& s, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2,
                         int32_t wFormat, int32_t lForeColor) {
    CTL_RECT area{X1, Y1, X2, Y2};
    DrawTextColor(lHdc, s, area, wFormat, lForeColor);
}

int32_t pvGetMultiLineWidth(HDC hdc, const CtlString& sText, int32_t lFlags) {
    CtlString text;
    text.reserve(sText.size());
    for (size_t i = 0; i < sText.size(); ++i) {
        // CR LF counts as one break.
        if (sText[i] == u'\n' && i > 0 && sText[i - 1] == u'\r') continue;
        text.push_back(sText[i]);
    }
    int32_t widest = 0;
    size_t start = 0;
    for (;;) {
        const size_t end = std::min(text.find(u'\r', start), text.size());
        int32_t width = 0;
        int32_t height = 0;
        CalculateStringDimEx(hdc, text.substr(start, end - start), lFlags, width, height);
        widest = std::max(widest, width);
        if (end == text.size()) break;
        start = end + 1;
    }
    return widest;
}

void pvCalcTextBlock(HDC hdc, const CtlString& sText, int32_t lFlags, bool bUseWidth, bool bUseHeight,
                     int32_t& lWidth, int32_t& lHeight) {
    if (hdc == nullptr) return;
    if (!bUseWidth) lWidth = pvGetMultiLineWidth(hdc, sText, lFlags | DT_SINGLELINE);
    if (!bUseHeight) lHeight = 0;
    RECT area{0, 0, lWidth, lHeight};
    ::DrawTextW(hdc, AsWide(sText), static_cast<int>(sText.size()), &area,
                static_cast<UINT>(lFlags | DT_CALCRECT | DT_WORDBREAK));
    lWidth = area.right - area.left;
    lHeight = area.bottom - area.top;
}

// ---- bit packing ------------------------------------------------------------------------------

uint8_t LoByte(int16_t w) { return static_cast<uint8_t>(static_cast<uint16_t>(w) & 0xFFu); }
uint8_t HiByte(int16_t w) { return static_cast<uint8_t>(static_cast<uint16_t>(w) >> 8); }
int16_t MakeWord(uint8_t lo, uint8_t hi) {
    return static_cast<int16_t>(static_cast<uint16_t>(lo | (static_cast<uint16_t>(hi) << 8)));
}
int16_t LoWord(int32_t l) { return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(l) & 0xFFFFu)); }
int16_t HiWord(int32_t l) { return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(l) >> 16)); }
int32_t MakeDWord(int16_t lo, int16_t hi) {
    return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint16_t>(lo)) |
                                (static_cast<uint32_t>(static_cast<uint16_t>(hi)) << 16));
}
int32_t LoLong(int64_t d) { return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(d))); }
int32_t HiLong(int64_t d) { return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(d) >> 32)); }
int64_t MakeDLong(int32_t lo, int32_t hi) {
    return static_cast<int64_t>(static_cast<uint64_t>(static_cast<uint32_t>(lo)) |
                                (static_cast<uint64_t>(static_cast<uint32_t>(hi)) << 32));
}

// ---- keys -------------------------------------------------------------------------------------

bool IsKeyDown(int32_t KeyCode) { return (static_cast<uint16_t>(::GetAsyncKeyState(KeyCode)) & 0x8000u) != 0; }
bool IsEscDown() { return IsKeyDown(VK_ESCAPE); }
bool IsShiftDown() { return IsKeyDown(VK_SHIFT); }
bool IsControlDown() { return IsKeyDown(VK_CONTROL); }
bool IsAltDown() { return IsKeyDown(VK_MENU); }

int16_t ShiftState() {
    int16_t state = 0;
    if (IsShiftDown()) state |= 1;
    if (IsControlDown()) state |= 2;
    if (IsAltDown()) state |= 4;
    return state;
}

// ---- DC state ---------------------------------------------------------------------------------

namespace CommonDraw {
int32_t GetBkMode(HDC lHdc) { return lHdc == nullptr ? 0 : ::GetBkMode(lHdc); }
int32_t SetBkMode(HDC lHdc, int32_t iMode) { return lHdc == nullptr ? 0 : ::SetBkMode(lHdc, iMode); }
int32_t GetBkColor(HDC lHdc) { return lHdc == nullptr ? 0 : static_cast<int32_t>(::GetBkColor(lHdc)); }
int32_t SetBkColor(HDC lHdc, int32_t lColor) {
    return lHdc == nullptr ? 0 : static_cast<int32_t>(::SetBkColor(lHdc, asColorRef(lColor)));
}
}  // namespace CommonDraw

// ---- message boxes ----------------------------------------------------------------------------

int32_t ShowMessageBoxW(const CtlString& Prompt, int32_t Buttons, const CtlString& Title) {
    const UINT flags = static_cast<UINT>(Buttons) | MB_TASKMODAL | MB_TOPMOST;
    return ::MessageBoxW(nullptr, AsWide(Prompt), AsWide(Title), flags);
}

void pvShowError(const CtlString& sPrompt) { ShowMessageBoxW(sPrompt, MB_ICONHAND, u"Attention"); }
void pvShowInfo(const CtlString& sPrompt) { ShowMessageBoxW(sPrompt, MB_ICONASTERISK, u"Attention"); }
bool pvShowQuestion(const CtlString& sPrompt, const CtlString& sTitle) {
    const CtlString title = trimmedSpaces(sTitle).empty() ? CtlString(u"Attention") : sTitle;
    return ShowMessageBoxW(sPrompt, MB_ICONQUESTION | MB_YESNO, title) == IDYES;
}

// ---- fonts and forms --------------------------------------------------------------------------

bool IsFontInstalled(const CtlString& sFontName) {
    try {
        KeyedCollection<bool> names;
        const WindowDCGuard screen(nullptr);
        if (screen.get() == nullptr) return false;
        LOGFONTW query{};
        query.lfCharSet = DEFAULT_CHARSET;
        ::EnumFontFamiliesExW(screen.get(), &query, collectFontName, reinterpret_cast<LPARAM>(&names), 0);
        return names.Contains(lowerCased(trimmedSpaces(sFontName)));
    } catch (...) {
        return false;
    }
}

void ApplyFontToForm(IFormWithControls* oFrm, const CtlString& sFontName) {
    if (oFrm == nullptr) return;
    const auto attempt = [](auto&& step) {
        try {
            step();
        } catch (...) {
        }
    };
    attempt([&] { oFrm->SetFontName(sFontName); });
    std::vector<IFontHolder*> controls;
    attempt([&] { controls = oFrm->Controls(); });
    for (IFontHolder* control : controls) {
        if (control == nullptr) continue;
        bool hasFont = false;
        attempt([&] { hasFont = control->HasFont(); });
        if (!hasFont) continue;
        attempt([&] { control->SetFontName(sFontName); });
        attempt([&] { control->ReassignFont(); });
    }
}

// ---- environment and shell --------------------------------------------------------------------

bool InIDE() { return false; }

intptr_t UniShellExecuteW(HWND Hwnd, const CtlString& sExecute, const CtlString& iOperation,
                          const CtlString& sParameters, const CtlString& sWorkingDir, int32_t WindowStyle) {
    const auto orNull = [](const CtlString& s) { return s.empty() ? nullptr : AsWide(s); };
    const HINSTANCE result = ::ShellExecuteW(Hwnd, orNull(iOperation), AsWide(sExecute), orNull(sParameters),
                                             orNull(sWorkingDir), WindowStyle);
    return reinterpret_cast<intptr_t>(result);
}

namespace {

// Reads the wide file list of a locked DROPFILES block, never past its end.
bool readDropFiles(const void* block, size_t blockSize, std::vector<CtlString>& files) {
    if (block == nullptr || blockSize < sizeof(DROPFILES)) return false;
    const auto* header = static_cast<const DROPFILES*>(block);
    const auto* bytes = static_cast<const unsigned char*>(block);
    size_t offset = header->pFiles;
    if (offset < sizeof(DROPFILES) || offset >= blockSize) return false;
    if (header->fWide) {
        const size_t limit = (blockSize - offset) / sizeof(wchar_t);
        const auto* chars = reinterpret_cast<const wchar_t*>(bytes + offset);
        size_t i = 0;
        while (i < limit && chars[i] != L'\0') {
            size_t length = 0;
            while (i + length < limit && chars[i + length] != L'\0') ++length;
            files.push_back(FromWide(chars + i, length));
            i += length + 1;
        }
    } else {
        const auto* chars = reinterpret_cast<const char*>(bytes + offset);
        const size_t limit = blockSize - offset;
        size_t i = 0;
        while (i < limit && chars[i] != '\0') {
            size_t length = 0;
            while (i + length < limit && chars[i + length] != '\0') ++length;
            const int wideLength = ::MultiByteToWideChar(CP_ACP, 0, chars + i, static_cast<int>(length), nullptr, 0);
            std::wstring wide(static_cast<size_t>(std::max(wideLength, 0)), L'\0');
            if (wideLength > 0) {
                ::MultiByteToWideChar(CP_ACP, 0, chars + i, static_cast<int>(length), wide.data(), wideLength);
            }
            files.push_back(FromWide(wide.c_str(), wide.size()));
            i += length + 1;
        }
    }
    return true;
}

}  // namespace

std::vector<CtlString> GetUnicodeDroppedFiles(IDataObject* oData, const std::vector<CtlString>& filesFallback) {
    if (oData == nullptr) return {};
    FORMATETC format{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    if (oData->QueryGetData(&format) != S_OK) return {};
    if (!IsUnicodeSystem()) return filesFallback;
    STGMEDIUM medium{};
    if (FAILED(oData->GetData(&format, &medium))) return filesFallback;
    std::vector<CtlString> files;
    bool read = false;
    if (medium.tymed == TYMED_HGLOBAL && medium.hGlobal != nullptr) {
        const void* block = ::GlobalLock(medium.hGlobal);
        if (block != nullptr) {
            read = readDropFiles(block, ::GlobalSize(medium.hGlobal), files);
            ::GlobalUnlock(medium.hGlobal);
        }
    }
    ::ReleaseStgMedium(&medium);
    return read ? files : filesFallback;
}

int32_t pvCursorResource(int32_t iCursorType) {
    static constexpr int32_t kResources[] = {32512, 32512, 32515, 32513, 32641, 32640, 32643, 32645,
                                             32642, 32644, 32516, 32514, 32648, 32650, 32651, 32646};
    if (iCursorType < 0 || iCursorType >= static_cast<int32_t>(std::size(kResources))) return 0;
    return kResources[iCursorType];
}
