// What can be found. Codes never change their meaning.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zortunedex::kit::check {

/// How bad it is; the worst one first.
enum class Severity : std::uint8_t {
  Error,    ///< data is unreadable, invisible, or lost at the next save
  Warning,  ///< a host behaves wrongly
  Note,     ///< to know
};

/// Whether it can be mended.
enum class Repair : std::uint8_t {
  No,
  Yes,
  Option,  ///< only when it is asked for
};

/// What repairs beyond those that are made by default are asked for with.
enum class Option : std::uint8_t {
  None,
  Renumber,
  FixUnits,
  Restore,
  DropDuplicates,
  DropUnrepairable,
  ToUtf8,
  CodePage,
};

/// What can be found. Rows of a table: they live as long as the program.
struct Code {
  std::string_view name;  ///< "ZT020"
  Severity severity;
  Repair repair;  ///< what is possible where nothing speaks against it
  Option option;
  const char* meaning;
};

/// All of them in ascending order.
std::span<const Code> Codes();
/// Null for a name that is no code.
const Code* FindCode(std::string_view name);

/// "error", "warning", "note".
const char* NameOf(Severity severity);
/// "yes", "option", "no".
const char* NameOf(Repair repair);
/// "--renumber"; null for none.
const char* NameOf(Option option);

}  // namespace zortunedex::kit::check
