// What the painter makes of a surface, told by its pixels.
#include "render/render.h"

#include <QFile>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>

#include "desktop/window_case.h"
#include "render/fonts.h"
#include "support/disk.h"

namespace qrn::test {
namespace {

using host::Element;

std::int32_t colourOf(const std::string& name) {
  const QColor colour(QString::fromStdString(name));
  return host::RGB(colour.red(), colour.green(), colour.blue());
}

class RenderCase : public WindowCase {
 protected:
  RenderCase() {
    // surface WIDTH HEIGHT [COLOUR [COLOUR]]: in pixels, on a ground of one colour or from one to the other
    on("surface", [this](const Words& words) {
      surface_ = host::Surface();
      surface_.width = words.number(0) * 15;
      surface_.height = words.number(1) * 15;
      surface_.background = colourOf(words.size() > 2 ? words[2] : "white");
      surface_.gradient = words.size() > 3;
      surface_.backgroundEnd = colourOf(words.word(3));
    });
    // rectangle|ellipse|triangle|label LEFT TOP WIDTH HEIGHT [WHAT=VALUE ...], line X1 Y1 X2 Y2 ...: in front
    // of what is there already
    for (const auto& [name, kind] : {std::pair{"label", Element::Kind::label},
                                     {"line", Element::Kind::line},
                                     {"rectangle", Element::Kind::rectangle},
                                     {"ellipse", Element::Kind::ellipse},
                                     {"triangle", Element::Kind::triangle}})
      on(name, [this, kind = kind](const Words& words) {
        Element made;
        made.kind = kind;
        made.bordered = false;
        made.left = made.x1 = std::stod(words[0]) * 15;
        made.top = made.y1 = std::stod(words[1]) * 15;
        made.width = made.x2 = std::stod(words[2]) * 15;
        made.height = made.y2 = std::stod(words[3]) * 15;
        change(made, words);
        host::ElementArray& parts = surface_.array("parts", host::Layer::keys);
        parts.add(parts.count(), std::move(made));
      });
    on("change", [this](const Words& words) { change(*surface_.find("parts", words.number(0)), words); });
    on("ground", [this](const Words& words) { surface_.backgroundFile = folder.file(words[0]); });
    on("draw", [this](const Words& words) {
      image = render::surfaceImage(surface_, {words.number(0), words.number(1)});
    });
    // halves FILE COLOUR COLOUR: a picture of two pixels
    on("halves", [this](const Words& words) {
      QImage halves(2, 1, QImage::Format_RGB32);
      for (int i = 0; i < 2; ++i)
        halves.setPixelColor(i, 0, QColor(words[static_cast<std::size_t>(i) + 1].c_str()));
      halves.save(QString::fromStdString(folder.file(words[0])));
    });
    on("system", [this](const Words& words) {
      tell(render::toColour(static_cast<std::int32_t>(std::stoul(words[0], nullptr, 16)))
               .name()
               .toStdString());
    });
    fileCommands();
    pixelCommands();
  }
  std::string shown(std::string told) const override {
    return replaceAll(std::move(told), folder.path(), "DIR");
  }
  static void change(Element& element, const Words& words) {
    static constexpr std::string_view kToward = "rightdown left up   ";
    for (const std::string& word : words) {
      const std::string what = word.substr(0, word.find('=')), value = word.substr(word.find('=') + 1);
      if (what == "fill")
        element.backColour = colourOf(value);
      else if (what == "to")
        element.gradient = true, element.backColourEnd = colourOf(value);
      else if (what == "opacity")
        element.opacity = std::stod(value);
      else if (what == "round")
        element.cornerRadius = std::stod(value) * 15;
      else if (what == "wide")
        element.borderWidth = std::stod(value) * 15;
      else if (what == "toward")
        element.toward = static_cast<host::Toward>(kToward.find(value) / 5);
      else if (what == "align")
        element.align = value == "left"    ? host::Align::left
                        : value == "right" ? host::Align::right
                                           : host::Align::centre;
      else if (what == "size")
        element.font.size = std::stod(value);
      else if (what == "text")
        element.caption = value;
      element.wordWrap |= what == "wrapped";
      element.visible &= what != "hidden";
      element.borderStyle = what == "dotted" ? 3 : element.borderStyle;
    }
  }
  void fileCommands() {
    // save FILE WIDTH HEIGHT; load FILE: the picture to be looked at
    on("save", [this](const Words& words) {
      render::saveSurface(surface_, words[0][0] == '/' ? words[0] : folder.file(words[0]), words.number(1),
                          words.number(2));
    });
    on("load", [this](const Words& words) {
      image.load(QString::fromStdString(folder.file(words[0])));
      tell(image.width(), "x", image.height());
    });
    on("holds", [this](const Words& words) {
      tell(readFile(folder.file(words[0])).find(words.rest(1)) == std::string::npos ? "no" : "yes");
    });
  }
  void pixelCommands() {
    // pixels X,Y ...; tones X,Y ...: red, green and blue to the next sixteenth
    on("pixels", [this](const Words& words) {
      for (const std::string& place : words) tell(place, " ", pixel(place).name().toStdString());
    });
    on("tones", [this](const Words& words) {
      for (const std::string& place : words) {
        const QColor colour = pixel(place);
        tell(place, " ", (colour.red() + 8) / 16, " ", (colour.green() + 8) / 16, " ",
             (colour.blue() + 8) / 16);
      }
    });
    // row Y: how much of the row above or below that place is dark; column X: how many pixels are
    on("row", [this](const Words& words) {
      int dark = 0;
      for (int x = 0; x < image.width(); ++x)
        dark += isDark(x, words.number(0), 64) || isDark(x, words.number(0) - 1, 64) ? 1 : 0;
      const double share = static_cast<double>(dark) / image.width();
      tell(share == 1 ? "all" : share > 0.2 && share < 0.8 ? "half" : "too much or too little");
    });
    on("column", [this](const Words& words) {
      int dark = 0;
      for (int y = 0; y < image.height(); ++y) dark += isDark(words.number(0), y, 64) ? 1 : 0;
      tell(dark);
    });
    // ink LEFT TOP RIGHT BOTTOM [HIGH]: what is dark stands inside and is at least so high
    on("ink", [this](const Words& words) {
      const QRect ink = inkOf(image),
                  wanted(QPoint(words.number(0), words.number(1)), QPoint(words.number(2), words.number(3)));
      tell(ink.isEmpty()                                             ? "nothing"
           : wanted.contains(ink) && ink.height() >= words.number(4) ? "inside"
                                                                     : "ink",
           ink.isEmpty() || wanted.contains(ink)
               ? ""
               : " from " + std::to_string(ink.left()) + "," + std::to_string(ink.top()) + " to " +
                     std::to_string(ink.right()) + "," + std::to_string(ink.bottom()));
    });
    // wider TEXT TEXT: whether the first one is
    on("wider", [this](const Words& words) { tell(widthOf(words[0]) > widthOf(words[1]) ? "yes" : "no"); });
  }
  QImage drawn(const std::string& text, double size, QSize pixels = {600, 100}) {
    Element label;
    label.left = label.top = 150;
    label.width = 500 * 15;
    label.caption = text;
    label.font.size = size;
    host::Surface one;
    one.width = 600 * 15;
    one.height = 100 * 15;
    one.background = 0xffffff;
    one.add(host::Layer::keys, "parts", 0, label);
    return render::surfaceImage(one, pixels);
  }
  int widthOf(const std::string& text) { return inkOf(drawn(text, 24)).width(); }
  QColor pixel(const std::string& place) const {
    return image.pixelColor(std::stoi(place), std::stoi(place.substr(place.find(',') + 1)));
  }
  bool isDark(int x, int y, int below) const { return qGray(image.pixel(x, y)) < below; }
  // The box of everything that is not the white ground.
  static QRect inkOf(const QImage& of) {
    QRect ink;
    for (int y = 0; y < of.height(); ++y)
      for (int x = 0; x < of.width(); ++x)
        if (qGray(of.pixel(x, y)) < 128)
          ink |= QRect(x, y, 1, 1);
    return ink;
  }

  const Folder folder;
  host::Surface surface_;
  QImage image;
};

const bool kRegistered = registerCases<RenderCase>("RenderCase", QUORIN_CASES "/render.case");

using Render = RenderCase;

TEST_F(Render, WidthsGrowEvenlyWithTheSize) {
  const double small = render::textWidth("Which proposal?", "Arial", 10, false, false);
  EXPECT_GT(small, 0);
  EXPECT_NEAR(render::textWidth("Which proposal?", "Arial", 37.5, false, false), small * 3.75, 0.01);
  EXPECT_DOUBLE_EQ(render::textWidth("Which proposal?\r\nno", "Arial", 10, false, false), small);
  EXPECT_GT(render::textWidth("Which proposal?", "Arial", 10, true, false), small);
  EXPECT_NEAR(render::lineHeight("Arial", 20), 20 * 20 * 1.117, 2);
  EXPECT_TRUE(render::fontInstalled("Arial"));
  EXPECT_FALSE(render::fontInstalled("No Such Face"));
}

TEST_F(Render, TheLabelIsAsWideAsItWasMeasured) {
  const std::string text(40, 'H');
  for (const double size : {13.5, 13.8, 13.9, 14.2})  // 18 pixels, then between them and 19
    EXPECT_NEAR(inkOf(drawn(text, size)).width(), render::textWidth(text, "Arial", size, false, false) / 15,
                5);
  const double measured = render::textWidth("HHHHHHHHHHHH", "Arial", 30, false, false) / 15;
  EXPECT_NEAR(inkOf(drawn("HHHHHHHHHHHH", 30)).width(), measured, 8);
  EXPECT_NEAR(inkOf(drawn("HHHHHHHHHHHH", 30, {1800, 300})).width(), 3 * measured, 24);
}

// Two characters of a script are two shapes, neither of them that of a character without a glyph, and the
// face that we chose draws them.
TEST_F(Render, EveryScriptIsDrawn) {
  const auto picture = [this](const std::string& text) { return drawn(text, 30); };
  const auto faceOf = [](const std::string& text) {
    QTextLayout layout(render::toQt(text), render::deviceFont({"Arial", 30, false, false, false}, 1, 96));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.glyphRuns().first().rawFont().familyName().toLower().left(13).toStdString();
  };
  const QImage box = picture("\U0010FF00"), nothing = picture("");
  struct Script {
    const char *face, *first, *second;
  };
  QStringList absent;
  for (const Script& script : {Script{"Noto Sans CJK SC", "骨", "直"}, Script{"Noto Sans Thai", "ก", "ภ"},
                               Script{"Noto Sans Devanagari", "क", "ह"}, Script{"Noto Sans Arabic", "ع", "س"},
                               Script{"Noto Sans Hebrew", "ע", "ב"}, Script{"Noto Color Emoji", "⚓", "😀"}}) {
    if (!QFontDatabase::hasFamily(script.face)) {
      absent << script.face;
      continue;
    }
    const QImage first = picture(script.first), second = picture(script.second);
    EXPECT_TRUE(first != second && first != box && second != box && first != nothing) << script.face;
    // The last letters of the Chinese face name the country's forms, which follow the machine's language.
    EXPECT_EQ(faceOf(script.first), QString(script.face).toLower().left(13).toStdString());
  }
  if (!absent.isEmpty())
    GTEST_SKIP() << "not installed: " << absent.join(", ").toStdString();
}

TEST_F(Render, TextWithoutBlanksBreaksWhereItsScriptMay) {
  const auto wrapped = [](const std::string& text) { return host::wrapText(text, {"Arial", 20}, 15 * 150); };
  const auto lines = wrapped("我们应该先做什么，为什么？请投票。Yes, first-rate 你好");
  ASSERT_GT(lines.size(), 3U);
  std::string all;
  for (const std::string& line : lines) {
    EXPECT_LE(render::textWidth(line, "Arial", 20, false, false), 15 * 150) << line;
    for (const char* mark : {"，", "？", "。"}) EXPECT_FALSE(line.starts_with(mark)) << line;
    all += line;
  }
  EXPECT_NE(all.find("first-rate"), std::string::npos) << all;
  EXPECT_EQ(wrapped("first-rate/second-rate/third-rate").size(), 1U) << "other words stay whole";
}

}  // namespace
}  // namespace qrn::test
