# A top-down DIB section with its own DC, for direct work on 32-bit pixels.
class clsDIBSection
header graphics/clsDIBSection.h
method Create(long lWidth, long lHeight, long iBitsPerPixel = 32) -> bool
method CreateFromBitmap(handle hBmp) -> bool
method Destroy()
get hDC: handle
get hDib: handle
get Width: long
get Height: long
get BitsPerPixel: long
method PaintTo(handle hDC, long x, long y, long w, long h, long srcX = 0, long srcY = 0)
method CopyFrom(handle hDC, long x, long y, long w, long h)
