// The rules of the channel file and the preset file. Each looks at everything and reports what it
// finds, with the edits that mend it.
#pragma once

#include <functional>

#include "kit/check/findings/report.h"
#include "kit/check/subject/channel_tree.h"
#include "kit/check/subject/code_page_text.h"

namespace check {

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
/// ZT031, ZT032: what the library does not know.
void CheckUnknown(const Subject& subject);
/// ZT060 to ZT070: the indexes of a list, and services that it has twice.
void CheckLists(const Subject& subject);
/// ZT080 to ZT087: streams and components.
void CheckStreams(const Subject& subject);
/// ZT100 to ZT106: numbers, texts and words.
void CheckValues(const Subject& subject);
/// ZT110 to ZT115: frequencies, positions, identifiers.
void CheckTuning(const Subject& subject);

/// ZT001, ZT007, ZT008, ZT020 to ZT026, for every file.
void CheckMarkup(const markup::Document& document, Report& report);

/// Lets rules look at every channel of a type that has a form: one object for each list.
template <typename Rules>
void CheckEachChannel(const Subject& subject) {
  for (const ChannelGroup& group : subject.tree.groups) {
    if (group.layout == nullptr) continue;
    Rules rules(subject, group);
    for (const markup::Index channel : group.channels) rules.Check(channel);
  }
}

/// Everything of a channel file or a preset file but its markup.
void CheckChannelFile(const Subject& subject);

}  // namespace check
