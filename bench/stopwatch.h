// Times of one run, to be held against each other.
#pragma once

#include <algorithm>
#include <chrono>

namespace qrn::bench {

template <class Body>
double seconds(Body body) {
  const auto start = std::chrono::steady_clock::now();
  body();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

template <class Body>
double bestSeconds(int runs, Body body) {
  double best = 1e9;
  for (int run = 0; run < runs; ++run) best = std::min(best, seconds(body));
  return best;
}

}  // namespace qrn::bench
