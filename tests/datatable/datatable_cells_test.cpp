// TDataTable cells, states, scales, nominal identifiers, names and attributes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/raised_message.h"
#include "quv/datatable/datatable.h"

namespace {

using quv::TDataTable;

// Counts every event of a table.
struct EventLog {
  int change = 0, setup = 0, names = 0, attrib = 0, state = 0, resize = 0;
  explicit EventLog(TDataTable& t) {
    t.OnChange = [this](quv::TComponent*) { ++change; };
    t.OnChangeSetup = [this](quv::TComponent*) { ++setup; };
    t.OnChangeNames = [this](quv::TComponent*) { ++names; };
    t.OnChangeAttrib = [this](quv::TComponent*) { ++attrib; };
    t.OnChangeCellState = [this](quv::TComponent*) { ++state; };
    t.OnResize = [this](quv::TComponent*, int, int, int, int) { ++resize; };
  }
  int Total() const { return change + setup + names + attrib + state + resize; }
};

TEST(DataTableCells, NewTableIsOneNumericCell) {
  TDataTable t;
  EXPECT_EQ(t.NrOfColumns(), 1);
  EXPECT_EQ(t.NrOfRows(), 1);
  EXPECT_EQ(t.GetElem(1, 1), 0.0);
  EXPECT_EQ(t.GetCellState(1, 1), 0);
  EXPECT_TRUE(t.GetIsNumber(1, 1));
  EXPECT_EQ(t.GetMScaleType(1), quv::stUnknown);
  EXPECT_EQ(t.GetColName(1), "");
  EXPECT_EQ(t.Comment(), "");
}

TEST(DataTableCells, OutsideTheTableIsSilent) {
  TDataTable t;
  t.Resize(2, 3);
  EventLog log(t);
  const int outside[][2] = {{0, 1}, {3, 1}, {1, 0}, {1, 4}, {-1, -1}};
  for (const auto& p : outside) {
    t.SetElem(p[0], p[1], 5.0);
    t.SetCellState(p[0], p[1], 7);
    t.SetIsEmpty(p[0], p[1], true);
    t.SetIsImputed(p[0], p[1], true);
    t.SetElemNominal(p[0], p[1], "x");
    EXPECT_EQ(t.GetElem(p[0], p[1]), 0.0);
    EXPECT_EQ(t.GetCellState(p[0], p[1]), 0);
    EXPECT_FALSE(t.GetIsNumber(p[0], p[1]));
    EXPECT_EQ(t.GetElemNominal(p[0], p[1]), "");
  }
  for (const int c : {0, 3}) {
    t.SetMScaleType(c, quv::stNominal);
    t.SetColName(c, "n");
    t.SetColAttrib(c, 4);
    t.ClearNominalIDs(c);
    EXPECT_EQ(t.AddNominalID(c, "a"), -1);
    EXPECT_EQ(t.OrdinalOfNominalID(c, "a", true), -1);
    EXPECT_EQ(t.GetNominalID(c, 0), "");
    EXPECT_EQ(t.CountNominalIDs(c), 0);
    EXPECT_EQ(t.GetColAttrib(c), 0);
    EXPECT_EQ(t.GetMScaleType(c), quv::stUnknown);
  }
  for (const int r : {0, 4}) {
    t.SetRowName(r, "n");
    t.SetRowAttrib(r, 4);
    EXPECT_EQ(t.GetRowName(r), "");
    EXPECT_EQ(t.GetRowAttrib(r), 0);
  }
  EXPECT_EQ(log.Total(), 0);
}

TEST(DataTableCells, NominalAndOrdinalColumnsRoundTheValue) {
  TDataTable t;
  t.Resize(1, 3);
  t.SetElem(1, 1, 2.6);
  t.SetElem(1, 2, 2.5);
  t.SetElem(1, 3, -3.5);
  const struct {
    quv::TMScaleType scale;
    double r1, r2, r3;
  } cases[] = {{quv::stUnknown, 2.6, 2.5, -3.5},
               {quv::stInterval, 2.6, 2.5, -3.5},
               {quv::stRatio, 2.6, 2.5, -3.5},
               {quv::stOrdinal, 3.0, 2.0, -4.0},  // ties to even, as the platform rounds
               {quv::stNominal, 3.0, 2.0, -4.0}};
  for (const auto& c : cases) {
    t.SetMScaleType(1, c.scale);
    EXPECT_EQ(t.GetElem(1, 1), c.r1) << int(c.scale);
    EXPECT_EQ(t.GetElem(1, 2), c.r2) << int(c.scale);
    EXPECT_EQ(t.GetElem(1, 3), c.r3) << int(c.scale);
  }
  // The stored value itself is untouched.
  EXPECT_EQ(t.DataMatrix().GetVal(1, 1), 2.6);
}

TEST(DataTableCells, SetCellStateSignalsOnlyARealChange) {
  TDataTable t;
  EventLog log(t);
  t.SetCellState(1, 1, 0);
  EXPECT_EQ(log.state, 0);
  t.SetCellState(1, 1, 64);
  EXPECT_EQ(log.state, 1);
  t.SetCellState(1, 1, 64);
  EXPECT_EQ(log.state, 1);
  EXPECT_EQ(log.change, 0);
  EXPECT_TRUE(t.GetIsNumber(1, 1));  // free bits do not make a cell non-numeric
}

TEST(DataTableCells, SetIsEmptyAndImputedAlwaysSignalData) {
  TDataTable t;
  EventLog log(t);
  t.SetIsEmpty(1, 1, true);
  EXPECT_EQ(log.state, 1);
  EXPECT_EQ(log.change, 1);
  t.SetIsEmpty(1, 1, true);  // already empty: no state change, but a data change
  EXPECT_EQ(log.state, 1);
  EXPECT_EQ(log.change, 2);
  EXPECT_TRUE(t.GetIsEmpty(1, 1));
  EXPECT_FALSE(t.GetIsNumber(1, 1));

  t.SetIsImputed(1, 1, true);
  EXPECT_EQ(t.GetCellState(1, 1), quv::kCellEmpty | quv::kCellImputed);
  EXPECT_EQ(log.state, 2);
  EXPECT_EQ(log.change, 3);
  t.SetIsEmpty(1, 1, false);
  EXPECT_EQ(t.GetCellState(1, 1), quv::kCellImputed);
  EXPECT_TRUE(t.GetIsImputed(1, 1));
  EXPECT_TRUE(t.GetIsNumber(1, 1));
  t.SetIsImputed(1, 1, false);
  t.SetIsImputed(1, 1, false);
  EXPECT_EQ(t.GetCellState(1, 1), 0);
  EXPECT_EQ(log.state, 4);
  EXPECT_EQ(log.change, 6);

  // Bit value 1 alone also makes the cell not a number.
  t.SetCellState(1, 1, quv::kCellInvalid);
  EXPECT_FALSE(t.GetIsNumber(1, 1));
  EXPECT_FALSE(t.GetIsEmpty(1, 1));
}

TEST(DataTableNominal, AddFindsIgnoringCaseAndMakesTheColumnNominal) {
  TDataTable t;
  t.Resize(2, 2);
  EventLog log(t);
  EXPECT_EQ(t.AddNominalID(1, "Red"), 0);
  EXPECT_EQ(t.GetMScaleType(1), quv::stNominal);
  EXPECT_EQ(log.setup, 1);
  EXPECT_EQ(t.AddNominalID(1, "RED"), 0);
  EXPECT_EQ(log.setup, 1);  // found: nothing stored
  EXPECT_EQ(t.GetNominalID(1, 0), "Red");
  EXPECT_EQ(t.AddNominalID(1, "green"), 1);
  EXPECT_EQ(t.CountNominalIDs(1), 2);

  EXPECT_EQ(t.OrdinalOfNominalID(1, "RED", true), 0);
  EXPECT_EQ(t.OrdinalOfNominalID(1, "RED", false), -1);
  EXPECT_EQ(t.OrdinalOfNominalID(1, "Red", false), 0);
  EXPECT_EQ(t.OrdinalOfNominalID(1, "", true), -1);
  EXPECT_EQ(t.OrdinalOfNominalID(2, "Red", true), -1);

  // Identifiers are cut to 10 characters, for storing and for comparing.
  EXPECT_EQ(t.AddNominalID(1, "abcdefghijKLM"), 2);
  EXPECT_EQ(t.GetNominalID(1, 2), "abcdefghij");
  EXPECT_EQ(t.OrdinalOfNominalID(1, "ABCDEFGHIJxyz", true), 2);

  // An ordinal column is searched too; any other scale hides the slots.
  t.SetMScaleType(1, quv::stOrdinal);
  EXPECT_EQ(t.OrdinalOfNominalID(1, "green", false), 1);
  EXPECT_EQ(t.GetNominalID(1, 1), "green");
  t.SetMScaleType(1, quv::stInterval);
  EXPECT_EQ(t.OrdinalOfNominalID(1, "green", false), -1);
  EXPECT_EQ(t.GetNominalID(1, 1), "");
  EXPECT_EQ(t.CountNominalIDs(1), 3);

  // A freed slot is taken again first.
  t.SetMScaleType(1, quv::stNominal);
  t.ClearNominalIDs(1);
  EXPECT_EQ(t.CountNominalIDs(1), 0);
  EXPECT_EQ(t.GetMScaleType(1), quv::stNominal);
  EXPECT_EQ(t.AddNominalID(1, "blue"), 0);
}

TEST(DataTableNominal, TheSlotTableHoldsOneHundredFiftyOneIdentifiers) {
  TDataTable t;
  t.SetName("Grid7");
  for (int i = 0; i < quv::kNominalSlots; ++i)
    ASSERT_EQ(t.AddNominalID(1, "id" + std::to_string(i)), i);
  EventLog log(t);
  EXPECT_EQ(t.AddNominalID(1, "one more"), -1);
  EXPECT_EQ(t.AddNominalID(1, "ID150"), 150);  // existing ones are still found
  t.SetElem(1, 1, 7.0);
  log.change = 0;
  EXPECT_EQ(quv::test::RaisedMessage<quv::EQUVDataTableError>(
                [&] { t.SetElemNominal(1, 1, "one more"); }),
            "Component \"Grid7\": number of available nominal values exceeded");
  EXPECT_EQ(t.GetElem(1, 1), 7.0);
  EXPECT_EQ(t.CountNominalIDs(1), quv::kNominalSlots);
  EXPECT_EQ(log.Total(), 0);
  // An identifier already in the table is stored without trouble.
  t.SetElemNominal(1, 1, "id42");
  EXPECT_EQ(t.GetElem(1, 1), 42.0);
}

TEST(DataTableNominal, SetElemNominalLeavesTheScaleAlone) {
  TDataTable t;
  t.Resize(1, 3);
  EventLog log(t);
  t.SetElemNominal(1, 1, "low");
  t.SetElemNominal(1, 2, "low");
  // The column is not nominal, so the search finds nothing and each call takes a new slot.
  EXPECT_EQ(t.GetMScaleType(1), quv::stUnknown);
  EXPECT_EQ(t.GetElem(1, 1), 0.0);
  EXPECT_EQ(t.GetElem(1, 2), 1.0);
  EXPECT_EQ(t.GetElemNominal(1, 1), "");
  EXPECT_EQ(log.change, 2);
  EXPECT_EQ(log.setup, 0);

  t.SetMScaleType(1, quv::stNominal);
  t.SetElemNominal(1, 3, "LOW");
  EXPECT_EQ(t.GetElem(1, 3), 0.0);
  EXPECT_EQ(t.GetElemNominal(1, 3), "low");
}

TEST(DataTableNominal, GetElemNominalOutsideTheSlotsGivesTheNumber) {
  TDataTable t;
  t.Resize(1, 6);
  t.AddNominalID(1, "a");
  const struct {
    double value;
    const char* text;
  } cases[] = {{0.0, "a"},   {0.4, "a"},           {1.0, ""},
               {150.0, ""},  {200, "200"},         {-3.0, "-3"},
               {151, "151"}, {1e20, "1000000000"}, {-0.6, "-1"}};
  for (const auto& c : cases) {
    t.SetElem(1, 1, c.value);
    EXPECT_EQ(t.GetElemNominal(1, 1), c.text) << c.value;
  }
}

TEST(DataTableNames, CutFindAndMeasure) {
  TDataTable t;
  t.Resize(3, 2);
  EventLog log(t);
  t.SetColName(1, "alpha");
  t.SetColName(2, std::string(60, 'x'));
  t.SetColName(3, "alpha");
  t.SetRowName(2, "r2");
  EXPECT_EQ(log.names, 4);
  EXPECT_EQ(t.GetColName(2), std::string(50, 'x'));
  EXPECT_EQ(t.FindColIndex("alpha"), 1);
  EXPECT_EQ(t.FindColIndex("ALPHA"), -1);
  EXPECT_EQ(t.FindColIndex(std::string(70, 'x')), 2);
  EXPECT_EQ(t.FindColIndex(""), -1);
  EXPECT_EQ(t.FindRowIndex("r2"), 2);
  EXPECT_EQ(t.FindRowIndex("r3"), -1);
  EXPECT_EQ(t.MaxColNameLength(), 50);
  EXPECT_EQ(t.MaxRowNameLength(), 2);

  t.SetColAttrib(2, 2);
  t.SetRowAttrib(1, -9);
  EXPECT_EQ(log.attrib, 2);
  EXPECT_EQ(t.GetColAttrib(2), 2);
  EXPECT_EQ(t.GetRowAttrib(1), -9);
  EXPECT_EQ(t.GetColAttrib(1), 0);
}

TEST(DataTableCells, OwnedTablesAreFreedByTheirOwner) {
  quv::TComponent owner;
  auto* t = new TDataTable(&owner);
  t->Resize(5, 5);
  EXPECT_EQ(owner.ComponentCount(), 1u);
}

}  // namespace
