#include "kit/interchange/csv/csv_writer.h"

#include "kit/interchange/csv/csv_cells.h"
#include "kit/interchange/csv/csv_text.h"

namespace zortunedex::kit::interchange {
namespace {

std::string CellOf(const Channel& channel, const Column& column, const NarrowText& narrow) {
  if (column.field == nullptr) return csv::CellOf(EntriesOf(channel, column, narrow));
  return csv::CellOf(*column.field, ValueOf(channel, *column.field, narrow));
}

template <typename Cell>
void AppendRow(std::string& table, const std::vector<Column>& columns, Cell cell) {
  bool first = true;
  for (const Column& column : columns) {
    if (!first) table += ',';
    csv::AppendCell(table, cell(column));
    first = false;
  }
  table += "\r\n";
}

}  // namespace

void WriteCsv(const ExportRequest& request, Output& output, Losses&) {
  const std::vector<Column> columns = ColumnsOf(request.context.signal);
  std::string& table = output.Bytes();
  if (request.mark) table += "\xEF\xBB\xBF";
  AppendRow(table, columns, [](const Column& column) { return std::string(column.name); });
  for (std::size_t i = 0; i < request.channels.size(); ++i) {
    AppendRow(table, columns, [&](const Column& column) {
      return CellOf(request.channels[i], column, request.context.narrow);
    });
    output.written.push_back(i);
  }
}

}  // namespace zortunedex::kit::interchange
