// Live GDI object counting through the executable's import table, and the thread's window count.
// Windows only: the native build compiles this folder too.
#if defined(_WIN32)
#include "LeakCounters.h"

#include <cstring>
#include <cwchar>
#include <mutex>
#include <unordered_map>
#include <unordered_set>

namespace testsupport {
namespace {

std::mutex g_lock;
std::unordered_set<HGDIOBJ>& created() {
    static std::unordered_set<HGDIOBJ> handles;
    return handles;
}
std::unordered_map<HDC, int>& windowDCs() {
    static std::unordered_map<HDC, int> held;
    return held;
}

template <class Handle>
Handle track(Handle handle) {
    if (handle != nullptr) {
        const std::lock_guard<std::mutex> hold(g_lock);
        created().insert(reinterpret_cast<HGDIOBJ>(handle));
    }
    return handle;
}

void forget(HGDIOBJ handle) {
    const std::lock_guard<std::mutex> hold(g_lock);
    created().erase(handle);
}

// The creating calls counted as they are, and the calls with hand-written hooks below.
#define TC_CREATING_CALLS(X)                                                                                 \
    X(CreateSolidBrush) X(CreateBrushIndirect) X(CreateHatchBrush) X(CreatePatternBrush) X(CreatePen)        \
    X(CreatePenIndirect) X(ExtCreatePen) X(CreateFontW) X(CreateFontIndirectW) X(CreateCompatibleDC)         \
    X(CreateDCW) X(CreateCompatibleBitmap) X(CreateBitmap) X(CreateBitmapIndirect) X(CreateDIBSection)       \
    X(CreateDIBitmap) X(CreateRectRgn) X(CreateRectRgnIndirect) X(CreateRoundRectRgn) X(CreateEllipticRgn)
#define TC_OTHER_CALLS(X) X(DeleteObject) X(DeleteDC) X(GetDC) X(GetWindowDC) X(GetDCEx) X(ReleaseDC) X(GetIconInfo)

// The real entry points, filled in when the import table is patched.
#define TC_REAL(name) decltype(&::name) real_##name = nullptr;
TC_CREATING_CALLS(TC_REAL)
TC_OTHER_CALLS(TC_REAL)
#undef TC_REAL

// A creating call that passes its result through track(); one instance per real entry point.
template <class Fn>
struct Tracked;
template <class R, class... A>
struct Tracked<R(WINAPI*)(A...)> {
    template <R(WINAPI** Real)(A...)>
    static R WINAPI call(A... args) {
        return track((*Real)(args...));
    }
};

BOOL WINAPI hookDeleteObject(HGDIOBJ h) {
    forget(h);
    return real_DeleteObject(h);
}
BOOL WINAPI hookDeleteDC(HDC h) {
    forget(h);
    return real_DeleteDC(h);
}
HDC trackWindowDC(HDC hdc) {
    if (hdc != nullptr) {
        const std::lock_guard<std::mutex> hold(g_lock);
        ++windowDCs()[hdc];
    }
    return hdc;
}
HDC WINAPI hookGetDC(HWND w) { return trackWindowDC(real_GetDC(w)); }
HDC WINAPI hookGetWindowDC(HWND w) { return trackWindowDC(real_GetWindowDC(w)); }
HDC WINAPI hookGetDCEx(HWND w, HRGN r, DWORD f) { return trackWindowDC(real_GetDCEx(w, r, f)); }
int WINAPI hookReleaseDC(HWND w, HDC hdc) {
    {
        const std::lock_guard<std::mutex> hold(g_lock);
        auto found = windowDCs().find(hdc);
        if (found != windowDCs().end() && --found->second == 0) windowDCs().erase(found);
    }
    return real_ReleaseDC(w, hdc);
}
// The two bitmaps of an icon's parts belong to the caller.
BOOL WINAPI hookGetIconInfo(HICON icon, ICONINFO* info) {
    const BOOL result = real_GetIconInfo(icon, info);
    if (result && info != nullptr) {
        track(info->hbmColor);
        track(info->hbmMask);
    }
    return result;
}

struct Hook {
    const char* name;
    void* replacement;
    void** real;
};

#define TC_HOOK(name) Hook{#name, reinterpret_cast<void*>(&hook##name), reinterpret_cast<void**>(&real_##name)},
#define TC_TRACK(name)                                                                                    \
    Hook{#name, reinterpret_cast<void*>(&Tracked<decltype(real_##name)>::call<&real_##name>),             \
         reinterpret_cast<void**>(&real_##name)},
const Hook kHooks[] = {TC_CREATING_CALLS(TC_TRACK) TC_OTHER_CALLS(TC_HOOK)};
#undef TC_TRACK
#undef TC_HOOK
#undef TC_OTHER_CALLS
#undef TC_CREATING_CALLS

void patchEntry(void** slot, void* replacement) {
    DWORD previous = 0;
    if (::VirtualProtect(slot, sizeof(void*), PAGE_READWRITE, &previous)) {
        *slot = replacement;
        ::VirtualProtect(slot, sizeof(void*), previous, &previous);
    }
}

// Points the executable's import slots of the calls above at the counting versions.
void patchImports() {
    auto* base = reinterpret_cast<unsigned char*>(::GetModuleHandleW(nullptr));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0) return;
    for (auto* module = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
         module->Name != 0; ++module) {
        const char* moduleName = reinterpret_cast<const char*>(base + module->Name);
        if (_stricmp(moduleName, "gdi32.dll") != 0 && _stricmp(moduleName, "user32.dll") != 0) continue;
        if (module->OriginalFirstThunk == 0) continue;
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            const char* name = reinterpret_cast<const char*>(byName->Name);
            for (const Hook& hook : kHooks) {
                if (std::strcmp(name, hook.name) != 0) continue;
                void** slot = reinterpret_cast<void**>(&slots->u1.Function);
                *hook.real = *slot;
                patchEntry(slot, hook.replacement);
            }
        }
    }
}

void installOnce() {
    static std::once_flag once;
    std::call_once(once, patchImports);
}

BOOL CALLBACK countChild(HWND, LPARAM count) {
    ++*reinterpret_cast<size_t*>(count);
    return TRUE;
}

// The system gives each thread with windows its own input-method window (class "IME") on
// the first window it creates; it stays for the thread's life and is nobody's leak.
bool isSystemImeWindow(HWND window) {
    wchar_t name[16] = {};
    ::GetClassNameW(window, name, 16);
    return std::wcscmp(name, L"IME") == 0;
}

BOOL CALLBACK countTopLevel(HWND window, LPARAM count) {
    if (isSystemImeWindow(window)) return TRUE;
    ++*reinterpret_cast<size_t*>(count);
    ::EnumChildWindows(window, countChild, count);
    return TRUE;
}

}  // namespace

size_t LiveGdiObjects() {
    installOnce();
    const std::lock_guard<std::mutex> hold(g_lock);
    auto& handles = created();
    // Objects deleted by other modules (a picture object, for instance) are no longer known.
    for (auto it = handles.begin(); it != handles.end();) {
        it = (::GetObjectType(*it) == 0) ? handles.erase(it) : std::next(it);
    }
    return handles.size();
}

size_t HeldWindowDCs() {
    installOnce();
    const std::lock_guard<std::mutex> hold(g_lock);
    size_t total = 0;
    for (const auto& entry : windowDCs()) total += static_cast<size_t>(entry.second);
    return total;
}

size_t ThreadWindowCount() {
    size_t count = 0;
    const DWORD thread = ::GetCurrentThreadId();
    ::EnumThreadWindows(thread, countTopLevel, reinterpret_cast<LPARAM>(&count));
    // Message-only windows are not among the thread's top-level windows.
    HWND messageOnly = nullptr;
    while ((messageOnly = ::FindWindowExW(HWND_MESSAGE, messageOnly, nullptr, nullptr)) != nullptr) {
        if (::GetWindowThreadProcessId(messageOnly, nullptr) == thread) {
            ++count;
            ::EnumChildWindows(messageOnly, countChild, reinterpret_cast<LPARAM>(&count));
        }
    }
    return count;
}

}  // namespace testsupport

#endif  // _WIN32
