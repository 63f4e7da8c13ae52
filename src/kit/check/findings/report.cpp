#include "kit/check/findings/report.h"

#include "kit/text/utf.h"

namespace zortunedex::kit::check {
namespace {

constexpr std::size_t kMostShown = 200;

}  // namespace

std::string Shown(std::string_view value) {
  std::string shown;
  const std::size_t whole = value.size();
  while (!value.empty() && whole - value.size() < kMostShown) {
    const std::optional<std::uint32_t> character = utf::Next(value);
    if (!character) value.remove_prefix(1);
    utf::Append(shown, character.value_or(utf::kReplacement));
  }
  if (!value.empty()) shown += "...";
  return shown;
}

Finding OfFile(std::string_view code, std::string file, const std::string& text) {
  Finding finding;
  finding.code = FindCode(code);
  finding.file = std::move(file);
  finding.text = Shown(text);
  finding.repair = finding.code->repair;
  finding.option = finding.code->option;
  return finding;
}

void Settle(Finding& finding) {
  if (!finding.edits.empty()) return;
  finding.repair = Repair::No;
  finding.option = Option::None;
}

Report::Report(const markup::Document& document, std::string file, std::vector<Finding>& findings,
               std::size_t mostOfACode)
    : m_document(document),
      m_file(std::move(file)),
      m_findings(findings),
      m_paths(document),
      m_mostOfACode(mostOfACode) {}

Finding& Report::AddAt(std::string_view code, std::size_t offset, markup::Index element,
                       const std::string& text) {
  if (m_counts[FindCode(code)]++ >= m_mostOfACode) return m_untold = OfFile(code, m_file, text);
  Finding& finding = m_findings.emplace_back(OfFile(code, m_file, text));
  finding.place = m_document.PlaceOf(offset);
  finding.path = m_paths.Of(element);
  finding.element = element;
  return finding;
}

Finding& Report::Add(std::string_view code, markup::Index element, const std::string& text) {
  return AddAt(code, m_document.Elements()[element].tag.begin, element, text);
}

Finding& Report::Add(std::string_view code, markup::Index element,
                     const markup::Attribute& attribute, const std::string& text) {
  Finding& finding = AddAt(code, attribute.name.begin, element, text);
  finding.attribute = Shown(m_document.NameOf(attribute));
  finding.value = Shown(m_document.ValueOf(attribute));
  return finding;
}

}  // namespace zortunedex::kit::check
