// Makes a channel of values that come from outside.
#pragma once

#include "kit/interchange/format.h"
#include "kit/interchange/services/channel_values.h"

namespace zortunedex::kit::interchange {

/// Wide text of bytes that should be UTF-8, U+FFFD for each that is not.
WideText ToWideAnyhow(std::string_view utf8);

/// As much of a text as a field holds: characters that the code page or the file lack are replaced
/// or left out, and what is too long is cut between two characters.
struct FittedText {
  std::string narrow;
  WideText wide;
  bool changed = false;
};
FittedText FitText(std::string_view utf8, std::size_t limit, bool isXml, const NarrowText& narrow);

class ChannelBuilder {
 public:
  /// All outlive the builder.
  ChannelBuilder(const ListContext& context, Losses& losses);

  /// Begins a channel; `place` says where its losses are.
  void Begin(const Place& place);
  /// A value that the field cannot hold leaves it as it is, with a loss.
  void Set(const station_blocks::Field& field, const FieldValue& value);
  /// Entries beyond the room of the list are dropped, with a loss; `all` is how many there were, of
  /// which more than fit may have been left out already. They make the count: another one that was
  /// set before is a loss, unless the list is full.
  void SetEntries(const Column& column, const std::vector<EntryValues>& entries, std::size_t all);
  /// The channel with what its record answers for it.
  Channel Take();

  const Place& Here() const { return m_place; }

 private:
  void SetText(const station_blocks::Field& field, const std::string& text);
  void SetWord(const station_blocks::Field& field, const FieldValue& value);
  void SetNumber(const station_blocks::Field& field, const FieldValue& value);
  void SetComponent(const station_blocks::ComponentList& parts, std::size_t i,
                    const EntryValues& entry);
  void SetCount(const Column& column, std::size_t count, std::size_t capacity);
  void SetEntry(const Column& column, std::size_t i, const EntryValues& entry);
  void StoreNumber(BYTE* place, std::size_t width, const std::string& name, const FieldValue& value,
                   bool isLanguage);

  const ListContext& m_context;
  const station_blocks::Layout& m_layout;
  Losses& m_losses;
  Place m_place;
  Channel m_channel;
};

/// The channel with name, service type and marks as a record of it answers them.
Channel Completed(const Channel& channel, const ListContext& context);

}  // namespace zortunedex::kit::interchange
