// Tests of the hook's activation: which objects of the control's site are told about the record, in order.
#include <gtest/gtest.h>

#include <string>

#include "frame/IPAOHook.h"
#include "frame/PlumbingTestSupport.h"

using namespace plumbing_test;

namespace {

std::string hex(const void* pointer) { return std::to_string(reinterpret_cast<uintptr_t>(pointer)); }

// Reference counts are not the subject here: every fake lives on the test's stack.
class FakeUIWindow : public IOleInPlaceFrame {
public:
    FakeUIWindow(CallLog& log, std::string name) : m_log(log), m_name(std::move(name)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override {
        m_log.Add(m_name + ":release");
        return 1;
    }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override {
        m_log.Add(m_name + ":active=" + (object == expected ? "record" : hex(object)) + (name ? ",named" : ""));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return E_NOTIMPL; }
    IOleInPlaceActiveObject* expected = nullptr;

private:
    CallLog& m_log;
    std::string m_name;
};

class FakeSite final : public IOleClientSite, public IOleInPlaceSite {
public:
    FakeSite(CallLog& log, FakeUIWindow* frame, FakeUIWindow* document)
        : m_log(log), m_frame(frame), m_document(document) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (riid == IID_IOleInPlaceSite && inPlace) {
            *object = static_cast<IOleInPlaceSite*>(this);
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        m_log.Add("context:cb=" + std::to_string(info->cb));
        *frame = m_frame;
        *document = m_document;
        *position = {1, 2, 30, 40};
        *clip = *position;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return E_NOTIMPL; }
    bool inPlace = true;

private:
    CallLog& m_log;
    FakeUIWindow* m_frame;
    FakeUIWindow* m_document;
};

class FakeControl final : public IOleObject {
public:
    FakeControl(CallLog& log, IOleClientSite* site) : m_log(log), m_site(site) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override {
        *site = m_site;
        return m_site ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Close(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG msg, IOleClientSite* site, LONG index, HWND parent,
                                     LPCRECT rect) override {
        m_log.Add("doverb:" + std::to_string(verb) + (msg ? ",msg" : "") + (site == m_site ? ",site" : ",?") + "," +
                  std::to_string(index) + (parent == window ? ",window" : ",?") + ",rect" + std::to_string(rect->left) +
                  std::to_string(rect->top) + "-" + std::to_string(rect->right) + std::to_string(rect->bottom));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Update() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }
    HWND window = reinterpret_cast<HWND>(0x4242);

private:
    CallLog& m_log;
    IOleClientSite* m_site;
};

}  // namespace

// The frame record's size: five words on 32-bit; two of them are pointers, so 28 bytes padded
// to 32 on 64-bit.
#if defined(_WIN64)
#define FRAME_INFO_SIZE "32"
#else
#define FRAME_INFO_SIZE "20"
#endif

TEST(IPAOHookActivate, TellsFrameAndDocumentInOrder) {
    struct Case {
        const char* what;
        bool hasSite;
        bool inPlace;
        bool hasFrame;
        bool hasDocument;
        bool hasWindow;
        const char* expected;
    };
    const Case cases[] = {
        {"full site", true, true, true, true, true,
         "context:cb=" FRAME_INFO_SIZE " frame:active=record doverb:-4,site,0,window,rect12-3040 document:active=record "
         "document:release frame:release"},
        {"no document window", true, true, true, false, true,
         "context:cb=" FRAME_INFO_SIZE " frame:active=record doverb:-4,site,0,window,rect12-3040 frame:release"},
        {"no control window: no verb", true, true, true, true, false,
         "context:cb=" FRAME_INFO_SIZE " frame:active=record document:active=record document:release frame:release"},
        {"site without in-place support", true, false, true, true, true, ""},
        {"no site", false, true, true, true, true, ""},
    };
    for (const Case& c : cases) {
        CallLog log;
        IPAOHookStruct record;
        IPAOHook::InstallHook(record, nullptr, nullptr);
        FakeUIWindow frame(log, "frame"), document(log, "document");
        frame.expected = document.expected = IPAOHook::AsInterface(record);
        FakeSite site(log, c.hasFrame ? &frame : nullptr, c.hasDocument ? &document : nullptr);
        site.inPlace = c.inPlace;
        FakeControl control(log, c.hasSite ? static_cast<IOleClientSite*>(&site) : nullptr);
        IPAOHook::ActivateHook(record, &control, c.hasWindow ? control.window : nullptr);
        EXPECT_EQ(log.Text(), c.expected) << c.what;
    }
}
