# A memory device context with a bitmap of the screen's colour depth: double buffering and masks.
class clsMEMDC
header graphics/clsMEMDC.h
enum eMemDcBkMode: "eMemDcBkMode_TRANSPARENT" = 1, "eMemDcBkMode_OPAQUE" = 2
# The sizes go by value: widl writes no usable default for an optional by-reference long, and
# Wine's dispatch then never returns from a call that leaves one out.
method CreateDC(long Width = -1, long Height = -1, eMemDcBkMode iBkMode = 1)
method ResizeCutDC(long NewWidth, long NewHeight, eMemDcBkMode iNewBkMode = 1)
method ResizeAdaptDC(long NewWidth, long NewHeight, eMemDcBkMode iNewBkMode = 1)
prop BkMode: eMemDcBkMode
prop BkColor: long
method CloneFromHBmp(handle hBmp, eMemDcBkMode iBkMode = 1)
method CloneFromHdc(handle lHdc, long lSrcLeft = 0, long lSrcTop = 0, long lSrcWidth = -1, long lSrcHeight = -1, long eRop = 13369376)
method Destroy()
method PaintPicture(handle lHdc, long lDestLeft = 0, long lDestTop = 0, long lDestWidth = -1, long lDestHeight = -1, long lSrcLeft = 0, long lSrcTop = 0, long lSrcWidth = -1, long lSrcHeight = -1, long eRop = 13369376)
get hDC: handle
get hBmp: handle
get Width: long
get Height: long
method ReleasehBmp() -> handle
# The platform picture itself goes out, owning the bitmap: a copy through the library's picture
# would leave the caller a handle that dies with the first one.
get Picture: dispatch = @obj.Picture().get()
method DrawBackColor(long lColor)
