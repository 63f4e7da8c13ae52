#include "kit/merge/merge.h"

#include "kit/failure.h"
#include "kit/merge/planning/planner.h"
#include "kit/model/channel_layout.h"
#include "kit/text/signal_types.h"

namespace zortunedex::kit::merge {
namespace {

void RequireSameList(const ChannelTable& list, DWORD country, InputSignalType signal,
                     const std::string& what) {
  if (signal != list.signal) {
    throw Failure{E_INVALIDARG, what + " holds channels of " + SignalTypeName(signal) +
                                    ", the list those of " + SignalTypeName(list.signal)};
  }
  if (country != list.country) {
    throw Failure{E_INVALIDARG, what + " belongs to country " + std::to_string(country) +
                                    ", the list to " + std::to_string(list.country)};
  }
}

}  // namespace

MergePlan PlanMerge(const ChannelTable& list, const MergeBase* base, const ChannelTable& scan,
                    const MergePolicy& policy) {
  LayoutOf(list.signal);
  RequireSameList(list, scan.country, scan.signal, "the scan");
  if (base != nullptr) RequireSameList(list, base->country, base->signal, "the base");
  if (scan.channels.empty() && policy.scope != Scope::Full) {
    throw Failure{
        E_INVALIDARG,
        "the scan holds no channels; only a scan of everything (--scope full) may be empty"};
  }
  return Planner(list, base, scan, policy).Run();
}

ChannelTable Apply(const MergePlan& plan) { return plan.result; }

}  // namespace zortunedex::kit::merge
