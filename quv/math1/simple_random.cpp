#include "quv/math1/simple_random.h"

#include <cmath>
#include <limits>

#include "quv/base/constants.h"
#include "quv/base/random.h"
#include "quv/base/types.h"

namespace quv {
namespace {

constexpr std::int32_t kMod1 = 1001003;
constexpr std::int32_t kMod2 = 990923;
constexpr std::int32_t kMod3 = 1400423;

struct LongRandState {
  bool seeded = false;
  std::int32_t s1 = 0;
  std::int32_t s2 = 0;
  std::int32_t s3 = 0;
};

struct GaussState {
  bool pending = false;
  double value = 0.0;
};

constinit LongRandState g_long_rand;
constinit GaussState g_gauss;

// Product of two Integers as 32-bit signed arithmetic does it (wrapping on overflow).
std::int32_t MulInt32(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

std::int32_t AbsMod(std::int64_t v, std::int32_t m) {
  return static_cast<std::int32_t>((v < 0 ? -v : v) % m);
}

// The seeds that an initialisation at load time sets: r * 990000 for three successive uniform
// numbers, truncated to Integer.
void SeedFromUniformSource() {
  g_long_rand.s1 = static_cast<std::int32_t>(Random() * 990000.0);
  g_long_rand.s2 = static_cast<std::int32_t>(Random() * 990000.0);
  g_long_rand.s3 = static_cast<std::int32_t>(Random() * 990000.0);
  g_long_rand.seeded = true;
}

void Reseed(std::int32_t seed) {
  const std::int32_t s = seed % kMod2;  // truncating remainder: keeps the sign of seed
  g_long_rand.s1 = AbsMod(s, kMod2);
  g_long_rand.s2 = AbsMod(MulInt32(s, 256) ^ s, kMod2);
  const auto shifted = static_cast<std::int32_t>(static_cast<std::uint32_t>(s) << 16);
  g_long_rand.s3 = AbsMod(shifted ^ s, kMod2);
  g_long_rand.seeded = true;
}

}  // namespace

bool BRandom(double p) {
  if (p >= 1.0) return true;
  return Random() < p;
}

double CRandom(double Center, double Width) {
  const Extended r = Random();
  return static_cast<double>(Center + Width * std::tan((r - 0.5L) * uc_Pi));
}

double GRandom() {
  if (g_gauss.pending) {
    g_gauss.pending = false;
    return g_gauss.value;
  }
  Extended u = 0.0L;
  Extended v = 0.0L;
  Extended s = 0.0L;
  // s = 0 is rejected as well: ln 0 / 0 has no value.
  do {
    u = 2.0L * Random() - 1.0L;
    v = 2.0L * Random() - 1.0L;
    s = u * u + v * v;
  } while (s >= 1.0L || s == 0.0L);
  const Extended f = std::sqrt(-2.0L * std::log(s) / s);
  g_gauss.value = static_cast<double>(u * f);
  g_gauss.pending = true;
  return static_cast<double>(v * f);
}

void ResetGRandom() {
  g_gauss.pending = false;
}

double LongRand(std::int32_t Seed) {
  if (Seed != 0) {
    Reseed(Seed);
  } else if (!g_long_rand.seeded) {
    SeedFromUniformSource();
  }
  g_long_rand.s1 = MulInt32(g_long_rand.s1, 1187) % kMod1;
  g_long_rand.s2 = MulInt32(g_long_rand.s2, 983) % kMod2;
  g_long_rand.s3 = MulInt32(g_long_rand.s3, 1283) % kMod3;
  const Extended sum = static_cast<Extended>(g_long_rand.s1) / kMod1 +
                       static_cast<Extended>(g_long_rand.s2) / kMod2 +
                       static_cast<Extended>(g_long_rand.s3) / kMod3;
  const auto r = static_cast<double>(sum - std::trunc(sum));
  // A fraction a hair below 1 may round up to 1.0 in double; keep the half-open interval.
  return r < 1.0 ? r : std::nextafter(1.0, 0.0);
}

}  // namespace quv
