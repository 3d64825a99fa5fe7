# The public front of the common routines: drawing, colours, text measure, keys and the string core.
class clsCommonWrapper
header graphics/clsCommonWrapper.h
header com/GraphicsComSupport.h
enum eCtlButtonStyle: "iCtlBtnStyle_UseDefault" = -1, "iCtlBtnStyle_Flat" = 0, "iCtlBtnStyle_Xp" = 1, "iCtlBtnStyle_XpEx" = 2, "iCtlBtnStyle_Vista" = 3, "iCtlBtnStyle_Glass" = 4, "iCtlBtnStyle_Vista2" = 5, "iCtlBtnStyle_Vista3" = 6, "iCtlBtnStyle_Vista4" = 7, "iCtlBtnStyle_Xp2" = 8
enum eCtlWindowsType: "ctl_ewt_WinErr" = 0, "ctl_ewt_Win32" = 1, "ctl_ewt_WinCE" = 2, "ctl_ewt_Win95" = 3, "ctl_ewt_Win98" = 4, "ctl_ewt_Win9xPlus" = 5, "ctl_ewt_WinNt3" = 6, "ctl_ewt_WinNt4" = 7, "ctl_ewt_Win2000" = 8, "ctl_ewt_WinXP" = 9, "ctl_ewt_Win2003" = 10, "ctl_ewt_WinVistaAndMore" = 11
prop DefaultButtonStyle: eCtlButtonStyle
method DrawButton(handle lHdc, ref rect rWork, long lBackColor, bool bUseBorder, long lBorderColor, bool bPressed, bool bDefault, bool bCancel, bool bDrawFocus, bool bRounded, eCtlButtonStyle iBtnStyle, long lBackColorOut)
method DrawRect(handle lHdc, ref rect r, long lColor, bool bFilled)
method DrawRectCoords(handle lHdc, long X1, long Y1, long X2, long Y2, long lColor, bool bFilled)
method DrawLine(handle lHdc, ref rect r, long lForeColor, long iLineWidth = 1, long PsPen = 0)
method DrawLineCoords(handle lHdc, long X1, long Y1, long X2, long Y2, long lForeColor, long iLineWidth = 1, long PsPen = 0)
method CalculateStringDim(handle lHdc, string sPartString, bool bUseFlag_NoPrefix, ref long wDim, ref long hMax)
method CalculateStringDimEx(handle lHdc, string sPartString, long lAdditionalFlags, ref long wDim, ref long hMax)
method TextOut(handle lHdc, string s, long x, long y)
method TextOutColor(handle lHdc, string s, long x, long y, long lForeColor)
method DrawText(handle lHdc, string s, ref rect r, long wFormat)
method DrawTextCoords(handle lHdc, string s, long X1, long Y1, long X2, long Y2, long wFormat)
method DrawTextColor(handle lHdc, string s, ref rect r, long wFormat, long lForeColor)
method DrawTextColorCoords(handle lHdc, string s, long X1, long Y1, long X2, long Y2, long wFormat, long lForeColor)
method ConvertOLEColor(long lColor) -> long
method CreateColorBrush(long lColor) -> handle
method CreateColorPen(long nPenStyle, long nWidth, long lColor) -> handle
method FadeToYCoords(handle hDC, long X1, long Y1, long X2, long Y2, long cStart, long cStop)
method FadeToY(handle hDC, ref rect r, long cStart, long cStop)
method FadeToXCoords(handle hDC, long X1, long Y1, long X2, long Y2, long cStart, long cStop)
method FadeToX(handle hDC, ref rect r, long cStart, long cStop)
method ColorToComponents(long lColor, ref short iRed, ref short iGrn, ref short iBlu)
method LoByte(short w) -> byte
method HiByte(short w) -> byte
method MakeWord(byte lo, byte hi) -> short
method LoWord(long l) -> short
method HiWord(long l) -> short
method MakeDWord(short lo, short hi) -> long
method LoLong(currency d) -> long
method HiLong(currency d) -> long
method MakeDLong(long lo, long hi) -> currency
method ShiftState() -> short
method ClipByte(long i) -> long
method ColorInc(long lColor, short iIncFactor) -> long
method GetWindowsVersionEx(ref eCtlWindowsType ewt, ref long lMajor, ref long lMinor, ref long lBuild) = [&] { eCtlWindowsType type{}; @obj.GetWindowsVersionEx(type, @lMajor, @lMinor, @lBuild); @ewt.value = type; }()
method GetWindowsVersion() -> eCtlWindowsType
method OverlapImageRect(handle lDestHDC, ref rect r, bool bGrayed, picture oPicImage, bool bUseTransp = 0, long iPicMaxWidth = -1, long iPicMaxHeight = -1, long XTransp = 0, long YTransp = 0, long lTranspColor = -1) = @obj.OverlapImageRect(@lDestHDC, @r, @bGrayed, PictureRefOf(@oPicImage), @bUseTransp, @iPicMaxWidth, @iPicMaxHeight, @XTransp, @YTransp, @lTranspColor)
method OverlapImageCoords(handle lDestHDC, long X1, long Y1, long X2, long Y2, bool bGrayed, picture oPicImage, bool bUseTransp = 0, long iPicMaxWidth = -1, long iPicMaxHeight = -1, long XTransp = 0, long YTransp = 0, long lTranspColor = -1) = @obj.OverlapImageCoords(@lDestHDC, @X1, @Y1, @X2, @Y2, @bGrayed, PictureRefOf(@oPicImage), @bUseTransp, @iPicMaxWidth, @iPicMaxHeight, @XTransp, @YTransp, @lTranspColor)
method ShowMessageBoxW(string Prompt, long Buttons, string Title) -> long
method DrawRRectCoords(handle lHdc, long X1, long Y1, long X2, long Y2, bool bFilled, long lBackColor, long lBorderColor, long iBorderWidth, long PsPen, long iRoundWidth)
method DrawRRect(handle lHdc, ref rect r, bool bFilled, long lBackColor, long lBorderColor, long iBorderWidth, long PsPen, long iRoundWidth)
method DrawPixel(handle lHdc, long x, long y, long lColor)
method GetColorLuminance(long lColor) -> long
method SetColorLuminance(long lColor, long lLuminance) -> long
method BlendColors(long lColor1, long lColor2, long iPercent) -> long
method IsFontInstalled(string sFontName) -> bool
method ApplyFontToForm(dispatch oFrm, string sFontName) = ApplyFontToDispatchForm(@oFrm, @sFontName)
method InIDE() -> bool
method UniShellExecuteW(handle Hwnd, string sExecute, string iOperation = "", string sParameters = "", string sWorkingDir = "", long WindowStyle = 1) -> handle
method IsUnicodeSystem() -> bool
method GetUnicodeDroppedFiles(unknown oData) -> clsCollection = DroppedFilesCollection(@oData)
method IsKeyDown(long KeyCode) -> bool
method IsEscDown() -> bool
method IsShiftDown() -> bool
method IsControlDown() -> bool
method IsAltDown() -> bool
method GetBkMode(handle lHdc) -> long
method SetBkMode(handle lHdc, long iMode) -> long
method GetBkColor(handle lHdc) -> long
method SetBkColor(handle lHdc, long lColor) -> long
# The string core: every string goes in by reference and comes back unchanged.
method StrToUTF8(ref string Text) -> string
method UTF8toStr(ref string Text) -> string
method IsUnicodeString(ref string s) -> bool
method IsUTF16String(ref string s) -> bool
method IsUTF8String(ref string sText) -> bool
method IsHexString(ref string s) -> bool
method HextoStr(ref string Text) -> string
method StrToHex(ref string Text) -> string
method CanUseAnsiForString(ref string s) -> bool
method AscW(ref string c) -> long
method ChrW(long l) -> string
method UniAppPath() -> string
