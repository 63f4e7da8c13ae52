#include "support/registry_sandbox.h"

#include "platform/com.h"
#include "support/temp_dir.h"

struct RegistrySandbox::Place {
  TempDir dir;
};

RegistrySandbox::RegistrySandbox() : m_place(std::make_unique<Place>()) {
  ZorTunedexSetRegistryFile(m_place->dir.File("machine.reg").c_str());
}

RegistrySandbox::~RegistrySandbox() { ZorTunedexSetRegistryFile(nullptr); }
