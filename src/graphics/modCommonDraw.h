// Module routines under the drawing library: colours, gradients, shapes, text, bit packing,
// keys, message boxes, fonts, shell, dropped files, cursors and picture overlay.
#pragma once

#include <cstdint>
#include <vector>

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"
#include "text/WindowsVersion.h"

#include <objidl.h>

// The library's own TextOut and DrawText below take library strings; the platform's wide
// entry points are always called by their W names.
#undef TextOut
#undef DrawText

// ---- colours ----------------------------------------------------------------------------------
// A value with the top bit set names a system colour (GetSysColor(value & 31)); others pass.
int32_t ConvertOLEColor(int32_t lColor);
// Each channel + iIncFactor, clipped to 0..255.
int32_t ColorInc(int32_t lColor, int16_t iIncFactor);
// 0.3 r + 0.59 g + 0.11 b, rounded half to even, clipped to 0..255.
int32_t GetColorLuminance(int32_t lColor);
// ColorInc(lColor, lLuminance - GetColorLuminance(lColor)).
int32_t SetColorLuminance(int32_t lColor, int32_t lLuminance);
// iPercent (clipped to 0..100) of lColor2 over lColor1, single precision, half to even.
int32_t BlendColors(int32_t lColor1, int32_t lColor2, int32_t iPercent);
void ColorToComponents(int32_t lColor, int16_t& iRed, int16_t& iGrn, int16_t& iBlu);
int32_t ClipByte(int32_t i);
// The caller deletes what these return.
HBRUSH CreateColorBrush(int32_t lColor);
HPEN CreateColorPen(int32_t nPenStyle, int32_t nWidth, int32_t lColor);
// lFore, unless lBack is far enough from the system grey text colour to keep that readable.
int32_t pvDisabledTextColor(int32_t lFore, int32_t lBack);

// ---- gradients: rows Y1 .. Y2-1 (columns X1 .. X2-1); X1 == X2 (Y1 == Y2) is one pixel each --
void FadeToYCoords(HDC hdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop);
void FadeToY(HDC hdc, const CTL_RECT& r, int32_t cStart, int32_t cStop);
void FadeToXCoords(HDC hdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t cStart, int32_t cStop);
void FadeToX(HDC hdc, const CTL_RECT& r, int32_t cStart, int32_t cStop);

// ---- shapes -----------------------------------------------------------------------------------
void DrawRect(HDC lHdc, const CTL_RECT& r, int32_t lColor, bool bFilled);
void DrawRectCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t lColor, bool bFilled);
void DrawLine(HDC lHdc, const CTL_RECT& r, int32_t lForeColor, int32_t iLineWidth = 1, int32_t PsPen = PS_SOLID);
void DrawLineCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t lForeColor,
                    int32_t iLineWidth = 1, int32_t PsPen = PS_SOLID);
void DrawRRect(HDC lHdc, const CTL_RECT& r, bool bFilled, int32_t lBackColor, int32_t lBorderColor,
               int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth);
void DrawRRectCoords(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bFilled, int32_t lBackColor,
                     int32_t lBorderColor, int32_t iBorderWidth, int32_t PsPen, int32_t iRoundWidth);
void pvDrawEllipse(HDC lHdc, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bFilled, int32_t lBackColor,
                   int32_t lBorderColor, int32_t iBorderWidth, int32_t PsPen);
void DrawPixel(HDC lHdc, int32_t x, int32_t y, int32_t lColor);
// CreateRoundRectRgn(0, 0, width + 1, height + 1, corner, corner); the caller owns the region.
HRGN CreateRoundRegion(int32_t lWidth, int32_t lHeight, int32_t lCorner);

// ---- text (wide calls only) -------------------------------------------------------------------
void CalculateStringDim(HDC lHdc, const CtlString& sPartString, bool bUseFlag_NoPrefix, int32_t& wDim,
                        int32_t& hMax);
void CalculateStringDimEx(HDC lHdc, const CtlString& sPartString, int32_t lAdditionalFlags, int32_t& wDim,
                          int32_t& hMax);
void TextOut(HDC lHdc, const CtlString& s, int32_t x, int32_t y);
void TextOutColor(HDC lHdc, const CtlString& s, int32_t x, int32_t y, int32_t lForeColor);
void DrawText(HDC lHdc, const CtlString& s, CTL_RECT& r, int32_t wFormat);
void DrawTextCoords(HDC lHdc, const CtlString& s, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t wFormat);
void DrawTextColor(HDC lHdc, const CtlString& s, CTL_RECT& r, int32_t wFormat, int32_t lForeColor);
void DrawTextColorCoords(HDC lHdc, const CtlString& s, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2,
                         int32_t wFormat, int32_t lForeColor);
// Widest line of a text broken at CR or CR LF.
int32_t pvGetMultiLineWidth(HDC hdc, const CtlString& sText, int32_t lFlags);
void pvCalcTextBlock(HDC hdc, const CtlString& sText, int32_t lFlags, bool bUseWidth, bool bUseHeight,
                     int32_t& lWidth, int32_t& lHeight);

// ---- bit packing: signed across the sign bit --------------------------------------------------
uint8_t LoByte(int16_t w);
uint8_t HiByte(int16_t w);
int16_t MakeWord(uint8_t lo, uint8_t hi);
int16_t LoWord(int32_t l);
int16_t HiWord(int32_t l);
int32_t MakeDWord(int16_t lo, int16_t hi);
int32_t LoLong(int64_t d);
int32_t HiLong(int64_t d);
int64_t MakeDLong(int32_t lo, int32_t hi);

// ---- keys -------------------------------------------------------------------------------------
// Bit 0 shift, bit 1 control, bit 2 alt.
int16_t ShiftState();
bool IsKeyDown(int32_t KeyCode);
bool IsEscDown();
bool IsShiftDown();
bool IsControlDown();
bool IsAltDown();

// ---- device context state (named apart from the platform calls of the same names) -------------
namespace CommonDraw {
int32_t GetBkMode(HDC lHdc);
int32_t SetBkMode(HDC lHdc, int32_t iMode);
int32_t GetBkColor(HDC lHdc);
int32_t SetBkColor(HDC lHdc, int32_t lColor);
}  // namespace CommonDraw

// ---- message boxes ----------------------------------------------------------------------------
int32_t ShowMessageBoxW(const CtlString& Prompt, int32_t Buttons, const CtlString& Title);
void pvShowError(const CtlString& sPrompt);
void pvShowInfo(const CtlString& sPrompt);
bool pvShowQuestion(const CtlString& sPrompt, const CtlString& sTitle);

// ---- fonts and forms --------------------------------------------------------------------------
bool IsFontInstalled(const CtlString& sFontName);

// Anything whose font can be renamed. Controls without a font answer false to HasFont.
class IFontHolder {
public:
    virtual ~IFontHolder() = default;
    virtual bool HasFont() const = 0;
    virtual void SetFontName(const CtlString& sName) = 0;
    // Assigning the font back to itself, so that a control with a font setter redraws.
    virtual void ReassignFont() = 0;
};
// A form: its own font and its controls.
class IFormWithControls : public IFontHolder {
public:
    virtual std::vector<IFontHolder*> Controls() = 0;
};
// Failures are skipped statement by statement.
void ApplyFontToForm(IFormWithControls* oFrm, const CtlString& sFontName);

// ---- environment and shell --------------------------------------------------------------------
bool InIDE();
intptr_t UniShellExecuteW(HWND Hwnd, const CtlString& sExecute, const CtlString& iOperation = CtlString(),
                          const CtlString& sParameters = CtlString(), const CtlString& sWorkingDir = CtlString(),
                          int32_t WindowStyle = SW_SHOWNORMAL);
// Paths of a drag's CF_HDROP data; filesFallback is what the host's narrowed list holds and is
// used when the direct read fails or the system is not Unicode.
std::vector<CtlString> GetUnicodeDroppedFiles(IDataObject* oData,
                                              const std::vector<CtlString>& filesFallback = {});
// The system cursor resource for an eCtlCursorType value; 0 for values outside the table.
int32_t pvCursorResource(int32_t iCursorType);

// ---- pictures ---------------------------------------------------------------------------------
// A picture as the image routines need it: a handle and its picture type (1 bitmap, 3 icon).
struct CtlPictureRef {
    HANDLE hHandle = nullptr;
    int16_t iType = 0;
};
constexpr int16_t kPicTypeBitmap = 1;
constexpr int16_t kPicTypeIcon = 3;

void OverlapImageCoords(HDC lDestHDC, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bGrayed,
                        const CtlPictureRef& oPicImage, bool bUseTransp = false, int32_t iPicMaxWidth = -1,
                        int32_t iPicMaxHeight = -1, int32_t XTransp = 0, int32_t YTransp = 0,
                        int32_t lTranspColor = -1);
void OverlapImageRect(HDC lDestHDC, const CTL_RECT& r, bool bGrayed, const CtlPictureRef& oPicImage,
                      bool bUseTransp = false, int32_t iPicMaxWidth = -1, int32_t iPicMaxHeight = -1,
                      int32_t XTransp = 0, int32_t YTransp = 0, int32_t lTranspColor = -1);
