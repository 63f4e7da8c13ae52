// What each damage is taken for, and what mends it.
#include <gtest/gtest.h>

#include <string>

#include "kit/xml/text/character_runs.h"
#include "kit/xml/tree/document.h"

namespace zortunedex::kit {

namespace {

using markup::Document;

/// Codes with the places of the damages, and the mended bytes.
std::string Told(const std::string& bytes, const markup::ReadOptions& options = {}) {
  const Document document = Document::Read(bytes, options);
  std::string text;
  for (const markup::Damage& damage : document.Damages()) {
    text += CodeOf(damage.reason) + std::string("@") + std::to_string(damage.span.begin);
    text += damage.isMended ? " " : " left ";
  }
  return text + document.Mends().Apply(bytes).value_or("nothing");
}

TEST(Damages, AreNoneInGoodFiles) {
  for (const char* text :
       {"<a/>", "<a></a>", "<a b='1' c=\"'\">&amp;&#x41;<![CDATA[<&]]><!-- - --><?p?></a>\n",
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- --><a\n b = '>'/><?p q?>\n",
        "<p:a xmlns:p='urn:x' p:b=''/>", "<\xC3\xA9 \xC3\xA9='\xF0\x9F\x98\x80'/>"}) {
    EXPECT_EQ(text, Told(text));
  }
}

TEST(Damages, OfMarkupInValuesAndTexts) {
  EXPECT_EQ("ZT020@8 <a b='AT&amp;T'/>", Told("<a b='AT&T'/>"));
  EXPECT_EQ("ZT020@6 <a b='&amp;x;&amp;&lt;'/>", Told("<a b='&x;&<'/>"));
  EXPECT_EQ("ZT020@7 <a b=\"7&quot; TV\" c='1'/>", Told("<a b=\"7\" TV\" c='1'/>"));
  EXPECT_EQ("ZT020@7 <a b='7&apos;'/>", Told("<a b='7''/>"));
  EXPECT_EQ("ZT020@3 <a>&amp; &lt; ]]&gt;</a>", Told("<a>& < ]]></a>"));
}

// What goes from between two texts makes one of them.
TEST(Damages, OfTextsThatComeTogether) {
  EXPECT_EQ("ZT021@5 ZT020@9 <a>]]&gt;</a>", Told("<a>]]</b>></a>"));
  EXPECT_EQ("ZT021@4 ZT021@9 ZT020@13 <a>]]&gt;</a>", Told("<a>]</b>]</b>></a>"));
  EXPECT_EQ("ZT021@4 <a>] ]></a>", Told("<a>]</b> ]></a>"));
  EXPECT_EQ("ZT021@9 <a>]]<b/>></a>", Told("<a>]]<b/></b>></a>"));
  EXPECT_EQ("ZT021@9 ZT020@12 <a>]]&gt;</a>", Told("<a>]]</a><a>></a>"));
}

TEST(Damages, OfTruncatedFiles) {
  EXPECT_EQ("ZT021@0 <a></a>", Told("<a>"));
  EXPECT_EQ("ZT021@3 ZT021@12 <a><b c='1'></b></a>", Told("<a><b c='1'><d e='"));
  EXPECT_EQ("ZT021@0 ZT021@3 <a></a>", Told("<a></a"));
  EXPECT_EQ("ZT021@0 ZT021@3 <a></a>", Told("<a><!-- b"));
  EXPECT_EQ("ZT021@0 ZT021@0 left ", Told("<a b"));
}

TEST(Damages, OfNesting) {
  EXPECT_EQ("ZT021@3 <a><b></b></a>", Told("<a><b></a>"));
  EXPECT_EQ("ZT021@3 <a></a>", Told("<a></b></a>"));
  // What follows is no part of it.
  EXPECT_EQ("ZT021@3 <s><c i='1'></c><c i='2'></c><c i='3'/></s>",
            Told("<s><c i='1'><c i='2'></c><c i='3'/></s>"));
}

TEST(Damages, OfWhatStandsOutside) {
  EXPECT_EQ("ZT021@0 ZT021@5 <a/>", Told("x<a/>y"));
  EXPECT_EQ("ZT021@0 left ", Told(""));
  EXPECT_EQ("ZT021@0 ZT021@0 left ", Told("x"));
  EXPECT_EQ("ZT021@0 ZT021@4 <a><b/></a>", Told("<a/><b/>"));
  EXPECT_EQ("ZT021@7 <a><b/></a>", Told("<a></a><b/></a>"));
  EXPECT_EQ("ZT021@11 ZT021@32 <a><b/><c/></a>",
            Told("<a><b/></a><?xml version=\"1.0\"?><a><c/></a>"));
}

TEST(Damages, OfDeclarationsAndComments) {
  EXPECT_EQ("ZT021@0 <?xml version=\"1.0\" encoding=\"utf-8\"?><a/>", Told("<?xml?><a/>"));
  EXPECT_EQ("ZT021@0 <?xml version=\"1.0\" encoding=\"utf-8\"?><a/>",
            Told("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>"));
  EXPECT_EQ("ZT021@1 \n<a/>", Told("\n<?xml version=\"1.0\"?><a/>"));
  EXPECT_EQ("ZT021@0 <a/>", Told("<?a:b?><a/>"));
  EXPECT_EQ("ZT021@0 <!-- - - - --><a/>", Told("<!-- -----><a/>"));
  EXPECT_EQ("ZT021@0 <a/>", Told("<!a><a/>"));
}

TEST(Damages, OfTags) {
  EXPECT_EQ("ZT021@5 <a b=\"1\" c=\"\"/>", Told("<a b=1 c=/>"));
  EXPECT_EQ("ZT021@8 <a b='1' c='2'/>", Told("<a b='1'c='2'/>"));
  EXPECT_EQ("ZT021@3 <a  c='2'/>", Told("<a b c='2'/>"));
  EXPECT_EQ("ZT021@10 <s><a b='1'/>\n<c/></s>", Told("<s><a b='1\n<c/></s>"));
  EXPECT_EQ("ZT021@3 <a></a>", Told("<a></a b>"));
  EXPECT_EQ("ZT021@0 left ZT021@1 left <a:b:c/>", Told("<a:b:c/>"));
  EXPECT_EQ("ZT021@0 left <p:a/>", Told("<p:a/>"));
}

TEST(Damages, OfCharacters) {
  EXPECT_EQ("ZT022@3 <a>\xEF\xBF\xBD\xEF\xBF\xBD</a>", Told("<a>\x01\x02</a>"));
  EXPECT_EQ("ZT022@6 <a b='\xEF\xBF\xBD'/>", Told("<a b='&#1;'/>"));
  EXPECT_EQ("ZT007@6 left <a b='x\xFFy z'/>", Told("<a b='x\xFFy z'/>"));
  markup::ReadOptions options;
  options.decode = [](std::string_view word) {
    EXPECT_EQ("x\xFFy", word);
    return std::string("x\xC3\xBFy");
  };
  EXPECT_EQ("ZT007@6 <a b='x\xC3\xBFy z'/>", Told("<a b='x\xFFy z'/>", options));
}

TEST(Damages, OfWhatIsTooMuch) {
  EXPECT_EQ("ZT023@0 <a/>", Told("<!DOCTYPE a [<!ENTITY b 'c'>]><a/>"));
  std::string deep;
  for (int i = 0; i < 257; ++i) deep += "<a>";
  EXPECT_TRUE(Told(deep).starts_with("ZT023@768 left <a>"));
  std::string wide = "<a";
  for (int i = 0; i < 1025; ++i) wide += " b" + std::to_string(i) + "=''";
  EXPECT_TRUE(Told(wide + "/>").starts_with("ZT023@0 left <a"));
}

TEST(Damages, OfRepeatedAttributes) {
  EXPECT_EQ("ZT024@8 <a b='1'/>", Told("<a b='1' b='2'/>"));
  EXPECT_EQ("ZT024@8 ZT024@24 <a b='1' c='&amp;'/>", Told("<a b='1' b='&' c='&amp;' b='3'/>"));
}

TEST(Damages, OfBlanksAreToldAndLeft) {
  const Document document = Document::Read("<a b='x\ty\r\nz'/>");
  ASSERT_EQ(1U, document.Damages().size());
  EXPECT_STREQ("ZT026", CodeOf(document.Damages()[0].reason));
  EXPECT_TRUE(document.IsReadable());
  EXPECT_EQ("x y z", document.ValueOf(document.Elements()[0], "b"));
}

TEST(Damages, OfOtherEncodings) {
  using std::string_literals::operator""s;
  for (const std::string& bytes : {"\xFF\xFE<\0a\0"s, "<\0a\0/\0>\0"s, "\0<\0a"s, "\xFE\xFF\0<"s,
                                   "<?xml version='1.0' encoding='windows-1252'?><a/>"s}) {
    const Document document = Document::Read(bytes);
    ASSERT_EQ(1U, document.Damages().size());
    EXPECT_STREQ("ZT008", CodeOf(document.Damages()[0].reason));
    EXPECT_TRUE(document.Elements().empty());
  }
  EXPECT_EQ("windows-1252",
            Document::Read("<?xml version='1.0' encoding='windows-1252'?><a/>").EncodingName());
  EXPECT_EQ("UTF-16LE", Document::Read("<\0a\0/\0>\0"s).EncodingName());
}

TEST(Damages, HaveCodesAndWords) {
  for (int i = 0; i <= static_cast<int>(markup::Reason::RawBlank); ++i) {
    const auto reason = static_cast<markup::Reason>(i);
    EXPECT_EQ(5U, std::string(CodeOf(reason)).size());
    EXPECT_NE("", std::string(TextOf(reason)));
  }
}

TEST(Damages, EndAtAMillion) {
  std::string bytes = "<a>";
  for (std::uint32_t i = 0; i <= markup::kMostDamages; ++i) bytes += "</b>";
  const Document document = Document::Read(bytes + "</a>");
  ASSERT_EQ(markup::kMostDamages + 1, document.Damages().size());
  EXPECT_EQ(markup::Reason::TooManyDamages, document.Damages().back().reason);
  EXPECT_FALSE(document.Damages().back().isMended);
}

TEST(Damages, OfCharactersEndAtAMillion) {
  std::string bytes;
  for (std::uint32_t i = 0; i <= markup::kMostDamages; ++i) bytes += "a\x01";
  EXPECT_EQ(markup::kMostDamages + 1, markup::CharacterRuns(bytes, {}).All().size());
}

}  // namespace

}  // namespace zortunedex::kit
