# An INI file held in memory as rows: comments, blank lines and order survive a save.
class clsFileIniEx
header text/clsFileIniEx.h
header com/TextCollections.h
prop AllowTabs: bool
prop CommentChar: string
prop KeyValueSepChar: string
method Load(string sFile) -> bool
method LoadFromString(ref string s) -> bool
prop IniFile: string
method GetString(string sAppName, string sKeyName, string sDefault = "") -> string
method RemoveSection(string sSection) -> bool
method RemoveRowKeyVal(string sAppName, string sKeyName) -> bool
method AddString(string sAppName, string sKeyName, string sKeyVal)
method AddBool(string sAppName, string sKeyName, bool bKeyVal)
method GetBool(string sAppName, string sKeyName, bool bDefault = 0) -> bool
method GetSectionRowKey(variant vRows, long idx) -> string = @obj.GetSectionRowKey(tc::com::StringsOf(@vRows), @idx)
method GetSectionRowValue(variant vRows, long idx) -> string = @obj.GetSectionRowValue(tc::com::StringsOf(@vRows), @idx)
method GetSectionRows(string sSecName, ref variant vRows) = tc::com::FillStrings(@vRows, [&](auto& rows) { @obj.GetSectionRows(@sSecName, rows); })
method GetSectionNames(ref variant vRows) = tc::com::FillStrings(@vRows, [&](auto& rows) { @obj.GetSectionNames(rows); })
# sLineSep defaults to carriage return and line feed.
method Save(string sFile = "", opt variant sLineSep, bool bUpdate = -1, bool bSaveEmptyKeyVal = -1) -> bool = @obj.Save(@sFile, tc::com::TextOr(@sLineSep, u"\r\n"), @bUpdate, @bSaveEmptyKeyVal)
# Public because Save runs it on a second instance.
method pvSave(string sFile = "", opt variant sLineSep, bool bSaveEmptyKeyVal = -1) -> bool = @obj.pvSave(@sFile, tc::com::TextOr(@sLineSep, u"\r\n"), @bSaveEmptyKeyVal)
