# The collection every member hands out: items in order, optional case-insensitive keys.
class clsCollection
header com/clsCollection.h
get Count: long
method Item(variant Index) -> variant [default]
method Add(variant Item, opt variant Key, opt variant Before, opt variant After)
method Remove(variant Index)
# A method, not a property get: Wine's JScript asks for the enumerator with DISPATCH_METHOD alone.
method _NewEnum() -> unknown [restricted hidden] = @obj.NewEnum().get()
