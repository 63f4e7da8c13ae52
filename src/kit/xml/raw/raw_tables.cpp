#include "kit/xml/raw/raw_tables.h"

#include <array>
#include <map>
#include <utility>

#include "core/station_blocks.h"

namespace zortunedex::kit::markup {
namespace {

using station_blocks::Field;
using station_blocks::Form;
using station_blocks::Layout;
using station_blocks::Rows;
using station_blocks::Use;

constexpr RawAttribute kCountry[] = {{"name"}, {"countrycode", true}};
constexpr RawAttribute kChannelSet[] = {{"type"}, {"inputSignalType", true}};
constexpr RawAttribute kComponents[] = {{"ID", true}, {"name"}, {"type", true}};

using Table = std::vector<RawAttribute>;
using Tables = std::map<std::string_view, Table>;

Table TableOf(Rows<Field> rows) {
  Table table;
  for (const Field& row : rows) {
    if (row.use == Use::ReadOnly) continue;
    table.push_back({row.attribute, row.form == Form::Number || row.form == Form::Language});
  }
  return table;
}

Tables TablesOf(const Layout& layout) {
  Tables tables;
  tables["Channel"] = TableOf(layout.channel);
  tables["ElementStreams"] = TableOf(layout.elementStreams);
  tables["SatelliteParams"] = TableOf(layout.satelliteParams);
  for (const station_blocks::StreamList& list : layout.lists) {
    if (list.use == Use::ReadOnly) continue;
    tables[list.element] = TableOf(station_blocks::EntryFields(list.entrySize));
  }
  if (layout.components != nullptr) {
    tables["Components"] = Table(std::begin(kComponents), std::end(kComponents));
  }
  return tables;
}

/// Of every layout, made once.
const Tables& TablesFor(const Layout* layout) {
  static const std::map<const Layout*, Tables> all = [] {
    std::map<const Layout*, Tables> made;
    for (int signal = 0; signal < 256; ++signal) {
      const Layout* found = station_blocks::Find(static_cast<InputSignalType>(signal));
      if (found != nullptr && made.count(found) == 0) made[found] = TablesOf(*found);
    }
    return made;
  }();
  return all.at(layout);
}

}  // namespace

RawTable RawTableOf(std::string_view element, InputSignalType signal) {
  if (element == "Country") return kCountry;
  if (element == "ChannelSet") return kChannelSet;
  const Layout* layout = station_blocks::Find(signal);
  if (layout == nullptr) return {};
  const Tables& tables = TablesFor(layout);
  const auto found = tables.find(element);
  return found == tables.end() ? RawTable() : RawTable(found->second);
}

}  // namespace zortunedex::kit::markup
