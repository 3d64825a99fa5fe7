# The push button: a picture and a Unicode caption on a DrawButton background.
enum eUniButtonImage_ImagePos: "eubiip_Top" = 0, "eubiip_Left" = 1, "eubiip_Right" = 2, "eubiip_Bottom" = 3, "eubiip_Centered" = 4, "eubiip_Top_TextNear" = 5, "eubiip_Left_TextNear" = 6, "eubiip_Right_TextNear" = 7, "eubiip_Bottom_TextNear" = 8, "eubiip_Left_TextCentered" = 10, "eubiip_Right_TextCentered" = 11
enum eUniImage_TranspType: "eUniImage_TranspType_NoTransp" = -1, "eUniImage_TranspType_ByCoords" = 0, "eUniImage_TranspType_ByColor" = 1
control ctlUniButtonImageXP
header controls/ctlUniButtonImageXP.h
header com/EventDataObject.h
events_cpp ctlUniButtonImageXPEvents
prop Style: eCtlButtonStyle
prop xTranspColor: long
prop yTranspColor: long
prop TransparencyType: eUniImage_TranspType
prop TransparentColor: color
prop BackColor: color
prop Tristate: bool
prop Pressed: bool
prop ForeColor: color
prop BorderColor: color
prop Enabled: bool
prop ShowFocus: bool
propobj Font: font
prop Caption: string
propobj Picture: picture
method Refresh()
method ForceLostFocus()
prop Tip: string
prop RoundedBorders: bool
prop BackColorOut: color
prop UseRoundRegions: bool
prop ImagePos: eUniButtonImage_ImagePos
method Hwnd() -> handle
prop OLEDropMode: eCtlOLEDropMode
method OLEDrag()
prop MousePointer: short
propobj MouseIcon: picture
prop DblClickEvent: bool
prop Value: bool
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
event Resize()
event OLEStartDrag(DataObject Data, ref long AllowedEffects)
event OLESetData(DataObject Data, ref short DataFormat)
event OLEGiveFeedback(ref long Effect, ref bool DefaultCursors)
event OLEDragOver(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y, ref short State)
event OLEDragDrop(DataObject Data, ref long Effect, ref short Button, ref short Shift, ref float x, ref float y)
event OLECompleteDrag(ref long Effect)
