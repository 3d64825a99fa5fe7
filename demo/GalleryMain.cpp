// tarnwick-gallery: the window of all controls, page by page; --swatches, --screenshot and --layout
// write files and exit; --dpi N lays everything out at N.
#include <algorithm>
#include <cstdio>
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

// The window's layout at 96 DPI; GalleryScale gives it at the gallery's DPI.
constexpr int kClientWidth = 1024;
constexpr int kClientHeight = 720;
constexpr int kTabHeight = 44;
constexpr int kTabLeft = 8;
constexpr int kTabTop = 8;
constexpr int kTabWidth = 140;
constexpr int kTabButtonHeight = 28;
constexpr int kTabStep = 148;
constexpr int kTabPoints = 8;
constexpr int kFirstTabId = 100;
const wchar_t kMainClass[] = L"TarnwickGallery";
const wchar_t kPageClass[] = L"TarnwickGalleryPage";

struct Gallery {
    HWND main = nullptr;
    HWND host = nullptr;
    size_t current = 0;
    std::unique_ptr<GalleryPage> page;
    FontOwner tabFont;  // the tab buttons' font at the gallery's DPI
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
    const int tabHeight = GalleryScale(kTabHeight);
    g_gallery.host = ::CreateWindowExW(0, kPageClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, tabHeight,
                                       client.right, client.bottom - tabHeight, g_gallery.main, nullptr,
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
        g_gallery.tabFont.reset(::CreateFontW(-::MulDiv(kTabPoints, GalleryDpi(), 72), 0, 0, 0, FW_NORMAL, FALSE,
                                              FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                              DEFAULT_QUALITY, DEFAULT_PITCH, L"Tahoma"));
        for (size_t i = 0; i < pages.size(); ++i) {
            const HWND tab = ::CreateWindowExW(
                0, L"BUTTON", pages[i].title.c_str(), WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON,
                GalleryScale(kTabLeft + static_cast<int>(i) * kTabStep), GalleryScale(kTabTop), GalleryScale(kTabWidth),
                GalleryScale(kTabButtonHeight), hwnd,
                reinterpret_cast<HMENU>(static_cast<INT_PTR>(kFirstTabId + static_cast<int>(i))),
                ::GetModuleHandleW(nullptr), nullptr);
            if (tab != nullptr && g_gallery.tabFont) {
                ::SendMessageW(tab, WM_SETFONT, reinterpret_cast<WPARAM>(g_gallery.tabFont.get()), FALSE);
            }
        }
        return 0;
    }
    case WM_COMMAND: {
        const int id = LOWORD(wParam);
        if (id >= kFirstTabId && HIWORD(wParam) == BN_CLICKED) showPage(static_cast<size_t>(id - kFirstTabId));
        return 0;
    }
    case WM_GETMINMAXINFO: {
        // At a high DPI the window may be larger than the screen (a test display of 1280 x 1024
        // holds the 96-DPI window only); the screenshot is taken piece by piece.
        auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
        limits->ptMaxTrackSize = POINT{32000, 32000};
        limits->ptMaxSize = POINT{32000, 32000};
        return 0;
    }
    case WM_SIZE:
        if (g_gallery.host != nullptr) {
            const int tabHeight = GalleryScale(kTabHeight);
            ::MoveWindow(g_gallery.host, 0, tabHeight, LOWORD(lParam), HIWORD(lParam) - tabHeight, TRUE);
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

// The client area as shown, children included. Only what lies on the screen can be read back, so
// a window larger than the screen is moved under it piece by piece, each piece read where it shows.
bool writeScreenshot(const std::wstring& path) {
    RECT client{};
    ::GetClientRect(g_gallery.main, &client);
    clsDIBSection image;
    if (!image.Create(client.right, client.bottom)) return false;
    RECT frame{};
    ::GetWindowRect(g_gallery.main, &frame);
    POINT origin{0, 0};
    ::ClientToScreen(g_gallery.main, &origin);
    const int screenWidth = ::GetSystemMetrics(SM_CXSCREEN);
    const int screenHeight = ::GetSystemMetrics(SM_CYSCREEN);
    const int pieceWidth = std::max(1, std::min<int>(client.right, screenWidth - origin.x));
    const int pieceHeight = std::max(1, std::min<int>(client.bottom, screenHeight - origin.y));
    for (int top = 0; top < client.bottom; top += pieceHeight) {
        for (int left = 0; left < client.right; left += pieceWidth) {
            ::SetWindowPos(g_gallery.main, nullptr, frame.left - left, frame.top - top, 0, 0,
                           SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            ::RedrawWindow(g_gallery.main, nullptr, nullptr,
                           RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
            pumpFor(300);
            const WindowDCGuard window(g_gallery.main);
            ::BitBlt(image.hDC(), left, top, std::min<int>(pieceWidth, client.right - left),
                     std::min<int>(pieceHeight, client.bottom - top), window.get(), left, top, SRCCOPY);
        }
    }
    ::SetWindowPos(g_gallery.main, nullptr, frame.left, frame.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return gallery::WritePng(image, path);
}

// A window's rectangle in the client coordinates of `to`.
RECT relativeRect(HWND window, HWND to) {
    RECT r{};
    ::GetWindowRect(window, &r);
    ::MapWindowPoints(HWND_DESKTOP, to, reinterpret_cast<POINT*>(&r), 2);
    return r;
}

// EnumChildWindows callback of writeLayout: a named CALLBACK, since on x86 a lambda cannot take
// the stdcall convention the callback needs.
BOOL CALLBACK writeChildLine(HWND child, LPARAM data) {
    FILE* const file = reinterpret_cast<FILE*>(data);
    const RECT r = relativeRect(child, g_gallery.host);
    const bool content = g_gallery.page && g_gallery.page->SizedByContent(child);
    std::fprintf(file, "child %ld %ld %ld %ld %d\n", r.left, r.top, r.right - r.left, r.bottom - r.top,
                 content ? 1 : 0);
    return TRUE;
}

// One line per window: "client w h" (the main window's client area), "tab x y w h" for each tab
// button (in that client area) and "child x y w h content" for every window of the page (in the
// page's client area; content: 1 when the control sized itself). A test compares two DPIs' lines.
bool writeLayout(const std::wstring& path) {
    // Closes the file on every path; the result of the close is checked at the end.
    std::unique_ptr<FILE, int (*)(FILE*)> owner(_wfopen(path.c_str(), L"w"), &std::fclose);
    FILE* const file = owner.get();
    if (file == nullptr) return false;
    RECT client{};
    ::GetClientRect(g_gallery.main, &client);
    std::fprintf(file, "client %ld %ld\n", client.right, client.bottom);
    for (HWND child = ::GetWindow(g_gallery.main, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (child == g_gallery.host) continue;
        const RECT r = relativeRect(child, g_gallery.main);
        std::fprintf(file, "tab %ld %ld %ld %ld\n", r.left, r.top, r.right - r.left, r.bottom - r.top);
    }
    ::EnumChildWindows(g_gallery.host, &writeChildLine, reinterpret_cast<LPARAM>(file));
    return std::fclose(owner.release()) == 0;
}

struct Options {
    std::wstring swatches;
    std::wstring screenshot;
    std::wstring layout;
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
        else if (name == L"--layout") options.layout = args[++i];
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
    // The window, the pages and the controls of every page are laid out and drawn at the chosen
    // DPI, whatever the screen's.
    if (options.dpi > 0) Win32Surface::OverrideDpiForNewSurfaces(options.dpi);
    SetGalleryDpi(options.dpi);
    int result = 0;
    const bool writesPage = !options.screenshot.empty() || !options.layout.empty();
    if (!options.swatches.empty()) {
        clsDIBSection sheet;
        if (!gallery::RenderSwatches(sheet, GalleryDpi()) || !gallery::WritePng(sheet, options.swatches)) result = 1;
        if (!writesPage) {
            ::CoUninitialize();
            return result;
        }
    }
    if (!registerClasses(instance)) return 3;
    RECT frame{0, 0, GalleryScale(kClientWidth), GalleryScale(kClientHeight)};
    const DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    ::AdjustWindowRectEx(&frame, style, FALSE, 0);
    g_gallery.main = ::CreateWindowExW(0, kMainClass, L"TarnwickControls gallery", style, 20, 20,
                                       frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr, instance,
                                       nullptr);
    if (g_gallery.main == nullptr) return 4;
    showPage(options.page);
    ::ShowWindow(g_gallery.main, writesPage ? SW_SHOWNORMAL : showCommand);
    ::UpdateWindow(g_gallery.main);
    if (writesPage) {
        if (!options.screenshot.empty() && !writeScreenshot(options.screenshot)) result = 1;
        pumpFor(100);  // AutoSize settles with the first paints
        if (!options.layout.empty() && !writeLayout(options.layout)) result = 1;
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
