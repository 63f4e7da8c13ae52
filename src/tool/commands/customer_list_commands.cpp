#include <iostream>
#include <nlohmann/json.hpp>

#include "kit/presets/customer_lists.h"
#include "tool/commands/commands.h"
#include "tool/options/location.h"
#include "tool/printing/output.h"

namespace zortunedex::kit::tool::commands {

void SaveCustomerList(const Options& options) {
  const StoredList result =
      StoreCustomerList(LocationOf(options), options.places[0], WideArgument(options.name));
  const PresetList& list = result.list;
  if (options.json) {
    return PrintJson({{"index", list.number},
                      {"name", utf::FromWide(list.name)},
                      {"channels", list.channels.size()},
                      {"stored", result.stored},
                      {"replaced", result.replaced},
                      {"kept", result.kept}});
  }
  std::cout << "stored " << CountText(result.stored) << " as customer list " << list.number
            << "; replaced " << result.replaced << ", kept " << result.kept << '\n';
}

void DeleteCustomerList(const Options& options) {
  const PresetList list = DropCustomerList(LocationOf(options), options.places[0], PrintNote);
  if (options.json) {
    return PrintJson({{"index", list.number},
                      {"name", utf::FromWide(list.name)},
                      {"channels", list.channels.size()}});
  }
  std::cout << "deleted customer list " << list.number << " with "
            << CountText(list.channels.size()) << ": " << Printable(list.name) << '\n';
}

}  // namespace zortunedex::kit::tool::commands
