// Time and memory of reading the worst files that are known without losing a byte of them: each in
// a process of its own, with 25 megabytes and with 100. Four times the input may take four times as
// long, plus what noise adds.
//
// Usage: zortunedex_reader_bounds [--check] [--quick]
//   --check  exit status 1 when an input takes out of proportion
//   --quick  a tenth of the sizes
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bounds/cost.h"
#include "kit/xml/tree/document.h"

namespace {

using bounds::Cost;

constexpr std::size_t kWhole = 100000000;
constexpr double kMostGrowth = 6;

struct Input {
  const char* label;
  std::string head;
  std::function<std::string(std::size_t number)> item;
};

std::function<std::string(std::size_t)> Always(std::string text) {
  return [text = std::move(text)](std::size_t) { return text; };
}

constexpr char kSetHead[] =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>\r\n"
    "\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
    "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n";

std::string RandomBytes() {
  static std::mt19937 engine(1);
  std::string bytes(4096, '\0');
  for (char& byte : bytes) byte = static_cast<char>(engine());
  return bytes;
}

const Input kInputs[] = {
    {"good channels", kSetHead,
     Always("\t\t\t<Channel name=\"a\" nameDisplay=\"a\" index=\"1\" freq=\"1\" favor=\"0\" "
            "lock=\"0\"/>\r\n")},
    {"raw names", kSetHead,
     Always("\t\t\t<Channel name=\"7\" & <b>\" nameDisplay=\"\"/>\" index=\"1\" freq=\"1\" "
            "favor=\"0\" lock=\"0\"/>\r\n")},
    {"names that split in many ways", kSetHead,
     Always("\t\t\t<Channel name=\"\" nameDisplay=\"\" nameDisplay=\"\" nameDisplay=\"\" "
            "index=\"1\" freq=\"1\" favor=\"0\" lock=\"0\"/>\r\n")},
    {"one raw name without end", std::string(kSetHead) + "\t\t\t<Channel name=\"",
     Always("\" nameDisplay=\"")},
    {"line breaks in raw names", kSetHead, Always("\t\t\t<Channel name=\"a\" b>\r\n")},
    {"<", "", Always("<")},
    {"<a", "", Always("<a")},
    {"<a x=\"", "", Always("<a x=\"")},
    {"<a x='", "<a>", Always("<a x='\"")},
    {"<a>", "", Always("<a>")},
    {"<a/>", "<a>", Always("<a/>")},
    {"</a>", "<a>", Always("</b>")},
    {"elements left open around many",
     [] {
       std::string head;
       for (int i = 0; i < 250; ++i) head += "<a>";
       return head;
     }(),
     Always("<b/>")},
    {"roots", "", Always("<a></a>")},
    {"<!--", "<a>", Always("<!--")},
    {"<![CDATA[", "<a>", Always("<![CDATA[")},
    {"<?", "<a>", Always("<?")},
    {"<!DOCTYPE", "", Always("<!DOCTYPE a [")},
    {"&", "<a>", Always("&")},
    {"&#1", "<a b='", Always("&#1")},
    {"quotation marks", "<a b=\"", Always("\"")},
    {"quotation marks and blanks", "<a b=\"", Always("\"    ")},
    {"attributes of one element", "<a",
     [](std::size_t n) { return " a" + std::to_string(n) + "=''"; }},
    {"one attribute again and again", "<a", Always(" b=''")},
    {"attributes without anything", "<a", Always(" b")},
    {"declarations of namespaces", "<a",
     [](std::size_t n) { return " xmlns:p" + std::to_string(n) + "='u'"; }},
    {"zeros", "", Always(std::string(64, '\0'))},
    {"bytes that are no UTF-8", "<a>", Always("a\xFF ")},
    {"one word that is no UTF-8", "<a>", Always("\xFF")},
    {"blank lines", "<a", Always("\n")},
    {"hyphens of one comment", "<a><!--", Always("-")},
    {"random bytes", "<a>", [](std::size_t) { return RandomBytes(); }},
};

std::string BytesOf(const Input& input, std::size_t size) {
  std::string bytes = input.head;
  bytes.reserve(size + 4096);
  for (std::size_t number = 0; bytes.size() < size; ++number) bytes += input.item(number);
  return bytes;
}

/// Reads, asks for every place and makes the mended file.
bool Read(std::string bytes) {
  const markup::Document document = markup::Document::Read(std::move(bytes));
  std::size_t lines = 0;
  for (const markup::Damage& damage : document.Damages()) {
    lines += document.PlaceOf(damage.span.begin).line;
  }
  return document.Mends().Apply(document.Bytes()).has_value() && lines >= document.Damages().size();
}

Cost Measure(const Input& input, std::size_t size) {
  return bounds::CostOf([&]() -> bounds::Work {
    return [bytes = BytesOf(input, size)]() mutable { return Read(std::move(bytes)); };
  });
}

bool Report(const Input& input, std::size_t size) {
  const Cost quarter = Measure(input, size / 4);
  const Cost whole = Measure(input, size);
  const double growth = whole.seconds / quarter.seconds;
  const bool isFine = quarter.seconds > 0 && whole.seconds > 0 && growth < kMostGrowth;
  std::printf("| %-32s | %7.3f | %7.3f | %5.1f | %7.0f |%s\n", input.label, quarter.seconds,
              whole.seconds, growth, whole.megabytes, isFine ? "" : " out of proportion");
  std::fflush(stdout);
  return isFine;
}

}  // namespace

int main(int argc, char** argv) {
  const bounds::Words words(argc, argv);
  const std::size_t size = words.Has("--quick") ? kWhole / 10 : kWhole;
  bool isFine = true;
  std::printf("| %-32s | %7s | %7s | %5s | %7s |\n|---|---|---|---|---|\n", "all of", "1/4, s",
              "all, s", "ratio", "MB");
  for (const Input& input : kInputs) isFine = Report(input, size) && isFine;
  return words.Has("--check") && !isFine ? 1 : 0;
}
