// Helpers shared by the statistics tests: the reader of the whitespace-separated reference
// tables of tests/data ('#' starts a comment line), relative errors and caught messages.
#pragma once

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "common/raised_message.h"
#include "quv/base/errors.h"

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

/// The message of the EQUVStatisError that call raises, or "nothing raised".
template <class Call>
std::string MessageOf(Call&& call) {
  return RaisedMessage<EQUVStatisError>(std::forward<Call>(call));
}

}  // namespace quv::test
