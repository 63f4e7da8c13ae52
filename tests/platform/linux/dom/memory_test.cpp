// Memory that runs out, and memory that must not grow.
//
// Linux only: about the document tree that only Linux has
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/dom.h"
#include "platform/lack_of_memory.h"
#include "support/allocations.h"
#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using namespace dom_tools;

constexpr char kDocument[] =
    "<?xml version='1.0' encoding='utf-8'?>\r\n<T a='1'>\r\n\t<C n='a longer value, twice &amp;'"
    " m='x'/><!-- c -->text<D><E/></D></T>";

/// Runs `work` again and again, each time with the memory ending one allocation later, until it
/// suffices. Each failure must be reported as a lack of memory, and `check` is called after it.
void FailEverywhere(const std::function<HRESULT()>& work, const std::function<void()>& check) {
  for (std::size_t position = 0; position < 1000; ++position) {
    HRESULT hr = S_OK;
    bool hasFailed = false;
    {
      const allocations::FailFrom failure(position);
      hr = AnsweringLackOfMemory([&] { return work(); });
      hasFailed = failure.HasFailed();
    }
    if (!hasFailed) {
      ExpectHr(S_OK, hr);
      EXPECT_GT(position, 0U) << "nothing was allocated";
      return;
    }
    ExpectHr(E_OUTOFMEMORY, hr);
    check();
  }
  ADD_FAILURE() << "never had enough";
}

TEST(DomMemory, ALoadThatLacksMemoryFails) {
  const TempDir dir;
  dir.Write("a.xml", kDocument);
  const std::string path = dir.File("a.xml");
  const std::string expected = Describe(Root(LoadBytes(kDocument)));
  bool success = false;
  for (std::size_t position = 0; !success; ++position) {
    ASSERT_LT(position, 1000U);
    dom::Document document = NewDocumentWithRoot("Old");
    HRESULT hr = S_OK;
    bool hasFailed = false;
    {
      const allocations::FailFrom failure(position);
      hr = AnsweringLackOfMemory([&] { return document.Load(path, success); });
      hasFailed = failure.HasFailed();
    }
    EXPECT_EQ(hasFailed, !success);
    if (success) {
      EXPECT_EQ(expected, Describe(Root(document)));
      EXPECT_GT(position, 5U);
    } else {
      ExpectHr(E_OUTOFMEMORY, hr);
      EXPECT_TRUE(Root(document).HasTag("Old")) << "the old contents stay";
    }
    ExpectHr(S_OK, document.Load(path, success = false));
    success = !hasFailed;
  }
}

TEST(DomMemory, ASaveThatLacksMemoryKeepsTheOldFile) {
  const TempDir dir;
  dir.Write("a.xml", "old");
  const std::string path = dir.File("a.xml");
  const dom::Document document = LoadBytes(kDocument);
  FailEverywhere([&] { return document.Save(path); },
                 [&] {
                   EXPECT_EQ("old", dir.Read("a.xml"));
                   EXPECT_EQ(1U, dir.Count());
                 });
  EXPECT_NE("old", dir.Read("a.xml"));
}

TEST(DomMemory, ChangesThatLackMemoryChangeNothing) {
  const dom::Document document = LoadBytes(kDocument);
  const dom::Element root = Root(document);
  const std::string before = Describe(root);
  const std::string path = "./" + std::string(100, 'p');
  const Bstr text = Wide("a long value, and no ASCII: \xE9");
  const auto check = [&] { EXPECT_EQ(before, Describe(root)); };
  dom::Element element;
  dom::ElementList list;
  dom::Document owner;
  std::string value;
  const std::string longName(5000, 'n');
  const std::string longText(300000, 'v');
  FailEverywhere([&] { return document.CreateElement(longName.c_str(), element); }, check);
  FailEverywhere([&] { return root.Select("./C[@m='x']", list); }, check);
  FailEverywhere([&] { return root.SelectSingle("./D/E", element); }, check);
  ExpectHr(S_OK, root.SelectSingle("./C", element));
  FailEverywhere([&] { return element.GetUtf8("n", value); }, check);
  FailEverywhere([&] { return root.SetNarrow("n0", longText); }, check);
  const std::string after = Describe(root);
  const auto checkAfter = [&] { EXPECT_EQ(after, Describe(root)); };
  FailEverywhere([&] { return root.SetWide("a", text.Get()); }, checkAfter);
}

TEST(DomMemory, AnUnmadeDocumentIsRaised) {
  dom::Document document;
  const allocations::FailFrom failure(0);
  EXPECT_THROW(document.Create(), std::bad_alloc);
}

TEST(DomMemory, ReadingAndWritingTheSameNeedsNone) {
  const std::string name = "\xE3\x83\x86\xE3\x83\xAC\xE3\x83\x93";
  const dom::Document document =
      LoadBytes("<a n='123456789' t='" + name + "' u='some longer text'/>");
  const dom::Element root = Root(document);
  const Bstr text = Wide("some longer text");
  std::int32_t number = 0;
  char buffer[20];
  {
    const allocations::FailFrom failure(0);
    for (int i = 0; i < 2; ++i) {
      ExpectHr(S_OK, root.GetInt("n", number));
      ExpectHr(S_OK, root.GetNarrow("t", buffer, sizeof(buffer)));
      ExpectHr(S_FALSE, root.GetInt("missing", number));
      ExpectHr(S_OK, root.SetInt("n", 123456789));
      ExpectHr(S_OK, root.SetNarrow("u", "some longer text"));
      ExpectHr(S_OK, root.SetWide("u", text.Get()));
    }
    EXPECT_FALSE(failure.HasFailed());
  }
  EXPECT_EQ(123456789, number);
  EXPECT_EQ(name, buffer);
}

TEST(DomMemory, ManyAttributesThatLackMemoryAreNotAdded) {
  const dom::Document document = NewDocumentWithRoot("T");
  const dom::Element root = Root(document);
  for (int i = 0; i < 200; ++i) {
    const std::string name = "attribute" + std::to_string(i);
    for (std::size_t position = 0;; ++position) {
      HRESULT hr = S_OK;
      {
        const allocations::FailFrom failure(position);
        hr = AnsweringLackOfMemory([&] { return root.SetInt(name.c_str(), 1000000000 + i); });
      }
      if (hr == S_OK) break;
      ExpectHr(E_OUTOFMEMORY, hr);
      EXPECT_EQ("(none)", Utf8(root, name.c_str()));
    }
    EXPECT_EQ(std::to_string(1000000000 + i), Utf8(root, name.c_str()));
  }
}

TEST(DomMemory, ADocumentThatIsChangedForeverDoesNotGrow) {
  const TempDir dir;
  const dom::Document document = LoadBytes(kDocument);
  const dom::Element root = Root(document);
  const auto round = [&](int number) {
    dom::Element child = AddChild(root, "Channel");
    for (int i = 0; i < 40; ++i) {
      const std::string name = "attribute" + std::to_string(i);
      ExpectHr(S_OK, child.SetInt(name.c_str(), number * i));
      const std::string value(static_cast<std::size_t>((number * 37 + i * 11) % 200), 'v');
      ExpectHr(S_OK, child.SetNarrow(name.c_str(), value));
    }
    ExpectHr(S_OK,
             root.SetNarrow("a", std::string(static_cast<std::size_t>(number * 10 % 3000), 'a')));
    AddChild(AddChild(child, "Stream"), "x");
    if (number % 50 == 0) ExpectHr(S_OK, document.Save(dir.File("a.xml")));
    ExpectHr(S_OK, root.RemoveChild(child));
  };
  // All sizes come round in 600 rounds.
  for (int number = 0; number < 600; ++number) round(number);
  const std::size_t before = allocations::LiveBytes();
  for (int number = 0; number < 1800; ++number) round(number);
  EXPECT_LE(allocations::LiveBytes(), before);
}

TEST(DomMemory, LoadingAgainDoesNotGrow) {
  const TempDir dir;
  dir.Write("a.xml", kDocument);
  dom::Document document = NewDocument();
  bool success = false;
  dom::Element kept;
  const auto round = [&] {
    ExpectHr(S_OK, document.Load(dir.File("a.xml"), success));
    ExpectHr(S_OK, Root(document).SelectSingle("./D", kept));
  };
  dom::Element oldest;
  round();
  ExpectHr(S_OK, Root(document).SelectSingle("./C", oldest));
  for (int i = 0; i < 10; ++i) round();
  const std::size_t before = allocations::LiveBytes();
  for (int i = 0; i < 1000; ++i) round();
  EXPECT_LE(allocations::LiveBytes(), before);
  EXPECT_EQ("x", Utf8(oldest, "m"));
}

}  // namespace
