// Library errors as a script sees them: number and description (Wine's JScript shows no source).
function check(name, ok, detail) {
    WScript.Echo((ok ? "PASS " : "FAIL ") + name + (ok ? "" : ": " + detail));
}

function expectError(name, call, description) {
    try {
        call();
        check(name, false, "no error");
    } catch (e) {
        check(name, e.number == -2147221503 && e.description == description, e.number + " " + e.description);
    }
}

// An error that escapes shows as a failed check: cscript under Wine reports none.
try {
    var file = new ActiveXObject("TarnwickControls30.clsUniFile");
    expectError("NotALocalPath", function () { file.st_OneBackSlash("a/b"); }, "Not a local path");
    var iniEx = new ActiveXObject("TarnwickControls30.clsFileIniEx");
    expectError("LoadFirst", function () { iniEx.GetString("s", "k"); }, "Please load the file first!");
    var ini = new ActiveXObject("TarnwickControls30.clsFileIni");
    expectError("NeedAFile", function () { ini.ReadString("s", "k"); }, "I need a file!");
} catch (e) {
    check("Script", false, e.number + " " + e.description);
}
