// Allocation failures: a replacement operator new that refuses large blocks on request, so the
// out-of-memory paths can be taken on any machine.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "common/raised_message.h"
#include "quv/fourier/any_length.h"
#include "quv/fourier/fast_fourier.h"

namespace {
// Blocks of at least this many bytes fail while the switch is on.
std::size_t g_refuse_from = 0;
}  // namespace

void* operator new(std::size_t size) {
  if (g_refuse_from != 0 && size >= g_refuse_from) throw std::bad_alloc();
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}

namespace quv {
namespace {

struct RefuseLargeBlocks {
  RefuseLargeBlocks() { g_refuse_from = 1 << 20; }
  ~RefuseLargeBlocks() { g_refuse_from = 0; }
};

TEST(FastFourierMemory, FailedResizeRaisesAndKeepsTheBlock) {
  TFastFourier ff;
  ff.SetName("FFT");
  ff.SetNumData(8);
  ff.SetRealVal(2, 4.0);
  ff.SetWgtVal(3, 0.5);
  std::string message;
  {
    RefuseLargeBlocks refuse;
    message = test::RaisedMessage<EQUVFourierError>([&] { ff.SetNumData(1 << 20); });
  }
  EXPECT_EQ(message, "Component \"FFT\": not enough memory on heap");
  EXPECT_EQ(ff.SpectrumSize(), 8);
  EXPECT_EQ(ff.GetRealVal(2), 4.0);
  EXPECT_EQ(ff.GetWgtVal(3), 0.5);
}

TEST(FastFourierMemory, FreeFunctionsRaiseInTheFunctionForm) {
  const TDoubleArray x(100000, 1.0);
  std::string message;
  {
    RefuseLargeBlocks refuse;
    message = test::RaisedMessage<EQUVFourierError>([&] { (void)RealPowerSpectrum(x); });
  }
  EXPECT_EQ(message, "RealPowerSpectrum: not enough memory");
}

}  // namespace
}  // namespace quv
