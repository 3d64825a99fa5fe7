# Owns one GDI object (pen, brush, font, bitmap, region) and deletes it at its end.
class clsGdiHandle
header graphics/clsGdiHandle.h
prop Handle: handle
method Destroy()
method ReleaseHandle() -> handle
