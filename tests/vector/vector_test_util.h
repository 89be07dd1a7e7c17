// Helpers shared by the vector tests: filling a vector, recording its events, raised messages
// and file paths.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "common/raised_message.h"
#include "quv/vector/vector.h"

namespace quv::test {

using D = std::vector<double>;
using I = TIntArray;

/// Resizes v to the values and copies them in.
template <class V>
void Set(V& v, const std::vector<typename V::value_type>& values) {
  v.Resize(static_cast<std::int32_t>(values.size()));
  v.CopyFrom(values, 0, 0, 1);
}

/// Records a container's events in firing order: 'C' for OnChange, 'R' for OnResize and
/// "(i,j)" for OnSortExchange, whose pairs are also kept in `exchanges`.
struct EventLog {
  std::string order;
  std::vector<std::pair<int, int>> exchanges;
  template <class V>
  explicit EventLog(V& v) {
    v.OnChange = [this](TComponent*) { order += 'C'; };
    v.OnResize = [this](TComponent*) { order += 'R'; };
    v.OnSortExchange = [this](TComponent*, std::uint8_t what, std::int32_t a, std::int32_t b,
                              std::int32_t c, std::int32_t d) {
      EXPECT_TRUE(what == 0 && c == 0 && d == 0);
      order.append("(").append(std::to_string(a)).append(",").append(std::to_string(b));
      order += ')';
      exchanges.emplace_back(a, b);
    };
  }
};

/// The message of the EQUVVectorError that a call raises, or "nothing raised".
template <class Call>
std::string MessageOf(Call&& call) {
  return RaisedMessage<EQUVVectorError>(std::forward<Call>(call));
}

inline std::string DataFile(const std::string& name) {
  return std::string(QUV_TEST_DATA_DIR) + "/" + name;
}
inline std::string TempFile(const std::string& name) {
  return ::testing::TempDir() + "quv_vector_" + name;
}
inline std::string Slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

}  // namespace quv::test
