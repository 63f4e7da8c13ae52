// Linux only: only there does a file stand for the registry
#include "platform/linux/registry/reg_file.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "support/linux/code_page_scope.h"

namespace {

using namespace std::string_view_literals;

constexpr std::u16string_view kMachineKey = u"HKEY_LOCAL_MACHINE\\Software\\Vendor";
constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00\r\n\r\n";
constexpr std::string_view kSection = "[HKEY_LOCAL_MACHINE\\Software\\Vendor]\r\n";

/// UTF-16LE with its mark.
std::string Utf16Bytes(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

RegFile Parsed(std::string_view bytes) {
  RegFile file;
  EXPECT_TRUE(file.Parse(bytes)) << bytes;
  return file;
}

/// The file of one key with these lines below it.
RegFile WithLines(std::string_view lines) {
  return Parsed(std::string(kHeader).append(kSection).append(lines));
}

void ExpectValue(std::u16string_view expected, const RegFile& file, std::u16string_view name,
                 std::u16string_view key = kMachineKey) {
  const std::u16string* value = file.FindText(key, name);
  ASSERT_NE(nullptr, value) << text::ToUtf8(name);
  EXPECT_EQ(expected, *value) << text::ToUtf8(name);
}

// As an export of the telephony country list looks.
constexpr std::u16string_view kExport =
    u"Windows Registry Editor Version 5.00\r\n"
    u"\r\n"
    u"[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Telephony\\Country "
    u"List]\r\n"
    u"\"CountryListVersion\"=dword:00000120\r\n"
    u"\r\n"
    u"[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Telephony\\Country "
    u"List\\49]\r\n"
    u"@=\"\"\r\n"
    u"\"CountryCode\"=dword:00000031\r\n"
    u"\"Name\"=\"\u00D6sterreich \\\"x\\\" \\\\ \U0001F600\"\r\n"
    u"\"Rules\"=hex(7):30,00,00,00,\\\r\n"
    u"  31,00,00,00,00,00\r\n"
    u"\r\n";

TEST(RegFile, ExportIsWrittenBackByteForByte) {
  EXPECT_EQ(Utf16Bytes(kExport), Parsed(Utf16Bytes(kExport)).Format());
}

TEST(RegFile, ExportIsRead) {
  const RegFile file = Parsed(Utf16Bytes(kExport));
  const std::u16string list =
      u"HKEY_LOCAL_MACHINE\\Software\\MicroSoft\\Windows\\CurrentVersion\\Telephony\\Country List";
  ExpectValue(u"\u00D6sterreich \"x\" \\ \U0001F600", file, u"Name", list + u"\\49");
  ExpectValue(u"", file, u"", list + u"\\49");
  EXPECT_EQ(nullptr, file.FindText(list + u"\\49", u"CountryCode"));
  EXPECT_EQ(nullptr, file.FindText(list + u"\\49", u"Rules"));
  EXPECT_TRUE(file.HasSubKeys(list));
  EXPECT_TRUE(file.HasKey(u"HKEY_LOCAL_MACHINE\\Software"));
  EXPECT_FALSE(file.HasKey(list + u"\\4"));
}

TEST(RegFile, Utf8IsReadWithAndWithoutItsMark) {
  const std::string utf8 = text::ToUtf8(kExport);
  EXPECT_EQ(Utf16Bytes(kExport), Parsed(utf8).Format());
  EXPECT_EQ(Utf16Bytes(kExport), Parsed("\xEF\xBB\xBF" + utf8).Format());
}

TEST(RegFile, LineEndsMayLackTheCarriageReturnOrTheLast) {
  std::u16string text(kExport);
  std::erase(text, u'\r');
  EXPECT_EQ(Utf16Bytes(kExport), Parsed(text::ToUtf8(text)).Format());
  while (text.ends_with(u'\n')) text.pop_back();
  EXPECT_EQ(Utf16Bytes(kExport), Parsed(text::ToUtf8(text)).Format());
}

TEST(RegFile, OldFormIsReadInTheCodePage) {
  const CodePageScope scope(932);
  const RegFile file = Parsed(
      "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Vendor]\r\n"
      "\"Name\"=\"\x93\xFA\x96\x7B\"\r\n"
      "\"Slash\"=\"\x83\x5C\x5C\x5C\"\r\n"
      "\"Path\"=hex(2):82,a0,00\r\n"
      "\"Raw\"=hex:82,a0,00\r\n");
  ExpectValue(u"\u65E5\u672C", file, u"Name");
  ExpectValue(u"\u30BD\\", file, u"Slash");
  ExpectValue(u"\u3042", file, u"Path");
  EXPECT_EQ(Utf16Bytes(u"Windows Registry Editor Version 5.00\r\n\r\n"
                       u"[HKEY_LOCAL_MACHINE\\Software\\Vendor]\r\n"
                       u"\"Name\"=\"\u65E5\u672C\"\r\n"
                       u"\"Path\"=hex(2):42,30,00,00\r\n"
                       u"\"Raw\"=hex:82,a0,00\r\n"
                       u"\"Slash\"=\"\u30BD\\\\\"\r\n\r\n"),
            file.Format());
}

TEST(RegFile, WhatIsNoSuchFileIsRefused) {
  RegFile file;
  for (const std::string_view bytes :
       {"x"sv, "\n"sv, "\0"sv, "<?xml version=\"1.0\"?>"sv, "REGEDIT5\r\n"sv, "REGEDIT"sv,
        "\xFF\xFE"sv,
        "\xFE\xFF\0R\0E\0G\0E\0D\0I\0T\0"
        "4"sv,
        " \r\nREGEDIT4\r\n"sv, "\xEF\xBB\xBF"sv, "[HKEY_LOCAL_MACHINE\\A]\r\n"sv,
        "Windows Registry Editor Version 6.00\r\n"sv}) {
    EXPECT_FALSE(file.Parse(bytes)) << bytes;
    EXPECT_FALSE(file.HasKey(u"HKEY_LOCAL_MACHINE"));
  }
  EXPECT_TRUE(file.Parse(""));
  EXPECT_TRUE(file.Parse("REGEDIT4"));
  EXPECT_EQ(Utf16Bytes(u"Windows Registry Editor Version 5.00\r\n\r\n"), file.Format());
}

TEST(RegFile, MalformedLinesAreLeftOutAlone) {
  const RegFile file = WithLines(
      "\"Good\"=\"1\"\r\n"
      "; \"Comment\"=\"x\"\r\n"
      "\"NoEnd=\"x\r\n"
      "\"NoEquals\"\"x\"\r\n"
      "\"NoText\"=\r\n"
      "\"Open\"=\"x\r\n"
      "\"Behind\"=\"x\" y\r\n"
      "\"BadNumber\"=dword:12345678g\r\n"
      "\"LongNumber\"=dword:123456789\r\n"
      "\"NoNumber\"=dword:\r\n"
      "\"BadHex\"=hex:0g\r\n"
      "\"LongHex\"=hex:012\r\n"
      "\"GapInHex\"=hex:00,,01\r\n"
      "\"BadType\"=hex(2:00\r\n"
      "\"Kind\"=word:1\r\n"
      "Name=\"x\"\r\n"
      "@\"x\"\r\n"
      "  \"Blanks\"  =  \"2\"  ; and a comment\r\n"
      "\"Last\"=\"3\"\r\n");
  EXPECT_EQ(Utf16Bytes(u"Windows Registry Editor Version 5.00\r\n\r\n"
                       u"[HKEY_LOCAL_MACHINE\\Software\\Vendor]\r\n"
                       u"\"Blanks\"=\"2\"\r\n\"Good\"=\"1\"\r\n\"Last\"=\"3\"\r\n\r\n"),
            file.Format());
}

TEST(RegFile, HexThatBreaksOffTakesNothingElseAlong) {
  const RegFile file = WithLines(
      "\"Broken\"=hex:00,\\\r\n"
      "\"Next\"=\"1\"\r\n"
      "\"AtTheEnd\"=hex:00,\\");
  ExpectValue(u"1", file, u"Next");
  EXPECT_EQ(std::string::npos, file.Format().find(Utf16Bytes(u"Broken").substr(2)));
  EXPECT_EQ(std::string::npos, file.Format().find(Utf16Bytes(u"AtTheEnd").substr(2)));
}

TEST(RegFile, ValuesOfAMalformedKeyBelongToNoKey) {
  for (const std::string_view section :
       {"[HKEY_LOCAL_MACHINE\\Broken"sv, "[LOCAL_MACHINE\\A]"sv, "[]"sv, "[-]"sv, "]["sv, "[\\]"sv,
        "[HKEY_LOCAL_MACHINE\\A] x"sv}) {
    const RegFile file =
        WithLines(std::string("\"Name\"=\"kept\"\r\n").append(section) + "\r\n\"Other\"=\"x\"\r\n");
    ExpectValue(u"kept", file, u"Name");
    if (section != "]["sv) {
      EXPECT_EQ(nullptr, file.FindText(kMachineKey, u"Other")) << section;
      EXPECT_EQ(std::string::npos, file.Format().find(Utf16Bytes(u"Other").substr(2))) << section;
    }
  }
}

TEST(RegFile, TextsMaySpanLines) {
  const RegFile file = WithLines(
      "\"Lines\"=\"one\r\n"
      "[HKEY_LOCAL_MACHINE\\Not a key]\r\n"
      "two\\\"\"\r\n"
      "\"Next\"=\"3\"\r\n");
  ExpectValue(u"one\r\n[HKEY_LOCAL_MACHINE\\Not a key]\r\ntwo\"", file, u"Lines");
  ExpectValue(u"3", file, u"Next");
  EXPECT_FALSE(file.HasKey(u"HKEY_LOCAL_MACHINE\\Not a key"));
}

TEST(RegFile, BackslashThatEscapesNothingStays) {
  const RegFile file = WithLines("\"Path\"=\"C:\\new\\\\old\\\"\r\n\"\r\n");
  ExpectValue(u"C:\\new\\old\"\r\n", file, u"Path");
}

TEST(RegFile, TextsInHexAreRead) {
  const RegFile file = WithLines(
      "\"Plain\"=hex(1):61,00,0a,00,00,00\r\n"
      "\"Expandable\"=hex(2):25,00,\\\r\n  61,00,25,00,00,00\r\n"
      "\"NoTerminator\"=hex(1):61,00\r\n"
      "\"Odd\"=hex(1):61,00,62\r\n"
      "\"Nothing\"=hex(1):\r\n"
      "\"Numbers\"=hex(3):61,00\r\n");
  ExpectValue(u"a\n", file, u"Plain");
  ExpectValue(u"%a%", file, u"Expandable");
  ExpectValue(u"a", file, u"NoTerminator");
  ExpectValue(u"a", file, u"Odd");
  ExpectValue(u"", file, u"Nothing");
  EXPECT_EQ(nullptr, file.FindText(kMachineKey, u"Numbers"));
}

TEST(RegFile, WhatQuotesCannotHoldIsWrittenInHex) {
  RegFile file;
  const std::u16string_view text = u"a\r\n\0\u00E9"sv;
  file.SetText(kMachineKey, u"Name", text);
  const std::string bytes = file.Format();
  EXPECT_NE(
      std::string::npos,
      bytes.find(Utf16Bytes(u"\"Name\"=hex(1):61,00,0d,00,0a,00,00,00,e9,00,00,00\r\n").substr(2)));
  ExpectValue(text, Parsed(bytes), u"Name");
  file.SetText(kMachineKey, u"Name", u"\n");
  EXPECT_NE(std::string::npos,
            file.Format().find(Utf16Bytes(u"=hex(1):0a,00,00,00\r\n").substr(2)));
  file.SetText(kMachineKey, u"Name", u" \u007F\u0080");
  EXPECT_NE(std::string::npos, file.Format().find(Utf16Bytes(u"=\" \u007F\u0080\"\r\n").substr(2)));
}

TEST(RegFile, DeletingWhatIsMissingLeavesNoTrace) {
  RegFile file;
  file.DeleteTree(u"HKEY_CURRENT_USER\\A\\B");
  EXPECT_FALSE(file.HasKey(u"HKEY_CURRENT_USER"));
}

TEST(RegFile, FileMayDeleteWhatItSaidBefore) {
  const RegFile file = Parsed(std::string(kHeader) +
                              "[HKEY_CURRENT_USER\\A]\r\n\"Gone\"=\"1\"\r\n\"Kept\"=\"2\"\r\n"
                              "[HKEY_CURRENT_USER\\A\\B\\C]\r\n"
                              "[HKEY_CURRENT_USER\\A\\BB]\r\n"
                              "[-HKEY_CURRENT_USER\\a\\b]\r\n\"Nowhere\"=\"3\"\r\n"
                              "[HKEY_CURRENT_USER\\A]\r\n\"GONE\"=-\r\n\"Never\"=-\r\n");
  EXPECT_EQ(Utf16Bytes(u"Windows Registry Editor Version 5.00\r\n\r\n"
                       u"[HKEY_CURRENT_USER\\A]\r\n\"Kept\"=\"2\"\r\n\r\n"
                       u"[HKEY_CURRENT_USER\\A\\BB]\r\n\r\n"),
            file.Format());
}

TEST(RegFile, SpellingOfNamesIsTheFirstOne) {
  RegFile file;
  file.SetText(u"HKEY_CURRENT_USER\\Soft\u00D6\u0416\u03A9\u0401", u"N\u00C4me", u"1");
  file.SetText(u"hkey_current_user\\sOFT\u00F6\u0436\u03C9\u0451", u"n\u00E4ME", u"2");
  EXPECT_EQ(Utf16Bytes(u"Windows Registry Editor Version 5.00\r\n\r\n"
                       u"[HKEY_CURRENT_USER\\Soft\u00D6\u0416\u03A9\u0401]\r\n"
                       u"\"N\u00C4me\"=\"2\"\r\n\r\n"),
            file.Format());
}

TEST(RegFile, MultiplicationSignHasNoCase) {
  RegFile file;
  file.AddKey(u"HKEY_CURRENT_USER\\\u00D7");
  EXPECT_FALSE(file.HasKey(u"HKEY_CURRENT_USER\\\u00F7"));
}

TEST(RegFile, BracketsMayStandInKeys) {
  const std::u16string_view key = u"HKEY_CURRENT_USER\\a]b[c";
  RegFile file;
  file.SetText(key, u"Name", u"1");
  ExpectValue(u"1", Parsed(file.Format()), u"Name", key);
}

TEST(RegFile, NumbersAreWrittenWithEightDigits) {
  RegFile file;
  file.SetNumber(kMachineKey, u"Least", 0);
  file.SetNumber(kMachineKey, u"Most", 0xFFFFFFFFU);
  const std::string bytes = file.Format();
  EXPECT_NE(std::string::npos, bytes.find(Utf16Bytes(u"\"Least\"=dword:00000000\r\n").substr(2)));
  EXPECT_NE(std::string::npos, bytes.find(Utf16Bytes(u"\"Most\"=dword:ffffffff\r\n").substr(2)));
  EXPECT_EQ(bytes, Parsed(bytes).Format());
}

/// What is read from any bytes is written in a form that reads back as the same.
void ExpectStable(std::string_view bytes) {
  RegFile file;
  if (!file.Parse(bytes)) return;
  const std::string once = file.Format();
  ASSERT_EQ(once, Parsed(once).Format()) << bytes;
}

TEST(RegFile, EveryBeginningOfAFileIsReadSafely) {
  const std::string utf8 = text::ToUtf8(kExport);
  for (std::size_t size = 0; size <= utf8.size(); ++size) ExpectStable({utf8.data(), size});
  const std::string wide = Utf16Bytes(kExport);
  for (std::size_t size = 0; size <= wide.size(); ++size) ExpectStable({wide.data(), size});
}

TEST(RegFile, AnyBytesAreReadSafely) {
  const std::string original =
      text::ToUtf8(kExport) + "\"x\"=\"a\r\nb\"\r\n\"y\"=hex(1):61,00,\\\r\n 00,00\r\n\"x\"=-\r\n";
  constexpr std::string_view kSpice = "\"\\[]-=@;,:\r\n\0\x80\xFFhex(1):0dword"sv;
  std::mt19937 random(4711);
  for (int round = 0; round < 4000; ++round) {
    std::string bytes = original;
    for (int change = 0; change < 6; ++change) {
      const std::size_t place = kHeader.size() + random() % (bytes.size() - kHeader.size());
      const char byte = kSpice[random() % kSpice.size()];
      switch (random() % 3) {
        case 0:
          bytes[place] = byte;
          break;
        case 1:
          bytes.insert(place, 1, byte);
          break;
        default:
          bytes.erase(place, 1 + random() % 3);
      }
    }
    ExpectStable(bytes);
  }
}

}  // namespace
