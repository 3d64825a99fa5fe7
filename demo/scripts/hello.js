// TarnwickControls30 from a script. Register the DLL first (see docs/com.md), then run:
//   cscript //nologo hello.js
// A 32-bit DLL needs the 32-bit cscript (%SystemRoot%\SysWOW64\cscript.exe on 64-bit Windows).
var big = new ActiveXObject("TarnwickControls30.clsLargeNumber");
var common = new ActiveXObject("TarnwickControls30.clsCommonWrapper");

// Whole numbers of any size, held as decimal strings.
var factorial = "1";
for (var i = 2; i <= 30; i++) factorial = big.StrMult(factorial, String(i));
WScript.Echo("30! = " + factorial);
WScript.Echo("30! in base 16 = " + big.ConvertBases(factorial, "10", "16"));
WScript.Echo("2^127 - 1 = " + big.StrSub(big.StrPow("2", "127"), "1"));

// Colours are OLE colours (0x00BBGGRR).
function hex(n) { return "0x" + ("000000" + n.toString(16).toUpperCase()).slice(-6); }
WScript.Echo("red and blue blended half and half = " + hex(common.BlendColors(0x0000FF, 0xFF0000, 50)));

// Strings stay UTF-16 all the way.
var smile = common.ChrW(0x263A);
var text = "caf" + String.fromCharCode(0xE9) + " " + smile;
WScript.Echo("AscW(ChrW(0x263A)) = 0x" + common.AscW(smile).toString(16).toUpperCase() +
             ", IsUnicodeString(\"caf\\u00E9 \\u263A\") = " + common.IsUnicodeString(text));

// A library error arrives as a script exception with the library's number and text.
try {
    big.StrDec("0");
} catch (e) {
    WScript.Echo("StrDec(\"0\") failed as expected: " + e.description);
}
