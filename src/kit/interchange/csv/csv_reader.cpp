#include "kit/interchange/csv/csv_reader.h"

#include <algorithm>
#include <set>

#include "kit/failure.h"
#include "kit/interchange/csv/csv_cells.h"
#include "kit/interchange/csv/csv_text.h"
#include "kit/interchange/services/channel_builder.h"
#include "kit/text/ascii.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit {

using station_blocks::Source;

namespace interchange {
namespace {

class TableReader {
 public:
  TableReader(const ImportRequest& request, Losses& losses)
      : m_request(request),
        m_known(ColumnsOf(request.context.signal)),
        m_losses(losses),
        m_builder(request.context, losses) {}

  /// False when the row names no column of the signal type.
  bool TakeNames(const csv::Row& row) {
    std::set<const Column*> named;
    for (const std::string& name : row.cells) {
      const Column* column = Find(name);
      const bool isFirst = column != nullptr && named.insert(column).second;
      m_columns.push_back(isFirst ? column : nullptr);
    }
    if (named.empty()) return false;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
      if (m_columns[i] == nullptr && !row.cells[i].empty()) {
        m_losses.Add(Code::KeyUnknown, row.cells[i], {std::nullopt, {}, row.line});
      }
    }
    return true;
  }

  void Take(csv::Row row, ImportResult& result) {
    ++result.read;
    // Spreadsheets fill up rows with empty cells.
    while (row.cells.size() > m_columns.size() && row.cells.back().empty()) row.cells.pop_back();
    if (row.open || row.cells.size() != m_columns.size()) {
      return m_losses.Add(Code::LineNotUnderstood, "line", {std::nullopt, {}, row.line},
                          std::string(row.cells.front()));
    }
    m_builder.Begin(PlaceOf(row));
    for (std::size_t i = 0; i < m_columns.size(); ++i) TakeCell(m_columns[i], row.cells[i]);
    result.Add({m_builder.Take(), row.line}, m_request);
  }

 private:
  /// A list and the number of the stream that is selected in it are told apart by their letters
  /// alone (AudioStream, audioStream): names in other letters count where one column fits.
  const Column* Find(const std::string& name) const {
    const Column* alike = nullptr;
    std::size_t count = 0;
    for (const Column& column : m_known) {
      if (column.name == name) return &column;
      if (!EqualIgnoringCase(column.name, name)) continue;
      alike = &column;
      ++count;
    }
    return count == 1 ? alike : nullptr;
  }

  Place PlaceOf(const csv::Row& row) const {
    Place place{std::nullopt, {}, row.line};
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
      if (m_columns[i] == nullptr || m_columns[i]->field == nullptr) continue;
      const Source source = m_columns[i]->field->source;
      if (source == Source::Index) {
        const auto index = ParseNumber(row.cells[i], 0, UINT32_MAX);
        if (index) place.index = static_cast<UINT>(*index);
      }
      if (source == Source::DisplayName || (source == Source::Name && place.name.empty())) {
        place.name = csv::Unguarded(row.cells[i]);
      }
    }
    return place;
  }

  void TakeCell(const Column* column, const std::string& cell) {
    if (column == nullptr) return;
    if (column->field != nullptr) {
      if (!cell.empty()) m_builder.Set(*column->field, csv::ValueIn(*column->field, cell));
      return;
    }
    const csv::Entries entries = csv::EntriesIn(*column, cell);
    m_builder.SetEntries(*column, entries.first, entries.count);
  }

  const ImportRequest& m_request;
  std::vector<Column> m_known;
  std::vector<const Column*> m_columns;  ///< null for an unknown one
  Losses& m_losses;
  ChannelBuilder m_builder;
};

}  // namespace

void LimitCsv(const Input& other, Output& output) {
  csv::Rows rows(other.bytes);
  const std::optional<csv::Row> named = rows.Next();
  std::string& table = output.Bytes();
  csv::Rows written(table);
  const std::optional<csv::Row> names = written.Next();
  if (!named || !names) return;
  std::string first;
  for (const std::string& name : names->cells) {
    const bool isNamed = std::ranges::any_of(named->cells, [&](const std::string& cell) {
      const bool isAlike = EqualIgnoringCase(cell, name);
      return cell == name ||
             (isAlike && std::ranges::find(names->cells, cell) == names->cells.end());
    });
    first += (&name == &names->cells.front() ? "" : ",") + (isNamed ? name : std::string());
  }
  table.replace(0, table.find('\r'), first);
}

ImportResult ReadCsv(const Input& input, const ImportRequest& request, Losses& losses) {
  csv::Rows rows(input.bytes);
  TableReader reader(request, losses);
  const std::optional<csv::Row> names = rows.Next();
  if (!names || !reader.TakeNames(*names)) {
    throw Failure{E_INVALIDARG, "the file is no table of channels of " +
                                    SignalTypeName(request.context.signal) +
                                    ": its first row names no column"};
  }
  ImportResult result;
  while (std::optional<csv::Row> row = rows.Next()) reader.Take(*std::move(row), result);
  return result;
}

}  // namespace interchange

}  // namespace zortunedex::kit
