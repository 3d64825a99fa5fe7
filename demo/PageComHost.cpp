// Gallery page: labels reached the way most users reach them, as ActiveX controls of
// TarnwickControls30.dll, created through its class factory, set up through IDispatch alone and
// hosted in the system's ATL host window. No header of the controls is included here.
#include <string>
#include <vector>

#include "GalleryPage.h"
#include "com/ComPtr.h"
#include "com/generated/ComInterfaces.h"

#include <ocidl.h>
#include <olectl.h>

namespace {

using tc::com::ComPtr;

using GetClassObjectFn = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using AxWinInitFn = BOOL(WINAPI*)();
using AxAttachFn = HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**);

template <class F>
F Export(HMODULE module, const char* name) {
    return module ? reinterpret_cast<F>(reinterpret_cast<void*>(::GetProcAddress(module, name))) : nullptr;
}

// Put by name through IDispatch, as a script host would.
void PutProperty(IDispatch* object, const wchar_t* name, VARIANT value) {
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return;
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&value, &named, 1, 1};
    object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr);
}

void PutText(IDispatch* object, const wchar_t* name, const std::u16string& text) {
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_BSTR;
    v.bstrVal = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    PutProperty(object, name, v);
    ::VariantClear(&v);
}

void PutLong(IDispatch* object, const wchar_t* name, int32_t value) {
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = value;
    PutProperty(object, name, v);
}

// The gallery's text face as a standard font object, handed over by reference as hosts do.
void PutFont(IDispatch* object, const CtlString& face) {
    FONTDESC desc{sizeof(FONTDESC), const_cast<LPOLESTR>(reinterpret_cast<const wchar_t*>(face.c_str())), {}, FW_NORMAL,
                  DEFAULT_CHARSET, FALSE, FALSE, FALSE};
    desc.cySize.int64 = 9 * 10000;
    ComPtr<IDispatch> font;
    if (FAILED(::OleCreateFontIndirect(&desc, IID_IDispatch, font.putVoid()))) return;
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"Font")};
    if (FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return;
    VARIANT value;
    ::VariantInit(&value);
    value.vt = VT_DISPATCH;
    value.pdispVal = font.get();
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&value, &named, 1, 1};
    object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUTREF, &params, nullptr, nullptr, nullptr);
}

class ComHostPage : public GalleryPage {
public:
    ~ComHostPage() override {
        // The host windows release their controls as they go; then the server may leave.
        for (HWND window : m_windows) {
            if (::IsWindow(window)) ::DestroyWindow(window);
        }
        m_hosts.clear();
        if (m_server) ::FreeLibrary(m_server);
    }

    void Create(HWND parent, const RECT& area) override {
        m_server = ::LoadLibraryW(L"TarnwickControls30.dll");
        const HMODULE atl = ::LoadLibraryW(L"atl.dll");
        auto getClassObject = Export<GetClassObjectFn>(m_server, "DllGetClassObject");
        auto axWinInit = Export<AxWinInitFn>(atl, "AtlAxWinInit");
        auto axAttach = Export<AxAttachFn>(atl, "AtlAxAttachControl");
        if (!getClassObject || !axWinInit || !axAttach || !axWinInit()) {
            note(parent, area, L"TarnwickControls30.dll or the system's ATL host is not available.");
            return;
        }
        const struct {
            const GUID* clsid;
            const char16_t* caption;
            int32_t back, fore, style, border, align;
        } labels[] = {
            {&tc::com::CLSID_ctlUniLabel, u"ctlUniLabel through COM: \u041F\u0440\u0438\u0432\u0435\u0442, \u0393\u03B5\u03B9\u03AC \u05E9\u05DC\u05D5\u05DD",
             0x00F4E8D8, 0x00202020, 0, 1, 0},
            {&tc::com::CLSID_ctlUniLabel, u"Vista style, centred", 0x00C08040, 0x00FFFFFF, 2, 1, 2},
            {&tc::com::CLSID_ctlUniLabelNoFlick, u"ctlUniLabelNoFlick through COM", 0x00D8F0D8, 0x00004000, 1, 1, 2},
        };
        int y = area.top + 34;
        for (const auto& spec : labels) {
            ComPtr<IClassFactory> factory;
            ComPtr<IUnknown> control;
            if (FAILED(getClassObject(*spec.clsid, IID_IClassFactory, factory.putVoid())) ||
                FAILED(factory->CreateInstance(nullptr, IID_IUnknown, control.putVoid()))) {
                continue;
            }
            // A new control, as a form designer starts it; then every property through dispatch.
            ComPtr<IPersistPropertyBag> persist;
            if (SUCCEEDED(control->QueryInterface(IID_IPersistPropertyBag, persist.putVoid()))) persist->InitNew();
            ComPtr<IDispatch> dispatch;
            if (SUCCEEDED(control->QueryInterface(IID_IDispatch, dispatch.putVoid()))) {
                PutFont(dispatch.get(), GalleryFaceFor(spec.caption));
                PutText(dispatch.get(), L"Caption", spec.caption);
                PutLong(dispatch.get(), L"BackColor", spec.back);
                PutLong(dispatch.get(), L"ForeColor", spec.fore);
                PutLong(dispatch.get(), L"Style", spec.style);
                PutLong(dispatch.get(), L"BorderStyle", spec.border);
                PutLong(dispatch.get(), L"Alignment", spec.align);
                PutLong(dispatch.get(), L"VAlignment", 1);
            }
            const HWND host = ::CreateWindowExW(0, L"AtlAxWin", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                                                area.left + 12, y, 420, 30, parent, nullptr, nullptr, nullptr);
            if (!host) continue;
            ComPtr<IUnknown> container;
            if (SUCCEEDED(axAttach(control.get(), host, container.put()))) {
                m_windows.push_back(host);
                m_hosts.push_back(std::move(container));
            } else {
                ::DestroyWindow(host);
            }
            y += 40;
        }
        if (m_windows.empty()) note(parent, area, L"No control could be hosted.");
    }

private:
    void note(HWND parent, const RECT& area, const wchar_t* text) {
        m_windows.push_back(::CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE, area.left + 12,
                                              area.top + 34, 600, 24, parent, nullptr, nullptr, nullptr));
    }

    HMODULE m_server = nullptr;
    std::vector<HWND> m_windows;
    std::vector<ComPtr<IUnknown>> m_hosts;
};

}  // namespace

TC_GALLERY_PAGE(ComHostPage, 30, L"Labels through COM")
