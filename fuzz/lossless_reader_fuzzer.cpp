// Any bytes as a file: its tokens are the file; what the library's parser takes is the tree that it
// sees; what it stops at is a damage, and once that is mended the tree that was told is what is
// read.
#include "support/fuzz.h"
#include "support/lossless_reader.h"

using namespace zortunedex::kit;

using markup::Document;

void Fuzz(const BYTE* data, std::size_t size) {
  const std::string bytes(data, data + size);
  std::vector<markup::Token> tokens;
  markup::ReadOptions options;
  options.tokens = &tokens;
  const Document document = Document::Read(bytes, options);
  RequireAre(tokens, bytes);
  RequireAre(markup::Tokens(bytes), bytes);
  if (!document.EncodingName().empty()) return;
  const domtree::NewStore store = LibrarysTree(bytes);
  if (!MayHaveAttachedParts(bytes)) Require(document.IsReadable() == (store != nullptr));
  if (document.IsReadable()) {
    Require(store != nullptr);
    RequireSameTree(document, *store);
  }

  const std::optional<std::string> mended = document.Mends().Apply(bytes);
  Require(mended.has_value());
  if (!IsAllMended(document)) return;
  const Document again = Document::Read(*mended);
  Require(IsSound(again));
  RequireSameTree(again, document);
  const domtree::NewStore mendedStore = LibrarysTree(*mended);
  Require(mendedStore != nullptr);
  RequireSameTree(document, *mendedStore);
}
