// Any bytes as a list of another program.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "kit/failure.h"
#include "kit/files/scratch_directory.h"
#include "kit/interchange/list/exporting.h"
#include "kit/interchange/list/formats.h"
#include "kit/interchange/list/importing.h"
#include "support/fuzz.h"

namespace zortunedex::kit {

/// An empty list of a signal type, which files are read into.
class ExchangedList {
 public:
  explicit ExchangedList(InputSignalType signal)
      : m_database({m_directory.Path(), kCountry, signal}),
        m_narrow(m_database),
        m_context{kCountry, signal, m_database, m_narrow} {}

  const interchange::ListContext& Context() const { return m_context; }

  /// The list of a type that the first byte of the data names among those of the format.
  static const ExchangedList& Of(const interchange::Format& format, BYTE choice) {
    static std::map<InputSignalType, std::unique_ptr<ExchangedList>> lists;
    const InputSignalType signal = format.in[choice % format.in.size()];
    std::unique_ptr<ExchangedList>& list = lists[signal];
    if (!list) list = std::make_unique<ExchangedList>(signal);
    return *list;
  }

 private:
  static constexpr DWORD kCountry = 49;

  ScratchDirectory m_directory;
  Database m_database;
  NarrowText m_narrow;
  interchange::ListContext m_context;
};

/// The list that a file makes of an empty one; nothing where it is refused.
inline std::optional<interchange::Import> Imported(const interchange::Format& format,
                                                   const ExchangedList& list,
                                                   const std::string& bytes) {
  const std::vector<Channel> none;
  interchange::Input input;
  input.bytes = bytes;
  try {
    return interchange::ImportChannels(format, input, {list.Context(), none},
                                       interchange::Into::Empty);
  } catch (const Failure&) {
    return std::nullopt;
  }
}

/// Takes any bytes; what was taken leaves in the same format and comes back. Of a format that holds
/// everything it is the same, without a loss; of another one what came back once is stable.
inline void FuzzReader(const char* name, bool holdsEverything, const BYTE* data, std::size_t size) {
  if (size == 0) return;
  const interchange::Format& format = *interchange::FindFormat(name);
  const ExchangedList& list = ExchangedList::Of(format, data[0]);
  std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  std::optional<interchange::Import> before;
  for (int round = 0; round < 3; ++round) {
    std::optional<interchange::Import> made = Imported(format, list, bytes);
    ::Require(made.has_value() || round == 0);
    if (!made || made->table.channels.empty()) return;
    const bool isSame = before && SameChannels(before->table.channels, made->table.channels);
    if (round == 2 || (round == 1 && holdsEverything)) ::Require(isSame);
    interchange::Export out =
        interchange::ExportChannels(format, {list.Context(), made->table.channels});
    ::Require(!holdsEverything || out.losses.Empty());
    bytes = out.output.Bytes();
    before = std::move(made);
  }
}

}  // namespace zortunedex::kit
