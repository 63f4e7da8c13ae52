// What MSXML alone would do otherwise.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/dom.h"
#include "platform/files.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

class DomDocument : public testing::Test {
 protected:
  void SetUp() override { ExpectHr(S_OK, m_document.Create()); }

  bool Load(const std::string& path) {
    bool success = false;
    const HRESULT hr = m_document.Load(path, success);
    ExpectHr(success ? S_OK : S_FALSE, hr);
    return success;
  }
  std::string RootName() const {
    dom::Element root;
    std::string name;
    if (m_document.DocumentElement(root) == S_OK) root.TagName(name);
    return name;
  }
  dom::Element MakeRoot() const {
    dom::Element root;
    ExpectHr(S_OK, m_document.AppendProcessingInstruction("xml", "version='1.0' encoding='utf-8'"));
    ExpectHr(S_OK, m_document.CreateElement("Root", root));
    ExpectHr(S_OK, m_document.AppendChild(root));
    return root;
  }

  TempDir m_dir;
  dom::Document m_document;
};

// MSXML takes a path for an address and would look for another file.
TEST_F(DomDocument, FileNamesAreNoAddresses) {
  for (const char* name : {"a#b.xml", "a%20b.xml", "a b&c.xml"}) {
    m_dir.Write(name, "<Named/>");
    EXPECT_TRUE(Load(m_dir.File(name))) << name;
    ExpectHr(S_OK, m_document.Save(m_dir.File(std::string("saved ") + name)));
    EXPECT_TRUE(Load(m_dir.File(std::string("saved ") + name))) << name;
    EXPECT_EQ("Named", RootName()) << name;
  }
  EXPECT_FALSE(Load("http://localhost/a.xml"));
}

std::wstring Long(const std::string& path) {
  return L"\\\\?\\" + std::wstring(path.begin(), path.end());
}

TEST_F(DomDocument, PathsHaveNoLimit) {
  std::string folder = m_dir.Path();
  std::vector<std::string> folders;
  while (folder.size() < 600) {
    folder += "\\" + std::string(60, 'd');
    ASSERT_TRUE(CreateDirectoryW(Long(folder).c_str(), nullptr));
    folders.push_back(folder);
  }
  const std::string path = folder + "\\file.xml";
  MakeRoot();
  ExpectHr(S_OK, m_document.Save(path));
  EXPECT_TRUE(files::Exists(path));
  EXPECT_TRUE(Load(path));
  EXPECT_TRUE(files::KeepUnreadable(path));
  EXPECT_EQ(files::Size(path), files::Size(path + ".unreadable"));
  // TempDir's own calls do not reach that far. Nothing else is left in the way.
  EXPECT_TRUE(DeleteFileW(Long(path).c_str()));
  EXPECT_TRUE(DeleteFileW(Long(path + ".unreadable").c_str()));
  for (; !folders.empty(); folders.pop_back()) {
    EXPECT_TRUE(RemoveDirectoryW(Long(folders.back()).c_str()));
  }
}

TEST_F(DomDocument, FailedLoadEmptiesTheDocument) {
  m_dir.Write("good.xml", "<Good/>");
  m_dir.Write("bad.xml", "<Bad>");
  for (const char* name : {"bad.xml", "missing.xml"}) {
    EXPECT_TRUE(Load(m_dir.File("good.xml")));
    EXPECT_EQ("Good", RootName());
    EXPECT_FALSE(Load(m_dir.File(name)));
    EXPECT_EQ("", RootName()) << name;
  }
}

TEST_F(DomDocument, EntitiesAreNotFetched) {
  m_dir.Write("secret.txt", "secret");
  m_dir.Write("a.xml", "<!DOCTYPE R [<!ENTITY e SYSTEM 'secret.txt'>]><R><A n=''/>&e;</R>");
  Load(m_dir.File("a.xml"));
  m_document.Save(m_dir.File("b.xml"));
  EXPECT_EQ(std::string::npos, m_dir.Read("b.xml").find("secret<"));
}

TEST_F(DomDocument, TextThatNoFileMayHoldIsRefused) {
  m_dir.Write("old.xml", "old");
  const dom::Element root = MakeRoot();
  for (const WideView bad : {WideView(L"a\x0001"
                                      L"b"),
                             WideView(L"\xFFFF")}) {
    ExpectHr(S_OK, root.SetWide("name", Bstr(bad).Get()));
    ExpectHr(E_FAIL, m_document.Save(m_dir.File("old.xml")));
    EXPECT_EQ("old", m_dir.Read("old.xml"));
  }
  ExpectHr(S_OK, root.SetWide("name", Wide("good").Get()));
  ExpectHr(S_OK, m_document.Save(m_dir.File("old.xml")));
  EXPECT_TRUE(Load(m_dir.File("old.xml")));
  EXPECT_EQ(1U, m_dir.Count());
}

}  // namespace
