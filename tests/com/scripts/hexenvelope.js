// Unicode text through the hex envelope, code unit by code unit: Cyrillic, CJK, a surrogate
// pair and a lone surrogate.
function check(name, ok, detail) {
    WScript.Echo((ok ? "PASS " : "FAIL ") + name + (ok ? "" : ": " + detail));
}

function units(s) {
    var out = [];
    for (var i = 0; i < s.length; ++i) out.push(s.charCodeAt(i).toString(16));
    return out.join(" ");
}

// An error that escapes shows as a failed check: cscript under Wine reports none.
try {
    var wrapper = new ActiveXObject("TarnwickControls30.clsCommonWrapper");
    var text = "\u041F\u0440\u0438\u0432\u0435\u0442 \u4E2D\u6587 \uD83D\uDE00 \uD800 end";
    var envelope = wrapper.StrToHex(text);
    check("Envelope", envelope.substr(0, 2) == "0X" && /^[\x20-\x7E]*$/.test(envelope), envelope);
    var back = wrapper.HextoStr(envelope);
    check("RoundTrip", units(back) == units(text), units(back));
} catch (e) {
    check("Script", false, e.number + " " + e.description);
}
