#include "desktop/control_window.h"

#include "desktop/window_case.h"
#include "host/help.h"

namespace qrn::test {
namespace {

using host::Control;

struct Settings : host::ControlForm {
  Settings() : ControlForm("settings") {
    title = "Weights";
    std::vector<host::PanelRow> rows;
    for (int i = 0; i < 3; ++i)
      rows.push_back({.cells = {"item " + std::to_string(i)}, .id = i, .checkable = true});
    list.setRows(rows);
    list.activated = [this](int row) { told += "opens " + std::to_string(row) + "\n"; };
    controls = {{.kind = Control::Kind::number,
                 .name = "weight",
                 .caption = "Weight",
                 .value = host::number(weight),
                 .low = 1,
                 .high = 20},
                {.kind = Control::Kind::check, .name = "on", .caption = "It counts", .value = host::flag(on)},
                {.kind = Control::Kind::list, .name = "list", .caption = "Items", .panel = &list}};
  }
  void Form_KeyDown(int keyCode, int shift) override {
    told += keyCode == '7' ? "seven\n" : "";
    ControlForm::Form_KeyDown(keyCode, shift);
  }
  int weight = 5;
  bool on = false;
  std::string told;
  host::Panel list;
};

class ControlCase : public WindowCase {
 protected:
  ControlCase() {
    world.forms.define("settings", [] { return std::make_unique<Settings>(); });
    world.forms.define(host::kHelpForm, [] { return std::make_unique<host::formHelp>(); });
    for (const char* name : {"settings", host::kHelpForm})
      world.forms.attach(name, desktop::controlView(stack));
    world.forms.show("settings");
    form = &world.forms.as<Settings>("settings");
    settings = stack.front();
    QTest::qWait(1);
    // form: what it has been told and what it holds now
    on("form", [this](const Words&) {
      tell(std::exchange(form->told, ""), form->weight, form->on ? " on" : " off", ", row ",
           form->list.current(), form->accepted ? ", accepted" : "", form->visible ? "" : ", gone");
      for (const host::PanelRow& row : form->list.rows())
        if (row.checked)
          tell("ticked " + row.cells[0]);
    });
    lookCommands();
  }
  QWidget& window() override { return stack.front() ? *stack.front() : *settings; }
  void lookCommands() {
    on("help", [this](const Words& words) {
      host::KeyHelp row{words[0], words.rest(1)};
      world.forms.as<host::formHelp>(host::kHelpForm).tell(std::vector<host::KeyHelp>(40, row));
      world.forms.show(host::kHelpForm);
      auto& list = dynamic_cast<QAbstractItemView&>(part("List1"));
      const int high = list.visualRect(list.model()->index(0, 1)).height();
      tell(part("card").rect().contains(list.parentWidget()->geometry()) ? "" : "sticks out of the card",
           high >= 2 * list.fontMetrics().height() ? "wrapped" : "on one line",
           list.viewport()->height() % high < high / 2 ? " and whole" : " and cut");
    });
    // Of a line across the box.
    on("colours", [this](const Words& words) {
      QWidget& box = part(words[0]);
      const QRect across(box.height() / 4, box.height() / 2, box.height() / 2, 1);
      const QImage line = box.grab(across).toImage();
      QSet<QRgb> colours;
      for (int x = 0; x < line.width(); ++x) colours.insert(line.pixel(x, 0));
      tell(colours.size() > 2 ? "a mark" : "empty");
    });
    // behind Y ...: where the window that stood before shows, from 50 to 250
    on("behind", [this](const Words& words) {
      QWidget front;
      front.setGeometry(0, 50, 300, 200);
      front.show();
      stack.raise(&front);
      const QImage image = stack.picture(QRect(0, 0, 300, 300), settings).toImage();
      for (const std::string& y : words)
        tell(y, image.pixelColor(150, std::stoi(y)).alpha() > 0 ? " shows" : " free");
    });
    on("letters", [this](const Words&) {
      QStringList texts;
      for (const QWidget* one : settings->findChildren<QWidget*>())
        texts << QString::fromStdString(textOf(*one)).split('\n');
      texts = texts.filter("&");
      texts.sort();
      tell(texts.join(" ").toStdString());
    });
  }

  Settings* form = nullptr;
  QWidget* settings = nullptr;
};

const bool kRegistered = registerCases<ControlCase>("ControlCase", QUORIN_CASES "/control_window.case");

}  // namespace
}  // namespace qrn::test
