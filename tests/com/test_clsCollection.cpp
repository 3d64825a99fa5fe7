#include <gtest/gtest.h>

#include <algorithm>

#include "TextComTestSupport.h"

namespace {

using namespace comtest;
using tc::com::CLSID_clsCollection;
using tc::com::CLSID_clsSearchFiles;

// The language runtime's errors of a collection, as hosts see them.
constexpr LONG kInvalidProcedureCall = static_cast<LONG>(0x800A0005);
constexpr LONG kSubscriptOutOfRange = static_cast<LONG>(0x800A0009);
constexpr LONG kDuplicateKey = static_cast<LONG>(0x800A01C9);

std::vector<std::u16string> Texts(const std::vector<Var>& items) {
    std::vector<std::u16string> texts;
    for (const Var& item : items) texts.push_back(item.Text());
    return texts;
}

int32_t CountOf(IDispatch* collection) {
    const CallResult r = Call(collection, L"Count");
    EXPECT_EQ(VT_I4, r.value.v.vt);
    return r.value.v.lVal;
}

// The file names of a search result, in its enumeration order.
std::vector<std::u16string> NamesOf(IDispatch* collection) {
    std::vector<std::u16string> names;
    for (const Var& item : Enumerate(collection)) {
        IDispatch* entry = DispatchOf(item);
        EXPECT_TRUE(entry);
        if (entry) names.push_back(Call(entry, L"sFileName").value.Text());
    }
    return names;
}

std::vector<std::u16string> Sorted(std::vector<std::u16string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

TEST(ComCollection, ItemsByPositionAndKeyInTheOrderAddedWithBeforeAndAfter) {
    OleSession ole;
    ComPtr<IDispatch> collection = Server::Instance().Create(CLSID_clsCollection);
    ASSERT_TRUE(collection);
    EXPECT_EQ(0, CountOf(collection.get()));

    EXPECT_EQ(S_OK, Call(collection.get(), L"Add", {L"first", L"Alpha"}).hr);
    EXPECT_EQ(S_OK, Call(collection.get(), L"Add", {Var(int32_t{2}), L"beta"}).hr);
    EXPECT_EQ(S_OK, Call(collection.get(), L"Add", {L"zero", Missing(), Var(int32_t{1})}).hr);
    EXPECT_EQ(S_OK, Call(collection.get(), L"Add", {L"third", Missing(), Missing(), L"ALPHA"}).hr);
    EXPECT_EQ(4, CountOf(collection.get()));
    EXPECT_EQ((std::vector<std::u16string>{u"zero", u"first", u"third", u"2"}), Texts(Enumerate(collection.get())));

    struct Lookup {
        Var index;
        std::u16string expected;
    };
    const Lookup lookups[] = {{Var(int32_t{1}), u"zero"}, {Var(int32_t{3}), u"third"}, {Var(L"BETA"), u"2"},
                              {Var(L"alpha"), u"first"}};
    for (const Lookup& l : lookups) {
        EXPECT_EQ(l.expected, Call(collection.get(), L"Item", {l.index}).value.Text());
        // The default member answers the same, as `collection(index)` in a script.
        DISPPARAMS params{const_cast<VARIANT*>(&l.index.v), nullptr, 1, 0};
        Var byDefault;
        EXPECT_EQ(S_OK, collection->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                                           DISPATCH_METHOD | DISPATCH_PROPERTYGET, &params, &byDefault.v, nullptr,
                                           nullptr));
        EXPECT_EQ(l.expected, byDefault.Text());
    }

    struct Failure {
        const wchar_t* member;
        std::vector<Var> args;
        LONG scode;
    };
    const Failure failures[] = {
        {L"Add", {L"again", L"alpha"}, kDuplicateKey},
        {L"Item", {Var(int32_t{0})}, kSubscriptOutOfRange},
        {L"Item", {Var(int32_t{5})}, kSubscriptOutOfRange},
        {L"Item", {L"gamma"}, kInvalidProcedureCall},
        {L"Remove", {L"gamma"}, kInvalidProcedureCall},
    };
    for (const Failure& f : failures) {
        const CallResult r = Call(collection.get(), f.member, f.args);
        EXPECT_EQ(DISP_E_EXCEPTION, r.hr);
        EXPECT_EQ(f.scode, r.scode);
    }

    // An enumerator keeps the items it started with when the collection changes under it.
    const std::vector<Var> before = Enumerate(collection.get());
    EXPECT_EQ(S_OK, Call(collection.get(), L"Remove", {L"ALPHA"}).hr);
    EXPECT_EQ(S_OK, Call(collection.get(), L"Remove", {Var(int32_t{1})}).hr);
    EXPECT_EQ((std::vector<std::u16string>{u"third", u"2"}), Texts(Enumerate(collection.get())));
    EXPECT_EQ(4u, before.size());
    EXPECT_EQ(u"2", Call(collection.get(), L"Item", {L"Beta"}).value.Text());
}

TEST(ComCollection, EnumeratorsHoldTheServer) {
    OleSession ole;
    {
        ComPtr<IDispatch> collection = Server::Instance().Create(CLSID_clsCollection);
        ASSERT_TRUE(collection);
        EXPECT_EQ(S_OK, Call(collection.get(), L"Add", {L"x"}).hr);
        const CallResult enumerator = Call(collection.get(), L"_NewEnum");
        ASSERT_EQ(VT_UNKNOWN, enumerator.value.v.vt);
        collection = ComPtr<IDispatch>();
        // The enumerator alone still keeps the module loaded.
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow());
    }
    EXPECT_EQ(S_OK, Server::Instance().CanUnloadNow());
}

TEST(ComSearchFiles, ResultsAreCollectionsOfEntriesFlatOrAsATree) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_search");
    folder.WriteFile(L"a.txt", "abc");
    folder.WriteFile(L"b.log", "");
    ASSERT_TRUE(::CreateDirectoryW(folder.Path(L"sub").c_str(), nullptr));
    folder.WriteFile(L"sub\\c.txt", "c");
    ComPtr<IDispatch> search = Server::Instance().Create(CLSID_clsSearchFiles);
    ASSERT_TRUE(search);

    const CallResult flat = Call(search.get(), L"SearchInPath", {folder.Path().c_str()});
    ASSERT_EQ(S_OK, flat.hr);
    IDispatch* entries = DispatchOf(flat.value);
    ASSERT_TRUE(entries);
    const std::vector<std::u16string> names = NamesOf(entries);
    EXPECT_EQ((std::vector<std::u16string>{u"a.txt", u"b.log", u"sub"}), Sorted(names));
    ASSERT_EQ(3, CountOf(entries));
    for (int32_t i = 1; i <= 3; ++i) {
        const CallResult item = Call(entries, L"Item", {Var(i)});
        ASSERT_TRUE(DispatchOf(item.value));
        const std::u16string name = Call(DispatchOf(item.value), L"sFileName").value.Text();
        EXPECT_EQ(names[static_cast<size_t>(i - 1)], name);
        const bool isFolder = name == u"sub";
        EXPECT_EQ(isFolder ? VARIANT_TRUE : VARIANT_FALSE,
                  Call(DispatchOf(item.value), L"IsDirectory").value.v.boolVal);
        if (name == u"a.txt") {
            const CallResult size = Call(DispatchOf(item.value), L"dFileSize");
            EXPECT_EQ(VT_CY, size.value.v.vt);
            EXPECT_EQ(30000, size.value.v.cyVal.int64);
            const std::wstring expected = folder.Path(L"a.txt");
            EXPECT_EQ(std::u16string(expected.begin(), expected.end()),
                      Call(DispatchOf(item.value), L"sPathFileName").value.Text());
        }
    }

    // File dates through optional by-reference outputs, omitted and given.
    const std::wstring aPath = folder.Path(L"a.txt");
    SYSTEMTIME set{2021, 3, 4, 4, 5, 6, 7, 0};
    FILETIME written{};
    ASSERT_TRUE(::SystemTimeToFileTime(&set, &written));
    {
        const HANDLE handle =
            ::CreateFileW(aPath.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, handle);
        EXPECT_TRUE(::SetFileTime(handle, nullptr, nullptr, &written));
        ::CloseHandle(handle);
    }
    FILETIME localTime{};
    SYSTEMTIME local{};
    ASSERT_TRUE(::FileTimeToLocalFileTime(&written, &localTime) && ::FileTimeToSystemTime(&localTime, &local));
    constexpr int32_t kLastWrite = 2;
    LONG day = 0, month = 0, year = 0, hour = -1, minute = -1, second = -1;
    EXPECT_EQ(S_OK, Call(search.get(), L"GetFileDate",
                         {aPath.c_str(), Var(kLastWrite), Ref(VT_I4, &day), Ref(VT_I4, &month), Ref(VT_I4, &year)})
                        .hr);
    EXPECT_EQ((std::vector<LONG>{local.wDay, local.wMonth, local.wYear}), (std::vector<LONG>{day, month, year}));
    const CallResult entry = Call(search.get(), L"SearchPathPattern", {aPath.c_str()});
    ASSERT_TRUE(DispatchOf(entry.value));
    const CallResult first = Call(DispatchOf(entry.value), L"Item", {Var(int32_t{1})});
    ASSERT_TRUE(DispatchOf(first.value));
    EXPECT_EQ(S_OK, Call(DispatchOf(first.value), L"GetUTCFileDate",
                         {Var(kLastWrite), Ref(VT_I4, &day), Ref(VT_I4, &month), Ref(VT_I4, &year),
                          Ref(VT_I4, &hour), Ref(VT_I4, &minute), Ref(VT_I4, &second)})
                        .hr);
    EXPECT_EQ((std::vector<LONG>{4, 3, 2021, 5, 6, 7}), (std::vector<LONG>{day, month, year, hour, minute, second}));
    // Clone with its argument omitted makes a new entry with the same fields.
    const CallResult clone = Call(DispatchOf(first.value), L"Clone");
    ASSERT_TRUE(DispatchOf(clone.value));
    EXPECT_EQ(u"a.txt", Call(DispatchOf(clone.value), L"sFileName").value.Text());
    EXPECT_EQ(S_OK, Put(DispatchOf(clone.value), L"sFileName", Var(L"renamed")).hr);
    EXPECT_EQ(u"a.txt", Call(DispatchOf(first.value), L"sFileName").value.Text());

    // Files only, recursive: the folder is walked but not listed.
    const CallResult files = Call(search.get(), L"SearchInPath", {folder.Path().c_str(), Var(int32_t{1}), Var(true)});
    ASSERT_TRUE(DispatchOf(files.value));
    EXPECT_EQ((std::vector<std::u16string>{u"a.txt", u"b.log", u"c.txt"}), Sorted(NamesOf(DispatchOf(files.value))));

    // A limit, then a tree: the subfolder's entries hang below it.
    const CallResult limited = Call(search.get(), L"SearchInPath",
                                    {folder.Path().c_str(), Var(int32_t{0}), Var(false), Var(false), Var(false),
                                     Var(int32_t{1})});
    ASSERT_TRUE(DispatchOf(limited.value));
    EXPECT_EQ(1, CountOf(DispatchOf(limited.value)));
    const CallResult tree = Call(search.get(), L"SearchInPath",
                                 {folder.Path().c_str(), Var(int32_t{0}), Var(true), Var(false), Var(false),
                                  Var(int32_t{-1}), Var(true)});
    ASSERT_TRUE(DispatchOf(tree.value));
    int32_t foldersSeen = 0;
    for (const Var& item : Enumerate(DispatchOf(tree.value))) {
        const CallResult children = Call(DispatchOf(item), L"oCollSubFiles");
        ASSERT_TRUE(DispatchOf(children.value));
        if (Call(DispatchOf(item), L"sFileName").value.Text() == u"sub") {
            ++foldersSeen;
            EXPECT_EQ(std::vector<std::u16string>{u"c.txt"}, NamesOf(DispatchOf(children.value)));
        } else {
            EXPECT_EQ(0, CountOf(DispatchOf(children.value)));
        }
    }
    EXPECT_EQ(1, foldersSeen);
}

// What the window handler of the asynchronous search test saw.
struct DuringWalk {
    IDispatch* search = nullptr;
    std::wstring folder;
    int handled = 0;
    VARIANT_BOOL searching = VARIANT_FALSE;
    int32_t nestedCount = -1;
};
DuringWalk g_duringWalk;

LRESULT CALLBACK StopSearchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_APP) return ::DefWindowProcW(window, message, wParam, lParam);
    ++g_duringWalk.handled;
    g_duringWalk.searching = Call(g_duringWalk.search, L"IsSearching").value.v.boolVal;
    const CallResult nested = Call(g_duringWalk.search, L"SearchInPath", {g_duringWalk.folder.c_str()});
    if (DispatchOf(nested.value)) g_duringWalk.nestedCount = CountOf(DispatchOf(nested.value));
    Call(g_duringWalk.search, L"StopSearch");
    return 0;
}

TEST(ComSearchFiles, AnAsynchronousWalkRunsTheHostsMessagesWhichMayStopIt) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_async");
    folder.WriteFile(L"a.txt", "a");
    ASSERT_TRUE(::CreateDirectoryW(folder.Path(L"sub").c_str(), nullptr));
    folder.WriteFile(L"sub\\b.txt", "b");
    ComPtr<IDispatch> search = Server::Instance().Create(CLSID_clsSearchFiles);
    ASSERT_TRUE(search);

    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = StopSearchProc;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"TcComAsyncSearchTest";
    ::RegisterClassW(&windowClass);
    const HWND window = ::CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                          windowClass.hInstance, nullptr);
    ASSERT_TRUE(window);
    g_duringWalk = DuringWalk{search.get(), folder.Path()};

    // With a message waiting, the walk's first yield runs the handler, which stops it.
    ::PostMessageW(window, WM_APP, 0, 0);
    const std::vector<Var> recursiveAsync{folder.Path().c_str(), Var(int32_t{0}), Var(true), Var(true)};
    const CallResult stopped = Call(search.get(), L"SearchInPath", recursiveAsync);
    ASSERT_TRUE(DispatchOf(stopped.value));
    EXPECT_EQ(1, g_duringWalk.handled);
    EXPECT_EQ(VARIANT_TRUE, g_duringWalk.searching);
    // A second search during the walk is answered with nothing.
    EXPECT_EQ(0, g_duringWalk.nestedCount);
    EXPECT_EQ(0, CountOf(DispatchOf(stopped.value)));

    // With nothing waiting the same walk runs to its end, and the object is idle again.
    const CallResult whole = Call(search.get(), L"SearchInPath", recursiveAsync);
    ASSERT_TRUE(DispatchOf(whole.value));
    EXPECT_EQ((std::vector<std::u16string>{u"a.txt", u"b.txt", u"sub"}), Sorted(NamesOf(DispatchOf(whole.value))));
    EXPECT_EQ(VARIANT_FALSE, Call(search.get(), L"IsSearching").value.v.boolVal);
    ::DestroyWindow(window);
    ::UnregisterClassW(windowClass.lpszClassName, windowClass.hInstance);
}

}  // namespace
