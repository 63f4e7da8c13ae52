// A host in the way of those for Visual C++: __uuidof, IID_PPV_ARGS and smart pointers.
#include <zortunedex/core/interfaces.h>
#include <zortunedex/platform/component.h>

#include <cstdio>
// Behind the headers above, which take macros away.
#include <wrl/client.h>

int main() {
  using Microsoft::WRL::ComPtr;
  const Component component;
  ComPtr<IClassFactory> factory;
  ComPtr<IUnknown> object;
  ComPtr<IZorTunedex> database;
  if (FAILED(component.GetClassObject(__uuidof(ZorTunedex), IID_PPV_ARGS(&factory)))) return 1;
  if (FAILED(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)))) return 1;
  if (FAILED(object.As(&database))) return 1;
  ComPtr<IZorTunedex> same;
  if (FAILED(database->QueryInterface(IID_PPV_ARGS(&same))) || same.Get() != database.Get())
    return 1;
  std::puts("pointers found their interfaces");
}
