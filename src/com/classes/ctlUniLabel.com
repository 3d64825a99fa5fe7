# A Unicode caption on a DrawButton background.
enum eUniLabel_TextAlign: "UniLabel Align Left" = 0, "UniLabel Align Right" = 1, "UniLabel Align Center" = 2
enum eUniLabel_TextVAlign: "UniLabel VAlign Top" = 0, "UniLabel VAlign Middle" = 1, "UniLabel VAlign Bottom" = 2
enum eUniLabel_BackStyle: "UniLabel BS Transparent" = 0, "UniLabel BS Opaque" = 1
enum eUniLabel_BorderStyle: "UniLabel BS None" = 0, "UniLabel BS Border" = 1
enum eCtlButtonStyle: "iCtlBtnStyle_UseDefault" = -1, "iCtlBtnStyle_Flat" = 0, "iCtlBtnStyle_Xp" = 1, "iCtlBtnStyle_XpEx" = 2, "iCtlBtnStyle_Vista" = 3, "iCtlBtnStyle_Glass" = 4, "iCtlBtnStyle_Vista2" = 5, "iCtlBtnStyle_Vista3" = 6, "iCtlBtnStyle_Vista4" = 7, "iCtlBtnStyle_Xp2" = 8
enum eCtlOLEDropMode: "ctlOLEDropNone" = 0, "ctlOLEDropManual" = 1
control ctlUniLabel
header controls/ctlUniLabel.h
header com/EventDataObject.h
events_cpp ctlUniLabelEvents
prop Caption: string
prop BackColor: color
prop Margin: short
prop Style: eCtlButtonStyle
prop ForeColor: color
prop BorderColor: color
prop Alignment: eUniLabel_TextAlign
prop VAlignment: eUniLabel_TextVAlign
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
