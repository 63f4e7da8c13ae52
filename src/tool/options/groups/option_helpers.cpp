#include "tool/options/groups/option_helpers.h"

#include "tool/options/usage_error.h"

namespace zortunedex::kit::tool {

void AddIndexes(CLI::App* app, Options& options, int least, int most, const std::string& help) {
  const auto take = [&options](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      const std::optional<std::int64_t> value = ParseNumber(text, 0, UINT32_MAX);
      if (!value) throw CLI::ValidationError("INDEX", "'" + text + "' is no index");
      options.indexes.push_back(static_cast<UINT>(*value));
    }
  };
  CLI::Option* option = app->add_option_function<std::vector<std::string>>("INDEX", take, help)
                            ->type_name("")
                            ->required();
  option->expected(least, most);
  if (most == least) option->allow_extra_args(false);
}

void RequireGiven(bool given, const std::string& what) {
  if (!given) throw UsageError{what + " is required"};
}

}  // namespace zortunedex::kit::tool
