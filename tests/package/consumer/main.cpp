// A program outside the library's build that uses it through the installed package: every
// unit's header must be installed and every unit must link.
#include <cmath>
#include <cstdint>
#include <iostream>
#include <string>

#include "quv/quv.h"

int main() {
  std::uint32_t crc = 0xFFFFFFFFu;
  for (char c : std::string("123456789"))
    crc = quv::CalcNextCRC32(static_cast<std::uint8_t>(c), crc);
  crc = ~crc;

  quv::TVector v;
  v.SetVecSize(5);
  v.FillSerial(1.0, 1.0);
  double mean = 0.0, variance = 0.0;
  v.MeanVar(0, 0, mean, variance);

  quv::TMatrix m;
  m.Resize(2, 2);
  m.Fill(2.0);

  quv::TASCReadReport report;  // the reader's report, from the installed datatable header

  const bool ok =
      crc == 0xCBF43926u && !report.DataSkipped() &&
      std::fabs(quv::chi2DistriUpperTail(100, 3) / 1.5541594313896049e-21 - 1) < 1e-12 &&
      mean == 3.0 && variance == 2.5 &&
      std::fabs(quv::nDistriQuantile(0.975) - 1.959963984540054) < 1e-8 &&
      m.Sum(1, 1, 2, 2) == 8.0 && m.Trace() == 4.0;
  std::cout << (ok ? "ok" : "wrong") << '\n';
  return ok ? 0 : 1;
}
