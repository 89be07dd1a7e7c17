// Reads the whitespace-separated reference tables of tests/data ('#' starts a comment line).
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace quv::test {

inline std::vector<std::vector<double>> ReadReferenceTable(const std::string& name) {
  std::vector<std::vector<double>> rows;
  std::ifstream in(std::string(QUV_TEST_DATA_DIR) + "/" + name);
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::vector<double> row;
    std::string field;
    while (fields >> field)
      row.push_back(std::stod(field));
    rows.push_back(row);
  }
  return rows;
}

/// |actual - expected| / |expected|, or the absolute difference for expected = 0.
inline double RelErr(double actual, double expected) {
  if (expected == 0) return std::abs(actual);
  return std::abs(actual - expected) / std::abs(expected);
}

}  // namespace quv::test
