#include "kit/saving/save_table.h"

#include "kit/saving/list_editor.h"

namespace zortunedex::kit {

ChannelTable SaveTable(const std::string& directory, const ChannelTable& table,
                       const SaveOptions& options) {
  ListEditor editor({directory, table.country, table.signal}, options);
  editor.Replace(table.channels);
  editor.Save();
  return {table.country, table.signal, editor.After()};
}

}  // namespace zortunedex::kit
