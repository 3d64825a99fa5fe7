# Registers a Unicode window class shared by name and creates one window of it.
class cUniWindow
header frame/cUniWindow.h
header com/GraphicsComSupport.h
get Class: string
# Optional handles are variants: the type library keeps no 64-bit default value.
method WindowClassRegister(string sClass, long Style = 0, opt variant hCursor, opt variant hIcon, opt variant hIconSm, long cbClassExtra = 0, long cbWndExtra = 0) -> bool = @obj.WindowClassRegister(@sClass, @Style, HandleOf<HCURSOR>(@hCursor), HandleOf<HICON>(@hIcon), HandleOf<HICON>(@hIconSm), @cbClassExtra, @cbWndExtra)
method WindowClassUnregister()
method WindowCreate(long dwExStyle = 0, long dwStyle = 0, long Class = 0, long x = 0, long y = 0, long nWidth = 0, long nHeight = 0, string sCaption = "", opt variant hwndParent, opt variant hMenu, opt variant lParam) -> handle = @obj.WindowCreate(@dwExStyle, @dwStyle, @Class, @x, @y, @nWidth, @nHeight, @sCaption, HandleOf<HWND>(@hwndParent), HandleOf<HMENU>(@hMenu), HandleOf<LPARAM>(@lParam))
method WindowDestroy() -> bool
