// A search result walked with an Enumerator, and read by Count and Item.
function check(name, ok, detail) {
    WScript.Echo((ok ? "PASS " : "FAIL ") + name + (ok ? "" : ": " + detail));
}

// An error that escapes shows as a failed check: cscript under Wine reports none.
try {
    var file = new ActiveXObject("TarnwickControls30.clsUniFile");
    var folder = file.st_GetTempPath() + "tc_script_search";
    file.st_RmDirRic(folder);
    file.st_MkDir(folder);
    var names = ["one.txt", "two.txt", "\u0442\u0440\u0438.txt"];
    for (var i = 0; i < names.length; ++i) {
        file.OpenFileWrite(folder + "\\" + names[i]);
        file.WriteAnsiLine("x");
        file.CloseFile();
    }

    var search = new ActiveXObject("TarnwickControls30.clsSearchFiles");
    var result = search.SearchInPath(folder);
    var found = [];
    for (var e = new Enumerator(result); !e.atEnd(); e.moveNext()) {
        found.push(e.item().sFileName);
    }
    found.sort();
    var expected = names.slice(0).sort();
    check("Enumerator", found.join("|") == expected.join("|"), found.join("|"));
    check("Count", result.Count == 3, result.Count);
    var first = result.Item(1);
    check("Item", first.sPathFileName() == folder + "\\" + first.sFileName && first.IsFile(), first.sPathFileName());
    file.st_RmDirRic(folder);
    check("Cleanup", !file.st_DirExist(folder), folder);
} catch (e) {
    check("Script", false, e.number + " " + e.description);
}
