// Tests of the hook record: its layout, what each table entry forwards, and the state after removal.
#include <gtest/gtest.h>

#include <cstddef>

#include "frame/IPAOHook.h"
#include "frame/PlumbingTestSupport.h"

using namespace plumbing_test;

namespace {

class FakeActiveObject final : public IOleInPlaceActiveObject {
public:
    explicit FakeActiveObject(CallLog& log) : m_log(log) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        m_log.Add("qi");
        if (riid == IID_IUnknown || riid == IID_IOleWindow || riid == IID_IOleInPlaceActiveObject) {
            *object = this;
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        m_log.Add("getwindow");
        *window = reinterpret_cast<HWND>(0x1234);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return log("help"); }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* msg) override {
        m_log.Add("translate:" + std::to_string(msg->wParam));
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return log("frame"); }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return log("doc"); }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return log("resize"); }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return log("modeless"); }
    ULONG references = 1;

private:
    HRESULT log(const char* what) {
        m_log.Add(what);
        return S_OK;
    }
    CallLog& m_log;
};

// Handles F5 only.
class FilterControl final : public IPAOHookControl {
public:
    explicit FilterControl(CallLog& log) : m_log(log) {}
    bool pvTranslateAccelerator(const MSG& msg) override {
        m_log.Add("filter:" + std::to_string(msg.wParam));
        return msg.wParam == VK_F5;
    }
    HWND HookWindow() const override { return nullptr; }

private:
    CallLog& m_log;
};

}  // namespace

TEST(IPAOHook, RecordLayout) {
    EXPECT_EQ(offsetof(IPAOHookStruct, lpVTable), 0u);
    EXPECT_EQ(offsetof(IPAOHookStruct, pOriginal), sizeof(void*));
    EXPECT_EQ(offsetof(IPAOHookStruct, pControl), 2 * sizeof(void*));
    EXPECT_EQ(offsetof(IPAOHookStruct, pThis), 3 * sizeof(void*));
    EXPECT_TRUE(IsEqualGUID(IPAOHook::kIID_IOleInPlaceActiveObject, IID_IOleInPlaceActiveObject));
}

TEST(IPAOHook, EntriesForwardToTheControlsObject) {
    CallLog log;
    FakeActiveObject original(log);
    FilterControl control(log);
    IPAOHookStruct record;
    IPAOHook::InstallHook(record, &original, &control);
    EXPECT_EQ(record.pThis, &record);
    EXPECT_EQ(record.pOriginal, &original);
    IOleInPlaceActiveObject* const hook = IPAOHook::AsInterface(record);

    // Asked for the active-object interface, the record answers with itself and counts a
    // reference on the original; for IUnknown the control's real identity comes back.
    void* object = nullptr;
    EXPECT_EQ(hook->QueryInterface(IID_IOleInPlaceActiveObject, &object), S_OK);
    EXPECT_EQ(object, &record);
    EXPECT_EQ(original.references, 2u);
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(hook->QueryInterface(IID_IUnknown, &object), S_OK);
    EXPECT_EQ(object, static_cast<IUnknown*>(&original));
    EXPECT_EQ(hook->QueryInterface(IID_IDispatch, &object), E_NOINTERFACE);
    EXPECT_EQ(log.Text(), "qi qi");
    EXPECT_EQ(hook->Release(), 2u);
    EXPECT_EQ(hook->AddRef(), 3u);
    EXPECT_EQ(original.references, 3u);

    log.Clear();
    HWND window = nullptr;
    EXPECT_EQ(hook->GetWindow(&window), S_OK);
    EXPECT_EQ(window, reinterpret_cast<HWND>(0x1234));
    hook->ContextSensitiveHelp(TRUE);
    hook->OnFrameWindowActivate(TRUE);
    hook->OnDocWindowActivate(FALSE);
    hook->ResizeBorder(nullptr, nullptr, TRUE);
    hook->EnableModeless(TRUE);
    EXPECT_EQ(log.Text(), "getwindow help frame doc resize modeless");

    // The control's filter is asked first; only what it leaves reaches the original.
    struct Key {
        WPARAM key;
        HRESULT result;
        const char* calls;
    };
    const Key keys[] = {{VK_F5, S_OK, "filter:116"}, {'A', S_FALSE, "filter:65 translate:65"}};
    for (const Key& key : keys) {
        log.Clear();
        MSG msg{nullptr, WM_KEYDOWN, key.key, 0, 0, {}};
        EXPECT_EQ(hook->TranslateAccelerator(&msg), key.result) << key.key;
        EXPECT_EQ(log.Text(), key.calls) << key.key;
    }

    // After removal a host that still holds the record reaches nothing.
    IPAOHook::RemoveHook(record);
    EXPECT_EQ(record.pOriginal, nullptr);
    EXPECT_EQ(record.pControl, nullptr);
    log.Clear();
    MSG msg{nullptr, WM_KEYDOWN, VK_F5, 0, 0, {}};
    EXPECT_EQ(hook->TranslateAccelerator(&msg), E_UNEXPECTED);
    EXPECT_EQ(hook->GetWindow(&window), E_UNEXPECTED);
    EXPECT_EQ(hook->QueryInterface(IID_IUnknown, &object), E_UNEXPECTED);
    EXPECT_EQ(log.Text(), "");
    EXPECT_FALSE(IPAOHook::PreTranslateMessage(msg));
}
