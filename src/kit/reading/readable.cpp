#include "kit/reading/readable.h"

#include <filesystem>

#include "kit/files/whole_file.h"
#include "kit/reading/xml_fault.h"
#include "platform/host.h"

namespace zortunedex::kit {

namespace {

std::string PlaceText(unsigned line, unsigned column) {
  return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
}

/// In our own words where the fault is found, else the parser's place alone.
std::string Describe(const std::filesystem::path& path, const host::Damage& damage) {
  if (!damage.cause.empty()) return damage.cause;
  const std::optional<XmlFault> fault = FindXmlFault(whole_file::Read(path).value_or(""));
  if (fault) return PlaceText(fault->line, fault->column) + fault->reason;
  const std::string reason = "it is not well-formed XML";
  return damage.line == 0 ? reason : PlaceText(damage.line, damage.column) + reason;
}

}  // namespace

void RequireReadable(const std::string& directory, const std::string& file) {
  const std::filesystem::path path = whole_file::PathOf(directory) / whole_file::PathOf(file);
  const std::u8string utf8 = path.u8string();
  const auto damage = host::CheckFile({utf8.begin(), utf8.end()});
  if (damage) throw UnreadableFile{E_FAIL, file + " cannot be read: " + Describe(path, *damage)};
}

}  // namespace zortunedex::kit
