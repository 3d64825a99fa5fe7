// Benchmark: the cost of a message through the subclassing engine and cUniSubclass, against the
// same window unhooked. Each configuration runs several rounds interleaved with the others and
// keeps its best round, so that a slow moment of the machine hits every configuration alike.
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "frame/MSubclass.h"
#include "frame/PlumbingTestSupport.h"
#include "frame/cUniSubclass.h"

namespace {

constexpr UINT kWanted = WM_APP + 1;
constexpr UINT kUnwanted = WM_APP + 2;

LRESULT CALLBACK plainProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kWanted || message == kUnwanted) return static_cast<LRESULT>(wParam + 1);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

HWND makeWindow() { return plumbing_test::CreateClassWindow(L"SubclassBenchWindow", &plainProc); }

class CountingClient final : public ISubclass {
public:
    void WindowProc(bool bBefore, bool&, LRESULT&, HWND, UINT, WPARAM, LPARAM) override { calls += bBefore ? 1 : 0; }
    long long calls = 0;
};

class CountingOwner final : public plumbing_test::DispatchStub<ISubclassOwner, IID_ISubclassOwner> {
public:
    HRESULT STDMETHODCALLTYPE WindowProc(VARIANT_BOOL, VARIANT_BOOL*, LRESULT*, HWND*, UINT*, WPARAM*, LPARAM*) override {
        ++calls;
        return S_OK;
    }
    long long calls = 0;
};

struct Config {
    std::string name;
    HWND window;
    UINT message;
    double bestSeconds = 1e30;
};

// Sums the answers so that the compiler cannot drop the calls.
volatile LRESULT g_sink = 0;

double timeRound(HWND window, UINT message, int count) {
    const auto start = std::chrono::steady_clock::now();
    LRESULT sum = 0;
    for (int i = 0; i < count; ++i) sum += ::SendMessageW(window, message, static_cast<WPARAM>(i), 0);
    const auto end = std::chrono::steady_clock::now();
    g_sink = g_sink + sum;
    return std::chrono::duration<double>(end - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::stoi(argv[1]) : 200000;
    const int rounds = argc > 2 ? std::stoi(argv[2]) : 7;

    const HWND plain = makeWindow();
    const HWND engineNone = makeWindow();
    const HWND engineOne = makeWindow();
    const HWND engineFive = makeWindow();
    const HWND thunked = makeWindow();

    CountingClient clients[5];
    // Hooked, with a client on another message only: the cost of a message nobody wants.
    MSubclass::AttachClient(&clients[0], engineNone, WM_PAINT, emr3AttachBefore);
    MSubclass::AttachClient(&clients[0], engineOne, kWanted, emr3AttachBefore);
    for (CountingClient& client : clients) MSubclass::AttachClient(&client, engineFive, kWanted, emr3AttachBefore);
    CountingOwner owner;
    cUniSubclass hook;
    hook.AddMsg(kWanted, 3);
    hook.Subclass(thunked, &owner);

    std::vector<Config> configs = {
        {"unhooked window", plain, kWanted},
        {"engine, message nobody wants", engineNone, kUnwanted},
        {"engine, 1 client", engineOne, kWanted},
        {"engine, 5 clients", engineFive, kWanted},
        {"cUniSubclass, message not listed", thunked, kUnwanted},
        {"cUniSubclass, listed before and after", thunked, kWanted},
    };
    for (Config& config : configs) timeRound(config.window, config.message, count / 10);  // warm-up
    for (int round = 0; round < rounds; ++round) {
        for (Config& config : configs) {
            const double seconds = timeRound(config.window, config.message, count);
            if (seconds < config.bestSeconds) config.bestSeconds = seconds;
        }
    }

    const double baseline = configs.front().bestSeconds;
    std::printf("%d messages per round, best of %d rounds\n", count, rounds);
    std::printf("%-40s %14s %10s\n", "configuration", "messages/s", "ratio");
    for (const Config& config : configs) {
        std::printf("%-40s %14.0f %9.2fx\n", config.name.c_str(), count / config.bestSeconds,
                    config.bestSeconds / baseline);
    }
    // Proof that the clients really ran.
    std::printf("client calls: %lld (engine, 5 clients: %lld each), owner calls: %lld\n", clients[0].calls,
                clients[4].calls, owner.calls);

    hook.UnSubclass();
    for (CountingClient& client : clients) MSubclass::DetachClient(&client, engineFive, kWanted);
    MSubclass::DetachClient(&clients[0], engineOne, kWanted);
    MSubclass::DetachClient(&clients[0], engineNone, WM_PAINT);
    for (const HWND window : {plain, engineNone, engineOne, engineFive, thunked}) ::DestroyWindow(window);
    return 0;
}
