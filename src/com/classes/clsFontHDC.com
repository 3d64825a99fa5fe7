# A font made from a description, selected into a DC, and the DC's old font put back at the end.
class clsFontHDC
header graphics/clsFontHDC.h
enum eFontHDCQualityType: "efhat_default" = 0, "efhat_nonantialiased" = 3, "efhat_antialiased" = 4
get hFont: handle
method Destroy()
method SetFontToDC(handle lHdc, ref string sFontName, ref short iFontSize, long lForeColor = -1, bool bFontBold = 0, bool bFontItalic = 0, bool bFontUnderline = 0, bool bFontStrikeout = 0, eFontHDCQualityType iQualityType = 0, short iCharWeightInc = 0, bool bForce96DPI = 0)
# The font is read through its own dispatch members, so the platform object itself goes through.
method SetFontToDCStdFont(handle lHdc, font oFont, long lForeColor = -1, eFontHDCQualityType iQualityType = 0, short iCharWeightInc = 0, bool bForce96DPI = 0) = @obj.SetFontToDCStdFont(@lHdc, oFont, @lForeColor, @iQualityType, @iCharWeightInc, @bForce96DPI)
