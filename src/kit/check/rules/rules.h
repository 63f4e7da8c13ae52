// The rules of the channel file and the preset file. Each looks at everything and reports what it
// finds, with the edits that mend it.
#pragma once

#include <functional>
#include <memory>

#include "kit/check/findings/report.h"
#include "kit/check/subject/channel_tree.h"
#include "kit/check/subject/code_page_text.h"

namespace zortunedex::kit::check {

struct Subject {
  const markup::Document& document;
  const ChannelTree& tree;
  ChannelFile file;
  Report& report;
  CodePageText& text;
  /// Null where nobody knows.
  const std::function<bool(std::uint32_t code)>& knowsCountry;
};

/// ZT040 to ZT047: countries and channel sets.
void CheckTree(const Subject& subject);
/// ZT031, ZT032: what the library does not know, outside of channels that have a form.
void CheckUnknown(const Subject& subject);

/// Rules for the channels of one list, whose type has a form. They look at one channel after the
/// other: all rules at one before any at the next, whose bytes are far away.
class ChannelRules {
 public:
  virtual ~ChannelRules() = default;
  virtual void Check(markup::Index channel) = 0;
  /// Behind the last one.
  virtual void Finish() {}
};

inline constexpr char kUnknownAttribute[] = "the library does not know this attribute";

using ChannelRulesPtr = std::unique_ptr<ChannelRules>;

/// ZT031, ZT032 inside of channels, but for attributes that stand among known ones.
ChannelRulesPtr MakeUnknownRules(const Subject& subject, const ChannelGroup& group);
/// ZT060 to ZT070: the indexes of a list, and services that it has twice.
ChannelRulesPtr MakeListRules(const Subject& subject, const ChannelGroup& group);
/// ZT080 to ZT087: streams and components.
ChannelRulesPtr MakeStreamRules(const Subject& subject, const ChannelGroup& group);
/// ZT100 to ZT106: numbers, texts and words; and ZT031: attributes that stand among them.
ChannelRulesPtr MakeValueRules(const Subject& subject, const ChannelGroup& group);
/// ZT110 to ZT115: frequencies, positions, identifiers.
ChannelRulesPtr MakeTuningRules(const Subject& subject, const ChannelGroup& group);

/// ZT001, ZT007, ZT008, ZT020 to ZT026, for every file.
void CheckMarkup(const markup::Document& document, Report& report);

/// Everything of a channel file or a preset file but its markup.
void CheckChannelFile(const Subject& subject);

}  // namespace zortunedex::kit::check
