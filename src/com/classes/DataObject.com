# The data of a drag, handed to the drag events of every control for the length of one event.
class DataObject noncreatable
header com/EventDataObject.h
cpp EventDataObject
base DataObjectAdapter
event_arg SurfaceDataObject
method GetData(opt variant Format) -> variant
method SetData(opt variant Data, opt variant Format)
method GetFormat(short Format) -> bool
method Clear()
get Files: variant
