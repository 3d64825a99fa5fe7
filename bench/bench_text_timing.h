// Timing helper shared by the text benchmarks: best of several interleaved rounds.
#pragma once

#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace benchtiming {

// Seconds of one call of f.
inline double secondsOf(const std::function<void()>& f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count();
}

// Runs the candidates round after round, interleaved, so that a slow moment of the machine hits
// them alike, and returns each one's best time.
inline std::vector<double> bestOf(int rounds, const std::vector<std::function<void()>>& candidates) {
    std::vector<double> best(candidates.size(), 1e300);
    for (int r = 0; r < rounds; ++r) {
        for (size_t i = 0; i < candidates.size(); ++i) {
            const double t = secondsOf(candidates[i]);
            if (t < best[i]) {
                best[i] = t;
            }
        }
    }
    return best;
}

}  // namespace benchtiming
