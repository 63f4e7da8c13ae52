#include "platform/linux/code_page.h"

#include <iconv.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>

namespace {

constexpr char16_t kNone = 0xFFFD;

std::atomic<const CodePage*> currentPage{nullptr};

/// Converts one character at a time.
class Converter {
 public:
  Converter(const char* to, const char* from) : m_handle(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (IsOpen()) iconv_close(m_handle);
  }

  bool IsOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

  /// Bytes written; 0 when the character does not exist, or needs more than `room` bytes.
  std::size_t Convert(const void* from, std::size_t length, void* to, std::size_t room) {
    iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
    char* in = const_cast<char*>(static_cast<const char*>(from));
    char* out = static_cast<char*>(to);
    std::size_t left = room;
    // The second call brings out what a page with combining characters holds back.
    if (iconv(m_handle, &in, &length, &out, &left) != 0) return 0;
    if (iconv(m_handle, nullptr, nullptr, &out, &left) != 0) return 0;
    return room - left;
  }

 private:
  iconv_t m_handle;
};

}  // namespace

struct CodePage::Description {
  UINT number;
  const char* name;
  unsigned char leads[2][2];  ///< ranges of lead bytes; 0 to 0: none
};

const CodePage::Description CodePage::kDescriptions[] = {
    {932, "CP932", {{0x81, 0x9F}, {0xE0, 0xFC}}},
    {936, "CP936", {{0x81, 0xFE}, {}}},
    {949, "CP949", {{0x81, 0xFE}, {}}},
    {950, "CP950", {{0x81, 0xFE}, {}}},
    {1250, "CP1250", {}},
    {1251, "CP1251", {}},
    {1252, "CP1252", {}},
    {1253, "CP1253", {}},
    {1254, "CP1254", {}},
    {1255, "CP1255", {}},
    {1256, "CP1256", {}},
    {1257, "CP1257", {}},
    {1258, "CP1258", {}},
};

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
  for (const Description& description : kDescriptions) {
    if (description.number != number) continue;
    std::unique_ptr<CodePage> page(new CodePage);
    if (!page->Fill(description)) return nullptr;
    return (pages[number] = std::move(page)).get();
  }
  return nullptr;
}

bool CodePage::Fill(const Description& description) {
  for (const auto& range : description.leads) {
    for (unsigned byte = range[0]; byte != 0 && byte <= range[1]; ++byte) m_isLead[byte] = true;
  }
  return FillDecoding(description.name) && FillEncoding(description.name);
}

bool CodePage::FillDecoding(const char* name) {
  Converter converter("UTF-16LE", name);
  if (!converter.IsOpen()) return false;
  m_wide.assign(0x10000, kNone);
  for (unsigned code = 0; code < 0x10000; ++code) {
    const unsigned lead = code >> 8;
    const bool isPair = lead != 0;
    if (isPair ? !m_isLead[lead] || (code & 0xFF) == 0 : m_isLead[code]) continue;
    const unsigned char bytes[2] = {static_cast<unsigned char>(isPair ? lead : code),
                                    static_cast<unsigned char>(code & 0xFF)};
    unsigned char unit[2];
    if (converter.Convert(bytes, isPair ? 2 : 1, unit, sizeof(unit)) == sizeof(unit)) {
      m_wide[code] = static_cast<char16_t>(unit[0] | unit[1] << 8);
    }
  }
  for (char16_t code = 0; code < 0x80; ++code) m_wide[code] = code;
  return true;
}

bool CodePage::FillEncoding(const char* name) {
  Converter converter(name, "UTF-16LE");
  if (!converter.IsOpen()) return false;
  m_narrow.assign(0x10000, 0);
  for (unsigned unit = 0x80; unit < 0x10000; ++unit) {
    if (unit >= 0xD800 && unit <= 0xDFFF) continue;
    const unsigned char wide[2] = {static_cast<unsigned char>(unit & 0xFF),
                                   static_cast<unsigned char>(unit >> 8)};
    unsigned char bytes[2];
    const std::size_t length = converter.Convert(wide, sizeof(wide), bytes, sizeof(bytes));
    if (length == 1) m_narrow[unit] = bytes[0];
    if (length == 2) m_narrow[unit] = static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
  }
  for (std::uint16_t code = 0; code < 0x80; ++code) m_narrow[code] = code;
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
