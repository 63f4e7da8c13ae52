// What the parser accepts and refuses.
//
// Linux only: about the document tree that only Linux has
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "platform/dom.h"
#include "platform/linux/markup/encoding.h"
#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

using namespace dom_tools;

std::string Utf16(const std::string& ascii, bool isBigEndian) {
  std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char byte : ascii) {
    if (isBigEndian) bytes += '\0';
    bytes += byte;
    if (!isBigEndian) bytes += '\0';
  }
  return bytes;
}

/// " a0='' a1='' ..."
std::string Attributes(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += " a" + std::to_string(i) + "=''";
  return text;
}

std::string Nested(std::size_t levels) {
  std::string text;
  for (std::size_t i = 0; i < levels; ++i) text += "<a>";
  for (std::size_t i = 0; i < levels; ++i) text += "</a>";
  return text;
}

TEST(DomParser, RefusesEveryTruncation) {
  const std::string whole =
      "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!-- c --><?pi data?>\r\n"
      "<T a=\"1 &amp; &#x20AC; \xE2\x82\xAC\">\r\n\t<C n='x'/><![CDATA[ <> ]]>text &lt;<D>\r\n</D>"
      "</T>";
  ASSERT_TRUE(Loads(whole));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(Loads(whole.substr(0, length))) << length;
  }
}

// Held by the leak sanitizer: a parse that is broken off within a document with an entity.
TEST(DomParser, LeavesNothingOfEntitiesBehind) {
  const std::string broken = " [<!ENTITY b \" c=\"c\">]><a>&b;</a>";
  EXPECT_FALSE(Loads("<!DOCTYPE a" + broken));
  EXPECT_FALSE(Loads("<!DOCTYPE\xCF\x61" + broken));
}

TEST(DomParser, RefusesMalformedDocuments) {
  const std::string malformed[] = {
      "<a>\xFF</a>",                                   // never in UTF-8
      "<a b='\xFF'/>",                                 //
      "<a>\xC3</a>",                                   // incomplete
      "<a b='\xE2\x82'/>",                             //
      "<a b='\xC0\xAF'/>",                             // overlong
      "<a b='\xED\xA0\x80'/>",                         // a surrogate
      "<a b='\xF4\x90\x80\x80'/>",                     // beyond U+10FFFF
      "<a b='\xEF\xBF\xBF'/>",                         // U+FFFF
      "<a>\xEF\xBF\xBE</a>",                           // U+FFFE
      "<a b='\x01'/>",                                 //
      "<a b='&#1;'/>",                                 //
      "<a b='&#xD800;'/>",                             //
      "<a b='&#xFFFF;'/>",                             //
      "<a b='&#x110000;'/>",                           //
      "<a b='&#;'/>",                                  //
      "<a b='&#65'/>",                                 //
      "<a b='&amp'/>",                                 //
      "<a b='&nbsp;'/>",                               //
      "<a>&undeclared;</a>",                           //
      "<a><b></a></b>",                                //
      "<a/ >",                                         //
      "<a b='1' b='1'/>",                              //
      "<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>",  // the same but for the prefix
      "<a p:b='1'/>",                                  //
      "<p:a/>",                                        //
      "<p:a xmlns:p=''/>",                             //
      "<a:b:c/>",                                      //
      "<a><!-- -- --></a>",                            //
      "<a><!-- --->",                                  //
      "<a>]]></a>",                                    //
      "<a><![CDATA[</a>",                              //
      "<a><?xml version='1.0'?></a>",                  //
      "<a><?pi</a>",                                   //
      "<?xml version='1.0' encoding='nonsense'?><a/>",
      "<?xml encoding='utf-8'?><a/>",
      "<?xml version='1.0' standalone='perhaps'?><a/>",
      "text<a/>",
      "<a/><!-- ",
      "<a/>\xEF\xBB\xBF",
      std::string("<a/>\0", 5),
      std::string("<a/>\0<b/>", 9),
      std::string("<a b='\0'/>", 10),
      std::string("<a>\0</a>", 8),
      std::string("\0<a/>", 5),
      std::string(100, '\0'),
      "\xEF\xBB\xBF",
  };
  for (const std::string& bytes : malformed) EXPECT_FALSE(Loads(bytes)) << bytes;
}

TEST(DomParser, RefusesDocumentTypes) {
  EXPECT_FALSE(Loads("<!DOCTYPE a><a/>"));
  EXPECT_FALSE(Loads("<!DOCTYPE a SYSTEM 'a.dtd'><a/>"));
  EXPECT_FALSE(Loads("<!DOCTYPE a PUBLIC '-//x' 'http://127.0.0.1:9/a.dtd'><a/>"));
  EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>"));
  EXPECT_FALSE(Loads("<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><a b='1'>&x;</a>"));
  EXPECT_FALSE(Loads("<!DOCTYPE a [<!ATTLIST a b CDATA 'default'>]><a/>"));
  std::string bomb = "<!DOCTYPE a [<!ENTITY x0 'xxxxxxxxxx'>";
  for (char i = '1'; i <= '9'; ++i) {
    bomb += std::string("<!ENTITY x") + i + " '";
    for (int n = 0; n < 10; ++n) bomb += std::string("&x") + static_cast<char>(i - 1) + ";";
    bomb += "'>";
  }
  EXPECT_FALSE(Loads(bomb + "]><a b='&x9;'>&x9;</a>"));
}

TEST(DomParser, LimitsNesting) {
  EXPECT_TRUE(Loads(Nested(256)));
  EXPECT_FALSE(Loads(Nested(257)));
  EXPECT_FALSE(Loads(Nested(100000)));
}

TEST(DomParser, LimitsAttributesOfAnElement) {
  EXPECT_TRUE(Loads("<a" + Attributes(1024) + "/>"));
  EXPECT_FALSE(Loads("<a" + Attributes(1025) + "/>"));
  EXPECT_FALSE(Loads("<a><b>text</b><c" + Attributes(1025) + "></c></a>"));
  EXPECT_FALSE(Loads(Utf16("<a" + Attributes(1025) + "/>", false)));
  EXPECT_FALSE(Loads("<?xml version='1.0' encoding='windows-1252'?><a" + Attributes(1025) + "/>"));
  EXPECT_TRUE(Loads("<a><b" + Attributes(1024) + "/><c" + Attributes(1024) + "/></a>"))
      << "the limit is that of one element";
}

TEST(DomParser, LimitsAttributesWhereverTheElementStands) {
  for (int before = 0; before < 1500; before += 73) {
    std::string text = "<a>";
    for (int i = 0; i < before; ++i) text += "<b/>";
    EXPECT_FALSE(Loads(text + "<c" + Attributes(1025) + "/></a>")) << before;
    EXPECT_TRUE(Loads(text + "<c" + Attributes(1024) + "/></a>")) << before;
  }
}

TEST(DomParser, LimitsNothingThatOnlyLooksLikeAttributes) {
  const std::string many = Attributes(5000);
  EXPECT_TRUE(Loads("<a>" + many + "</a>"));
  EXPECT_TRUE(Loads("<a b=\"" + many + "\"/>"));
  EXPECT_TRUE(Loads("<a><!-- <b" + many + "/> --></a>"));
  EXPECT_TRUE(Loads("<a><![CDATA[<b" + many + "/>]]></a>"));
  EXPECT_TRUE(Loads("<a><?pi <b" + many + "/> ?></a>"));
  EXPECT_FALSE(Loads("<a><!-- <!-- --><b" + many + "/></a>")) << "behind a comment it is one";
}

TEST(DomParser, LimitsNamespacesInForce) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += " xmlns:p" + std::to_string(i) + "='u'";
  EXPECT_TRUE(Loads("<a" + all + "><p7:b/></a>"));
  EXPECT_FALSE(Loads("<a" + all + "><b xmlns='v'/></a>")) << "257 inside b";
  EXPECT_FALSE(Loads("<a" + all + " xmlns='v'/>"));
  EXPECT_TRUE(Loads("<t><a" + all + "/><a" + all + "/></t>")) << "the first ones have ended";
}

TEST(DomParser, ReadsOtherEncodings) {
  EXPECT_EQ("a[b=\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9]",
            Describe(Root(LoadBytes(
                "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xE9\xE9\xE9\xE9\xE9'/>"))));
  EXPECT_EQ("a[b=\xE3\x83\x86\xE3\x83\xAC\xE3\x83\x93]",
            Describe(Root(LoadBytes(
                "<?xml version='1.0' encoding='Shift_JIS'?><a b='\x83\x65\x83\x8C\x83\x72'/>"))));
  const std::string text = "<?xml version='1.0' encoding='UTF-16'?><a b='a longer value'><c/></a>";
  for (const bool isBigEndian : {false, true}) {
    EXPECT_EQ("a[b=a longer value](c)", Describe(Root(LoadBytes(Utf16(text, isBigEndian)))));
    EXPECT_FALSE(Loads(Utf16(text + "<d/>", isBigEndian)));
    EXPECT_FALSE(Loads(Utf16(text.substr(0, text.size() - 1), isBigEndian)));
    EXPECT_FALSE(Loads(Utf16(text, isBigEndian) + "x")) << "half a unit";
    EXPECT_FALSE(Loads(Utf16(text + std::string("\0<d/>", 5), isBigEndian)));
  }
  EXPECT_FALSE(Loads(Utf16(text, false) + std::string("\x00\xD8\x20\x00", 4))) << "half a pair";
  EXPECT_FALSE(Loads(text)) << "labelled UTF-16, but is not";
  EXPECT_FALSE(Loads("<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE a><a/>"));
  EXPECT_FALSE(Loads("<?xml version='1.0' encoding='Shift_JIS'?><a b='\x83'/>"));
  EXPECT_FALSE(Loads("<?xml version='1.0' encoding='ISO-8859-1'?>" + Nested(257)));
  EXPECT_EQ("a[b=\xE2\x82\xAC]",
            Describe(Root(LoadBytes(
                "<?xml version = '1.0'  encoding\n=\t\"WINDOWS-1252\" ?><a b='\x80'/>"))));
}

TEST(DomParser, ReadsNoEncodingsThatChangeMidway) {
  for (const char* name : {"UTF-7", "ISO-2022-JP", "ISO-2022-CN-EXT", "IBM037", "UTF-16//TRANSLIT",
                           "windows-1252//IGNORE", "", "windows-9999", "GB"}) {
    const std::string text = std::string("<?xml version='1.0' encoding='") + name + "'?><a/>";
    EXPECT_FALSE(Loads(text)) << name;
  }
}

// The parser refuses such a name, too, but only after the conversion was asked for by it.
TEST(DomParser, ConvertsNothingByANameWithOptions) {
  const auto converts = [](const std::string& name) {
    domtree::FileBytes file;
    EXPECT_TRUE(file.Assign("<?xml version='1.0' encoding='" + name + "'?><a b='\xE9'/>"));
    return domtree::ConvertToUtf8(file);
  };
  EXPECT_TRUE(converts("windows-1252"));
  EXPECT_FALSE(converts("windows-1252//IGNORE"));
  EXPECT_FALSE(converts("windows-1252//TRANSLIT"));
  EXPECT_FALSE(converts("windows-1252/"));
}

TEST(DomParser, ReadsLargeFilesInOtherEncodings) {
  std::string text = "<a>";
  for (int i = 0; i < 3000; ++i) text += "<c n='" + std::to_string(i) + " of many values'/>\r\n";
  text += "</a>";
  for (const std::string& bytes : {text, Utf16(text, false), Utf16(text, true),
                                   "<?xml version='1.0' encoding='windows-1252'?>" + text}) {
    const dom::Document document = LoadBytes(bytes);
    dom::ElementList list;
    ExpectHr(S_OK, Root(document).Select("./c", list));
    ASSERT_EQ(3000, list.Count());
    for (LONG i = 0; i < list.Count(); ++i) {
      dom::Element item;
      ExpectHr(S_OK, list.Item(i, item));
      ASSERT_EQ(std::to_string(i) + " of many values", Utf8(item, "n"));
    }
  }
}

TEST(DomParser, ReadsFilesThatAreLargerThanTheParserLooksAhead) {
  std::string text = "<a>";
  const std::string child = "<child name='a value of some length' other='1'/>";
  while (text.size() < 12000000) text += child;
  const std::size_t count = text.size() / child.size();
  const dom::Document document = LoadBytes(text + "</a>");
  dom::ElementList list;
  ExpectHr(S_OK, Root(document).Select("./child", list));
  EXPECT_EQ(count, static_cast<std::size_t>(list.Count()));
}

TEST(DomParser, NormalisesAttributesAsXmlSays) {
  const dom::Document document =
      LoadBytes("<a t='x\ty\nz\r\nw' r='x&#9;y&#10;z&#13;&#10;w' e='&#38;amp;'/>");
  EXPECT_EQ("x y z w", Utf8(Root(document), "t"));
  EXPECT_EQ("x\ty\nz\r\nw", Utf8(Root(document), "r"));
  EXPECT_EQ("&amp;", Utf8(Root(document), "e"));
}

TEST(DomParser, KeepsPrefixesAndNamespaces) {
  const dom::Document document =
      LoadBytes("<p:a xmlns:p='urn:p' xmlns='urn:d' p:b='1' b='2' xml:lang='en'><p:c/><c/></p:a>");
  const dom::Element root = Root(document);
  EXPECT_EQ("p:a[xmlns:p=urn:p][xmlns=urn:d][p:b=1][b=2][xml:lang=en](p:c c)", Describe(root));
  EXPECT_EQ("p:c(none)", Selected(root, "./p:c"));
  EXPECT_EQ("c(none)", Selected(root, "./c"));
  EXPECT_EQ("1", Utf8(root, "p:b"));
  ExpectHr(S_OK, root.SetInt("p:b", 5));
  ExpectHr(E_INVALIDARG, root.SetNarrow("xmlns:p", "urn:other"));
  ExpectHr(E_INVALIDARG, root.SetNarrow("p:new", "x"));
  EXPECT_EQ("5", Utf8(root, "p:b"));
}

TEST(DomParser, TakesRegularFilesOnly) {
  const TempDir dir;
  ASSERT_EQ(0, mkfifo(dir.File("pipe").c_str(), 0600));
  dom::Document document = NewDocument();
  bool success = true;
  ExpectHr(S_FALSE, document.Load(dir.File("pipe"), success));
  EXPECT_FALSE(success);
  ExpectHr(S_FALSE, document.Load("", success));
  ExpectHr(S_FALSE, document.Load(dir.File("missing") + "/x", success));
}

TEST(DomParser, TakesNoUnreadableFiles) {
  if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
  const TempDir dir;
  dir.Write("secret.xml", "<a/>");
  ASSERT_EQ(0, chmod(dir.File("secret.xml").c_str(), 0));
  dom::Document document = NewDocument();
  bool success = true;
  ExpectHr(S_FALSE, document.Load(dir.File("secret.xml"), success));
  EXPECT_FALSE(success);
}

TEST(DomParser, IsSilent) {
  testing::internal::CaptureStderr();
  EXPECT_FALSE(Loads("<a><b></a>"));
  EXPECT_FALSE(Loads("<p:a/>"));
  EXPECT_FALSE(Loads("<?xml version='1.0' encoding='nonsense'?><a/>"));
  EXPECT_FALSE(Loads("<?xml version='1.0' encoding='Shift_JIS'?><a b='\x83'/>"));
  EXPECT_FALSE(Loads(Utf16("<a/>", false) + std::string("\x00\xD8\x20\x00", 4)));
  std::fflush(stderr);
  EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(DomParser, WorksInManyThreads) {
  std::string text = "<a>";
  for (int i = 0; i < 500; ++i) text += "<c n='" + std::to_string(i) + "'><d/></c>";
  text += "</a>";
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&text] {
      for (int round = 0; round < 10; ++round) {
        const dom::Document document = LoadBytes(text);
        EXPECT_EQ("c499", Selected(Root(document), "./c[@n='499']"));
        EXPECT_FALSE(Loads("<a><b></a>"));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
