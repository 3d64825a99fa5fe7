#include "frame/SurfaceAccessible.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "frame/ControlFrame.h"
#include "frame/Win32Surface.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"
#include "support/TempDir.h"
#include "support/TestHostWindow.h"
#include "support/WindowMessageCounter.h"

using testsupport::AccessibleOf;
using testsupport::AskLocation;
using testsupport::AskRole;
using testsupport::AskState;
using testsupport::AskText;
using testsupport::ChildId;

namespace {

// A focusable control with rows of 10 pixels as items, enough to exercise every path of the object.
class RowControl final : public ControlFrame {
public:
    explicit RowControl(ControlSurface& surface) : ControlFrame(surface, nullptr) {}
    CtlString caption;
    CtlString& tip = m_sTip;  // the frame keeps the tip
    std::vector<CtlString> rows;
    int32_t focusedRow = 0;
    std::vector<int32_t> selectedRows;
    std::vector<int32_t> activated;

    void SetCaption(const CtlString& value) {
        caption = value;
        UpdateAccessKeys(value);
    }
    using ControlFrame::Enabled;

    int32_t AccessibleRole(int32_t child) const override {
        return child == CHILDID_SELF ? ROLE_SYSTEM_LIST : ROLE_SYSTEM_LISTITEM;
    }
    CtlString AccessibleName(int32_t child) const override {
        return child == CHILDID_SELF ? ControlFrame::AccessibleName(child) : rows.at(child - 1);
    }
    int32_t AccessibleItemCount() const override { return static_cast<int32_t>(rows.size()); }
    bool AccessibleItemBounds(int32_t child, RECT& bounds) const override {
        bounds = RECT{0, (child - 1) * 10, 100, child * 10};
        return true;
    }
    int32_t AccessibleFocusedItem() const override { return focusedRow; }
    std::vector<int32_t> AccessibleSelection() const override { return selectedRows; }
    bool AccessibleDoDefaultAction(int32_t child) override {
        if (child == CHILDID_SELF) return false;
        activated.push_back(child);
        return true;
    }

protected:
    void DrawControl(HDC) override {}
    CtlString AccessibleCaption() const override { return caption; }
    bool TakesFocus() const override { return true; }
};

// State changes of client objects, recorded by an out-of-context hook on this thread.
std::vector<HWND> t_stateChanges;
void CALLBACK recordStateChange(HWINEVENTHOOK, DWORD, HWND hwnd, LONG object, LONG child, DWORD, DWORD) {
    if (object == OBJID_CLIENT && child == CHILDID_SELF) t_stateChanges.push_back(hwnd);
}

struct Hosted {
    testsupport::TestHostWindow host;
    Win32Surface surface{host.get(), 20, 30, 100, 40};
    std::unique_ptr<RowControl> control = std::make_unique<RowControl>(surface);
};

TEST(Accessibility, NameIsTheCaptionWithoutItsMarkerAndTheShortcutIsItsKey) {
    const testsupport::OleSession ole;
    Hosted hosted;
    const struct {
        std::u16string caption;
        std::u16string name;
        std::u16string shortcut;
    } cases[] = {
        {u"&File", u"File", u"Alt+F"},
        {u"Save && &quit", u"Save & quit", u"Alt+Q"},
        {u"&&Tom &&& Jerry", u"&Tom & Jerry", u"Alt+ "},
        {u"\u041F&\u0440\u0438 \u4E16\u754C \U0001F600", u"\u041F\u0440\u0438 \u4E16\u754C \U0001F600",
         u"Alt+\u0420"},
        {u"no key", u"no key", u""},
        {u"trailing&", u"trailing", u""},
    };
    for (const auto& c : cases) {
        hosted.control->SetCaption(c.caption);
        const auto object = AccessibleOf(hosted.surface.hWnd());
        ASSERT_TRUE(object);
        const auto name = AskText(object.get(), &IAccessible::get_accName);
        EXPECT_EQ(name.hr, S_OK);
        EXPECT_EQ(name.text, c.name) << std::string(c.caption.begin(), c.caption.end());
        const auto shortcut = AskText(object.get(), &IAccessible::get_accKeyboardShortcut);
        EXPECT_EQ(shortcut.hr, c.shortcut.empty() ? S_FALSE : S_OK);
        EXPECT_EQ(shortcut.text, c.shortcut);
    }
    hosted.control->tip = u"A tip \u4E16";
    const auto object = AccessibleOf(hosted.surface.hWnd());
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDescription).text, u"A tip \u4E16");
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accValue).hr, S_FALSE);
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDefaultAction).hr, S_FALSE);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), DISP_E_MEMBERNOTFOUND);
}

TEST(Accessibility, StateLocationAndParentFollowTheWindow) {
    const testsupport::OleSession ole;
    Hosted hosted;
    const HWND hwnd = hosted.surface.hWnd();
    const auto object = AccessibleOf(hwnd);
    ASSERT_TRUE(object);
    EXPECT_EQ(AskRole(object.get()), ROLE_SYSTEM_LIST);
    EXPECT_EQ(AskState(object.get()), STATE_SYSTEM_FOCUSABLE);
    ::SetFocus(hwnd);
    EXPECT_EQ(AskState(object.get()), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
    t_stateChanges.clear();
    const HWINEVENTHOOK hook = ::SetWinEventHook(EVENT_OBJECT_STATECHANGE, EVENT_OBJECT_STATECHANGE, nullptr,
                                                 &recordStateChange, ::GetCurrentProcessId(), 0,
                                                 WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    hosted.control->Enabled(false);
    hosted.control->Enabled(false);  // no change, no event
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
    ::UnhookWinEvent(hook);
    EXPECT_EQ(t_stateChanges, std::vector<HWND>{hwnd});
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_UNAVAILABLE);
    hosted.control->Enabled(true);
    ::ShowWindow(hwnd, SW_HIDE);
    EXPECT_EQ(AskState(object.get()), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_INVISIBLE);
    ::ShowWindow(hwnd, SW_SHOWNA);

    RECT window{};
    ::GetWindowRect(hwnd, &window);
    const RECT location = AskLocation(object.get());
    EXPECT_EQ(location.left, window.left);
    EXPECT_EQ(location.top, window.top);
    EXPECT_EQ(location.right, window.right);
    EXPECT_EQ(location.bottom, window.bottom);

    // The parent is the window's own object; ids other than the client go to the system.
    tc::com::ComPtr<IDispatch> parent;
    EXPECT_EQ(object->get_accParent(parent.put()), S_OK);
    const auto parentObject = [&] {
        tc::com::ComPtr<IAccessible> p;
        if (parent) parent->QueryInterface(__uuidof(IAccessible), p.putVoid());
        return p;
    }();
    ASSERT_TRUE(parentObject);
    // Known Wine difference: Wine 8's window object answers E_NOTIMPL to every member.
    const LONG windowRole = testsupport::RunningUnderWine() ? -1 : ROLE_SYSTEM_WINDOW;
    EXPECT_EQ(AskRole(parentObject.get()), windowRole);
    tc::com::ComPtr<IAccessible> windowObject;
    ASSERT_EQ(::AccessibleObjectFromWindow(hwnd, static_cast<DWORD>(OBJID_WINDOW), __uuidof(IAccessible),
                                           windowObject.putVoid()),
              S_OK);
    EXPECT_EQ(AskRole(windowObject.get()), windowRole);
    LONG parentChildren = 0;
    if (testsupport::RunningUnderWine()) {
        EXPECT_EQ(parentObject->get_accChildCount(&parentChildren), E_NOTIMPL);
    } else {
        EXPECT_EQ(parentObject->get_accChildCount(&parentChildren), S_OK);
        EXPECT_GE(parentChildren, 1);
    }
}

TEST(Accessibility, ItemsAreChildIdsAndBadIdsAreInvalidArguments) {
    const testsupport::OleSession ole;
    Hosted hosted;
    hosted.control->rows = {u"\u041E\u0434\u0438\u043D", u"\u4E8C", u"three \U0001F600"};
    const HWND hwnd = hosted.surface.hWnd();
    const auto object = AccessibleOf(hwnd);
    ASSERT_TRUE(object);
    LONG count = 0;
    EXPECT_EQ(object->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 3);
    for (LONG id = 1; id <= 3; ++id) {
        EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName, id).text, hosted.control->rows[id - 1]);
        EXPECT_EQ(AskRole(object.get(), id), ROLE_SYSTEM_LISTITEM);
        IDispatch* element = reinterpret_cast<IDispatch*>(1);
        EXPECT_EQ(object->get_accChild(ChildId(id), &element), S_FALSE);  // simple elements
        EXPECT_EQ(element, nullptr);
    }
    RECT window{};
    ::GetWindowRect(hwnd, &window);
    const RECT second = AskLocation(object.get(), 2);
    EXPECT_EQ(second.left, window.left);
    EXPECT_EQ(second.top, window.top + 10);
    EXPECT_EQ(second.right, window.left + 100);
    EXPECT_EQ(second.bottom, window.top + 20);

    const struct {
        LONG x, y;
        VARTYPE vt;
        LONG id;
    } hits[] = {{window.left + 5, window.top + 15, VT_I4, 2},
                {window.left + 5, window.top + 35, VT_I4, CHILDID_SELF},
                {window.left - 5, window.top + 5, VT_EMPTY, 0}};
    for (const auto& hit : hits) {
        VARIANT answer;
        ::VariantInit(&answer);
        EXPECT_EQ(object->accHitTest(hit.x, hit.y, &answer), hit.vt == VT_EMPTY ? S_FALSE : S_OK);
        EXPECT_EQ(answer.vt, hit.vt);
        if (hit.vt == VT_I4) {
            EXPECT_EQ(answer.lVal, hit.id);
        }
    }
    const struct {
        LONG from, direction;
        HRESULT hr;
        LONG to;
    } moves[] = {{CHILDID_SELF, NAVDIR_FIRSTCHILD, S_OK, 1}, {CHILDID_SELF, NAVDIR_LASTCHILD, S_OK, 3},
                 {1, NAVDIR_NEXT, S_OK, 2},  {3, NAVDIR_NEXT, S_FALSE, 0},
                 {2, NAVDIR_PREVIOUS, S_OK, 1}, {1, NAVDIR_PREVIOUS, S_FALSE, 0},
                 {CHILDID_SELF, NAVDIR_NEXT, S_FALSE, 0}};
    for (const auto& move : moves) {
        VARIANT end;
        ::VariantInit(&end);
        EXPECT_EQ(object->accNavigate(move.direction, ChildId(move.from), &end), move.hr)
            << move.from << " dir " << move.direction;
        if (move.hr == S_OK) {
            EXPECT_EQ(end.lVal, move.to);
        }
    }

    EXPECT_EQ(object->accDoDefaultAction(ChildId(3)), S_OK);
    EXPECT_EQ(hosted.control->activated, std::vector<int32_t>{3});
    hosted.control->focusedRow = 2;
    hosted.control->selectedRows = {2};
    VARIANT focus;
    ::VariantInit(&focus);
    ::SetFocus(hosted.host.get());
    EXPECT_EQ(object->get_accFocus(&focus), S_FALSE);
    ::SetFocus(hwnd);
    EXPECT_EQ(object->get_accFocus(&focus), S_OK);
    EXPECT_EQ(focus.vt, VT_I4);
    EXPECT_EQ(focus.lVal, 2);
    VARIANT selection;
    ::VariantInit(&selection);
    EXPECT_EQ(object->get_accSelection(&selection), S_OK);
    EXPECT_EQ(selection.lVal, 2);

    for (const LONG bad : {-1L, 4L, 1000L}) {
        EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName, bad).hr, E_INVALIDARG) << bad;
        EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDescription, bad).hr, E_INVALIDARG) << bad;
        VARIANT v;
        ::VariantInit(&v);
        EXPECT_EQ(object->get_accRole(ChildId(bad), &v), E_INVALIDARG) << bad;
        EXPECT_EQ(object->get_accState(ChildId(bad), &v), E_INVALIDARG) << bad;
        LONG l = 0, t = 0, w = 0, h = 0;
        EXPECT_EQ(object->accLocation(&l, &t, &w, &h, ChildId(bad)), E_INVALIDARG) << bad;
        EXPECT_EQ(object->accDoDefaultAction(ChildId(bad)), E_INVALIDARG) << bad;
        EXPECT_EQ(object->accNavigate(NAVDIR_NEXT, ChildId(bad), &v), E_INVALIDARG) << bad;
    }
    VARIANT text;
    ::VariantInit(&text);
    text.vt = VT_BSTR;
    text.bstrVal = ::SysAllocString(L"1");
    BSTR name = nullptr;
    EXPECT_EQ(object->get_accName(text, &name), E_INVALIDARG);
    ::VariantClear(&text);
}

// Show and hide events of client objects, recorded like the state changes.
std::vector<std::pair<DWORD, HWND>> t_visibility;
void CALLBACK recordVisibility(HWINEVENTHOOK, DWORD event, HWND hwnd, LONG object, LONG child, DWORD, DWORD) {
    if (object == OBJID_CLIENT && child == CHILDID_SELF) t_visibility.emplace_back(event, hwnd);
}

TEST(Accessibility, ShowingAndHidingTheWindowAnnouncesTheClientObjectOnce) {
    const testsupport::OleSession ole;
    Hosted hosted;
    const HWND hwnd = hosted.surface.hWnd();
    testsupport::PumpMessages();
    const HWINEVENTHOOK hook = ::SetWinEventHook(EVENT_OBJECT_SHOW, EVENT_OBJECT_HIDE, nullptr, recordVisibility,
                                                 ::GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    const auto setPos = [hwnd](UINT flag) {
        ::SetWindowPos(hwnd, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | flag);
    };
    const struct {
        const char* what;
        std::function<void()> action;
        std::vector<DWORD> events;
    } steps[] = {
        {"ShowWindow hide", [hwnd] { ::ShowWindow(hwnd, SW_HIDE); }, {EVENT_OBJECT_HIDE}},
        {"hidden again", [hwnd] { ::ShowWindow(hwnd, SW_HIDE); }, {}},
        {"ShowWindow show", [hwnd] { ::ShowWindow(hwnd, SW_SHOWNA); }, {EVENT_OBJECT_SHOW}},
        {"SetWindowPos hide", [&] { setPos(SWP_HIDEWINDOW); }, {EVENT_OBJECT_HIDE}},
        {"SetWindowPos show", [&] { setPos(SWP_SHOWWINDOW); }, {EVENT_OBJECT_SHOW}},
        {"moved while shown", [hwnd] { ::MoveWindow(hwnd, 5, 5, 60, 30, TRUE); }, {}},
    };
    for (const auto& step : steps) {
        t_visibility.clear();
        step.action();
        testsupport::PumpMessages();
        std::vector<DWORD> seen;
        for (const auto& [event, window] : t_visibility) {
            if (window == hwnd) seen.push_back(event);
        }
        EXPECT_EQ(seen, step.events) << step.what;
    }
    // Without a control the window is nobody's client object to announce.
    hosted.control.reset();
    t_visibility.clear();
    ::ShowWindow(hwnd, SW_HIDE);
    testsupport::PumpMessages();
    EXPECT_TRUE(t_visibility.empty());
    ::UnhookWinEvent(hook);
}

// What accSelection hands out, read back as a client reads it: the ids of a VT_I4 or of an
// IEnumVARIANT walked one by one; {} for VT_EMPTY.
std::vector<LONG> readSelection(IAccessible* object, HRESULT& hr) {
    VARIANT selection;
    ::VariantInit(&selection);
    hr = object->get_accSelection(&selection);
    std::vector<LONG> ids;
    if (selection.vt == VT_I4) {
        ids.push_back(selection.lVal);
    } else if (selection.vt == VT_UNKNOWN && selection.punkVal != nullptr) {
        tc::com::ComPtr<IEnumVARIANT> items;
        if (SUCCEEDED(selection.punkVal->QueryInterface(IID_IEnumVARIANT, items.putVoid()))) {
            VARIANT item;
            ULONG fetched = 0;
            while (items->Next(1, &item, &fetched) == S_OK && fetched == 1) {
                ids.push_back(item.vt == VT_I4 ? item.lVal : -99);
                ::VariantClear(&item);
            }
        }
    } else if (selection.vt != VT_EMPTY) {
        ids.push_back(-100 - selection.vt);
    }
    ::VariantClear(&selection);
    return ids;
}

TEST(Accessibility, SelectionIsOneIdSeveralThroughAnEnumeratorOrEmpty) {
    const testsupport::OleSession ole;
    Hosted hosted;
    hosted.control->rows = {u"a", u"b", u"c", u"d"};
    const auto object = AccessibleOf(hosted.surface.hWnd());
    ASSERT_TRUE(object);
    const struct {
        std::vector<int32_t> selected;
        HRESULT hr;
        std::vector<LONG> read;
    } cases[] = {
        {{}, S_FALSE, {}},
        {{3}, S_OK, {3}},
        {{1, 4}, S_OK, {1, 4}},
        {{4, 2, 1}, S_OK, {4, 2, 1}},
        {{2, 9, -1, 3}, S_OK, {2, 3}},  // ids the control does not have are left out
        {{9}, S_FALSE, {}},
    };
    for (const auto& c : cases) {
        hosted.control->selectedRows = c.selected;
        HRESULT hr = E_FAIL;
        EXPECT_EQ(readSelection(object.get(), hr), c.read) << c.selected.size() << " selected";
        EXPECT_EQ(hr, c.hr);
    }

    // The enumerator: batches, the end, skipping, resetting, and a clone that goes on by itself
    // over the selection as it was when it was asked for.
    hosted.control->selectedRows = {1, 2, 3};
    VARIANT selection;
    ::VariantInit(&selection);
    ASSERT_EQ(object->get_accSelection(&selection), S_OK);
    ASSERT_EQ(selection.vt, VT_UNKNOWN);
    tc::com::ComPtr<IEnumVARIANT> items;
    ASSERT_EQ(selection.punkVal->QueryInterface(IID_IEnumVARIANT, items.putVoid()), S_OK);
    ::VariantClear(&selection);
    hosted.control->selectedRows = {4};
    VARIANT batch[2];
    ULONG fetched = 99;
    EXPECT_EQ(items->Next(2, batch, &fetched), S_OK);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(batch[0].lVal, 1);
    EXPECT_EQ(batch[1].lVal, 2);
    tc::com::ComPtr<IEnumVARIANT> copy;
    ASSERT_EQ(items->Clone(copy.put()), S_OK);
    EXPECT_EQ(items->Next(2, batch, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(batch[0].lVal, 3);
    EXPECT_EQ(items->Next(2, batch, nullptr), E_POINTER);
    EXPECT_EQ(copy->Next(1, batch, nullptr), S_OK);
    EXPECT_EQ(batch[0].lVal, 3);
    EXPECT_EQ(items->Reset(), S_OK);
    EXPECT_EQ(items->Skip(2), S_OK);
    EXPECT_EQ(items->Next(1, batch, &fetched), S_OK);
    EXPECT_EQ(batch[0].lVal, 3);
    EXPECT_EQ(items->Skip(1), S_FALSE);
}

// Every member after the control is gone: an error, and no read of anything freed.
void ExpectDisconnected(IAccessible* object) {
    EXPECT_EQ(AskText(object, &IAccessible::get_accName).hr, RPC_E_DISCONNECTED);
    EXPECT_EQ(AskText(object, &IAccessible::get_accKeyboardShortcut).hr, RPC_E_DISCONNECTED);
    VARIANT v;
    ::VariantInit(&v);
    EXPECT_EQ(object->get_accRole(ChildId(CHILDID_SELF), &v), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->get_accState(ChildId(CHILDID_SELF), &v), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->get_accFocus(&v), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->get_accSelection(&v), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->accHitTest(0, 0, &v), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->accNavigate(NAVDIR_FIRSTCHILD, ChildId(CHILDID_SELF), &v), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), RPC_E_DISCONNECTED);
    LONG count = 7, l = 0, t = 0, w = 0, h = 0;
    EXPECT_EQ(object->get_accChildCount(&count), RPC_E_DISCONNECTED);
    EXPECT_EQ(object->accLocation(&l, &t, &w, &h, ChildId(CHILDID_SELF)), RPC_E_DISCONNECTED);
    IDispatch* parent = nullptr;
    EXPECT_EQ(object->get_accParent(&parent), RPC_E_DISCONNECTED);
}

TEST(Accessibility, HeldObjectIsDisconnectedWhenTheControlOrTheWindowGoes) {
    const testsupport::OleSession ole;
    {
        Hosted hosted;
        hosted.control->rows = {u"a", u"b"};
        const HWND hwnd = hosted.surface.hWnd();
        const auto held = AccessibleOf(hwnd);
        ASSERT_TRUE(held);
        hosted.control.reset();
        ExpectDisconnected(held.get());
        // The window without a control is the system's again: its generic client object.
        const auto generic = AccessibleOf(hwnd);
        ASSERT_TRUE(generic);
        EXPECT_EQ(AskRole(generic.get()), ROLE_SYSTEM_CLIENT);
    }
    {
        Hosted hosted;
        const HWND hwnd = hosted.surface.hWnd();
        const auto held = AccessibleOf(hwnd);
        ASSERT_TRUE(held);
        ::DestroyWindow(hwnd);
        ExpectDisconnected(held.get());
    }
    {
        // The whole surface gone, the object still held by its client.
        tc::com::ComPtr<IAccessible> held;
        HWND hwnd = nullptr;
        {
            Hosted hosted;
            hwnd = hosted.surface.hWnd();
            held = AccessibleOf(hwnd);
            ASSERT_TRUE(held);
        }
        EXPECT_FALSE(::IsWindow(hwnd));
        ExpectDisconnected(held.get());
    }
}

}  // namespace
