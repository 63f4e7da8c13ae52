// Random trees and random changes, against a plain model.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/dom.h"
#include "platform/text.h"
#include "support/dom_tools.h"
#include "support/expect.h"
#include "support/temp_dir.h"
#include "support/wine.h"

namespace {

using namespace dom_tools;

class Random {
 public:
  explicit Random(unsigned seed) : m_engine(seed) {}
  std::size_t Below(std::size_t limit) { return m_engine() % limit; }
  const char* Name() {
    static const char* const names[] = {"a", "b", "Channel", "name", "x.y-z", "_", "index"};
    return names[Below(std::size(names))];
  }
  /// Text of well-formed characters that XML has, every awkward one among them.
  std::string Value() {
    static const char* const parts[] = {"&",
                                        "<",
                                        ">",
                                        "\"",
                                        "'",
                                        "\t",
                                        "\r",
                                        "\n",
                                        " ",
                                        "\r\n",
                                        "&amp;",
                                        "]]>",
                                        "<!--",
                                        "a",
                                        "42",
                                        "-1",
                                        "\xC3\xA9",
                                        "\xE3\x81\x82",
                                        "\xF0\x9F\x93\xBA",
                                        "\xEF\xBF\xBD",
                                        "ordinary text"};
    std::string value;
    for (std::size_t left = Below(6); left > 0; --left) value += parts[Below(std::size(parts))];
    if (Below(50) == 0) value.append(Below(3000), 'l');
    return value;
  }

 private:
  std::mt19937 m_engine;
};

/// A model of an element. Elements that were removed live on in the list of all of them.
struct Model {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<Model*> children;
  Model* parent = nullptr;
  dom::Element element;

  void Set(const std::string& key, const std::string& value) {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&key](const auto& pair) { return pair.first == key; });
    if (found == attributes.end()) {
      attributes.emplace_back(key, value);
    } else {
      found->second = value;
    }
  }
  void Leave() {
    if (parent) std::erase(parent->children, this);
    parent = nullptr;
  }
  bool IsBelow(const Model* top) const { return this == top || (parent && parent->IsBelow(top)); }
  std::string Text() const {
    std::string text = name;
    for (const auto& [key, value] : attributes) text += '[' + key + '=' + value + ']';
    std::string below;
    for (const Model* child : children) below += (below.empty() ? "" : " ") + child->Text();
    return below.empty() ? text : text + '(' + below + ')';
  }
};

class Trial {
 public:
  explicit Trial(unsigned seed) : m_random(seed), m_document(NewDocumentWithRoot("Root")) {
    m_all.push_back(std::make_unique<Model>());
    m_all[0]->name = "Root";
    m_all[0]->element = Root(m_document);
  }

  void Step() {
    switch (m_random.Below(8)) {
      case 0:
      case 1:
        return Create();
      case 2:
      case 3:
        return SetAttribute();
      case 4:
        return Insert();
      case 5:
        return m_random.Below(3) ? Insert() : Remove();
      case 6:
        return Read();
      default:
        return LetGo();
    }
  }
  void Check() {
    for (const auto& model : m_all) {
      if (!model->parent && model->element) {
        EXPECT_EQ(model->Text(), Describe(model->element));
      }
    }
  }
  void CheckFile() {
    const TempDir dir;
    ExpectHr(S_OK, m_document.Save(dir.File("a.xml")));
    dom::Document loaded = NewDocument();
    bool success = false;
    ExpectHr(S_OK, loaded.Load(dir.File("a.xml"), success));
    EXPECT_EQ(m_all[0]->Text(), Describe(Root(loaded)));
  }

 private:
  /// Some element that is held.
  Model& Any() {
    for (;;) {
      Model& model = *m_all[m_random.Below(m_all.size())];
      if (model.element) return model;
    }
  }
  void Create() {
    m_all.push_back(std::make_unique<Model>());
    m_all.back()->name = m_random.Name();
    m_all.back()->element = NewElement(m_document, m_all.back()->name.c_str());
  }
  void SetAttribute() {
    Model& model = Any();
    const char* name = m_random.Name();
    const std::string value = m_random.Below(3) ? m_random.Value() : "12345";
    if (value == "12345") {
      ExpectHr(S_OK, model.element.SetInt(name, 12345));
    } else {
      ExpectHr(S_OK, model.element.SetWide(name, text::FromUtf8(value).Get()));
    }
    model.Set(name, value);
  }
  void Insert() {
    Model& parent = Any();
    Model& child = Any();
    // The document is to be saved; and no implementation need refuse a circle.
    if (&child == m_all[0].get() || parent.IsBelow(&child)) return;
    std::vector<Model*> places;
    for (Model* sibling : parent.children) {
      if (sibling->element && sibling != &child) places.push_back(sibling);
    }
    places.push_back(nullptr);
    Model* before = places[m_random.Below(places.size())];
    ExpectHr(S_OK,
             parent.element.InsertBefore(child.element, before ? before->element : dom::Element()));
    child.Leave();
    child.parent = &parent;
    const auto place = before ? std::find(parent.children.begin(), parent.children.end(), before)
                              : parent.children.end();
    parent.children.insert(place, &child);
  }
  void Remove() {
    Model& child = Any();
    Model& parent = m_random.Below(4) && child.parent ? *child.parent : Any();
    if (!parent.element) return;
    ExpectHr(child.parent == &parent ? S_OK : E_INVALIDARG,
             parent.element.RemoveChild(child.element));
    if (child.parent == &parent) child.Leave();
  }
  void Read() {
    const Model& model = Any();
    const char* name = m_random.Name();
    std::string expected = "(none)";
    for (const auto& [key, value] : model.attributes) {
      if (key == name) expected = value;
    }
    EXPECT_EQ(expected, Utf8(model.element, name));
    EXPECT_EQ(!model.children.empty(), model.element.HasChildNodes());
  }
  /// Drops a handle. A root that nobody holds is gone; what is held below it goes on.
  void LetGo() {
    if (RunsOnWine() || m_random.Below(3)) return;
    Model& model = Any();
    if (&model == m_all[0].get()) return;
    model.element = dom::Element();
    if (!model.parent) Orphan(model);
  }
  static void Orphan(Model& gone) {
    const std::vector<Model*> children = gone.children;
    for (Model* child : children) {
      child->Leave();
      if (!child->element) Orphan(*child);
    }
  }

  Random m_random;
  dom::Document m_document;
  std::vector<std::unique_ptr<Model>> m_all;
};

TEST(DomProperty, TreesBehaveAsTheModel) {
  for (unsigned seed = 1; seed <= 20 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Trial trial(seed);
    for (int step = 0; step < 400; ++step) {
      trial.Step();
      if (step % 20 == 0) trial.Check();
    }
    trial.Check();
    trial.CheckFile();
  }
}

TEST(DomProperty, RandomTreesComeBackFromTheirFiles) {
  const TempDir dir;
  for (unsigned seed = 100; seed < 120; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    dom::Document document = NewDocumentWithRoot("Root");
    std::vector<dom::Element> elements = {Root(document)};
    for (std::size_t count = random.Below(60); count > 0; --count) {
      elements.push_back(AddChild(elements[random.Below(elements.size())], random.Name()));
      for (std::size_t left = random.Below(12); left > 0; --left) {
        const std::string value = random.Value();
        ExpectHr(S_OK, elements.back().SetWide(random.Name(), text::FromUtf8(value).Get()));
      }
    }
    const std::string expected = Describe(Root(document));
    for (int round = 0; round < 3; ++round) {
      ExpectHr(S_OK, document.Save(dir.File("a.xml")));
      document = NewDocument();
      bool success = false;
      ExpectHr(S_OK, document.Load(dir.File("a.xml"), success));
      EXPECT_EQ(expected, Describe(Root(document)));
    }
  }
}

}  // namespace
