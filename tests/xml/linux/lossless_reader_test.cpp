// Linux only: the library's own parser is the judge.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

#include "kit/xml/hostile_text.h"
#include "kit/xml/tree/document.h"
#include "platform/linux/markup/parser.h"

using namespace zortunedex::kit;

namespace {

/// Null where the library does not take it.
domtree::NewStore LibrarysTree(const std::string& bytes) {
  domtree::FileBytes file;
  EXPECT_TRUE(file.Assign(bytes));
  return domtree::Parse(std::move(file));
}

void Outline(const domtree::Node* element, const domtree::Names& names, std::string& text) {
  for (; element != nullptr; element = domtree::Node::ElementFrom(element->Next())) {
    text.append("<").append(names.Text(element->Name()));
    for (std::uint32_t i = 0; i < element->AttributeCount(); ++i) {
      text.append(" ").append(names.Text(element->At(i).Name()));
      text.append("={").append(element->ValueOf(element->At(i))).append("}");
    }
    Outline(domtree::Node::ElementFrom(element->First()), names, text += '\n');
    text += ">\n";
  }
}

void Outline(const markup::Document& document, markup::Index index, std::string& text) {
  for (; index != markup::kNone; index = document.Elements()[index].next) {
    const markup::Element& element = document.Elements()[index];
    text.append("<").append(document.NameOf(element));
    for (const markup::Attribute& attribute : document.AttributesOf(element)) {
      // What declares the prefix that needs no declaration the library leaves out.
      if (document.NameOf(attribute) == "xmlns:xml") continue;
      text.append(" ").append(document.NameOf(attribute));
      text.append("={").append(document.ValueOf(attribute)).append("}");
    }
    Outline(document, element.firstChild, text += '\n');
    text += ">\n";
  }
}

std::string Damages(const markup::Document& document) {
  std::string text;
  for (const markup::Damage& damage : document.Damages()) {
    text += CodeOf(damage.reason);
    text += ' ';
    text += TextOf(damage.reason);
    text += '\n';
  }
  return text;
}

/// Both take it and see the same tree, or neither does. Answers whether they do.
bool ExpectAgreement(const std::string& bytes) {
  const markup::Document document = markup::Document::Read(bytes);
  if (!document.EncodingName().empty()) return false;
  const domtree::NewStore store = LibrarysTree(bytes);
  const bool isRead = store != nullptr;
  EXPECT_EQ(isRead, document.IsReadable()) << testing::PrintToString(bytes) << '\n'
                                           << Damages(document);
  if (!isRead || !document.IsReadable()) return isRead;
  std::string seen;
  std::string told;
  Outline(store->RootElement(), store->GetNames(), seen);
  Outline(document, 0, told);
  EXPECT_EQ(seen, told) << testing::PrintToString(bytes);
  return isRead;
}

std::string SampleBytes(const char* name) {
  std::ifstream file(std::string(ZORTUNEDEX_SAMPLES "/home/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(LosslessReader, JudgesAsTheLibraryDoes) {
  Random random(31);
  int read = 0;
  for (int i = 0; i < 60000 && !HasFailure(); ++i) {
    read += ExpectAgreement(HostileText(random, i % 2 == 0 ? 5 : 20));
  }
  EXPECT_GT(read, 1000);
}

TEST(LosslessReader, JudgesDamagedSamplesAsTheLibraryDoes) {
  Random random(32);
  int read = 0;
  for (const char* name :
       {"ChanInfo.xml", "PreSetChannelInfo.xml", "SatelliteInfo.xml", "UserSettings.xml"}) {
    const std::string sample = SampleBytes(name);
    EXPECT_TRUE(ExpectAgreement(sample)) << name;
    const int count = sample.size() < 1000 ? 3000 : 100;
    for (int i = 0; i < count && !HasFailure(); ++i) {
      read += ExpectAgreement(Mutated(sample, random, 2));
    }
  }
  EXPECT_GT(read, 300);
}

// What may be raw markup is told, and changes nothing.
TEST(LosslessReader, SeesRawMarkupAsTheLibraryDoes) {
  Random random(33);
  int read = 0;
  for (int i = 0; i < 6000 && !HasFailure(); ++i) {
    const std::string text = HostilePreFormattedText(random);
    read += ExpectAgreement(i % 2 == 0 ? text : Mutated(text, random, 2));
  }
  EXPECT_GT(read, 500);
}

TEST(LosslessReader, KnowsTheLibrarysBounds) {
  const auto repeated = [](std::size_t count, auto piece) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += piece(i);
    return text;
  };
  const auto nested = [&](std::size_t levels) {
    return repeated(levels, [](std::size_t) { return std::string("<a>"); }) +
           repeated(levels, [](std::size_t) { return std::string("</a>"); });
  };
  const auto attributes = [&](std::size_t count) {
    return "<a" + repeated(count, [](std::size_t i) { return " a" + std::to_string(i) + "=''"; }) +
           "/>";
  };
  const auto namespaces = [&](std::size_t count) {
    return "<a" +
           repeated(count, [](std::size_t i) { return " xmlns:p" + std::to_string(i) + "='u'"; }) +
           "><b xmlns='v'/></a>";
  };
  EXPECT_TRUE(ExpectAgreement(nested(256)));
  EXPECT_FALSE(ExpectAgreement(nested(257)));
  EXPECT_TRUE(ExpectAgreement(attributes(1024)));
  EXPECT_FALSE(ExpectAgreement(attributes(1025)));
  EXPECT_TRUE(ExpectAgreement(namespaces(255)));
  EXPECT_FALSE(ExpectAgreement(namespaces(256)));
  EXPECT_TRUE(ExpectAgreement("<" + std::string(50000, 'a') + "/>"));
  EXPECT_FALSE(ExpectAgreement("<" + std::string(50001, 'a') + "/>"));
  EXPECT_TRUE(ExpectAgreement("<a b='" + std::string(10000000, 'a') + "'/>"));
  EXPECT_FALSE(ExpectAgreement("<a b='" + std::string(10000001, 'a') + "'/>"));
}

TEST(LosslessReader, JudgesDeclarationsAsTheLibraryDoes) {
  for (const char* declaration : {"<?xml version=\"1.0\"?>",
                                  "<?xml version='1.0' ?>",
                                  "<?xml version=\"1.1\"?>",
                                  "<?xml version=\"2.0\"?>",
                                  "<?xml version=\"1.\"?>",
                                  "<?xml version=\"1\"?>",
                                  "<?xml version=\"1.0a\"?>",
                                  "<?xml version=1.0?>",
                                  "<?xml ?>",
                                  "<?xml?>",
                                  "<?xml>",
                                  "<?xml version=\"1.0\" encoding=\"utf-8\"?>",
                                  "<?xml version=\"1.0\"encoding=\"utf-8\"?>",
                                  "<?xml version=\"1.0\" encoding=\"utf8\"?>",
                                  "<?xml version=\"1.0\" encoding=\"\"?>",
                                  "<?xml encoding=\"utf-8\"?>",
                                  "<?xml version=\"1.0\" encoding = 'UTF-8' ?>",
                                  "<?xml version=\"1.0\" standalone=\"yes\"?>",
                                  "<?xml version=\"1.0\" standalone=\"?\"?>",
                                  "<?xml version=\"1.0\" encoding=\"utf-8\" standalone='no'?>",
                                  "<?xml version=\"1.0\" standalone='no' encoding=\"utf-8\"?>",
                                  "<?xml version=\"1.0\" encoding=\"UTF-16\"?>",
                                  " <?xml version=\"1.0\"?>",
                                  "\xEF\xBB\xBF<?xml version=\"1.0\"?>",
                                  "\xEF\xBB\xBF\xEF\xBB\xBF",
                                  "<?XML version='1.0'?>",
                                  "<?xml-style?>",
                                  "<?xml version=\"1.0\" x?>",
                                  "<?xml version=\"1.0\" ? >",
                                  "<?xml version=\"1.0\"?><?xml version=\"1.0\"?>",
                                  "<!DOCTYPE a>",
                                  "<!DOCTYPE a []>"}) {
    ExpectAgreement(std::string(declaration) + "<a/>");
  }
  // The parser of Linux alone takes this one.
  const auto attached = "<?xml version=\"1.0\" encoding=\"utf-8\"standalone='no'?><a/>";
  EXPECT_FALSE(markup::Document::Read(attached).IsReadable());
}

TEST(LosslessReader, JudgesNamespacesAsTheLibraryDoes) {
  for (const char* uri : {"",
                          "u",
                          "http://a/b",
                          "http://a:80/b",
                          "http://a:b/",
                          "http://u@a/",
                          "http://u:p@a:1/x?y#z",
                          "1a:b",
                          "a:b",
                          ":b",
                          "::",
                          "//a",
                          "///",
                          "a b",
                          "%20",
                          "%2",
                          "%zz",
                          "a?b?c",
                          "a#b#c",
                          "a[b]",
                          "http://[::1]/",
                          "http://[::1",
                          "urn:x:y",
                          "a/b:c",
                          "b:c/d",
                          "\xC3\xA9",
                          "a<",
                          "a|b",
                          "^",
                          "http://a:/",
                          "http://a:123456789/",
                          "http://@a/",
                          "http:///a",
                          "a:",
                          "a:?",
                          "?",
                          "#",
                          "#[",
                          "http://www.w3.org/XML/1998/namespace",
                          "http://www.w3.org/2000/xmlns/",
                          "a\tb"}) {
    ExpectAgreement("<a xmlns='" + std::string(uri) + "'/>");
    ExpectAgreement("<p:a xmlns:p='" + std::string(uri) + "'/>");
    ExpectAgreement("<a xmlns:xml='" + std::string(uri) + "'/>");
    ExpectAgreement("<a xmlns:xmlns='" + std::string(uri) + "'/>");
  }
  for (const char* text :
       {"<p:a/>", "<a p:b=''/>", "<xml:a/>", "<a xml:b=''/>", "<xmlns:a/>", "<a:/>", "<:a/>",
        "<a:b:c xmlns:a='u'/>", "<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>",
        "<a xmlns:p='u' xmlns:q='v' p:x='' q:x=''/>", "<a xmlns='u' xmlns='u'/>",
        "<a xmlns:p='u'><p:b/></a>", "<a><b xmlns:p='u'/><p:b/></a>", "<?p:i?><a/>",
        "<a xmlns:p='u'><b xmlns:p='v' p:x=''/><p:c/></a>", "<a xmlns:1='u'/>", "<a x:='u'/>"}) {
    ExpectAgreement(text);
  }
}

}  // namespace
