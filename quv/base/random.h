// The process-wide uniform random source.
//
// One 64-bit state drives every uniform draw of the library (test-set selection, shuffles,
// random fills, the seeds of the simple generators). The generator is splitmix64, which
// passes the usual statistical batteries and whose whole state is its seed, so a run is
// reproduced by setting the same seed. The state is unguarded: concurrent draws from several
// threads interleave, as the rest of the library's global state does.
#pragma once

#include <cstdint>

namespace quv {

/// Uniform double in [0, 1), with 53 random bits.
double Random();
/// Uniform integer in 0..n-1, without modulo bias; 0 when n < 1.
std::int32_t Random(std::int32_t n);
/// Seeds the source from the clock.
void Randomize();
/// Sets the state; the same seed reproduces the same sequence.
void SetRandSeed(std::uint64_t seed);
/// The current state.
std::uint64_t RandSeed();

}  // namespace quv
