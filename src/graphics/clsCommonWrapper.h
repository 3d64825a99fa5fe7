// clsCommonWrapper: the public front of the common routines; every member forwards to the module routine of its name.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "common/CtlTypes.h"
#include "graphics/DrawButton.h"
#include "graphics/modCommonDraw.h"
#include "text/UniStringCore.h"
#include "text/WindowsVersion.h"
#include "text/modLongPath.h"

// Stateless: any instance reaches the same thread-wide DefaultButtonStyle.
class clsCommonWrapper {
public:
    int32_t DefaultButtonStyle() const { return GetDefaultButtonStyle(); }
    // Stores the style; when a tooltip layer has registered itself, its tip label follows at once.
    void DefaultButtonStyle(int32_t style);
    // The tooltip layer registers (and on its end clears) the one listener of the thread.
    static void SetTooltipStyleListener(std::function<void(int32_t)> listener);

    void DrawButton(HDC lHdc, CTL_RECT& rWork, int32_t lBackColor, bool bUseBorder, int32_t lBorderColor,
                    bool bPressed, bool bDefault, bool bCancel, bool bDrawFocus, bool bRounded, int32_t iBtnStyle,
                    int32_t lBackColorOut) {
        ::DrawButton(lHdc, rWork, lBackColor, bUseBorder, lBorderColor, bPressed, bDefault, bCancel, bDrawFocus,
                     bRounded, iBtnStyle, lBackColorOut, true);
    }

    void DrawRect(HDC lHdc, const CTL_RECT& r, int32_t lColor, bool bFilled) { ::DrawRect(lHdc, r, lColor, bFilled); }
    void DrawRectCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t lColor, bool bFilled) {
        ::DrawRectCoords(lHdc, X1, Y1, X2, Y2, lColor, bFilled);
    }
    void DrawLine(HDC lHdc, const CTL_RECT& r, int32_t lForeColor, int32_t iLineWidth = 1, int32_t PsPen = PS_SOLID) {
        ::DrawLine(lHdc, r, lForeColor, iLineWidth, PsPen);
    }
    void DrawLineCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t lForeColor,
                        int32_t iLineWidth = 1, int32_t PsPen = PS_SOLID) {
        ::DrawLineCoords(lHdc, X1, Y1, X2, Y2, lForeColor, iLineWidth, PsPen);
    }
    void CalculateStringDim(HDC lHdc, const CtlString& sPartString, bool bUseFlag_NoPrefix, int32_t& wDim,
                            int32_t& hMax) {
        ::CalculateStringDim(lHdc, sPartString, bUseFlag_NoPrefix, wDim, hMax);
    }
    void CalculateStringDimEx(HDC lHdc, const CtlString& sPartString, int32_t lAdditionalFlags, int32_t& wDim,
                              int32_t& hMax) {
        ::CalculateStringDimEx(lHdc, sPartString, lAdditionalFlags, wDim, hMax);
    }
    void TextOut(HDC lHdc, const CtlString& s, int32_t x, int32_t y) { ::TextOut(lHdc, s, x, y); }
    void TextOutColor(HDC lHdc, const CtlString& s, int32_t x, int32_t y, int32_t lForeColor) {
        ::TextOutColor(lHdc, s, x, y, lForeColor);
    }
    void DrawText(HDC lHdc, const CtlString& s, CTL_RECT& r, int32_t wFormat) { ::DrawText(lHdc, s, r, wFormat); }
    void DrawTextCoords(HDC lHdc, const CtlString& s, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t wFormat) {
        ::DrawTextCoords(lHdc, s, X1, Y1, X2, Y2, wFormat);
    }
    void DrawTextColor(HDC lHdc, const CtlString& s, CTL_RECT& r, int32_t wFormat, int32_t lForeColor) {
        ::DrawTextColor(lHdc, s, r, wFormat, lForeColor);
    }
    void DrawTextColorCoords(HDC lHdc, const CtlString& s, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2,
                             int32_t wFormat, int32_t lForeColor) {
        ::DrawTextColorCoords(lHdc, s, X1, Y1, X2, Y2, wFormat, lForeColor);
    }
    int32_t ConvertOLEColor(int32_t lColor) { return ::ConvertOLEColor(lColor); }
    HBRUSH CreateColorBrush(int32_t lColor) { return ::CreateColorBrush(lColor); }
    HPEN CreateColorPen(int32_t nPenStyle, int32_t nWidth, int32_t lColor) {
        return ::CreateColorPen(nPenStyle, nWidth, lColor);
    }
    void FadeToYCoords(HDC hdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop) {
        ::FadeToYCoords(hdc, X1, Y1, X2, Y2, cStart, cStop);
    }
    void FadeToY(HDC hdc, const CTL_RECT& r, int32_t cStart, int32_t cStop) { ::FadeToY(hdc, r, cStart, cStop); }
    void FadeToXCoords(HDC hdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop) {
        ::FadeToXCoords(hdc, X1, Y1, X2, Y2, cStart, cStop);
    }
    void FadeToX(HDC hdc, const CTL_RECT& r, int32_t cStart, int32_t cStop) { ::FadeToX(hdc, r, cStart, cStop); }
    void ColorToComponents(int32_t lColor, int16_t& iRed, int16_t& iGrn, int16_t& iBlu) {
        ::ColorToComponents(lColor, iRed, iGrn, iBlu);
    }
    uint8_t LoByte(int16_t w) { return ::LoByte(w); }
    uint8_t HiByte(int16_t w) { return ::HiByte(w); }
    int16_t MakeWord(uint8_t lo, uint8_t hi) { return ::MakeWord(lo, hi); }
    int16_t LoWord(int32_t l) { return ::LoWord(l); }
    int16_t HiWord(int32_t l) { return ::HiWord(l); }
    int32_t MakeDWord(int16_t lo, int16_t hi) { return ::MakeDWord(lo, hi); }
    int32_t LoLong(int64_t d) { return ::LoLong(d); }
    int32_t HiLong(int64_t d) { return ::HiLong(d); }
    int64_t MakeDLong(int32_t lo, int32_t hi) { return ::MakeDLong(lo, hi); }
    int16_t ShiftState() { return ::ShiftState(); }
    int32_t ClipByte(int32_t i) { return ::ClipByte(i); }
    int32_t ColorInc(int32_t lColor, int16_t iIncFactor) { return ::ColorInc(lColor, iIncFactor); }
    void GetWindowsVersionEx(eCtlWindowsType& ewt, int32_t& lMajor, int32_t& lMinor, int32_t& lBuild) {
        ::GetWindowsVersionEx(ewt, lMajor, lMinor, lBuild);
    }
    eCtlWindowsType GetWindowsVersion() { return ::GetWindowsVersion(); }
    void OverlapImageRect(HDC lDestHDC, const CTL_RECT& r, bool bGrayed, const CtlPictureRef& oPicImage,
                          bool bUseTransp = false, int32_t iPicMaxWidth = -1, int32_t iPicMaxHeight = -1,
                          int32_t XTransp = 0, int32_t YTransp = 0, int32_t lTranspColor = -1) {
        ::OverlapImageRect(lDestHDC, r, bGrayed, oPicImage, bUseTransp, iPicMaxWidth, iPicMaxHeight, XTransp, YTransp,
                           lTranspColor);
    }
    void OverlapImageCoords(HDC lDestHDC, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bGrayed,
                            const CtlPictureRef& oPicImage, bool bUseTransp = false, int32_t iPicMaxWidth = -1,
                            int32_t iPicMaxHeight = -1, int32_t XTransp = 0, int32_t YTransp = 0,
                            int32_t lTranspColor = -1) {
        ::OverlapImageCoords(lDestHDC, X1, Y1, X2, Y2, bGrayed, oPicImage, bUseTransp, iPicMaxWidth, iPicMaxHeight,
                             XTransp, YTransp, lTranspColor);
    }
    int32_t ShowMessageBoxW(const CtlString& Prompt, int32_t Buttons, const CtlString& Title) {
        return ::ShowMessageBoxW(Prompt, Buttons, Title);
    }
    void DrawRRectCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bFilled, int32_t lBackColor,
                         int32_t lBorderColor, int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth) {
        ::DrawRRectCoords(lHdc, X1, Y1, X2, Y2, bFilled, lBackColor, lBorderColor, iBorderWidth, PsPen, iRoundWidth);
    }
    void DrawRRect(HDC lHdc, const CTL_RECT& r, bool bFilled, int32_t lBackColor, int32_t lBorderColor,
                   int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth) {
        ::DrawRRect(lHdc, r, bFilled, lBackColor, lBorderColor, iBorderWidth, PsPen, iRoundWidth);
    }
    void DrawPixel(HDC lHdc, int32_t x, int32_t y, int32_t lColor) { ::DrawPixel(lHdc, x, y, lColor); }
    int32_t GetColorLuminance(int32_t lColor) { return ::GetColorLuminance(lColor); }
    int32_t SetColorLuminance(int32_t lColor, int32_t lLuminance) { return ::SetColorLuminance(lColor, lLuminance); }
    int32_t BlendColors(int32_t lColor1, int32_t lColor2, int32_t iPercent) {
        return ::BlendColors(lColor1, lColor2, iPercent);
    }
    bool IsFontInstalled(const CtlString& sFontName) { return ::IsFontInstalled(sFontName); }
    void ApplyFontToForm(IFormWithControls* oFrm, const CtlString& sFontName) { ::ApplyFontToForm(oFrm, sFontName); }
    bool InIDE() { return ::InIDE(); }
    intptr_t UniShellExecuteW(HWND Hwnd, const CtlString& sExecute, const CtlString& iOperation = CtlString(),
                              const CtlString& sParameters = CtlString(), const CtlString& sWorkingDir = CtlString(),
                              int32_t WindowStyle = SW_SHOWNORMAL) {
        return ::UniShellExecuteW(Hwnd, sExecute, iOperation, sParameters, sWorkingDir, WindowStyle);
    }
    bool IsUnicodeSystem() { return ::IsUnicodeSystem(); }
    std::vector<CtlString> GetUnicodeDroppedFiles(IDataObject* oData, const std::vector<CtlString>& filesFallback = {}) {
        return ::GetUnicodeDroppedFiles(oData, filesFallback);
    }
    bool IsKeyDown(int32_t KeyCode) { return ::IsKeyDown(KeyCode); }
    bool IsEscDown() { return ::IsEscDown(); }
    bool IsShiftDown() { return ::IsShiftDown(); }
    bool IsControlDown() { return ::IsControlDown(); }
    bool IsAltDown() { return ::IsAltDown(); }
    int32_t GetBkMode(HDC lHdc) { return CommonDraw::GetBkMode(lHdc); }
    int32_t SetBkMode(HDC lHdc, int32_t iMode) { return CommonDraw::SetBkMode(lHdc, iMode); }
    int32_t GetBkColor(HDC lHdc) { return CommonDraw::GetBkColor(lHdc); }
    int32_t SetBkColor(HDC lHdc, int32_t lColor) { return CommonDraw::SetBkColor(lHdc, lColor); }

    // Strings (the text core).
    CtlString StrToUTF8(const CtlString& Text) { return ::StrToUTF8(Text); }
    CtlString UTF8toStr(const CtlString& Text) { return ::UTF8toStr(Text); }
    bool IsUnicodeString(const CtlString& s) { return ::IsUnicodeString(s); }
    bool IsUTF16String(const CtlString& s) { return ::IsUTF16String(s); }
    bool IsUTF8String(const CtlString& sText) { return ::IsUTF8String(sText); }
    bool IsHexString(const CtlString& s) { return ::IsHexString(s); }
    CtlString HextoStr(const CtlString& Text) { return ::HextoStr(Text); }
    CtlString StrToHex(const CtlString& Text) { return ::StrToHex(Text); }
    bool CanUseAnsiForString(const CtlString& s) { return ::CanUseAnsiForString(s); }
    int32_t AscW(const CtlString& c) { return ::AscW(c); }
    CtlString ChrW(int32_t l) { return ::ChrW(l); }
    CtlString UniAppPath() { return ::UniAppPath(); }
};
