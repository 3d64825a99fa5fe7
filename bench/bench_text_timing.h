// Timing helper shared by the text benchmarks: best of several interleaved rounds, in CPU time of
// the calling thread, so that other processes on a busy machine disturb the figures less.
#pragma once

#include <time.h>

#include <cstdio>
#include <functional>
#include <vector>

namespace benchtiming {

// Seconds of one call of f.
inline double secondsOf(const std::function<void()>& f) {
    timespec start{};
    timespec end{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
    f();
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
    return static_cast<double>(end.tv_sec - start.tv_sec) + static_cast<double>(end.tv_nsec - start.tv_nsec) * 1e-9;
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
