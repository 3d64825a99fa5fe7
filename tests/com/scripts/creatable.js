// Every creatable class by its ProgID, with one representative call each. Handles are 8 bytes on
// x64, a type JScript cannot hold, so no handle is read here.
function check(name, ok, detail) {
    WScript.Echo((ok ? "PASS " : "FAIL ") + name + (ok ? "" : ": " + detail));
}

function create(name) {
    try {
        return new ActiveXObject("TarnwickControls30." + name);
    } catch (e) {
        check(name, false, "not created, error " + e.number + " " + e.description);
        return null;
    }
}

// An error that escapes shows as a failed check: cscript under Wine reports none.
try {
    var builder = create("cStringBuilder2");
    if (builder) {
        builder.Append("ab");
        builder.AppendWithNewLine("c");
        check("cStringBuilder2", builder.ToString == "abc\r\n" && builder.Length == 5, builder.ToString);
    }

    var file = create("clsUniFile");
    if (file) {
        var name = file.st_FileName("c:\\folder\\name.txt");
        check("clsUniFile", name == "name.txt" && file.IsFileOpen() == false, name);
    }

    var ini = create("clsFileIni");
    if (ini) {
        ini.IniFile = "c:\\nowhere\\x.ini";
        check("clsFileIni", ini.IniFile == "c:\\nowhere\\x.ini", ini.IniFile);
    }

    var iniEx = create("clsFileIniEx");
    if (iniEx) {
        var loaded = iniEx.LoadFromString("[Main]\r\nKey=Value\r\n");
        var value = iniEx.GetString("main", "KEY");
        check("clsFileIniEx", loaded && value == "Value", value);
    }

    var search = create("clsSearchFiles");
    if (search) {
        check("clsSearchFiles", search.IsSearching() == false && search.SearchInPath("c:\\no such folder").Count == 0, "");
    }

    var collection = create("clsCollection");
    if (collection) {
        collection.Add("one", "k1");
        collection.Add("two");
        check("clsCollection", collection.Count == 2 && collection.Item("K1") == "one" && collection.Item(2) == "two",
              collection.Count);
    }

    var dc = create("clsMEMDC");
    if (dc) {
        dc.CreateDC(8, 8);
        dc.BkColor = 255;
        check("clsMEMDC", dc.BkColor == 255, dc.BkColor);
    }

    var dib = create("clsDIBSection");
    if (dib) {
        var made = dib.Create(4, 4, 32);
        dib.Destroy();
        check("clsDIBSection", made == true, made);
    }

    var font = create("clsFontHDC");
    if (font) {
        font.Destroy();
        check("clsFontHDC", true, "");
    }

    var gdi = create("clsGdiHandle");
    if (gdi) {
        gdi.Destroy();
        check("clsGdiHandle", true, "");
    }

    var wrapper = create("clsCommonWrapper");
    if (wrapper) {
        var blend = wrapper.BlendColors(0x000000, 0xFFFFFF, 50);
        check("clsCommonWrapper", blend > 0 && blend < 0xFFFFFF, blend);
    }

    var subclass = create("cUniSubclass");
    if (subclass) {
        check("cUniSubclass", subclass.InIDE() == false, subclass.InIDE());
    }

    var timer = create("cUniTimer");
    if (timer) {
        check("cUniTimer", timer.IsActive() == false, timer.IsActive());
    }

    var window = create("cUniWindow");
    if (window) {
        var registered = window.WindowClassRegister("TarnwickScriptClass");
        window.WindowClassUnregister();
        check("cUniWindow", registered == true, registered);
    }

    var number = create("clsLargeNumber");
    if (number) {
        var sum = number.StrAdd("1", "2");
        check("clsLargeNumber", sum == "3", sum);
    }
} catch (e) {
    check("Script", false, e.number + " " + e.description);
}
