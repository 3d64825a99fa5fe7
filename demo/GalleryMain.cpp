// tarnwick-gallery: the window of all controls, page by page; --swatches and --screenshot write PNGs and exit.
#include <memory>
#include <string>
#include <vector>

#include "GalleryImage.h"
#include "GalleryPage.h"
#include "frame/Win32Surface.h"
#include "frame/WindowDpi.h"
#include "graphics/GdiRaii.h"
#include "graphics/clsMEMDC.h"

#include <shellapi.h>

namespace {

constexpr int kClientWidth = 1024;
constexpr int kClientHeight = 720;
constexpr int kTabHeight = 44;
constexpr int kFirstTabId = 100;
const wchar_t kMainClass[] = L"TarnwickGallery";
const wchar_t kPageClass[] = L"TarnwickGalleryPage";

struct Gallery {
    HWND main = nullptr;
    HWND host = nullptr;
    size_t current = 0;
    std::unique_ptr<GalleryPage> page;
};
Gallery g_gallery;

RECT pageArea() {
    RECT area{};
    ::GetClientRect(g_gallery.host, &area);
    return area;
}

LRESULT CALLBACK pageProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) return 1;
    if (message == WM_PAINT) {
        PAINTSTRUCT paint{};
        const HDC target = ::BeginPaint(hwnd, &paint);
        const RECT area = pageArea();
        // Painted pages draw into a memory DC first, so nothing flickers.
        try {
            clsMEMDC buffer;
            buffer.CreateDC(area.right, area.bottom, eMemDcBkMode_TRANSPARENT);
            buffer.DrawBackColor(static_cast<int32_t>(0x8000000Fu));
            if (g_gallery.page) g_gallery.page->Paint(buffer.hDC(), area);
            buffer.PaintPicture(target, 0, 0);
        } catch (...) {
        }
        ::EndPaint(hwnd, &paint);
        return 0;
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

void showPage(size_t index) {
    const auto& pages = GalleryPages();
    if (index >= pages.size()) return;
    g_gallery.page.reset();
    if (g_gallery.host != nullptr) ::DestroyWindow(g_gallery.host);
    RECT client{};
    ::GetClientRect(g_gallery.main, &client);
    g_gallery.host = ::CreateWindowExW(0, kPageClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, kTabHeight,
                                       client.right, client.bottom - kTabHeight, g_gallery.main, nullptr,
                                       ::GetModuleHandleW(nullptr), nullptr);
    g_gallery.current = index;
    g_gallery.page = pages[index].make();
    g_gallery.page->Create(g_gallery.host, pageArea());
    for (size_t i = 0; i < pages.size(); ++i) {
        const HWND tab = ::GetDlgItem(g_gallery.main, kFirstTabId + static_cast<int>(i));
        ::SendMessageW(tab, BM_SETSTATE, i == index, 0);
    }
    ::InvalidateRect(g_gallery.host, nullptr, TRUE);
}

LRESULT CALLBACK mainProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE: {
        const auto& pages = GalleryPages();
        for (size_t i = 0; i < pages.size(); ++i) {
            ::CreateWindowExW(0, L"BUTTON", pages[i].title.c_str(), WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON,
                              8 + static_cast<int>(i) * 148, 8, 140, 28, hwnd,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(kFirstTabId + static_cast<int>(i))),
                              ::GetModuleHandleW(nullptr), nullptr);
        }
        return 0;
    }
    case WM_COMMAND: {
        const int id = LOWORD(wParam);
        if (id >= kFirstTabId && HIWORD(wParam) == BN_CLICKED) showPage(static_cast<size_t>(id - kFirstTabId));
        return 0;
    }
    case WM_SIZE:
        if (g_gallery.host != nullptr) {
            ::MoveWindow(g_gallery.host, 0, kTabHeight, LOWORD(lParam), HIWORD(lParam) - kTabHeight, TRUE);
        }
        return 0;
    case WM_DESTROY:
        g_gallery.page.reset();
        ::PostQuitMessage(0);
        return 0;
    default:
        return ::DefWindowProcW(hwnd, message, wParam, lParam);
    }
}

bool registerClasses(HINSTANCE instance) {
    WNDCLASSEXW mainClass{};
    mainClass.cbSize = sizeof(mainClass);
    mainClass.lpfnWndProc = mainProc;
    mainClass.hInstance = instance;
    mainClass.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    mainClass.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
    mainClass.lpszClassName = kMainClass;
    WNDCLASSEXW pageClass = mainClass;
    pageClass.lpfnWndProc = pageProc;
    pageClass.hbrBackground = nullptr;
    pageClass.lpszClassName = kPageClass;
    return ::RegisterClassExW(&mainClass) != 0 && ::RegisterClassExW(&pageClass) != 0;
}

void pumpFor(DWORD milliseconds) {
    const DWORD start = ::GetTickCount();
    MSG message{};
    while (::GetTickCount() - start < milliseconds) {
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        ::Sleep(10);
    }
}

// The client area as shown, children included.
bool writeScreenshot(const std::wstring& path) {
    ::RedrawWindow(g_gallery.main, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    pumpFor(300);
    RECT client{};
    ::GetClientRect(g_gallery.main, &client);
    clsDIBSection image;
    if (!image.Create(client.right, client.bottom)) return false;
    const WindowDCGuard window(g_gallery.main);
    ::BitBlt(image.hDC(), 0, 0, client.right, client.bottom, window.get(), 0, 0, SRCCOPY);
    return gallery::WritePng(image, path);
}

struct Options {
    std::wstring swatches;
    std::wstring screenshot;
    size_t page = 0;
    int dpi = 0;  // 0: the system's
};

Options parseOptions() {
    Options options;
    int count = 0;
    LPWSTR* args = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (args == nullptr) return options;
    for (int i = 1; i + 1 < count; ++i) {
        const std::wstring name = args[i];
        if (name == L"--swatches") options.swatches = args[++i];
        else if (name == L"--screenshot") options.screenshot = args[++i];
        else if (name == L"--page") options.page = static_cast<size_t>(_wtoi(args[++i]));
        else if (name == L"--dpi") options.dpi = _wtoi(args[++i]);
    }
    ::LocalFree(args);
    return options;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int showCommand) {
    // Before the first window: the system then sends WM_DPICHANGED instead of stretching a bitmap.
    DeclarePerMonitorDpiAwareness();
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
    const Options options = parseOptions();
    // The controls of every page are drawn at the chosen DPI, whatever the screen's.
    if (options.dpi > 0) Win32Surface::OverrideDpiForNewSurfaces(options.dpi);
    int result = 0;
    if (!options.swatches.empty()) {
        clsDIBSection sheet;
        if (!gallery::RenderSwatches(sheet) || !gallery::WritePng(sheet, options.swatches)) result = 1;
        if (options.screenshot.empty()) {
            ::CoUninitialize();
            return result;
        }
    }
    if (!registerClasses(instance)) return 3;
    RECT frame{0, 0, kClientWidth, kClientHeight};
    const DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    ::AdjustWindowRectEx(&frame, style, FALSE, 0);
    g_gallery.main = ::CreateWindowExW(0, kMainClass, L"TarnwickControls gallery", style, 20, 20,
                                       frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr, instance,
                                       nullptr);
    if (g_gallery.main == nullptr) return 4;
    showPage(options.page);
    ::ShowWindow(g_gallery.main, options.screenshot.empty() ? showCommand : SW_SHOWNORMAL);
    ::UpdateWindow(g_gallery.main);
    if (!options.screenshot.empty()) {
        if (!writeScreenshot(options.screenshot)) result = 1;
        ::DestroyWindow(g_gallery.main);
        pumpFor(50);
        ::CoUninitialize();
        return result;
    }
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    ::CoUninitialize();
    return static_cast<int>(message.wParam);
}
