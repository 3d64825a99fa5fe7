// DrawButton, the button styles (eCtlButtonStyle), the default style and the flat field frame.
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"

enum eCtlButtonStyle : int32_t {
    iCtlBtnStyle_UseDefault = -1,
    iCtlBtnStyle_Flat = 0,
    iCtlBtnStyle_Xp = 1,
    iCtlBtnStyle_XpEx = 2,
    iCtlBtnStyle_Vista = 3,
    iCtlBtnStyle_Glass = 4,
    iCtlBtnStyle_Vista2 = 5,
    iCtlBtnStyle_Vista3 = 6,
    iCtlBtnStyle_Vista4 = 7,
    iCtlBtnStyle_Xp2 = 8,
};

// Paints the background of a button-like area from one back colour. Colours are OLE colours;
// lBorderColor and lBackColorOut take -1 for "derived". rWork comes back as it went in.
// Border lines, strips, corners, bands and marks are designed at 96 DPI and scale to iDpi.
// Never throws.
void DrawButton(HDC lHdc, CTL_RECT& rWork, int32_t lBackColor, bool bUseBorder, int32_t lBorderColor,
                bool bPressed, bool bDefault, bool bCancel, bool bDrawFocus, bool bRounded,
                int32_t iBtnStyle, int32_t lBackColorOut, bool bAdaptLight = true, int32_t iDpi = 96);

// The style that -1 stands for on this thread: 3 (Vista) until set.
int32_t GetDefaultButtonStyle();
void SetDefaultButtonStyle(int32_t style);
// Told of every SetDefaultButtonStyle on this thread (nullptr: nobody): the tooltip layer passes the
// new style to its tip label at once, while other controls pick it up at their next paint.
using DefaultButtonStyleListener = void (*)(int32_t style);
void SetDefaultButtonStyleListener(DefaultButtonStyleListener listener) noexcept;

// The frame of text boxes and list fields: no body. lBorder -1 derives it as DrawButton does,
// lOut -1 means lBack. With bThinLine only an underline is drawn. Its lines and corners scale by
// iDpi / 96 as DrawButton's do.
void pvDrawFlatFrame(HDC hdc, const CTL_RECT& r, int32_t lBack, int32_t lBorder, bool bRounded,
                     int32_t lOut, bool bThinLine, int32_t iDpi = 96);
