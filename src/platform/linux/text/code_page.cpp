#include "platform/linux/text/code_page.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>

#include "platform/linux/text/iconv_converter.h"

namespace {

constexpr char16_t kNone = 0xFFFD;

std::atomic<const CodePage*> currentPage{nullptr};

constexpr UINT kPages[] = {932,  936,  949,  950,  1250, 1251, 1252,
                           1253, 1254, 1255, 1256, 1257, 1258};

struct LeadBytes {
  UINT page;
  unsigned char first;
  unsigned char last;
};
constexpr LeadBytes kLeadBytes[] = {
    {932, 0x81, 0x9F}, {932, 0xE0, 0xFC}, {936, 0x81, 0xFE}, {949, 0x81, 0xFE}, {950, 0x81, 0xFE}};

/// Codes that iconv leaves without a character have one on Windows, mostly in the private use area:
/// those of the rows and columns from `first` to `last` get the units from `unit` on, in order. Row
/// 0 holds the single bytes. Earlier entries come first.
struct Holes {
  UINT page;
  unsigned first;
  unsigned last;
  char16_t unit;
};
constexpr Holes kHoles[] = {
    {932, 0x00A0, 0x00FF, 0xF8F0},  {936, 0xAAA1, 0xAFFE, 0xE000},  {936, 0xF8A1, 0xFEFE, 0xE234},
    {936, 0xA140, 0xA7A0, 0xE4C6},  {936, 0xA240, 0xA9FE, 0xE766},  {936, 0xD740, 0xD7FE, 0xE810},
    {936, 0xFE40, 0xFEFE, 0xE815},  {936, 0x00FF, 0x00FF, 0xF8F5},  {949, 0xC9A1, 0xC9FE, 0xE000},
    {949, 0xFEA1, 0xFEFE, 0xE05E},  {949, 0x00FF, 0x00FF, 0xF8F7},  {950, 0xFA40, 0xFEFE, 0xE000},
    {950, 0x8E40, 0xA0FE, 0xE311},  {950, 0x8140, 0x8DFE, 0xEEB8},  {950, 0x00FF, 0x00FF, 0xF8F8},
    {1253, 0x00A0, 0x00FF, 0xF8F9}, {1255, 0x00CA, 0x00CA, 0x05BA}, {1255, 0x00A0, 0x00FF, 0xF88D},
    {1257, 0x00A0, 0x00FF, 0xF8FC},
};

bool IsHole(const Holes& holes, unsigned code) {
  const unsigned column = code & 0xFF;
  const bool isInside = column >= (holes.first & 0xFF) && column <= (holes.last & 0xFF);
  const unsigned gapEnd = holes.page == 950 ? 0xA0 : 0x7F;  // second bytes that are never used
  return isInside && (code <= 0xFF || column < 0x7F || column > gapEnd);
}

/// Of two codes with the same character Windows writes these, and iconv the others.
struct Preference {
  UINT page;
  std::uint16_t code;
};
constexpr Preference kPreferences[] = {{950, 0xF9F9}, {950, 0xF9E9}, {950, 0xF9EB}, {950, 0xF9EA}};

}  // namespace

const CodePage* CodePage::Current() { return currentPage.load(std::memory_order_acquire); }

HRESULT CodePage::SetCurrent(UINT number) {
  const CodePage* page = number == kUtf8 ? nullptr : Find(number);
  if (page == nullptr && number != kUtf8) return E_INVALIDARG;
  currentPage.store(page, std::memory_order_release);
  return S_OK;
}

const CodePage* CodePage::Find(UINT number) {
  // Never destroyed: threads may convert until the process is gone.
  static std::mutex& mutex = *new std::mutex;
  static auto& pages = *new std::map<UINT, std::unique_ptr<const CodePage>>;
  const std::lock_guard lock(mutex);
  if (const auto known = pages.find(number); known != pages.end()) return known->second.get();
  std::unique_ptr<CodePage> page(new CodePage);
  const bool isKnown = std::find(std::begin(kPages), std::end(kPages), number) != std::end(kPages);
  if (!isKnown || !page->Fill(number)) return nullptr;
  return (pages[number] = std::move(page)).get();
}

bool CodePage::Fill(UINT number) {
  for (const LeadBytes& range : kLeadBytes) {
    if (range.page == number) std::fill(m_isLead + range.first, m_isLead + range.last + 1, true);
  }
  char name[16];
  std::snprintf(name, sizeof(name), "CP%u", number);
  if (!FillDecoding(name)) return false;
  FillHoles(number);
  if (!FillEncoding(name)) return false;
  for (const Preference& preferred : kPreferences) {
    if (preferred.page == number) m_narrow[m_wide[preferred.code]] = preferred.code;
  }
  return true;
}

/// False for codes that no text can have: a lead byte alone, a first byte that is none, and a
/// second byte of zero.
bool CodePage::IsCode(unsigned code) const {
  const unsigned lead = code >> 8;
  return lead == 0 ? !m_isLead[code] : m_isLead[lead] && (code & 0xFF) != 0;
}

bool CodePage::FillDecoding(const char* name) {
  IconvConverter converter("UTF-16LE", name);
  if (!converter.IsOpen()) return false;
  m_wide.assign(0x10000, kNone);
  for (unsigned code = 0; code < 0x10000; ++code) {
    if (!IsCode(code)) continue;
    const char bytes[2] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    const bool isPair = code > 0xFF;
    unsigned char unit[2];
    const std::size_t length = converter.Convert({isPair ? bytes : bytes + 1, isPair ? 2U : 1U},
                                                 reinterpret_cast<char*>(unit), sizeof(unit));
    if (length == 2) m_wide[code] = static_cast<char16_t>(unit[0] | unit[1] << 8);
  }
  // Some conversions take 0x5C and 0x7E for a yen sign and an overline; Windows does not.
  for (char16_t code = 0; code < 0x80; ++code) m_wide[code] = code;
  return true;
}

void CodePage::FillHoles(UINT number) {
  for (char16_t control = 0x80; control < 0xA0; ++control) {
    if (m_wide[control] == kNone && IsCode(control)) m_wide[control] = control;
  }
  for (const Holes& holes : kHoles) {
    char16_t unit = holes.unit;
    for (unsigned code = holes.first; code <= holes.last; ++code) {
      if (holes.page == number && IsHole(holes, code) && IsCode(code) && m_wide[code] == kNone) {
        m_wide[code] = unit++;
      }
    }
  }
}

bool CodePage::FillEncoding(const char* name) {
  IconvConverter converter(name, "UTF-16LE");
  if (!converter.IsOpen()) return false;
  m_narrow.assign(0x10000, 0);
  for (unsigned code = 0xFFFF; code > 0; --code) {
    if (m_wide[code] != kNone) m_narrow[m_wide[code]] = static_cast<std::uint16_t>(code);
  }
  for (unsigned unit = 0x80; unit < 0x10000; ++unit) {
    if (unit >= 0xD800 && unit <= 0xDFFF) continue;
    const char wide[2] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    unsigned char bytes[2];
    const std::size_t length =
        converter.Convert({wide, 2}, reinterpret_cast<char*>(bytes), sizeof(bytes));
    if (length == 0) continue;
    const unsigned code = length == 1 ? bytes[0] : bytes[0] * 256U + bytes[1];
    // What would become ASCII is left out: a likeness must not turn into a backslash.
    const bool isNew = m_narrow[unit] == 0 && code >= 0x80;
    if (isNew || m_wide[code] == unit) m_narrow[unit] = static_cast<std::uint16_t>(code);
  }
  return true;
}

std::size_t CodePage::LengthAt(std::string_view narrow, std::size_t index) const {
  const bool isLead = m_isLead[static_cast<unsigned char>(narrow[index])];
  return isLead && index + 1 < narrow.size() && narrow[index + 1] != 0 ? 2 : 1;
}

std::u16string CodePage::Decode(std::string_view narrow) const {
  std::u16string wide;
  wide.reserve(narrow.size());
  for (std::size_t index = 0; index < narrow.size();) {
    const std::size_t length = LengthAt(narrow, index);
    std::size_t code = static_cast<unsigned char>(narrow[index]);
    if (length == 2) code = code << 8 | static_cast<unsigned char>(narrow[index + 1]);
    wide += m_wide[code];
    index += length;
  }
  return wide;
}

std::string CodePage::Encode(std::u16string_view wide) const {
  std::string narrow;
  narrow.reserve(wide.size() * 2);
  for (const char16_t unit : wide) {
    const std::uint16_t code = m_narrow[unit];
    if (code == 0 && unit != 0) {
      narrow += '?';
      continue;
    }
    if (code > 0xFF) narrow += static_cast<char>(code >> 8);
    narrow += static_cast<char>(code & 0xFF);
  }
  return narrow;
}

std::size_t CodePage::CutLength(std::string_view narrow, std::size_t limit) const {
  if (narrow.size() <= limit) return narrow.size();
  std::size_t end = 0;
  for (std::size_t next = 0; next <= limit; next += LengthAt(narrow, next)) end = next;
  return end;
}

HRESULT ZorTunedexSetCodePage(UINT codePage) { return CodePage::SetCurrent(codePage); }
