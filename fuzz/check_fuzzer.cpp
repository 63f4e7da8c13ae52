// Any bytes as a data file: they are looked at, what the library reads of them is what is
// predicted, and a repair either writes what is read as predicted, once and for all, or nothing.
#include <optional>
#include <string>
#include <string_view>

#include "kit/check/repair.h"
#include "kit/failure.h"
#include "support/fuzz.h"

using namespace zortunedex::kit;

namespace {

void RequireAsPredicted(check::Checker& checker, const check::Documents& documents,
                        check::LibraryLists* lists = nullptr) {
  Require(checker.Compare(documents, lists).empty());
}

check::RepairSettings SettingsOf(unsigned choice) {
  check::RepairSettings settings;
  for (const check::Option option :
       {check::Option::Renumber, check::Option::FixUnits, check::Option::DropDuplicates,
        check::Option::DropUnrepairable, check::Option::ToUtf8}) {
    if (choice & 1) settings.options.insert(option);
    choice >>= 1;
  }
  return settings;
}

}  // namespace

void Fuzz(const BYTE* data, std::size_t size) {
  if (size == 0) return;
  static check::Checker checker({});
  // Which file it is, and which repairs are asked for.
  const unsigned choice = data[0];
  const std::string name(check::kDataFiles[choice % 4]);
  check::Files files;
  files[name] = std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
  // The list that stands first is opened before anybody has read the file, as a check does.
  std::optional<check::LibraryLists> lists;
  if (name == check::kChannels) lists.emplace(*files[name]).OpenFirst();
  RequireAsPredicted(checker, checker.Check(files).documents, lists ? &*lists : nullptr);
  const check::RepairSettings settings = SettingsOf(choice / 4);
  try {
    const check::Repaired once = check::Repair(files, settings);
    RequireAsPredicted(checker, checker.Check(once.after).documents);
    Require(check::Repair(once.after, settings).after == once.after);
  } catch (const Failure& refused) {
    // It says why; that the library would read something else is no reason that may come up.
    Require(std::string_view(refused.what()).find("the library would read") ==
            std::string_view::npos);
  }
}
