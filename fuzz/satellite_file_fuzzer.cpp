// SatelliteInfo.xml through the public interface: load any bytes, walk, change, try to save. The
// file is never written, so that it loads the same again.
#include "support/database.h"
#include "support/fuzz.h"

void Fuzz(const BYTE* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const Scratch& scratch = Scratch::Emptied();
  scratch.Write("SatelliteInfo.xml", bytes);
  const ComPtr<IZorTunedex> database = OpenDatabase(scratch, {});
  const HRESULT loaded = database->LoadSatInfoFromFile();
  const std::string catalogue = DescribeCatalogue(database);
  ChangeCatalogue(database);
  Require(database->SetStorageType(StoragePreFmtXML) == S_OK);
  Require(database->SaveSatInfoToFile() == (loaded == S_OK ? E_NOTIMPL : E_FAIL));
  Require(scratch.Read("SatelliteInfo.xml") == bytes);
  scratch.RequireNoStrayFile();

  const ComPtr<IZorTunedex> again = OpenDatabase(scratch, {});
  Require(again->LoadSatInfoFromFile() == loaded);
  Require(DescribeCatalogue(again) == catalogue);
}
