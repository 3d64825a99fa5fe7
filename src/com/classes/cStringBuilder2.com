# A text accumulator that copies its long main text rarely.
class cStringBuilder2
header text/cStringBuilder2.h
get Length: long
get ToString: string
let TheString: string
method Append(string sThis)
method AppendWithNewLine(string sThis)
method ReplaceString(string sFind, string sReplace, long Compare = 0) = @obj.ReplaceString(@sFind, @sReplace, static_cast<eCtlCompareMethod>(@Compare))
