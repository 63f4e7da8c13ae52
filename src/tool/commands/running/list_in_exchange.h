#pragma once

#include "kit/interchange/format.h"
#include "kit/model/channel_list.h"
#include "tool/options/options.h"

namespace zortunedex::kit::tool {

/// The list of the directory, and what its way out or in needs. Without a format it needs no
/// dishes.
class ListInExchange {
 public:
  ListInExchange(const Options& options, const interchange::Format* format);

  const ChannelList& List() const { return m_list; }
  const NarrowText& Narrow() const { return m_narrow; }
  const interchange::ListContext& Context() const { return m_context; }

 private:
  ChannelList m_list;
  NarrowText m_narrow;
  interchange::ListContext m_context;
};

}  // namespace zortunedex::kit::tool
