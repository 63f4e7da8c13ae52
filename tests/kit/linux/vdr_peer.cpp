#include "kit/linux/vdr_peer.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace zortunedex::kit {
namespace {

constexpr char kPlugin[] = R"(#include <vdr/dvbdevice.h>
#include <vdr/plugin.h>
class cPrinter : public cPlugin {
 public:
  const char* Version() override { return "1"; }
  const char* Description() override { return "prints the channels"; }
  bool Initialize() override {
    LOCK_CHANNELS_READ;
    for (const cChannel* c = Channels->First(); c; c = Channels->Next(c)) {
      if (!*getenv("UNDERSTOOD")) puts(c->ToText());
      else if (!c->GroupSep())
        printf("%d|%s|%s|%s|%s|%s\n", c->Number(), c->Name(), c->ShortName(), c->Provider(),
               *c->GetChannelID().ToString(), *cDvbTransponderParameters(c->Parameters())
               .ToString(**cSource::ToString(c->Source())));
    }
    fflush(stdout);
    _exit(0);
  }
};
VDRPLUGINCREATOR(cPrinter);
)";

}  // namespace

VdrPeer::VdrPeer() {
  if (std::system("command -v vdr pkg-config > /dev/null && pkg-config --exists vdr") != 0) return;
  for (const char* folder : {"lib", "config", "video"}) {
    std::filesystem::create_directory(m_folder.File(folder));
  }
  m_folder.Write("printer.cpp", kPlugin);
  const std::string line =
      "cd " + m_folder.Path() +
      " && c++ $(pkg-config --cflags vdr) -O0 -shared -DPLUGIN_NAME_I18N='\"printer\"' printer.cpp"
      " -o lib/libvdr-printer.so.$(pkg-config --variable=apiversion vdr)";
  m_isThere = std::system(line.c_str()) == 0;
  if (!m_isThere) throw std::runtime_error("the plugin cannot be built: " + line);
}

std::string VdrPeer::Run(const std::string& channels, const char* mode) const {
  m_folder.Write("config/channels.conf", channels);
  const std::string line = "cd " + m_folder.Path() + " && " + mode +
                           " timeout 60 vdr -u \"$(id -un)\" --no-kbd --log=0 --config=config"
                           " --video=video --cachedir=video --resdir=video --lib=lib -P printer"
                           " > printed 2> messages";
  if (std::system(line.c_str()) != 0) {
    throw std::runtime_error("vdr failed: " + m_folder.Read("messages"));
  }
  return m_folder.Read("printed");
}

std::string VdrPeer::Printed(const std::string& channels) const {
  return Run(channels, "UNDERSTOOD=");
}

std::string VdrPeer::Understood(const std::string& channels) const {
  return Run(channels, "UNDERSTOOD=1");
}

}  // namespace zortunedex::kit
