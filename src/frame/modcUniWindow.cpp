#include "frame/modcUniWindow.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

// Window classes belong to the process, not to a thread, so the list is shared and guarded.
struct RegisteredClasses {
    std::mutex lock;
    std::vector<CtlString> names;
};

RegisteredClasses& registered() {
    static RegisteredClasses instance;
    return instance;
}

}  // namespace

namespace modcUniWindow {

HINSTANCE LibraryInstance() noexcept {
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&LibraryInstance), &module);
    return module;
}

LRESULT CALLBACK DefaultWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::DefWindowProcW(window, message, wParam, lParam);
}

bool IsRegistered(const CtlString& name) {
    RegisteredClasses& state = registered();
    const std::lock_guard<std::mutex> guard(state.lock);
    return std::find(state.names.begin(), state.names.end(), name) != state.names.end();
}

void AddRegistered(const CtlString& name) {
    RegisteredClasses& state = registered();
    const std::lock_guard<std::mutex> guard(state.lock);
    state.names.push_back(name);
}

}  // namespace modcUniWindow
