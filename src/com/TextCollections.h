// The library's C++ collections and string lists as hosts see them: search results and INI rows
// as clsCollection objects of wrapped items, string lists as string arrays in a VARIANT; and
// MessagePumpingSearch, the search object whose asynchronous walks let the host's messages run.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "com/clsCollection.h"
#include "text/clsFileIniEx_Row.h"
#include "text/clsSearchFiles.h"
#include "text/clsSearchFilesFInfo.h"

namespace tc::com {

// Each entry wrapped as a clsSearchFilesFInfo, in order and without keys.
std::shared_ptr<clsCollection> CollectionOf(const SearchFilesCollection& entries);
// The entries behind a collection of clsSearchFilesFInfo objects; anything else is a type mismatch.
SearchFilesCollection SearchEntriesOf(const std::shared_ptr<clsCollection>& collection);

// Each row wrapped as a clsFileIniEx_Row under its collection key; no collection gives none.
std::shared_ptr<clsCollection> CollectionOf(const std::shared_ptr<clsFileIniEx_RowCollection>& rows);
std::shared_ptr<clsFileIniEx_RowCollection> RowsOf(const std::shared_ptr<clsCollection>& collection);

// A string array (of strings or of variants holding strings) as a list; anything else is empty.
std::vector<std::u16string> StringsOf(const VARIANT& value);
// Replaces what `out` held by a zero-based string array.
void StoreStrings(const std::vector<std::u16string>& strings, VARIANT& out);

// The text of an optional argument, or `fallback` when it was omitted. Stands in for string
// defaults that the IDL compiler cannot write (it keeps escapes such as \r\n literally).
std::u16string TextOr(const VARIANT& value, const char16_t* fallback);

// Runs fill(list) on an empty list and stores the list into `out`.
template <class Fill>
void FillStrings(VARIANT& out, Fill&& fill) {
    std::vector<std::u16string> strings;
    fill(strings);
    StoreStrings(strings, out);
}

}  // namespace tc::com

// A search whose asynchronous walks dispatch the thread's pending messages once per folder, so a
// host's handler can run (and call StopSearch) during the walk.
class MessagePumpingSearch final : public clsSearchFiles, private clsSearchFilesEvents {
public:
    MessagePumpingSearch() { SetEventSink(this); }
    // The base holds a pointer to this object as its sink.
    MessagePumpingSearch(const MessagePumpingSearch&) = delete;
    MessagePumpingSearch& operator=(const MessagePumpingSearch&) = delete;

private:
    void DoEvents(clsSearchFiles& search) override;
};
