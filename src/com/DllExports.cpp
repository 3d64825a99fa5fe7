// The exports of TarnwickControls30.dll.
#include <new>

#include "com/ClassFactory.h"
#include "com/ComClassTable.h"
#include "com/ComModule.h"
#include "com/ComRegistration.h"
#include "frame/SurfaceAccessible.h"

using namespace tc::com;

extern "C" {

__declspec(dllexport) HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID clsid, REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    *ppv = nullptr;
    const ComClassEntry* entry = FindClass(clsid);
    if (!entry || !entry->creatable) return CLASS_E_CLASSNOTAVAILABLE;
    ClassFactory* factory = new (std::nothrow) ClassFactory(*entry);
    if (!factory) return E_OUTOFMEMORY;
    factory->AddRef();
    const HRESULT hr = factory->QueryInterface(riid, ppv);
    factory->Release();
    return hr;
}

// A screen reader may hold a control's accessible object after the control is gone: its code
// stays loaded until the last one is released.
__declspec(dllexport) HRESULT STDAPICALLTYPE DllCanUnloadNow() {
    return ModuleLock::Count() == 0 && SurfaceAccessible::LiveObjects() == 0 ? S_OK : S_FALSE;
}

__declspec(dllexport) HRESULT STDAPICALLTYPE DllRegisterServer() { return RegisterServer(false); }

__declspec(dllexport) HRESULT STDAPICALLTYPE DllUnregisterServer() { return UnregisterServer(false); }

// regsvr32 /n /i:user registers for the current user only; /u /n /i:user removes that again.
__declspec(dllexport) HRESULT STDAPICALLTYPE DllInstall(BOOL install, LPCWSTR cmdLine) {
    const bool perUser = cmdLine && ::CompareStringOrdinal(cmdLine, -1, L"user", -1, TRUE) == CSTR_EQUAL;
    if (cmdLine && *cmdLine && !perUser) return E_INVALIDARG;
    return install ? RegisterServer(perUser) : UnregisterServer(perUser);
}

}  // extern "C"
