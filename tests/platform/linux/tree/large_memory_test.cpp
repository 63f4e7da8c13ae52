// Linux only: about the memory of the document tree that only Linux has
#include "platform/linux/tree/large_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <string>

#include "support/dom_tools.h"

namespace {

using namespace dom_tools;

TEST(LargeMemory, BeginsWithALargePageAndCanBeWrittenWhole) {
  for (const std::size_t size : {std::size_t{1}, domtree::kLargePage - 1, domtree::kLargePage,
                                 3 * domtree::kLargePage + 4097}) {
    char* const memory = static_cast<char*>(domtree::MapLarge(size));
    EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(memory) % domtree::kLargePage);
    EXPECT_EQ(memory + size, std::find_if(memory, memory + size, [](char c) { return c != 0; }));
    std::fill_n(memory, size, 'x');
    domtree::UnmapLarge(memory, size);
  }
}

TEST(LargeMemory, ThatCannotBeHadIsRaised) {
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
  for (const std::size_t size : {kMost, kMost - domtree::kLargePage, kMost / 4}) {
    EXPECT_THROW(domtree::MapLarge(size), std::bad_alloc) << size;
  }
}

// Bytes and a tree of several large pages each.
TEST(LargeMemory, HoldsALargeDocument) {
  constexpr int kChildren = 80000;
  std::string bytes = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<T>";
  for (int i = 0; i < kChildren; ++i) {
    bytes += "<C n=\"" + std::to_string(i) + "\" text=\"a longer value that stands in the file " +
             std::to_string(i) + "\"/>";
  }
  bytes += "</T>\r\n";
  ASSERT_GT(bytes.size(), 2 * domtree::kLargePage);
  const dom::Document document = LoadBytes(bytes);
  dom::Element child;
  int count = 0;
  for (HRESULT hr = Root(document).FirstChildElement(child); hr == S_OK;
       hr = child.NextSiblingElement(child)) {
    std::int32_t number = -1;
    ExpectHr(S_OK, child.GetInt("n", number));
    ASSERT_EQ(count++, number);
    ExpectHr(S_OK, child.SetInt("n", number));
  }
  EXPECT_EQ(kChildren, count);
  const TempDir dir;
  ExpectHr(S_OK, document.Save(dir.File("again.xml")));
  EXPECT_TRUE(bytes == dir.Read("again.xml"));
}

}  // namespace
