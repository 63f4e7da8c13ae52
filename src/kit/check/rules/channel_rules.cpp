#include "kit/check/rules/rules.h"

namespace zortunedex::kit::check {
namespace {

void CheckGroup(const Subject& subject, const ChannelGroup& group) {
  const ChannelRulesPtr rules[] = {MakeUnknownRules(subject, group), MakeListRules(subject, group),
                                   MakeStreamRules(subject, group), MakeValueRules(subject, group),
                                   MakeTuningRules(subject, group)};
  for (const markup::Index channel : group.channels) {
    for (const ChannelRulesPtr& one : rules) one->Check(channel);
  }
  for (const ChannelRulesPtr& one : rules) one->Finish();
}

}  // namespace

void CheckChannelFile(const Subject& subject) {
  if (subject.document.Elements().empty()) return;
  CheckTree(subject);
  CheckUnknown(subject);
  for (const ChannelGroup& group : subject.tree.groups) {
    if (group.layout != nullptr) CheckGroup(subject, group);
  }
}

}  // namespace zortunedex::kit::check
