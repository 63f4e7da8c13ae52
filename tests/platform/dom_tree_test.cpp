// Moving in the tree and changing it.
#include <gtest/gtest.h>

#include <new>
#include <string>

#include "platform/dom.h"
#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/wine.h"

namespace {

using namespace dom_tools;

TEST(DomTree, ChildrenKeepTheirOrder) {
  const dom::Document document = NewDocumentWithRoot("R");
  const dom::Element root = Root(document);
  const dom::Element a = AddChild(root, "a");
  const dom::Element b = NewElement(document, "b");
  const dom::Element c = NewElement(document, "c");
  ExpectHr(S_OK, root.InsertBefore(b, a));
  ExpectHr(S_OK, root.InsertBefore(c, {}));
  EXPECT_EQ("R(b a c)", Describe(root));
  ExpectHr(S_OK, root.InsertBefore(NewElement(document, "d"), a));
  EXPECT_EQ("R(b d a c)", Describe(root));
}

TEST(DomTree, ChildElementsAreVisitedInOrder) {
  const dom::Document document = LoadBytes("<R>t<a/><!--c--><b n='1'><x/></b><a/></R>");
  std::string visited;
  dom::Element kept;
  ExpectHr(S_OK, Root(document).VisitChildElements([&](const dom::Element& child) {
    visited += Describe(child) + ' ';
    if (child.HasTag("b")) kept = child;
  }));
  EXPECT_EQ("a b[n=1](x) a ", visited);
  EXPECT_EQ("b[n=1](x)", Describe(kept)) << "a copy keeps what was lent";
  ExpectHr(S_OK, kept.VisitChildElements([](const dom::Element& child) {
    ExpectHr(S_OK, child.VisitChildElements([](const dom::Element&) { FAIL(); }));
  }));
  ExpectHr(E_INVALIDARG, dom::Element().VisitChildElements([](const dom::Element&) { FAIL(); }));
}

TEST(DomTree, NewElementsAreFilledBeforeTheyAreAppended) {
  const dom::Document document = NewDocumentWithRoot("R");
  const dom::Element root = Root(document);
  dom::Element kept;
  ExpectHr(S_OK, root.AppendNew("a", [&](const dom::Element& child) {
    ExpectHr(S_OK, child.SetInt("n", 1));
    EXPECT_EQ("R", Describe(root));
    kept = child;
  }));
  EXPECT_EQ("R(a[n=1])", Describe(root));
  ExpectHr(S_OK, kept.SetInt("n", 2));
  EXPECT_EQ("R(a[n=2])", Describe(root));
  ExpectHr(E_INVALIDARG, root.AppendNew("no name", [](const dom::Element&) { FAIL(); }));
  ExpectHr(E_INVALIDARG, dom::Element().AppendNew("a", [](const dom::Element&) { FAIL(); }));
}

TEST(DomTree, WhatRaisesWhileItIsFilledIsNotAppended) {
  const dom::Document document = NewDocumentWithRoot("R");
  const dom::Element root = Root(document);
  dom::Element kept;
  for (const bool keeps : {false, true}) {
    EXPECT_THROW(root.AppendNew("a",
                                [&](const dom::Element& child) {
                                  ExpectHr(S_OK, child.SetInt("n", 1));
                                  if (keeps) kept = child;
                                  throw std::bad_alloc();
                                }),
                 std::bad_alloc);
    EXPECT_EQ("R", Describe(root));
  }
  EXPECT_EQ("a[n=1]", Describe(kept));
}

TEST(DomTree, ElementsMakeOthersOfTheirDocument) {
  const dom::Document document = NewDocumentWithRoot("R");
  const dom::Element root = Root(document);
  dom::Element made;
  ExpectHr(S_OK, root.CreateElement("a", made));
  EXPECT_EQ("R", Describe(root));
  ExpectHr(S_OK, root.AppendChild(made));
  EXPECT_EQ("R(a)", Describe(root));
  ExpectHr(E_INVALIDARG, root.CreateElement("no name", made));
  ExpectHr(E_INVALIDARG, root.CreateElement(nullptr, made));
  ExpectHr(E_INVALIDARG, dom::Element().CreateElement("a", made));
}

TEST(DomTree, InsertingAgainMoves) {
  const dom::Document document = LoadBytes("<R><a/><b><x/></b><c/></R>");
  const dom::Element root = Root(document);
  dom::Element a;
  dom::Element b;
  dom::Element c;
  ExpectHr(S_OK, root.SelectSingle("./a", a));
  ExpectHr(S_OK, root.SelectSingle("./b", b));
  ExpectHr(S_OK, root.SelectSingle("./c", c));
  ExpectHr(S_OK, root.AppendChild(a));
  EXPECT_EQ("R(b(x) c a)", Describe(root));
  ExpectHr(S_OK, root.InsertBefore(c, b));
  EXPECT_EQ("R(c b(x) a)", Describe(root));
  ExpectHr(S_OK, b.AppendChild(c));
  EXPECT_EQ("R(b(x c) a)", Describe(root));
  ExpectHr(S_OK, root.InsertBefore(b, {}));
  EXPECT_EQ("R(a b(x c))", Describe(root));
}

TEST(DomTree, RemovedElementsCanComeBack) {
  const dom::Document document = LoadBytes("<R><a k='v'><x/></a><b/></R>");
  const dom::Element root = Root(document);
  dom::Element a;
  ExpectHr(S_OK, root.SelectSingle("./a", a));
  ExpectHr(S_OK, root.RemoveChild(a));
  EXPECT_EQ("R(b)", Describe(root));
  EXPECT_EQ("a[k=v](x)", Describe(a));
  ExpectHr(S_OK, a.SetInt("k", 5));
  ExpectHr(S_OK, root.AppendChild(a));
  EXPECT_EQ("R(b a[k=5](x))", Describe(root));
}

TEST(DomTree, OnlyChildrenAreRemoved) {
  const dom::Document document = LoadBytes("<R><a><x/></a></R>");
  const dom::Element root = Root(document);
  dom::Element a;
  dom::Element x;
  ExpectHr(S_OK, root.SelectSingle("./a", a));
  ExpectHr(S_OK, root.SelectSingle("./a/x", x));
  ExpectHr(E_INVALIDARG, root.RemoveChild(x));
  ExpectHr(E_INVALIDARG, root.RemoveChild(root));
  ExpectHr(E_INVALIDARG, a.RemoveChild(root));
  ExpectHr(E_INVALIDARG, root.RemoveChild(NewElement(document, "new")));
  EXPECT_EQ("R(a(x))", Describe(root));
  ExpectHr(S_OK, root.RemoveChild(a));
  ExpectHr(E_INVALIDARG, root.RemoveChild(a));
}

TEST(DomTree, ElementsOutliveTheirParentsAndDocuments) {
  if (RunsOnWine()) GTEST_SKIP() << "Wine frees what is below a removed element";
  dom::Document document = LoadBytes("<R><a k='a value of some length'><x n='1'/></a><b/></R>");
  dom::Element a;
  dom::Element x;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  ExpectHr(S_OK, a.SelectSingle("./x", x));
  ExpectHr(S_OK, Root(document).RemoveChild(a));
  a = dom::Element();
  EXPECT_EQ("x[n=1]", Describe(x));
  ExpectHr(S_OK, Root(document).SelectSingle("./b", a));
  document.Close();
  EXPECT_EQ("b", Describe(a));
  EXPECT_EQ("x[n=1]", Describe(x));
  ExpectHr(S_OK, x.SetNarrow("n", "another value of some length"));
  AddChild(x, "y");
  EXPECT_EQ("x[n=another value of some length](y)", Describe(x));
}

TEST(DomTree, ElementsOutliveTheirPlaceAndTheirDocument) {
  dom::Document document = LoadBytes("<R><a k='a value of some length'><x n='1'/></a><b/></R>");
  dom::Element a;
  dom::Element b;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  ExpectHr(S_OK, Root(document).SelectSingle("./b", b));
  ExpectHr(S_OK, Root(document).RemoveChild(a));
  document.Close();
  EXPECT_EQ("a[k=a value of some length](x[n=1])", Describe(a));
  EXPECT_EQ("b", Describe(b));
  AddChild(b, "y");
  EXPECT_EQ("b(y)", Describe(b));
}

TEST(DomTree, ElementsOutliveALoad) {
  const TempDir dir;
  dir.Write("new.xml", "<New/>");
  dom::Document document = LoadBytes("<R><a k='a value of some length'/></R>");
  dom::Element a;
  ExpectHr(S_OK, Root(document).SelectSingle("./a", a));
  bool success = false;
  ExpectHr(S_OK, document.Load(dir.File("new.xml"), success));
  EXPECT_EQ("New", Describe(Root(document)));
  EXPECT_EQ("a[k=a value of some length]", Describe(a));
  ExpectHr(S_FALSE, document.Load(dir.File("missing.xml"), success));
  EXPECT_EQ("a[k=a value of some length]", Describe(a));
}

TEST(DomTree, CopiesOfHandlesMeanTheSame) {
  dom::Document document = NewDocumentWithRoot("R");
  const dom::Document copy = document;
  dom::Document owner;
  ExpectHr(S_OK, Root(document).OwnerDocument(owner));
  AddChild(Root(owner), "a");
  EXPECT_EQ("R(a)", Describe(Root(copy)));
  const dom::Element root = Root(document);
  dom::Element same = root;
  document.Close();
  ExpectHr(S_OK, same.SetInt("n", 1));
  EXPECT_EQ(1U, same.Release() > 0);
  EXPECT_FALSE(same);
  EXPECT_EQ(0U, same.Release()) << "an empty handle holds nothing";
  EXPECT_EQ("R[n=1](a)", Describe(root));
}

TEST(DomTree, AnElementComesBackFromItsPointer) {
  const dom::Document document = LoadBytes("<R n='1'/>");
  const dom::Element root = Root(document);
  dom::Element again;
  ExpectHr(S_OK, dom::Element::From(root.Get(), again));
  EXPECT_EQ("R[n=1]", Describe(again));
  for (const IID& iid : {IID_IUnknown, dom::kIidNode, dom::kIidElement}) {
    void* object = nullptr;
    ExpectHr(S_OK, root.Get()->QueryInterface(iid, &object));
    ExpectHr(S_OK, dom::Element::From(static_cast<IUnknown*>(object), again));
    static_cast<IUnknown*>(object)->Release();
    EXPECT_EQ("R[n=1]", Describe(again));
  }
}

TEST(DomTree, ListItemsOutsideAreNone) {
  const dom::Document document = LoadBytes("<R><a n='0'/><a n='1'/></R>");
  dom::ElementList list;
  ExpectHr(S_OK, Root(document).Select("./a", list));
  EXPECT_EQ(2, list.Count());
  for (const LONG position : {LONG{2}, LONG{-1}, LONG{0x7FFFFFFF}, -LONG{0x7FFFFFFF} - 1}) {
    dom::Element item = Root(document);
    ExpectHr(S_FALSE, list.Item(position, item));
    EXPECT_FALSE(item);
  }
  const dom::ElementList moved = std::move(list);
  dom::Element item;
  ExpectHr(S_OK, moved.Item(1, item));
  EXPECT_EQ("1", Utf8(item, "n"));
}

TEST(DomTree, ListsStayAsTheyWereSelected) {
  const dom::Document document = LoadBytes("<R><a n='0'/><a n='1'/><a n='2'/></R>");
  const dom::Element root = Root(document);
  dom::ElementList list;
  ExpectHr(S_OK, root.Select("./a", list));
  for (LONG i = 0; i < list.Count(); ++i) {
    dom::Element item;
    ExpectHr(S_OK, list.Item(i, item));
    ExpectHr(S_OK, root.RemoveChild(item));
  }
  EXPECT_EQ(3, list.Count());
  EXPECT_FALSE(root.HasChildNodes());
}

TEST(DomPath, SelectsInDocumentOrder) {
  const dom::Document document = LoadBytes(
      "<R><A n='1'><B n='2'/><C n='3'/></A><B n='4'/><A n='5'><B n='6'/><B n='7'/></A>"
      "<A n='8'/><A n='9'><B n='10'><B n='11'/></B></A></R>");
  const dom::Element root = Root(document);
  EXPECT_EQ("A1 A5 A8 A9", Selected(root, "./A"));
  EXPECT_EQ("B4", Selected(root, "./B"));
  EXPECT_EQ("B2 B6 B7 B10", Selected(root, "./A/B"));
  EXPECT_EQ("B11", Selected(root, "./A/B/B"));
  EXPECT_EQ("B6 B7", Selected(root, "./A[@n='5']/B"));
  EXPECT_EQ("B7", Selected(root, "./A/B[@n='7']"));
  EXPECT_EQ("", Selected(root, "./C"));
  EXPECT_EQ("", Selected(root, "./A/B/B/B"));
  EXPECT_EQ("", Selected(root, "./a")) << "case counts";
  EXPECT_EQ("", Selected(root, "./Unknown[@unknown='1']"));
  dom::Element first = root;
  ExpectHr(S_OK, root.SelectSingle("./A/B/B", first));
  EXPECT_EQ("11", Utf8(first, "n"));
  ExpectHr(S_OK, root.SelectSingle("./A", first));
  EXPECT_EQ("1", Utf8(first, "n"));
  ExpectHr(S_FALSE, root.SelectSingle("./C", first));
  EXPECT_FALSE(first);
}

TEST(DomPath, SelectsElementsAlone) {
  const dom::Document document = LoadBytes(
      "<R><?A n='1'?><!--A--><A n='2'><?B n='3'?>B<B n='4'/></A><?A n='5'?><A n='6'><?B?></A></R>");
  const dom::Element root = Root(document);
  EXPECT_EQ("A2 A6", Selected(root, "./A"));
  EXPECT_EQ("A2", Selected(root, "./A[@n='2']"));
  EXPECT_EQ("B4", Selected(root, "./A/B"));
}

TEST(DomPath, PredicatesCompareTextExactly) {
  const dom::Document document = LoadBytes(
      "<R><A n='1' k='044' t='x'/><A n='2' k='44' t='x y' u=''/><A n='3' k='44' t=' x' v='1'"
      " w='2'/><A n='4'/></R>");
  const dom::Element root = Root(document);
  EXPECT_EQ("A2 A3", Selected(root, "./A[@k='44']"));
  EXPECT_EQ("A1", Selected(root, "./A[@k='044']"));
  EXPECT_EQ("A2", Selected(root, "./A[@t='x y']"));
  EXPECT_EQ("A3", Selected(root, "./A[@t = ' x']"));
  EXPECT_EQ("A2", Selected(root, "./A[@u='']"));
  EXPECT_EQ("A3", Selected(root, "./A[@k='44'][@t=' x'][@v='1'][@w='2'][@n='3']"));
  EXPECT_EQ("", Selected(root, "./A[@k='44'][@k='044']"));
  EXPECT_EQ("", Selected(root, "./A[@missing='']"));
}

TEST(DomPath, OtherPathsAreInvalid) {
  const dom::Document document = LoadBytes("<R><A n='1'><B n='2'/></A></R>");
  const dom::Element root = Root(document);
  for (const char* path : {"",
                           ".",
                           "./",
                           "A",
                           "/A",
                           "//A",
                           ".//A",
                           "./A/",
                           "./A//B",
                           "../A",
                           "./*",
                           "./A[1]",
                           "./A[@n]",
                           "./A[n='1']",
                           "./A[@n='1'",
                           "./A[@n='1]",
                           "./A[@n=\"1\"]",
                           "./A[@n='it's']",
                           "./A[@n='1' and @m='2']",
                           "./A[@n='1']x",
                           "./A|./B",
                           "./A [@n='1']",
                           "./@n",
                           "./1",
                           "./A[@='1']",
                           "./A[@n=1]",
                           "./A[@n=='1']",
                           "./A ",
                           " ./A"}) {
    dom::Element element;
    dom::ElementList list;
    ExpectHr(E_INVALIDARG, root.SelectSingle(path, element));
    ExpectHr(E_INVALIDARG, root.Select(path, list));
    EXPECT_FALSE(HasFailure()) << path;
  }
}

}  // namespace
