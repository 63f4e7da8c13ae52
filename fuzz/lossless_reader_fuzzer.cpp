// Any bytes as a file: its tokens are the file, its damages are those that the library's parser
// stops at, and what is mended reads back as the tree that was told.
#include "support/fuzz.h"
#include "support/lossless_reader.h"

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
  const bool isRead = LibraryReads(bytes);
  Require(!document.IsReadable() || isRead);
  if (!MayHaveAttachedParts(bytes)) Require(document.IsReadable() == isRead);

  const std::optional<std::string> mended = document.Mends().Apply(bytes);
  Require(mended.has_value());
  if (!IsAllMended(document)) return;
  Require(LibraryReads(*mended));
  const Document again = Document::Read(*mended);
  if (SeesRawMarkup(again)) return;
  Require(again.IsReadable());
  RequireSameTree(again, document);
}
