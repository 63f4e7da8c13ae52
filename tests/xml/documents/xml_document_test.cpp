#include "xml/documents/xml_document.h"

#include <gtest/gtest.h>

#include <string>

#include "support/dom_text.h"
#include "support/expect.h"
#include "support/temp_dir.h"

namespace {

/// A parser with nothing of its own.
class Probe : public CXmlDocument {
 public:
  using CXmlDocument::Doc;
  using CXmlDocument::GetRoot;
  using CXmlDocument::IsPreFormatted;
  using CXmlDocument::LoadFile;
  using CXmlDocument::SaveFile;
  using CXmlDocument::SaveFormattedFile;

  bool Load() {
    bool success = false;
    EXPECT_EQ(S_OK, LoadFile(success));
    return success;
  }
};

class XmlDocument : public testing::Test {
 protected:
  void Write(const std::string& bytes) const { m_dir.Write("d.xml", bytes); }
  std::string Read(const std::string& name = "d.xml") const { return m_dir.Read(name); }
  std::string Path() const { return m_dir.File("d.xml"); }

  /// Loads the file, which cannot be read.
  void LoadUnreadable() {
    bool success = true;
    ExpectHr(S_OK, m_probe.Open(Path()));
    ExpectHr(S_FALSE, m_probe.LoadFile(success));
    EXPECT_FALSE(success);
  }
  /// Gives the empty document a root.
  void AddRoot() {
    dom::Element root;
    ExpectHr(S_OK, m_probe.Doc().CreateElement("NEW", root));
    ExpectHr(S_OK, m_probe.Doc().AppendChild(root));
  }

  TempDir m_dir;
  Probe m_probe;
};

}  // namespace

TEST_F(XmlDocument, ClosedAnswersFailure) {
  bool success = true;
  dom::Element root;
  ExpectHr(E_FAIL, m_probe.GetRoot(root));
  ExpectHr(E_FAIL, m_probe.LoadFile(success));
  EXPECT_FALSE(success);
  ExpectHr(E_FAIL, m_probe.SaveFile());
  ExpectHr(S_OK, m_probe.Close());
  EXPECT_EQ(0U, m_dir.Count());
}

TEST_F(XmlDocument, OpenMakesAnEmptyDocument) {
  Write("<a/>");
  ExpectHr(S_OK, m_probe.Open(Path()));
  dom::Element root;
  ExpectHr(S_FALSE, m_probe.GetRoot(root));
  EXPECT_FALSE(root);
  EXPECT_EQ("<a/>", Read());
}

TEST_F(XmlDocument, OpenClosesFirst) {
  Write("<a/>");
  ExpectHr(S_OK, m_probe.Open(Path()));
  EXPECT_TRUE(m_probe.Load());
  m_probe.SetDirty(true);
  ExpectHr(S_OK, m_probe.Open(m_dir.File("other.xml")));
  EXPECT_FALSE(m_probe.IsDirty());
  dom::Element root;
  ExpectHr(S_FALSE, m_probe.GetRoot(root));
}

TEST_F(XmlDocument, CloseClearsTheDirtyFlagAndTheDocument) {
  Write("<a/>");
  ExpectHr(S_OK, m_probe.Open(Path()));
  EXPECT_TRUE(m_probe.Load());
  dom::Element root;
  ExpectHr(S_OK, m_probe.GetRoot(root));
  m_probe.SetDirty(true);
  ExpectHr(S_OK, m_probe.Close());
  EXPECT_FALSE(m_probe.IsDirty());
  dom::Element gone;
  ExpectHr(E_FAIL, m_probe.GetRoot(gone));
  EXPECT_EQ("<a/>\n", Formatted(root)) << "who holds an element keeps it";
}

TEST_F(XmlDocument, OnlyAChangeOfTheFormMarksDirty) {
  ExpectHr(S_OK, m_probe.SetPreFormatted(false));
  EXPECT_FALSE(m_probe.IsDirty());
  ExpectHr(S_OK, m_probe.SetPreFormatted(true));
  EXPECT_TRUE(m_probe.IsDirty());
  EXPECT_TRUE(m_probe.IsPreFormatted());
  m_probe.SetDirty(false);
  ExpectHr(S_OK, m_probe.SetPreFormatted(true));
  EXPECT_FALSE(m_probe.IsDirty());
  ExpectHr(S_OK, m_probe.SetPreFormatted(false));
  EXPECT_TRUE(m_probe.IsDirty());
}

TEST_F(XmlDocument, TheFormSurvivesOpenAndClose) {
  ExpectHr(S_OK, m_probe.SetPreFormatted(true));
  ExpectHr(S_OK, m_probe.Open(Path()));
  ExpectHr(S_OK, m_probe.Close());
  EXPECT_TRUE(m_probe.IsPreFormatted());
  EXPECT_FALSE(m_probe.IsDirty());
}

TEST_F(XmlDocument, MissingAndEmptyFilesAreNotKept) {
  LoadUnreadable();
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(1U, m_dir.Count());

  Write("");
  LoadUnreadable();
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(XmlDocument, ReadableFilesAreNotKept) {
  Write("<a/>");
  ExpectHr(S_OK, m_probe.Open(Path()));
  EXPECT_TRUE(m_probe.Load());
  ExpectHr(S_OK, m_probe.SaveFile());
  ExpectHr(S_OK, m_probe.SaveFormattedFile("<a/>"));
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(XmlDocument, UnreadableFileIsKeptOnce) {
  const std::string bytes("<a><b>\0half", 11);
  Write(bytes);
  LoadUnreadable();
  EXPECT_EQ(1U, m_dir.Count()) << "loading keeps nothing yet";
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(bytes, Read("d.xml.unreadable"));
  EXPECT_NE(bytes, Read());
  ExpectHr(S_OK, m_probe.SaveFile());
  ExpectHr(S_OK, m_probe.SaveFormattedFile("<a/>"));
  EXPECT_EQ(2U, m_dir.Count());
}

TEST_F(XmlDocument, UnreadableFileIsKeptBeforeAFormattedSave) {
  Write("x");
  LoadUnreadable();
  ExpectHr(S_OK, m_probe.SaveFormattedFile("<a/>"));
  EXPECT_EQ("x", Read("d.xml.unreadable"));
  EXPECT_EQ(2U, m_dir.Count());
}

TEST_F(XmlDocument, KeptFilesAreNumbered) {
  for (const char* kept : {"d.xml.unreadable", "d.xml.unreadable.2", "d.xml.unreadable.3"}) {
    const std::string bytes = std::string("<broken ") + kept;
    Write(bytes);
    LoadUnreadable();
    AddRoot();
    ExpectHr(S_OK, m_probe.SaveFile());
    EXPECT_EQ(bytes, Read(kept));
  }
  EXPECT_EQ(4U, m_dir.Count());
}

TEST_F(XmlDocument, FileThatGoesInBetweenIsNotKept) {
  Write("broken");
  LoadUnreadable();
  Write("");
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(XmlDocument, FileThatComesInBetweenIsNotKept) {
  LoadUnreadable();
  Write("of another program");
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(1U, m_dir.Count()) << "it is not the file that could not be read";

  Write("");
  LoadUnreadable();
  Write("of another program");
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(XmlDocument, ReadableAgainIsNotKept) {
  Write("broken");
  LoadUnreadable();
  Write("<a/>");
  EXPECT_TRUE(m_probe.Load());
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(1U, m_dir.Count());
}

TEST_F(XmlDocument, CloseForgetsTheUnreadableFile) {
  Write("broken");
  LoadUnreadable();
  ExpectHr(S_OK, m_probe.Open(m_dir.File("other.xml")));
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ("broken", Read());
  EXPECT_EQ(2U, m_dir.Count());

  LoadUnreadable();
  ExpectHr(S_OK, m_probe.Open(m_dir.File("other.xml")));
  AddRoot();
  ExpectHr(S_OK, m_probe.SaveFile());
  EXPECT_EQ(2U, m_dir.Count()) << "the other one is there and was never unreadable";
}

TEST_F(XmlDocument, FailedSaveKeepsTheOldFile) {
  Write("<a/>");
  ExpectHr(S_OK, m_probe.Open(Path()));
  EXPECT_TRUE(m_probe.Load());
  dom::Element root;
  ExpectHr(S_OK, m_probe.GetRoot(root));
  const OLECHAR unwritable[] = {'a', 1, 'b'};
  ExpectHr(S_OK, root.SetWide("name", Bstr(WideView(unwritable, 3)).Get()));
  EXPECT_TRUE(FAILED(m_probe.SaveFile())) << "no XML can hold such a character";
  EXPECT_EQ("<a/>", Read());
  EXPECT_EQ(1U, m_dir.Count());
}
