#include "quv/base/random.h"

#include <chrono>

namespace quv {
namespace {

constinit std::uint64_t g_state = 0x853C49E6748FEA9BULL;

std::uint64_t Next64() {
  std::uint64_t z = (g_state += 0x9E3779B97F4A7C15ULL);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
  return z ^ (z >> 31);
}

}  // namespace

double Random() {
  return static_cast<double>(Next64() >> 11) * 0x1.0p-53;
}

std::int32_t Random(std::int32_t n) {
  if (n < 1) return 0;
  // Lemire's multiply-and-reject on 32 random bits.
  const auto range = static_cast<std::uint32_t>(n);
  std::uint64_t m = (Next64() >> 32) * range;
  auto low = static_cast<std::uint32_t>(m);
  if (low < range) {
    const std::uint32_t threshold = (0u - range) % range;
    while (low < threshold) {
      m = (Next64() >> 32) * range;
      low = static_cast<std::uint32_t>(m);
    }
  }
  return static_cast<std::int32_t>(m >> 32);
}

void Randomize() {
  const auto ticks = std::chrono::high_resolution_clock::now().time_since_epoch().count();
  g_state = static_cast<std::uint64_t>(ticks);
}

void SetRandSeed(std::uint64_t seed) {
  g_state = seed;
}

std::uint64_t RandSeed() {
  return g_state;
}

}  // namespace quv
