# Hooks one window for one owner; the owner answers to ISubclassOwner, whose WindowProc follows IDispatch.
class cUniSubclass
header frame/cUniSubclass.h
header com/GraphicsComSupport.h
method AddMsg(long uMsg, long When)
method CallOrigWndProc(long uMsg, handle wParam, handle lParam) -> handle
method DelMsg(long uMsg, long When)
method InIDE() -> bool
method Subclass(handle Hwnd, dispatch Owner) -> bool = @obj.Subclass(@Hwnd, UnownedOwner<ISubclassOwner>(@Owner, IID_ISubclassOwner))
method UnSubclass() -> bool
