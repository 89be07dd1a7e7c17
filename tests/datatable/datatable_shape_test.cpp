// TDataTable structure: resize, insert, remove, exchange, sort, clear, assign, copy; every
// item of a cell, a column and a row must stay with it.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "quv/datatable/datatable.h"

namespace {

using quv::TDataTable;

// A plain model of a table: what each position must hold.
struct Model {
  struct Column {
    std::string name;
    int attrib = 0;
    quv::TMScaleType scale = quv::stUnknown;
    std::string id0;  // the identifier in slot 0
  };
  struct Row {
    std::string name;
    int attrib = 0;
  };
  struct Cell {
    double value = 0.0;
    std::uint8_t state = 0;
  };
  std::vector<Column> cols{Column{}};
  std::vector<Row> rows{Row{}};
  std::vector<std::vector<Cell>> cells{{Cell{}}};  // [col][row]
};

// Fills a table and its model with distinct items.
void FillDistinct(TDataTable& t, Model& m, int cols, int rows) {
  t.Resize(cols, rows);
  m.cols.assign(static_cast<std::size_t>(cols), {});
  m.rows.assign(static_cast<std::size_t>(rows), {});
  m.cells.assign(static_cast<std::size_t>(cols), std::vector<Model::Cell>(rows));
  for (int c = 1; c <= cols; ++c) {
    auto& mc = m.cols[static_cast<std::size_t>(c - 1)];
    mc = {"c" + std::to_string(c), 100 + c, c % 2 ? quv::stRatio : quv::stNominal,
          "i" + std::to_string(c)};
    t.SetColName(c, mc.name);
    t.SetColAttrib(c, mc.attrib);
    t.AddNominalID(c, mc.id0);
    t.SetMScaleType(c, mc.scale);
    for (int r = 1; r <= rows; ++r) {
      auto& cell = m.cells[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(r - 1)];
      cell = {c * 1000.0 + r, static_cast<std::uint8_t>((c * 7 + r) % 64)};
      t.SetElem(c, r, cell.value);
      t.SetCellState(c, r, cell.state);
    }
  }
  for (int r = 1; r <= rows; ++r) {
    m.rows[static_cast<std::size_t>(r - 1)] = {"r" + std::to_string(r), -r};
    t.SetRowName(r, "r" + std::to_string(r));
    t.SetRowAttrib(r, -r);
  }
}

::testing::AssertionResult Matches(const TDataTable& t, const Model& m) {
  if (t.NrOfColumns() != static_cast<int>(m.cols.size()) ||
      t.NrOfRows() != static_cast<int>(m.rows.size())) {
    return ::testing::AssertionFailure() << "size " << t.NrOfColumns() << " x " << t.NrOfRows()
                                         << ", model " << m.cols.size() << " x " << m.rows.size();
  }
  for (int c = 1; c <= t.NrOfColumns(); ++c) {
    const auto& mc = m.cols[static_cast<std::size_t>(c - 1)];
    if (t.GetColName(c) != mc.name || t.GetColAttrib(c) != mc.attrib ||
        t.GetMScaleType(c) != mc.scale)
      return ::testing::AssertionFailure() << "column " << c;
    // Slot 0 is visible only in nominal columns; compare through the scale-free count.
    if (t.CountNominalIDs(c) != (mc.id0.empty() ? 0 : 1))
      return ::testing::AssertionFailure() << "slots of column " << c;
    if (mc.scale == quv::stNominal && t.GetNominalID(c, 0) != mc.id0)
      return ::testing::AssertionFailure() << "identifier of column " << c;
    for (int r = 1; r <= t.NrOfRows(); ++r) {
      const auto& cell = m.cells[static_cast<std::size_t>(c - 1)][static_cast<std::size_t>(r - 1)];
      if (t.DataMatrix().GetVal(c, r) != cell.value || t.GetCellState(c, r) != cell.state)
        return ::testing::AssertionFailure() << "cell " << c << ", " << r;
    }
  }
  for (int r = 1; r <= t.NrOfRows(); ++r) {
    const auto& mr = m.rows[static_cast<std::size_t>(r - 1)];
    if (t.GetRowName(r) != mr.name || t.GetRowAttrib(r) != mr.attrib)
      return ::testing::AssertionFailure() << "row " << r;
  }
  return ::testing::AssertionSuccess();
}

TEST(DataTableShape, ResizeKeepsItemsAndReportsSizes) {
  TDataTable t;
  Model m;
  FillDistinct(t, m, 3, 4);
  std::vector<std::string> events;
  t.OnChange = [&](quv::TComponent*) { events.push_back("change"); };
  t.OnResize = [&](quv::TComponent* s, int oc, int orr, int nc, int nr) {
    EXPECT_EQ(s, &t);
    events.push_back("resize " + std::to_string(oc) + " " + std::to_string(orr) + " " +
                     std::to_string(nc) + " " + std::to_string(nr));
  };
  EXPECT_FALSE(t.Resize(3, 4));
  EXPECT_FALSE(t.Resize(0, 4));
  EXPECT_FALSE(t.Resize(3, -1));
  EXPECT_TRUE(events.empty());
  t.SetNrOfColumns(0);  // below 1: nothing
  EXPECT_EQ(t.NrOfColumns(), 3);

  EXPECT_TRUE(t.Resize(2, 6));
  EXPECT_EQ(events, (std::vector<std::string>{"change", "resize 3 4 2 6"}));
  m.cols.resize(2);
  m.cells.resize(2);
  for (auto& col : m.cells)
    col.resize(6);
  m.rows.resize(6);
  EXPECT_TRUE(Matches(t, m));
  EXPECT_TRUE(t.GetIsNumber(2, 6));  // new cells are numbers holding 0
}

TEST(DataTableShape, InsertAndRemoveBoundaries) {
  TDataTable t;
  t.Resize(2, 2);
  int resizes = 0;
  t.OnResize = [&](quv::TComponent*, int, int, int, int) { ++resizes; };
  EXPECT_FALSE(t.InsertColumn(0));
  EXPECT_FALSE(t.InsertColumn(4));
  EXPECT_TRUE(t.InsertColumn(3));  // appends
  EXPECT_FALSE(t.RemoveColumn(4));
  EXPECT_FALSE(t.InsertRow(0));
  EXPECT_TRUE(t.InsertRow(3));
  EXPECT_FALSE(t.RemoveRow(0));
  EXPECT_EQ(resizes, 2);
  TDataTable one;
  EXPECT_FALSE(one.RemoveColumn(1));
  EXPECT_FALSE(one.RemoveRow(1));
}

// Random sequences of structural operations, applied to a table and to the model.
TEST(DataTableShape, RandomOperationsKeepEverythingAligned) {
  std::mt19937 rng(20261124);
  const auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  for (int trial = 0; trial < 20; ++trial) {
    TDataTable t;
    Model m;
    FillDistinct(t, m, pick(1, 5), pick(1, 6));
    for (int step = 0; step < 40; ++step) {
      const int nc = t.NrOfColumns();
      const int nr = t.NrOfRows();
      switch (pick(0, 7)) {
        case 0: {
          const int c = pick(1, nc + 1);
          ASSERT_TRUE(t.InsertColumn(c));
          m.cols.insert(m.cols.begin() + (c - 1), Model::Column{});
          m.cells.insert(m.cells.begin() + (c - 1), std::vector<Model::Cell>(nr));
          break;
        }
        case 1: {
          const int c = pick(1, nc);
          ASSERT_EQ(t.RemoveColumn(c), nc > 1);
          if (nc > 1) {
            m.cols.erase(m.cols.begin() + (c - 1));
            m.cells.erase(m.cells.begin() + (c - 1));
          }
          break;
        }
        case 2: {
          const int r = pick(1, nr + 1);
          ASSERT_TRUE(t.InsertRow(r));
          m.rows.insert(m.rows.begin() + (r - 1), Model::Row{});
          for (auto& col : m.cells)
            col.insert(col.begin() + (r - 1), Model::Cell{});
          break;
        }
        case 3: {
          const int r = pick(1, nr);
          ASSERT_EQ(t.RemoveRow(r), nr > 1);
          if (nr > 1) {
            m.rows.erase(m.rows.begin() + (r - 1));
            for (auto& col : m.cells)
              col.erase(col.begin() + (r - 1));
          }
          break;
        }
        case 4: {
          const int a = pick(1, nc), b = pick(1, nc);
          t.ExchangeColumns(a, b);
          std::swap(m.cols[a - 1], m.cols[b - 1]);
          std::swap(m.cells[a - 1], m.cells[b - 1]);
          break;
        }
        case 5: {
          const int a = pick(1, nr), b = pick(1, nr);
          t.ExchangeRows(a, b);
          std::swap(m.rows[a - 1], m.rows[b - 1]);
          for (auto& col : m.cells)
            std::swap(col[a - 1], col[b - 1]);
          break;
        }
        case 6: {
          const int c = pick(1, 6), r = pick(1, 7);
          t.Resize(c, r);
          m.cols.resize(c);
          m.cells.resize(c);
          for (auto& col : m.cells)
            col.resize(r);
          m.rows.resize(r);
          break;
        }
        case 7: {
          // Sort rows by attribute; the model follows the exchange events.
          const bool ascending = pick(0, 1) == 1;
          t.OnSortExchange = [&](quv::TComponent*, std::uint8_t, int i, int j, int, int) {
            std::swap(m.rows[i - 1], m.rows[j - 1]);
            for (auto& col : m.cells)
              std::swap(col[i - 1], col[j - 1]);
          };
          t.SortRowsByAttrib(ascending);
          t.OnSortExchange = nullptr;
          for (int r = 2; r <= t.NrOfRows(); ++r) {
            const int a = t.GetRowAttrib(r - 1), b = t.GetRowAttrib(r);
            ASSERT_TRUE(ascending ? a <= b : a >= b);
          }
          break;
        }
      }
      ASSERT_TRUE(Matches(t, m)) << "trial " << trial << " step " << step;
    }
  }
}

TEST(DataTableShape, ExchangeEventsMirrorTheSort) {
  TDataTable t;
  const std::vector<double> values = {5, 3, 9, 3, 1, 7, 3};
  t.Resize(2, static_cast<int>(values.size()));
  std::vector<int> mirror;
  for (int r = 1; r <= t.NrOfRows(); ++r) {
    t.SetElem(1, r, values[static_cast<std::size_t>(r - 1)]);
    t.SetElem(2, r, r);  // original row number: shows stability
    mirror.push_back(r);
  }
  t.SetIsEmpty(1, 2, true);  // the first 3 is empty: it goes last
  int changes = 0;
  t.OnChange = [&](quv::TComponent*) { ++changes; };
  t.OnSortExchange = [&](quv::TComponent*, std::uint8_t what, int i, int j, int lo, int hi) {
    EXPECT_EQ(what, TDataTable::kSortExchangeRows);
    EXPECT_EQ(lo, 1);
    EXPECT_EQ(hi, 2);
    std::swap(mirror[static_cast<std::size_t>(i - 1)], mirror[static_cast<std::size_t>(j - 1)]);
  };
  t.SortRows(1, true);
  EXPECT_EQ(changes, 1);
  std::vector<int> order;
  for (int r = 1; r <= t.NrOfRows(); ++r)
    order.push_back(static_cast<int>(t.GetElem(2, r)));
  EXPECT_EQ(order, (std::vector<int>{5, 4, 7, 1, 6, 3, 2}));
  EXPECT_EQ(mirror, order);
  EXPECT_TRUE(t.GetIsEmpty(1, 7));

  t.SortRows(1, false);
  order.clear();
  for (int r = 1; r <= t.NrOfRows(); ++r)
    order.push_back(static_cast<int>(t.GetElem(2, r)));
  EXPECT_EQ(order, (std::vector<int>{3, 6, 1, 4, 7, 5, 2}));
  EXPECT_EQ(mirror, order);

  // Sorting sorted rows exchanges nothing but still signals once.
  int exchanges = 0;
  t.OnSortExchange = [&](quv::TComponent*, std::uint8_t, int, int, int, int) { ++exchanges; };
  t.SortRows(1, false);
  EXPECT_EQ(exchanges, 0);
  EXPECT_EQ(changes, 3);
  t.SortRows(3, true);  // no such column
  EXPECT_EQ(changes, 3);
}

TEST(DataTableShape, SortByNamesAndAttributes) {
  TDataTable t;
  t.Resize(3, 3);
  const char* names[] = {"beta", "Alpha", "gamma"};
  for (int i = 1; i <= 3; ++i) {
    t.SetRowName(i, names[i - 1]);
    t.SetColName(i, names[i - 1]);
    t.SetColAttrib(i, 10 - i);
    t.SetElem(i, i, i);
  }
  t.SortRowsByName(true);
  EXPECT_EQ(t.GetRowName(1), "Alpha");
  EXPECT_EQ(t.GetElem(2, 1), 2.0);  // the row's cells came along
  t.SortColumnsByName(false);
  EXPECT_EQ(t.GetColName(1), "gamma");
  EXPECT_EQ(t.GetColAttrib(1), 7);
  EXPECT_EQ(t.GetElem(1, 3), 3.0);
  std::vector<int> kinds;
  t.OnSortExchange = [&](quv::TComponent*, std::uint8_t what, int, int, int lo, int hi) {
    kinds.push_back(what);
    EXPECT_EQ(lo, 1);
    EXPECT_EQ(hi, 3);
  };
  t.SortColumnsByAttrib(true);
  EXPECT_EQ(t.GetColAttrib(1), 7);
  EXPECT_EQ(t.GetColAttrib(3), 9);
  EXPECT_FALSE(kinds.empty());
  EXPECT_TRUE(std::all_of(kinds.begin(), kinds.end(),
                          [](int k) { return k == TDataTable::kSortExchangeCols; }));
}

TEST(DataTableShape, ClearAssignAndCopy) {
  TDataTable a, b;
  Model m;
  FillDistinct(a, m, 3, 3);
  a.SetComment("source");
  a.SetName("A");
  int bResizes = 0;
  b.OnResize = [&](quv::TComponent*, int, int, int, int) { ++bResizes; };
  b.Assign(a);
  EXPECT_TRUE(Matches(b, m));
  EXPECT_EQ(b.Comment(), "source");
  EXPECT_EQ(b.Name(), "");
  EXPECT_EQ(bResizes, 1);
  EXPECT_FALSE(a.OnResize);

  // Copy a block onto itself, overlapping, and partly beyond the edge.
  b.CopyFrom(&b, 1, 1, 2, 2, 2, 2);
  EXPECT_EQ(b.GetElem(2, 2), 1001.0);
  EXPECT_EQ(b.GetElem(3, 3), 2002.0);
  EXPECT_EQ(b.GetCellState(3, 3), m.cells[1][1].state);
  EXPECT_EQ(b.GetElem(1, 1), 1001.0);
  EXPECT_EQ(b.GetColName(3), "c3");  // names are not copied
  b.CopyFrom(nullptr, 1, 1, 1, 1, 1, 1);
  // Bounds beyond the source are clamped, in either order.
  b.CopyFrom(&a, 9, 9, 3, 3, 1, 1);
  EXPECT_EQ(b.GetElem(1, 1), 3003.0);

  b.Clear();
  EXPECT_EQ(b.NrOfColumns(), 1);
  EXPECT_EQ(b.NrOfRows(), 1);
  EXPECT_EQ(b.GetElem(1, 1), 0.0);
  EXPECT_EQ(b.GetCellState(1, 1), 0);
  EXPECT_EQ(b.GetColName(1), "");
  EXPECT_EQ(b.CountNominalIDs(1), 0);
  EXPECT_EQ(b.GetMScaleType(1), quv::stUnknown);
  EXPECT_EQ(b.Comment(), "");
  EXPECT_EQ(bResizes, 2);
}

}  // namespace
