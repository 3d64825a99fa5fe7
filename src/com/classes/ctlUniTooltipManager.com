# Switches the tip service of its thread on and holds the settings of the one tip window. No events.
control ctlUniTooltipManager
header controls/ctlUniTooltipManager.h
header com/EventlessControlObject.h
base EventlessControlObject
prop PersistentTip: bool
prop ActivateTips: bool
method SetTip(string sTip, long lMaxWidth = 300, string sTag = "", long XMax = 0, long YMax = 0)
method GetTip() -> string
prop TipBgColor: color
prop TipFgColor: color
propobj TipFont: font
method UpdateTip(string sTip, long lMaxWidth = 300, string sTag = "", long XMax = 0, long YMax = 0)
method TipIsVisible() -> bool
method GetTipTag() -> string
prop Style: eCtlButtonStyle
prop Transparency: short
method HideTip()
