// Texts that look like XML and are not quite, from random numbers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "support/random.h"

namespace zortunedex::kit {

/// A piece of a vocabulary of markup, broken markup and bytes.
inline std::string_view HostilePiece(Random& random) {
  using std::string_view_literals::operator""sv;
  static constexpr std::string_view kPieces[] = {
      "<",
      ">",
      "/>",
      "</",
      "\"",
      "'",
      "=",
      "&",
      ";",
      "&amp;",
      "&#65;",
      "&#1;",
      "&#xD800;",
      "&lt;",
      " ",
      "\t",
      "\r\n",
      "\n",
      "<a>",
      "</a>",
      "<a/>",
      "<b x=\"1\"",
      " y=\"2\"",
      " x='3'",
      "<a x=\"",
      "\"/>",
      "\">",
      "<!--",
      "-->",
      "--",
      "<![CDATA[",
      "]]>",
      "<?p ",
      "?>",
      "<?xml ",
      "<!DOCTYPE a",
      "[",
      "]",
      "<!",
      "a",
      "-",
      "name",
      "\0"sv,
      "\x01",
      "\x80",
      "\xC3\xA9",
      "\xFF",
      "\xEF\xBF\xBF",
      "<p:a",
      " xmlns:p='u'",
      " p:x='1'",
      " xmlns='v'",
      ":",
      "<a\n",
      "<Channel ",
      "name=\"",
      " name=\"x",
      "\" index=\"5",
      "</Channel>",
      "x=1",
      "<?xml version=\"1.0\"?>",
      "text",
      "</b>",
      "<b>",
      "\xEF\xBB\xBF",
  };
  return kPieces[random(static_cast<std::uint32_t>(std::size(kPieces)))];
}

/// Often with an element around it all, so that not everything is outside.
inline std::string HostileText(Random& random, std::uint32_t mostPieces) {
  const bool isFramed = random(3) != 0;
  std::string text = isFramed ? "<a>" : "";
  for (std::uint32_t i = random(mostPieces); i > 0; --i) text += HostilePiece(random);
  return isFramed ? text + "</a>" : text;
}

/// A good text with a few bytes changed, pieces put in and parts taken out.
inline std::string Mutated(std::string text, Random& random, std::uint32_t mostChanges) {
  for (std::uint32_t i = 1 + random(mostChanges); i > 0; --i) {
    const std::size_t place = random(static_cast<std::uint32_t>(text.size() + 1));
    switch (random(4)) {
      case 0:
        text.insert(place, HostilePiece(random));
        break;
      case 1:
        text.erase(place, 1 + random(8));
        break;
      case 2:
        if (place < text.size()) text[place] = static_cast<char>(random(256));
        break;
      default:
        text.replace(place, std::min<std::size_t>(text.size() - place, random(4)),
                     HostilePiece(random));
        break;
    }
  }
  return text;
}

/// What may stand raw in a value of the pre-formatted form: markup, also that of the form itself.
inline std::string HostileValue(Random& random) {
  static constexpr std::string_view kPieces[] = {
      "a",
      "\"",
      "\" ",
      "\"/>",
      "\">",
      "/>",
      "<",
      ">",
      "&",
      "&amp;",
      " x=\"1",
      "name=\"",
      "\" nameDisplay=\"",
      "\" index=\"5",
      "\" lock=\"0\"/>",
      "\r\n",
      "\r\n<b",
      "<b>",
      "</b>",
      "<!--",
      "-->",
      "]]>",
      "</Channel>",
      "<Channel name=\"",
      "\t",
      "'",
      "=",
      " ",
      "<?p ?>",
      "\x01",
  };
  std::string text;
  while (random(3) != 0) text += kPieces[random(static_cast<std::uint32_t>(std::size(kPieces)))];
  return text;
}

/// A file of the pre-formatted form, with such values in half of its channels.
inline std::string HostilePreFormattedText(Random& random) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<CHANNELTABLE>\r\n"
      "\t<Country name=\"Germany\" countrycode=\"49\">\r\n"
      "\t\t<ChannelSet type=\"FM-RADIO\" inputSignalType=\"5\">\r\n";
  for (std::uint32_t i = 1 + random(4); i > 0; --i) {
    text += "\t\t\t<Channel name=\"" + (random(2) == 0 ? HostileValue(random) : "A") +
            "\" nameDisplay=\"" + (random(3) == 0 ? HostileValue(random) : "B") + "\" index=\"" +
            std::to_string(i) + "\" freq=\"89000\" favor=\"0\" lock=\"0\"/>\r\n";
  }
  return text + "\t\t</ChannelSet>\r\n\t</Country>\r\n</CHANNELTABLE>\r\n";
}

}  // namespace zortunedex::kit
