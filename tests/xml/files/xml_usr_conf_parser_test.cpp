#include "xml/files/xml_usr_conf_parser.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/com_ptr.h"
#include "satellite/dish_sat_info.h"
#include "support/dom_text.h"
#include "support/expect.h"
#include "support/temp_dir.h"
#include "xml/codecs/dish_sat_element.h"

namespace {

constexpr char kSettings[] = "UserSettings.xml";
constexpr char kSkeleton[] =
    "<USER_SETTINGS>\n\t<SAT_SETTING>\n\t\t<DISH_1/>\n\t\t<DISH_2/>\n\t\t<DISH_3/>\n\t\t<DISH_4/>\n"
    "\t</SAT_SETTING>\n</USER_SETTINGS>\n";

class XmlUsrConfParser : public testing::Test {
 protected:
  void Open() {
    ExpectHr(S_OK, m_parser.Open(m_dir.File(kSettings)));
    ExpectHr(S_OK, m_parser.Load());
  }
  void Open(const std::string& xml) {
    m_dir.Write(kSettings, xml);
    Open();
  }
  dom::Element Setting() {
    dom::Element setting;
    ExpectHr(S_OK, m_parser.GetSatSetting(&setting));
    return setting;
  }
  dom::Element Root() {
    dom::Document document;
    ExpectHr(S_OK, Setting().OwnerDocument(document));
    dom::Element root;
    ExpectHr(S_OK, document.DocumentElement(root));
    return root;
  }
  dom::Element Dish(UINT number) {
    dom::Element dish;
    ExpectHr(S_OK, CXmlUsrConfParser::GetDish(Setting(), number, &dish));
    return dish;
  }
  static ComPtr<IDishSatInfo> MakeSat(const char* id) {
    ComPtr<IDishSatInfo> record;
    ExpectHr(S_OK, CDishSatInfo::CreateInstance(record.Receive()));
    record->SetID(Wide(id).Get());
    return record;
  }

  TempDir m_dir;
  CXmlUsrConfParser m_parser;
};

}  // namespace

TEST_F(XmlUsrConfParser, WithoutADocument) {
  dom::Element element;
  ExpectHr(E_FAIL, m_parser.Load());
  ExpectHr(E_FAIL, m_parser.Save());
  ExpectHr(E_FAIL, m_parser.CreateNewDocument());
  ExpectHr(E_FAIL, m_parser.GetSatSetting(&element));
  EXPECT_FALSE(element);
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(XmlUsrConfParser, OpenedAndNotLoaded) {
  dom::Element element;
  ExpectHr(S_OK, m_parser.Open(m_dir.File(kSettings)));
  ExpectHr(E_FAIL, m_parser.GetSatSetting(&element));
  // There is nothing to write.
  ExpectHr(S_FALSE, m_parser.Save());
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(XmlUsrConfParser, MissingAndUnreadableFilesAreTheSkeleton) {
  Open();
  EXPECT_EQ(kSkeleton, Formatted(Root()));
  EXPECT_EQ(0U, m_dir.Count()) << "in memory alone";
  for (const char* bytes : {"", "no xml", "<USER_SETTINGS>"}) {
    Open(bytes);
    EXPECT_EQ(kSkeleton, Formatted(Root()));
    EXPECT_EQ(bytes, m_dir.Read(kSettings));
  }
}

TEST_F(XmlUsrConfParser, LoadingAlwaysCleans) {
  Open();
  m_parser.SetDirty(true);
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_FALSE(m_parser.IsDirty());
  m_dir.Write(kSettings, "broken");
  m_parser.SetDirty(true);
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_FALSE(m_parser.IsDirty());
}

// The reverse of the channel file's test. Nothing in the system sets the flag.
TEST_F(XmlUsrConfParser, SavesUnlessDirty) {
  Open();
  m_parser.SetDirty(true);
  ExpectHr(S_FALSE, m_parser.Save());
  EXPECT_EQ(0U, m_dir.Count());
  m_parser.SetDirty(false);
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_TRUE(m_dir.Has(kSettings));
  std::filesystem::remove(m_dir.File(kSettings));
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_TRUE(m_dir.Has(kSettings)) << "every save writes";
  ExpectHr(S_OK, m_parser.Load());
  EXPECT_EQ(kSkeleton, Formatted(Root()));
}

TEST_F(XmlUsrConfParser, AnUnreadableFileIsKeptBeforeItIsOverwritten) {
  const std::string bytes("<USER_SETTINGS>\0half", 20);
  Open(bytes);
  EXPECT_EQ(1U, m_dir.Count()) << "loading keeps nothing yet";
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_EQ(bytes, m_dir.Read(std::string(kSettings) + ".unreadable"));
  EXPECT_NE(bytes, m_dir.Read(kSettings));
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_EQ(2U, m_dir.Count()) << "once";
}

TEST_F(XmlUsrConfParser, AFailedSaveIsNotReported) {
  Open();
  std::filesystem::create_directory(m_dir.File(kSettings));
  ExpectHr(S_OK, m_parser.Save());
  EXPECT_TRUE(std::filesystem::is_directory(m_dir.File(kSettings)));
}

TEST_F(XmlUsrConfParser, SettingsAreFoundOrMade) {
  Open("<Any><SAT_SETTING n='1'/><SAT_SETTING n='2'/></Any>");
  EXPECT_EQ("1", Attribute(Setting(), "n"));
  Open("<Any><Other/></Any>");
  Setting();
  EXPECT_EQ("<Any>\n\t<Other/>\n\t<SAT_SETTING/>\n</Any>\n", Formatted(Root()))
      << "without dishes: those come with the skeleton alone";
  Open("<Any/>");
  ExpectHr(E_POINTER, m_parser.GetSatSetting(nullptr));
  EXPECT_EQ("<Any>\n\t<SAT_SETTING/>\n</Any>\n", Formatted(Root()));
}

TEST_F(XmlUsrConfParser, Dishes) {
  const TextDocument document(
      "<S><DISH_4 n='3'/><DISH_1 n='0'/><DISH_1 n='x'/><DISH_3 n='2'/><DISH_0/><DISH_5/></S>");
  dom::Element dish;
  for (const UINT number : {0U, 2U, 3U}) {
    ExpectHr(S_OK, CXmlUsrConfParser::GetDish(document.root, number, &dish));
    EXPECT_EQ(std::to_string(number), Attribute(dish, "n"));
  }
  ExpectHr(E_FAIL, CXmlUsrConfParser::GetDish(document.root, 1, &dish));
  for (const UINT number : {4U, 5U, 0xFFFFFFFFU}) {
    ExpectHr(E_FAIL, CXmlUsrConfParser::GetDish(document.root, number, &dish));
  }
  ExpectHr(E_POINTER, CXmlUsrConfParser::GetDish(document.root, 0, nullptr));
  ExpectHr(E_POINTER, CXmlUsrConfParser::GetDish(document.root, 9, nullptr));
  ExpectHr(E_POINTER, CXmlUsrConfParser::GetDish({}, 0, &dish));
}

TEST_F(XmlUsrConfParser, CountsAndItems) {
  const TextDocument document("<D><SAT n='0'/><Other/><SAT n='1'/><X><SAT/></X></D>");
  LONG count = 77;
  ExpectHr(E_POINTER, CXmlUsrConfParser::CountDishSats({}, &count));
  ExpectHr(E_POINTER, CXmlUsrConfParser::CountDishSats(document.root, nullptr));
  EXPECT_EQ(77, count);
  ExpectHr(S_OK, CXmlUsrConfParser::CountDishSats(document.root, &count));
  EXPECT_EQ(2, count);
  dom::Element sat;
  for (const LONG position : {0, 1}) {
    ExpectHr(S_OK, CXmlUsrConfParser::GetDishSat(document.root, position, &sat));
    EXPECT_EQ(std::to_string(position), Attribute(sat, "n"));
  }
  ExpectHr(E_INVALIDARG, CXmlUsrConfParser::GetDishSat(document.root, 2, &sat));
  ExpectHr(E_POINTER, CXmlUsrConfParser::GetDishSat(document.root, -1, &sat));
  ExpectHr(E_POINTER, CXmlUsrConfParser::GetDishSat(document.root, 0, nullptr));
  ExpectHr(E_POINTER, CXmlUsrConfParser::GetDishSat({}, 0, &sat));
}

TEST_F(XmlUsrConfParser, FindsOrMakesAnAssignment) {
  Open();
  const auto record = MakeSat("a");
  dom::Element first;
  ExpectHr(S_OK, CXmlUsrConfParser::FindOrCreateDishSat(Dish(2), record.Get(), &first));
  EXPECT_EQ("<DISH_3>\n\t<SAT/>\n</DISH_3>\n", Formatted(Dish(2)));
  ExpectHr(S_OK, xml::DishSatElementIO(first, record.Get(), xml::Direction::Write));
  ExpectHr(S_OK, first.SetInt("mark", 5));
  dom::Element second;
  ExpectHr(S_OK, CXmlUsrConfParser::FindOrCreateDishSat(Dish(2), record.Get(), &second));
  EXPECT_EQ("5", Attribute(second, "mark"));
  // Another dish is another matter.
  ExpectHr(S_OK, CXmlUsrConfParser::FindOrCreateDishSat(Dish(0), record.Get(), &second));
  EXPECT_EQ("<missing>", Attribute(second, "mark"));
}

TEST_F(XmlUsrConfParser, NullPlacesForAnAssignmentMakeNothing) {
  Open();
  dom::Element sat;
  const auto record = MakeSat("a");
  ExpectHr(E_POINTER, CXmlUsrConfParser::FindOrCreateDishSat(Dish(0), record.Get(), nullptr));
  ExpectHr(E_POINTER, CXmlUsrConfParser::FindOrCreateDishSat(Dish(0), nullptr, &sat));
  ExpectHr(E_POINTER, CXmlUsrConfParser::FindOrCreateDishSat({}, record.Get(), &sat));
  EXPECT_EQ(kSkeleton, Formatted(Root()));
}

TEST_F(XmlUsrConfParser, RemovesAllAssignments) {
  const TextDocument document(
      "<S><DISH_1><SAT/><Other/><SAT/></DISH_1><DISH_2><SAT/></DISH_2><DISH_2><SAT/></DISH_2>"
      "<DISH_4><SAT/><X><SAT/></X></DISH_4></S>");
  ExpectHr(S_OK, CXmlUsrConfParser::RemoveAllDishSats(document.root));
  EXPECT_EQ(
      "<S>\n\t<DISH_1>\n\t\t<Other/>\n\t</DISH_1>\n\t<DISH_2/>\n\t<DISH_2>\n\t\t<SAT/>\n\t</DISH_2>"
      "\n\t<DISH_4>\n\t\t<X>\n\t\t\t<SAT/>\n\t\t</X>\n\t</DISH_4>\n</S>\n",
      Formatted(document.root));
  ExpectHr(E_POINTER, CXmlUsrConfParser::RemoveAllDishSats({}));
}
