// Simple random generators: Bernoulli, Cauchy and standard normal variates drawn from the
// process-wide uniform source, and LongRand, a combined congruential generator with its own
// three seeds.
//
// The unit-level state (the three LongRand seeds and the pending GRandom value) is constant-
// initialised, so no static-initialisation order matters. The LongRand seeds are drawn from
// the uniform source the first time LongRand runs without being reseeded, which is what an
// initialisation at load time would give, but without touching the uniform source before a
// caller had the chance to set its seed. Nothing here locks: concurrent callers interleave
// their sequences.
#pragma once

#include <cstdint>

namespace quv {

/// True for p >= 1; otherwise true exactly when a uniform number in [0, 1) is below p.
bool BRandom(double p);

/// Cauchy variate: Center + Width * tan((r - 0.5) * pi), r uniform in [0, 1).
double CRandom(double Center, double Width);

/// Standard normal variate by the polar Box-Muller method. Each accepted pair yields two
/// values: the second is kept and returned by the next call.
double GRandom();

/// Drops a value that GRandom keeps pending, so that the next GRandom draws a fresh pair.
/// Call it after SetRandSeed to make a sequence of normal variates reproducible.
void ResetGRandom();

/// Uniform number in [0, 1) from a combination of three multiplicative congruential
/// generators (moduli 1001003, 990923, 1400423). A Seed other than 0 reseeds the three
/// generators from it first; Seed 0 continues the current sequence. A Seed that is a multiple
/// of 990923 zeroes all three seeds, and the generator then returns 0 for ever; reseed to
/// leave that state.
double LongRand(std::int32_t Seed = 0);

}  // namespace quv
