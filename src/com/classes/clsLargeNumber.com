# Exact arithmetic on non-negative whole numbers held as decimal digit strings.
class clsLargeNumber
header text/clsLargeNumber.h
method StrAdd(string sA, string sB) -> string
method StrSub(string sA, string sB) -> string
method StrMult(string sA, string sB) -> string
method StrDiv(string sA, string sB) -> string
method StrMod(string sA, string sB) -> string
method StrPow(string sA, string sB) -> string
method StrInc(string sA) -> string
method StrDec(string sA) -> string
method StrGT(string sA, string sB) -> bool
method StrTrim(string sA) -> string
method StrPowMod(string sA, string sB, string sC) -> string
method StrShl(string sA, string sB) -> string
method StrShr(string sA, string sB) -> string
method StrHalf(string sA) -> string
method StrStraight(string sA) -> bool
method BooleanOperation(string sA, string sB, string Operator) -> string
method ConvFromBase10(string sA, string ToBase) -> string
method ConvToBase10(string sA, string FromBase) -> string
method ConvertBases(string sA, string FromBase, string ToBase) -> string
