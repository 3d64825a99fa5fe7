// clsFontHDC: creates a font from a description, selects it into a DC and puts the old one back.
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"

#include <oaidl.h>

enum eFontHDCQualityType : int32_t {
    efhat_default = 0,
    efhat_nonantialiased = 3,
    efhat_antialiased = 4,
};

// The DC must outlive the object; Destroy (or the end of the object) is the only thing that
// selects the previous font back. The pixels-per-inch cache is shared by all objects of the thread.
class clsFontHDC {
public:
    clsFontHDC() noexcept = default;
    ~clsFontHDC() { Destroy(); }
    // The object owns a font selected in a DC: a copy would delete it and restore the DC twice.
    clsFontHDC(const clsFontHDC&) = delete;
    clsFontHDC& operator=(const clsFontHDC&) = delete;

    HFONT hFont() const noexcept { return m_hFont; }
    void Destroy() noexcept;
    // Raises CtlError "clsFontHDC.SetFontToDC" / "Cannot use this DC!" for a DC of 0. A font the
    // system refuses ends the call silently with the DC's font unchanged.
    void SetFontToDC(HDC lHdc, const CtlString& sFontName, int16_t iFontSize, int32_t lForeColor = -1,
                     bool bFontBold = false, bool bFontItalic = false, bool bFontUnderline = false,
                     bool bFontStrikeout = false, int32_t iQualityType = efhat_default, int16_t iCharWeightInc = 0,
                     bool bForce96DPI = false);
    // Reads Name, Size, Bold, Italic, Underline and Strikethrough from a font object through its
    // dispatch interface; Size is rounded to a whole number of points.
    void SetFontToDCStdFont(HDC lHdc, IDispatch* oFont, int32_t lForeColor = -1,
                            int32_t iQualityType = efhat_default, int16_t iCharWeightInc = 0,
                            bool bForce96DPI = false);

private:
    HDC m_hDC = nullptr;
    HFONT m_hFont = nullptr;
    HGDIOBJ m_hOldFont = nullptr;
};
