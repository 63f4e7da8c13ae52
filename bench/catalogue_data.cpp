#include "bench/catalogue_data.h"

#include <cstdarg>
#include <cstdio>
#include <map>

#include "bench/workspace.h"

namespace bench {
namespace {

[[gnu::format(printf, 2, 3)]] void AppendLine(std::string& text, const char* format, ...) {
  char line[512];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(line, sizeof(line), format, arguments);
  va_end(arguments);
  text.append(line, static_cast<std::size_t>(length)).append("\r\n");
}

void AppendTransponder(std::string& text, UINT number, unsigned start) {
  static const char* const kRates[] = {"1/2", "2/3", "3/4", "5/6", "7/8"};
  AppendLine(text,
             "\t\t\t\t<Transponder name=\"T%u\" freq=\"%u\" polarisation=\"%s\" "
             "symbolRate=\"%u\" innerFECRate=\"%s\" modulation=\"%s\" "
             "spectralInversion=\"automatic\"/>",
             number, start + number * 1250, number % 2 == 0 ? "LinearH" : "LinearV",
             22000 + number % 7 * 500, kRates[number % 5], number % 3 == 0 ? "BPSK" : "QPSK");
}

void AppendBand(std::string& text, const char* name, UINT first, UINT last, unsigned start) {
  AppendLine(text, "\t\t\t<%s>", name);
  for (UINT number = first; number < last; ++number) AppendTransponder(text, number, start);
  AppendLine(text, "\t\t\t</%s>", name);
}

void AppendSatellite(std::string& text, UINT index, UINT transponders) {
  AppendLine(text,
             "\t\t<Satellite pos=\"%u\" name=\"Satellite %u\" id=\"SAT-%04u\" region=\"Europe\" "
             "division=\"1\" azimuthe=\"-1\" elevation=\"-1\" index=\"%u\">",
             index % 1800, index, index, index);
  AppendBand(text, "C-Band", 0, transponders / 6, 3700000);
  AppendBand(text, "Ku-Band", transponders / 6, transponders, 10700000);
  AppendLine(text, "\t\t</Satellite>");
}

}  // namespace

std::string MakeCatalogueFile(UINT transponders, UINT satellites) {
  std::string text;
  AppendLine(text, "<?xml version=\"1.0\" encoding=\"utf-8\"?>");
  AppendLine(text, "<SATELLITE_INFO>");
  AppendLine(text, "\t<SAT_TABLE>");
  for (UINT index = 0; index < satellites; ++index) {
    const UINT more = index < transponders % satellites ? 1 : 0;
    AppendSatellite(text, index, transponders / satellites + more);
  }
  AppendLine(text, "\t</SAT_TABLE>");
  AppendLine(text, "\t<LNB_TABLE>");
  for (UINT type = 0; type < kLnbTypes; ++type) {
    AppendLine(text,
               "\t\t<LNB type=\"Type %u\" lowFreq=\"9750\" highFreq=\"10600\" "
               "switchFreq=\"%u\"/>",
               type, 11700 + type);
  }
  AppendLine(text, "\t</LNB_TABLE>");
  AppendLine(text, "</SATELLITE_INFO>");
  return text;
}

const std::filesystem::path& CatalogueDirectory(UINT transponders) {
  static std::map<UINT, TempDirectory> directories;
  const auto [found, isNew] = directories.try_emplace(transponders);
  const std::filesystem::path& directory = found->second.Path();
  if (isNew)
    WriteFile(CatalogueFile(directory),
              MakeCatalogueFile(transponders, SatellitesFor(transponders)));
  return directory;
}

}  // namespace bench
