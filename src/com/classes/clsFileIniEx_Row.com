# One row of a clsFileIniEx: a key, a comment, a blank line or a section with its own rows.
class clsFileIniEx_Row noncreatable
header text/clsFileIniEx_Row.h
header com/TextCollections.h
prop sRow: string = @obj.sRow | @obj.sRow = @newVal
# A section's rows under their keys; a copy: changing the returned collection does not change the row.
propobj oRows: clsCollection = tc::com::CollectionOf(@obj.oRows) | @obj.oRows = tc::com::RowsOf(@newVal)
prop sKey: string = @obj.sKey | @obj.sKey = @newVal
prop sValue: string = @obj.sValue | @obj.sValue = @newVal
prop sSection: string = @obj.sSection | @obj.sSection = @newVal
method Clone(clsFileIniEx_Row oRow = 0) -> clsFileIniEx_Row
