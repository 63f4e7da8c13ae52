#include "platform/lack_of_memory.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/expect.h"

namespace {

TEST(AnsweringLackOfMemory, HandsResultsOn) {
  for (const HRESULT hr : {S_OK, S_FALSE, E_FAIL, E_OUTOFMEMORY}) {
    ExpectHr(hr, AnsweringLackOfMemory([hr] { return hr; }));
  }
}

TEST(AnsweringLackOfMemory, AnswersBothKinds) {
  ExpectHr(E_OUTOFMEMORY, AnsweringLackOfMemory([]() -> HRESULT { throw std::bad_alloc(); }));
  ExpectHr(E_OUTOFMEMORY,
           AnsweringLackOfMemory([]() -> HRESULT { throw ComError(E_OUTOFMEMORY); }));
}

TEST(AnsweringLackOfMemory, HidesNoOtherError) {
  EXPECT_THROW(AnsweringLackOfMemory([]() -> HRESULT { throw std::logic_error("a mistake"); }),
               std::logic_error);
}

TEST(PutBack, ActsOnlyWhenRaised) {
  std::string text = "before";
  {
    const PutBack whole(text);
    text = "after";
  }
  EXPECT_EQ("after", text);
  ExpectHr(E_OUTOFMEMORY, AnsweringLackOfMemory([&]() -> HRESULT {
             const PutBack whole(text);
             text = "half";
             throw std::bad_alloc();
           }));
  EXPECT_EQ("after", text);
}

}  // namespace
