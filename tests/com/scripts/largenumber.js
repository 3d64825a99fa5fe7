// Large-number arithmetic from a script: results are decimal strings of any length.
function check(name, ok, detail) {
    WScript.Echo((ok ? "PASS " : "FAIL ") + name + (ok ? "" : ": " + detail));
}

// An error that escapes shows as a failed check: cscript under Wine reports none.
try {
    var n = new ActiveXObject("TarnwickControls30.clsLargeNumber");
    var cases = [
        ["StrAdd", n.StrAdd("99999999999999999999", "1"), "100000000000000000000"],
        ["StrMult", n.StrMult("123456789123456789", "987654321987654321"), "121932631356500531347203169112635269"],
        ["StrPow", n.StrPow("2", "100"), "1267650600228229401496703205376"],
        ["StrDiv", n.StrDiv("1000000000000000000000", "7"), "142857142857142857142"],
        ["StrMod", n.StrMod("1000000000000000000000", "7"), "6"],
        ["ConvertBases", n.ConvertBases("255", "10", "16"), "FF"]
    ];
    for (var i = 0; i < cases.length; ++i) {
        check(cases[i][0], cases[i][1] == cases[i][2], cases[i][1]);
    }
    check("StrGT", n.StrGT("10000000000000000000001", "10000000000000000000000") == true, "");
} catch (e) {
    check("Script", false, e.number + " " + e.description);
}
