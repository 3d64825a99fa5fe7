# A window-less timer whose ticks reach its owner's ITimerOwner.TimerProc, right behind IDispatch.
class cUniTimer
header frame/cUniTimer.h
header com/GraphicsComSupport.h
method InIDE() -> bool
method TmrStart(dispatch Owner, long nInterval, long nID = 0) -> bool = @obj.TmrStart(UnownedOwner<ITimerOwner>(@Owner, IID_ITimerOwner), @nInterval, @nID)
method TmrStop() -> bool
method IsActive() -> bool
