// What lists and files do with channels.
#pragma once

#include <utility>

#include "api/zortunedex/channel.hpp"

namespace zortunedex::detail {

/// The inside of a channel.
struct Inside {
  static channel Make(SharedContext context, Values values) {
    return {std::move(context), std::move(values)};
  }
  static const Values& Of(const channel& value) { return value.m_values; }
  static const SharedContext& ContextOf(const channel& value) { return value.m_context; }
  static void Number(channel& value, UINT index) { value.m_values.index = index; }
};

/// A channel in which nothing is set: parameters that are words are NotSet, all else is zero.
inline channel NewChannel(const SharedContext& context) {
  Values values;
  values.block.resize(context->BlockLayout().size);
  for (const Field& row : context->BlockLayout().satelliteParams) {
    if (row.form == Form::Number || IsText(row.form)) continue;
    station_blocks::Store(values.block.data() + row.offset, row.width, UINT32_MAX);
  }
  return Inside::Make(context, std::move(values));
}

}  // namespace zortunedex::detail
