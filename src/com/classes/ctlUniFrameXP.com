# A container box with a Unicode title: a title bar fading left to right, or a classic groove.
control ctlUniFrameXP
header controls/ctlUniFrameXP.h
header com/EventDataObject.h
events_cpp ctlUniFrameXPEvents
prop BackColor: color
prop ForeColor: color
prop BorderColor: color
prop Enabled: bool
prop VistaStyle: bool
method Hwnd() -> handle
propobj Font: font
prop Caption: string
prop Tip: string
prop BackColorOut: color
prop TitleBackColor: color
prop UseShadow: bool
prop OLEDropMode: eCtlOLEDropMode
method OLEDrag()
prop MousePointer: short
propobj MouseIcon: picture
# The host may have changed a member of the font object it set: read it again first.
method ApplyFontChanges() -> variant = (SyncFontFromHost(@obj.Font()), @obj.ApplyFontChanges(), EmptyVariant())
event Click()
event DblClick()
event MouseDown(ref short Button, ref short Shift, ref float x, ref float y)
event MouseMove(ref short Button, ref short Shift, ref float x, ref float y)
event MouseUp(ref short Button, ref short Shift, ref float x, ref float y)
event OLEStartDrag(DataObject Data, ref long AllowedEffects)
event OLESetData(DataObject Data, ref short DataFormat)
event OLEGiveFeedback(ref long Effect, ref bool DefaultCursors)
event OLEDragOver(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y, ref short State)
event OLEDragDrop(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y)
event OLECompleteDrag(ref long Effect)
