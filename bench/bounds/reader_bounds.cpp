// Time and memory of reading the worst files that are known without losing a byte of them: each in
// a process of its own, with 25 megabytes and with 100. Four times the input may take four times as
// long, plus what noise adds.
//
// Usage: zortunedex_reader_bounds [--check] [--quick]
//   --check  exit status 1 when an input takes out of proportion
//   --quick  a tenth of the sizes
#include <sys/resource.h>
#include <unistd.h>

#include <string>

#include "bench/bounds/hostile_inputs.h"
#include "kit/xml/tree/document.h"

using namespace zortunedex::kit;

namespace {

using namespace hostile;

constexpr std::size_t kWhole = 100'000'000;

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

double SecondsSoFar() {
  rusage used = {};
  getrusage(RUSAGE_SELF, &used);
  return Seconds(used.ru_utime) + Seconds(used.ru_stime);
}

/// Reads, asks for every place and makes the mended file, in a process of its own.
Cost Measure(const Input& input, std::size_t size) {
  int ends[2] = {};
  if (pipe(ends) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    std::string bytes = BytesOf(input, size);
    const double before = SecondsSoFar();
    const markup::Document document = markup::Document::Read(std::move(bytes));
    std::size_t lines = 0;
    for (const markup::Damage& damage : document.Damages()) {
      lines += document.PlaceOf(damage.span.begin).line;
    }
    const auto mended = document.Mends().Apply(document.Bytes());
    const double seconds = SecondsSoFar() - before;
    const bool isDone = mended.has_value() && lines >= document.Damages().size() &&
                        write(ends[1], &seconds, sizeof(seconds)) == sizeof(seconds);
    _exit(isDone ? 0 : 1);
  }
  close(ends[1]);
  double seconds = -1;
  const bool isTold = read(ends[0], &seconds, sizeof(seconds)) == sizeof(seconds);
  close(ends[0]);
  const Ended ended = WaitFor(child);
  if (!isTold || ended.status != 0) return {};
  return {seconds, ended.cost.megabytes};
}

}  // namespace

int main(int argc, char** argv) {
  return RunBounds({kWhole, 4, 6, Measure}, kInputs, {argv + 1, argv + argc});
}
