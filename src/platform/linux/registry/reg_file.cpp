#include "platform/linux/registry/reg_file.h"

#include <cstdio>

#include "platform/linux/registry/reg_reader.h"
#include "platform/linux/registry/reg_text.h"

namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

/// Everything below a key stands between its folded path with a separator and this.
std::u16string BelowOf(std::u16string_view path) { return reg_text::Fold(path) + u'\\'; }

std::u16string FormatText(std::u16string_view text) {
  if (!reg_text::NeedsHex(text)) return reg_text::Quote(text);
  return reg_text::ToHex(u"hex(1):", reg_text::ToBytes(std::u16string(text) + u'\0'));
}

}  // namespace

bool RegFile::Parse(std::string_view bytes) {
  m_keys.clear();
  m_isWhole = true;
  if (bytes.empty() || RegReader(*this).Read(bytes)) return true;
  m_keys.clear();
  return false;
}

std::string RegFile::Format() const {
  std::u16string text = u"\xFEFF";
  text += reg_text::kHeader;
  text += kLineEnd;
  for (const auto& [foldedPath, key] : m_keys) {
    text.append(kLineEnd).append(u"[").append(key.path).append(u"]").append(kLineEnd);
    for (const auto& [foldedName, value] : key.values) {
      text += value.name.empty() ? u"@" : reg_text::Quote(value.name);
      text += u'=';
      text += value.data.empty() ? FormatText(value.text.value_or(u"")) : value.data;
      text += kLineEnd;
    }
  }
  text += kLineEnd;
  return reg_text::ToBytes(text);
}

bool RegFile::HasKey(std::u16string_view path) const {
  return m_keys.contains(reg_text::Fold(path)) || HasSubKeys(path);
}

bool RegFile::HasSubKeys(std::u16string_view path) const {
  const std::u16string below = BelowOf(path);
  const auto first = m_keys.lower_bound(below);
  return first != m_keys.end() && first->first.starts_with(below);
}

RegFile::Key& RegFile::Obtain(std::u16string_view path) {
  Key& key = m_keys[reg_text::Fold(path)];
  if (key.path.empty()) key.path = path;
  return key;
}

void RegFile::AddKey(std::u16string_view path) { Obtain(path); }

void RegFile::DeleteTree(std::u16string_view path) {
  if (!HasKey(path)) return;
  const std::size_t separator = path.rfind(u'\\');
  if (separator != std::u16string_view::npos) AddKey(path.substr(0, separator));
  m_keys.erase(reg_text::Fold(path));
  const std::u16string below = BelowOf(path);
  auto next = m_keys.lower_bound(below);
  while (next != m_keys.end() && next->first.starts_with(below)) next = m_keys.erase(next);
}

const std::u16string* RegFile::FindText(std::u16string_view path, std::u16string_view name) const {
  const auto key = m_keys.find(reg_text::Fold(path));
  if (key == m_keys.end()) return nullptr;
  const auto value = key->second.values.find(reg_text::Fold(name));
  const bool isText = value != key->second.values.end() && value->second.text;
  return isText ? &*value->second.text : nullptr;
}

void RegFile::Set(std::u16string_view path, Value value) {
  Value& place = Obtain(path).values[reg_text::Fold(value.name)];
  if (!place.name.empty()) value.name = place.name;
  place = std::move(value);
}

void RegFile::SetText(std::u16string_view path, std::u16string_view name,
                      std::u16string_view value) {
  Set(path, {std::u16string(name), std::u16string(value), {}});
}

void RegFile::SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) {
  char digits[16];
  std::snprintf(digits, sizeof(digits), "dword:%08x", value);
  const std::string_view view = digits;
  Set(path, {std::u16string(name), {}, std::u16string(view.begin(), view.end())});
}

void RegFile::SetBytes(std::u16string_view path, std::u16string_view name, Kind kind,
                       std::string_view bytes) {
  const std::u16string_view prefix = kind == Kind::Binary ? u"hex:" : u"hex(7):";
  Set(path, {std::u16string(name), {}, reg_text::ToHex(prefix, bytes)});
}

bool RegFile::DeleteValue(std::u16string_view path, std::u16string_view name) {
  const auto key = m_keys.find(reg_text::Fold(path));
  return key != m_keys.end() && key->second.values.erase(reg_text::Fold(name)) > 0;
}
