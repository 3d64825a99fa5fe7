// Benchmark: DrawButton of each style (bordered, rounded, not pressed) on 200 x 32 in a 32-bit DIB
// section, as calls per second and as a ratio to one FillRect of the same rectangle, measured in
// the same run. Also a 32-row gradient as FadeToY paints it against a pen created per row.
// Rounds alternate between the candidates; each keeps its best round.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include "graphics/DrawButton.h"
#include "graphics/GdiRaii.h"
#include "graphics/clsDIBSection.h"
#include "graphics/modCommonDraw.h"

namespace {

constexpr int kCallsPerRound = 2000;
constexpr int kRounds = 7;
const char* const kStyleNames[] = {"Flat", "Xp", "XpEx", "Vista", "Glass", "Vista2", "Vista3", "Vista4", "Xp2"};

double secondsFor(const std::function<void()>& call) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kCallsPerRound; ++i) call();
    ::GdiFlush();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A gradient drawn the simple way: one pen and one line per row.
void penPerRow(HDC hdc, const RECT& r, COLORREF start, COLORREF stop) {
    const int rows = r.bottom - r.top;
    for (int i = 0; i < rows; ++i) {
        const int t = rows - i;
        const auto mix = [&](int shift) {
            return ((((start >> shift) & 0xFF) * t + ((stop >> shift) & 0xFF) * i) / rows) << shift;
        };
        const PenOwner pen(::CreatePen(PS_SOLID, 1, static_cast<COLORREF>(mix(0) | mix(8) | mix(16))));
        const ScopedSelect select(hdc, pen.get());
        ::MoveToEx(hdc, r.left, r.top + i, nullptr);
        ::LineTo(hdc, r.right, r.top + i);
    }
}

}  // namespace

int main() {
    clsDIBSection target;
    if (!target.Create(220, 48)) {
        std::fprintf(stderr, "no DIB section\n");
        return 1;
    }
    const HDC dc = target.hDC();
    const RECT area{10, 8, 210, 40};
    CTL_RECT rc{10, 8, 210, 40};
    const BrushOwner brush(::CreateSolidBrush(0x00D08040));

    std::vector<std::function<void()>> candidates;
    candidates.emplace_back([&] { ::FillRect(dc, &area, brush.get()); });
    for (int32_t style = 0; style <= 8; ++style) {
        candidates.emplace_back(
            [&, style] { DrawButton(dc, rc, 0x00D08040, true, -1, false, false, false, false, true, style, -1); });
    }
    candidates.emplace_back([&] { FadeToY(dc, rc, 0x00D08040, 0x00FFFFFF); });
    candidates.emplace_back([&] { penPerRow(dc, area, 0x00D08040, 0x00FFFFFF); });

    std::vector<double> best(candidates.size(), 1e30);
    for (int round = 0; round < kRounds; ++round) {
        for (size_t i = 0; i < candidates.size(); ++i) best[i] = std::min(best[i], secondsFor(candidates[i]));
    }
    const auto perSecond = [](double seconds) { return kCallsPerRound / seconds; };
    std::printf("DrawButton 200 x 32, bordered and rounded, 32-bit DIB section; best of %d rounds of %d calls\n",
                kRounds, kCallsPerRound);
    std::printf("%-24s %14.0f calls/s  (baseline)\n", "FillRect", perSecond(best[0]));
    for (int32_t style = 0; style <= 8; ++style) {
        const double seconds = best[static_cast<size_t>(style) + 1];
        std::printf("%-24s %14.0f calls/s  %6.1f x FillRect time\n", kStyleNames[style], perSecond(seconds),
                    seconds / best[0]);
    }
    const double fade = best[10];
    const double pens = best[11];
    std::printf("%-24s %14.0f calls/s  %6.1f x FillRect time\n", "FadeToY 32 rows", perSecond(fade), fade / best[0]);
    std::printf("%-24s %14.0f calls/s  %6.1f x FillRect time; FadeToY is %.1f x faster\n", "pen per row 32 rows",
                perSecond(pens), pens / best[0], pens / fade);
    return 0;
}
