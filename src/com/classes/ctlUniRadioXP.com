# An option button with a Unicode caption; pressing it releases the other radios of its container.
enum eUniRadioXp_align: "UniRadioXp_Align_Left" = 0, "UniRadioXp_Align_Right" = 1
control ctlUniRadioXP
header controls/ctlUniRadioXP.h
header com/ComPropertyBag.h
header com/EventDataObject.h
events_cpp ctlUniRadioXPEvents
prop Style: eCtlButtonStyle
prop BackColor: color
prop RadioBackColor: color
prop RadioForeColor: color
prop ForeColor: color
prop BorderColor: color
prop Enabled: bool
prop Align: eUniRadioXp_align
propobj Font: font
prop Caption: string
prop Pressed: bool
# Called by the other radios of the form: releases this one when it sits in the named container.
method ExternUnpress(string sContainerName, opt variant vContainerIndex) = @obj.ExternUnpress(@sContainerName, BagValueFromVariant(@vContainerIndex))
prop Value: bool
prop Tip: string
method Hwnd() -> handle
prop OLEDropMode: eCtlOLEDropMode
method OLEDrag()
prop MousePointer: short
propobj MouseIcon: picture
prop ShowFocus: bool
# The host may have changed a member of the font object it set: read it again first.
method ApplyFontChanges() -> variant = (SyncFontFromHost(@obj.Font()), @obj.ApplyFontChanges(), EmptyVariant())
event Click()
event DblClick()
event KeyDown(ref short KeyCode, ref short Shift)
event KeyPress(ref short KeyAscii)
event KeyUp(ref short KeyCode, ref short Shift)
event MouseDown(ref short Button, ref short Shift, ref float x, ref float y)
event MouseMove(ref short Button, ref short Shift, ref float x, ref float y)
event MouseUp(ref short Button, ref short Shift, ref float x, ref float y)
event OLEStartDrag(DataObject Data, ref long AllowedEffects)
event OLESetData(DataObject Data, ref short DataFormat)
event OLEGiveFeedback(ref long Effect, ref bool DefaultCursors)
event OLEDragOver(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y, ref short State)
event OLEDragDrop(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y)
event OLECompleteDrag(ref long Effect)
