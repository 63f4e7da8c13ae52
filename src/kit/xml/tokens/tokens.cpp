#include "kit/xml/tokens/tokens.h"

#include "kit/xml/tokens/tokenizer.h"

namespace zortunedex::kit::markup {

std::vector<Token> Tokens(std::string_view bytes) {
  std::vector<Token> tokens;
  Tokenizer tokenizer(bytes);
  for (Piece piece; tokenizer.Next(piece);) tokens.push_back(piece.token);
  return tokens;
}

}  // namespace zortunedex::kit::markup
