# An INI file read and written key by key through the platform's profile calls.
class clsFileIni
header text/clsFileIni.h
header com/TextCollections.h
prop IniFile: string
method ReadString(string sAppName, string sKeyName, string sDefault = "") -> string
method WriteString(string sAppName, string sKeyName, string sKeyVal)
method WriteBool(string sAppName, string sKeyName, bool bKeyVal)
method ReadBool(string sAppName, string sKeyName, bool bDefault = 0) -> bool
method GetSectionRowKey(variant vRows, short idx) -> string = @obj.GetSectionRowKey(tc::com::StringsOf(@vRows), @idx)
method GetSectionRowValue(variant vRows, short idx) -> string = @obj.GetSectionRowValue(tc::com::StringsOf(@vRows), @idx)
method GetSectionRows(string sSecName, ref variant vRows) = tc::com::FillStrings(@vRows, [&](auto& rows) { @obj.GetSectionRows(@sSecName, rows); })
method GetSectionNames(ref variant vRows) = tc::com::FillStrings(@vRows, [&](auto& rows) { @obj.GetSectionNames(rows); })
