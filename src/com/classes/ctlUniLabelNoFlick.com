# The label drawn into an AutoRedraw surface, so a caption never shows half-painted.
control ctlUniLabelNoFlick
autoredraw
header controls/ctlUniLabelNoFlick.h
header com/EventDataObject.h
events_cpp ctlUniLabelNoFlickEvents
prop Caption: string
prop BackColor: color
prop Margin: short
prop Style: eCtlButtonStyle
prop ForeColor: color
prop BorderColor: color
prop Alignment: eUniLabel_TextAlign
prop VAlignment: eUniLabel_TextVAlign
prop BackStyle: eUniLabel_BackStyle
prop BorderStyle: eUniLabel_BorderStyle
prop AutoSize: bool
propobj Font: font
method Refresh(bool bNow = 0)
prop Tip: string
prop Enabled: bool
prop RoundedBorders: bool
prop BackColorOut: color
prop UseRoundRegions: bool
method Hwnd() -> handle
prop OLEDropMode: eCtlOLEDropMode
method OLEDrag()
prop MousePointer: short
propobj MouseIcon: picture
get hDC: handle
# The host may have changed a member of the font object it set: read it again first.
method ApplyFontChanges() -> variant = (SyncFontFromHost(@obj.Font()), @obj.ApplyFontChanges(), EmptyVariant())
event Click()
event DblClick()
event MouseDown(ref short Button, ref short Shift, ref float x, ref float y)
event MouseMove(ref short Button, ref short Shift, ref float x, ref float y)
event MouseUp(ref short Button, ref short Shift, ref float x, ref float y)
event Resize()
event OLEStartDrag(DataObject Data, ref long AllowedEffects)
event OLESetData(DataObject Data, ref short DataFormat)
event OLEGiveFeedback(ref long Effect, ref bool DefaultCursors)
event OLEDragOver(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y, ref short State)
event OLEDragDrop(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y)
event OLECompleteDrag(ref long Effect)
