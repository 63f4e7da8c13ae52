// What the library reads of a file, told from the file alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kit/check/subject/channel_tree.h"
#include "kit/check/subject/code_page_text.h"
#include "kit/check/subject/lookups.h"
#include "kit/model/channel.h"
#include "kit/model/database.h"

namespace zortunedex::kit::check {

class Prediction {
 public:
  Prediction(const markup::Document& document, const Database& database, CodePageText& text)
      : m_document(document), m_database(database), m_text(text) {}

  /// The channel as a record of the library holds it. What follows from the block (name, service
  /// type, marks) is left out: it is the same where the block is. Stays until the next one.
  const Channel& Of(markup::Index channel, const ChannelGroup& group);
  /// Name of the first thing in which a channel read by the library is not as predicted; null when
  /// nothing is.
  const char* Difference(markup::Index channel, const ChannelGroup& group, const Channel& read);
  /// The channels of a group in the order of the library's list.
  std::vector<markup::Index> InListOrder(const ChannelGroup& group) const;

 private:
  /// Stays until the next text.
  std::string_view Text(AttributeLookup& element, const station_blocks::Field& field);
  void ReadRow(AttributeLookup& element, const station_blocks::Field& field, BYTE* base);
  void ReadChannelRow(AttributeLookup& element, const station_blocks::Field& field,
                      Channel& channel);
  void ReadStreams(const markup::Element& streams, const station_blocks::Layout& layout,
                   BYTE* block);
  void ReadComponent(const markup::Element& element, const station_blocks::ComponentList& list,
                     BYTE* block);
  void FillDisplayName(Channel& channel, InputSignalType signal) const;

  const markup::Document& m_document;
  const Database& m_database;
  CodePageText& m_text;
  // Their memory is used again and again.
  Channel m_channel;
  std::string m_room;
};

}  // namespace zortunedex::kit::check
