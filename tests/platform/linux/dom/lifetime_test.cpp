// Who holds what, and until when.
//
// Linux only: about the document tree that only Linux has
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/dom.h"
#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using namespace dom_tools;

/// An object of somebody else.
class Stranger final : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppvObject) override {
    *ppvObject = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

TEST(DomLifetime, CountsOnlyHoldersOutside) {
  const dom::Document document = LoadBytes("<R><a/></R>");
  dom::Element a;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  ExpectRefCount(1, a.Get());
  dom::Element other;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", other));
  EXPECT_EQ(a.Get(), other.Get());
  ExpectRefCount(2, a.Get());
  EXPECT_EQ(1U, other.Release());
  ExpectHr(S_OK, Root(document).RemoveChild(a));
  ExpectRefCount(1, a.Get());
  EXPECT_EQ(0U, a.Release());
}

TEST(DomLifetime, AListHoldsItsElements) {
  const dom::Document document = LoadBytes("<R><a/><a/></R>");
  dom::Element first;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", first));
  {
    dom::ElementList list;
    ExpectHr(S_OK, Root(document).Select("./a", list));
    ExpectRefCount(2, first.Get());
    list = dom::ElementList();
    ExpectRefCount(1, first.Get());
    ExpectHr(S_OK, Root(document).Select("./a", list));
  }
  ExpectRefCount(1, first.Get());
}

TEST(DomLifetime, KnowsItsOwnNodes) {
  Stranger stranger;
  const dom::Document document = LoadBytes("<R/>");
  dom::Element element = Root(document);
  ExpectHr(E_INVALIDARG, dom::Element::From(&stranger, element));
  EXPECT_EQ("R", Tag(element));
  void* object = &stranger;
  ExpectHr(E_NOINTERFACE, element.Get()->QueryInterface(IID_IDispatch, &object));
  EXPECT_EQ(nullptr, object);
  ExpectHr(E_POINTER, element.Get()->QueryInterface(IID_IUnknown, nullptr));
  ExpectRefCount(1, element.Get());
}

TEST(DomLifetime, HeldPartsOfAFreedTreeLiveOn) {
  dom::Document document =
      LoadBytes("<R><a n='0'><b n='1'><c n='2'><d n='3'/></c></b><e n='4'/></a></R>");
  dom::Element a;
  dom::Element c;
  dom::Element d;
  dom::Element e;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  ExpectHr(S_OK, a.SelectSingle("./b/c", c));
  ExpectHr(S_OK, c.SelectSingle("./d", d));
  ExpectHr(S_OK, a.SelectSingle("./e", e));
  ExpectHr(S_OK, Root(document).RemoveChild(a));
  EXPECT_EQ(0U, a.Release());
  EXPECT_EQ("c[n=2](d[n=3])", Describe(c));
  EXPECT_EQ("e[n=4]", Describe(e));
  ExpectHr(S_OK, c.AppendChild(e));
  EXPECT_EQ(0U, e.Release());
  document.Close();
  EXPECT_EQ("c[n=2](d[n=3] e[n=4])", Describe(c));
  EXPECT_EQ(0U, c.Release());
  EXPECT_EQ("d[n=3]", Describe(d));
}

TEST(DomLifetime, ADocumentThatWasClosedComesBackEmpty) {
  dom::Document document = LoadBytes("<R><a/></R>");
  const dom::Element root = Root(document);
  document.Close();
  ExpectHr(S_OK, root.OwnerDocument(document));
  dom::Element other = root;
  ExpectHr(S_FALSE, document.DocumentElement(other));
  EXPECT_FALSE(other);
  dom::Document again;
  ExpectHr(S_OK, root.OwnerDocument(again));
  ExpectHr(S_OK, again.AppendChild(root));
  EXPECT_EQ("R(a)", Describe(Root(document)));
}

TEST(DomLifetime, ElementsStayWithTheirDocument) {
  const TempDir dir;
  dir.Write("a.xml", "<R/>");
  dom::Document document = LoadBytes("<R><a/></R>");
  const dom::Document other = NewDocumentWithRoot("O");
  const dom::Element old = Root(document);
  ExpectHr(E_INVALIDARG, Root(other).AppendChild(old));
  ExpectHr(E_INVALIDARG, Root(other).InsertBefore(NewElement(document, "x"), {}));
  ExpectHr(E_INVALIDARG, other.AppendChild(NewElement(document, "x")));
  bool success = false;
  ExpectHr(S_OK, document.Load(dir.File("a.xml"), success));
  ExpectHr(E_INVALIDARG, Root(document).AppendChild(old));
  EXPECT_EQ("R", Describe(Root(document)));
  EXPECT_EQ("R(a)", Describe(old));
  AddChild(old, "b");
  EXPECT_EQ("R(a b)", Describe(old));
}

TEST(DomLifetime, RefusesWrongPlaces) {
  const dom::Document document = LoadBytes("<R><a><x/></a><b/></R>");
  const dom::Element root = Root(document);
  dom::Element a;
  dom::Element x;
  ExpectHr(S_OK, root.SelectSingle("./a", a));
  ExpectHr(S_OK, root.SelectSingle("./a/x", x));
  const dom::Element stranger = NewElement(document, "new");
  ExpectHr(E_INVALIDARG, root.InsertBefore(stranger, x));
  ExpectHr(E_INVALIDARG, a.AppendChild(a));
  ExpectHr(E_INVALIDARG, x.AppendChild(x));
  ExpectHr(E_INVALIDARG, x.AppendChild(a));
  ExpectHr(E_INVALIDARG, x.AppendChild(root));
  ExpectHr(E_FAIL, document.AppendChild(stranger));
  ExpectHr(S_OK, document.AppendChild(root));  // where it is
  EXPECT_EQ("R(a(x) b)", Describe(Root(document)));
}

TEST(DomLifetime, InsertedBeforeItselfAnElementStaysWhereItIs) {
  const dom::Document document = LoadBytes("<R><a/><b/><c/></R>");
  const dom::Element root = Root(document);
  for (const char* path : {"./a", "./b", "./c"}) {
    dom::Element child;
    ExpectHr(S_OK, root.SelectSingle(path, child));
    ExpectHr(S_OK, root.InsertBefore(child, child));
    dom::ElementList all;
    for (const char* each : {"./a", "./b", "./c"}) {
      ExpectHr(S_OK, root.Select(each, all));
      ASSERT_EQ(1, all.Count()) << path << ' ' << each;
    }
    ASSERT_EQ("R(a b c)", Describe(root));
  }
}

TEST(DomLifetime, FreesDeepTreesWithoutRecursion) {
  const TempDir dir;
  constexpr int kLevels = 200000;
  const dom::Document document = NewDocumentWithRoot("R");
  dom::Element deepest = Root(document);
  for (int level = 0; level < kLevels; ++level) {
    dom::Element child = NewElement(document, "a");
    ExpectHr(S_OK, deepest.AppendChild(child));
    deepest = child;
  }
  ExpectHr(E_FAIL, document.Save(dir.File("a.xml")));
  dom::Element top;
  ExpectHr(S_OK, Root(document).FirstChildElement(top));
  ExpectHr(S_OK, Root(document).RemoveChild(top));
  EXPECT_EQ(0U, top.Release());
  EXPECT_EQ("a", Describe(deepest));
}

TEST(DomLifetime, ManyHoldersCostNoMoreThanTheirNumber) {
  constexpr int kCount = 100000;
  dom::Document document = NewDocumentWithRoot("R");
  std::vector<dom::Element> held;
  for (int i = 0; i < kCount; ++i) {
    held.push_back(AddChild(Root(document), "a"));
    AddChild(held.back(), "b");
  }
  document.Close();
  EXPECT_EQ("a(b)", Describe(held.front()));
  EXPECT_EQ("a(b)", Describe(held.back()));
}

TEST(DomLifetime, CountsAreSafeInThreads) {
  const dom::Document document = LoadBytes("<R><a/></R>");
  dom::Element a;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&a, &document] {
      for (int round = 0; round < 10000; ++round) {
        const dom::Element copy = a;
        const dom::Document owner = document;
        EXPECT_TRUE(copy && owner);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  ExpectRefCount(1, a.Get());
}

}  // namespace
