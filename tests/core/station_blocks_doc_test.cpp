// docs/station-blocks.md says what core/station_blocks.h does.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "core/station_blocks.h"

namespace {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Use;

std::string FormName(Form form) {
  switch (form) {
    case Form::Number:
      return "number";
    case Form::Text:
      return "text";
    case Form::Base64:
      return "text, base64 in the file";
    case Form::Language:
      return "language";
    default:
      return "number, a word in the file";
  }
}

std::string UseName(Use use) {
  if (use == Use::Both) return "both";
  return use == Use::ReadOnly ? "read" : "written";
}

struct Row {
  std::size_t offset;
  std::string text;
};

Row RowOf(std::size_t offset, const std::string& width, const std::string& form,
          const std::string& attribute, const std::string& element, Use use) {
  return {offset, "| " + std::to_string(offset) + " | " + width + " | " + form + " | `" +
                      attribute + "` | " + element + " | " + UseName(use) + " |"};
}

void AddFields(std::vector<Row>& rows, station_blocks::Rows<Field> fields,
               const std::string& element) {
  for (const Field& field : fields) {
    if (field.width == 0) continue;
    rows.push_back(RowOf(field.offset, std::to_string(field.width), FormName(field.form),
                         field.attribute, element, field.use));
  }
}

std::string Times(std::size_t count, std::size_t size) {
  return std::to_string(count) + " × " + std::to_string(size);
}

std::vector<std::string> Sorted(std::vector<Row> rows) {
  std::stable_sort(rows.begin(), rows.end(),
                   [](const Row& a, const Row& b) { return a.offset < b.offset; });
  std::vector<std::string> texts;
  for (const Row& row : rows) texts.push_back(row.text);
  return texts;
}

std::vector<std::string> RowsOf(const Layout& layout) {
  std::vector<Row> rows;
  AddFields(rows, layout.channel, "`Channel`");
  AddFields(rows, layout.elementStreams, "`ElementStreams`");
  AddFields(rows, layout.satelliteParams, "`SatelliteParams`");
  for (const station_blocks::StreamList& list : layout.lists) {
    rows.push_back(RowOf(list.offset, Times(list.capacity, list.entrySize), "entries", list.element,
                         "children of `ElementStreams`", list.use));
  }
  if (const station_blocks::ComponentList* parts = layout.components) {
    rows.push_back(RowOf(parts->nameOffset, Times(parts->capacity, parts->nameWidth), "text",
                         "name", "`Components`", Use::Both));
    rows.push_back(RowOf(parts->typeOffset, Times(parts->capacity, 4), "number", "type",
                         "`Components`", Use::Both));
  }
  return Sorted(rows);
}

std::vector<std::string> RowsOf(station_blocks::Rows<Field> fields) {
  std::vector<Row> rows;
  AddFields(rows, fields, "entry");
  return Sorted(rows);
}

/// The rows, from the first digit on, of the tables below a second-level heading.
std::vector<std::string> Documented(const std::string& heading) {
  std::ifstream file(std::string(ZORTUNEDEX_SAMPLES) + "/../docs/station-blocks.md");
  std::vector<std::string> rows;
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("## ")) inside = line == "## " + heading;
    if (inside && line.size() > 2 && line[0] == '|' && line[2] >= '0' && line[2] <= '9') {
      rows.push_back(line);
    }
  }
  return rows;
}

void ExpectDocumented(const std::string& heading, const std::vector<std::string>& expected) {
  SCOPED_TRACE(heading);
  EXPECT_EQ(expected, Documented(heading));
}

}  // namespace

TEST(StationBlocksDocument, HasEveryRow) {
  ExpectDocumented("Analogue antenna and cable (1, 2): 100 bytes", RowsOf(station_blocks::kAnalog));
  ExpectDocumented("FM radio (5): 92 bytes", RowsOf(station_blocks::kFmRadio));
  ExpectDocumented("ATSC antenna and cable (16, 32): 528 bytes", RowsOf(station_blocks::kAtsc));
  ExpectDocumented("DVB-S (64): 2784 bytes", RowsOf(station_blocks::kDvbs));
  ExpectDocumented("DVB-T (80): 2484 bytes", RowsOf(station_blocks::kDvbt));
  ExpectDocumented("DVB-H (96): 1096 bytes", RowsOf(station_blocks::kDvbh));
  ExpectDocumented("T-DMB (160): 4716 bytes", RowsOf(station_blocks::kTdmb));
  ExpectDocumented("ISDB-T one-segment (176): 2580 bytes", RowsOf(station_blocks::kOneSeg));
  ExpectDocumented("Stream entry: 10 bytes", RowsOf(station_blocks::kStreamFields));
  ExpectDocumented("Data stream entry: 56 bytes", RowsOf(station_blocks::kDataStreamFields));
}

TEST(StationBlocksDocument, HasTheSizes) {
  EXPECT_EQ(100U, station_blocks::kAnalog.size);
  EXPECT_EQ(92U, station_blocks::kFmRadio.size);
  EXPECT_EQ(528U, station_blocks::kAtsc.size);
  EXPECT_EQ(2784U, station_blocks::kDvbs.size);
  EXPECT_EQ(2484U, station_blocks::kDvbt.size);
  EXPECT_EQ(1096U, station_blocks::kDvbh.size);
  EXPECT_EQ(4716U, station_blocks::kTdmb.size);
  EXPECT_EQ(2580U, station_blocks::kOneSeg.size);
  EXPECT_EQ(10U, station_blocks::kStreamSize);
  EXPECT_EQ(56U, station_blocks::kDataStreamSize);
}
