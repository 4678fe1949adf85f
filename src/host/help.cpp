#include "host/help.h"

#include <algorithm>

#include "host/host.h"

namespace qrn::host {

namespace {

constexpr int kMostRows = 14;
constexpr double kMostForKeys = 0.5;  // of the panel's width
constexpr double kWideKeys = 1.1;     // their letters are wider than those of sentences

}  // namespace

formHelp::formHelp() : ControlForm(kHelpForm) {
  title = "Keys";
  acceptCaption = "Close";
  dismissCaption = "";
  List1.columns = {{.title = "Key", .width = kMostForKeys}, {.title = "What it does"}};
  controls = {{.kind = Control::Kind::list, .name = "List1", .panel = &List1}};
}

void formHelp::tell(const std::vector<KeyHelp>& help) {
  std::vector<PanelRow> rows;
  std::size_t keys = 1, captions = 1;  // letters of the longest
  for (const KeyHelp& one : help) {
    rows.push_back({.cells = {one.keys, one.caption}, .id = static_cast<int>(rows.size())});
    keys = std::max(keys, one.keys.size());
    captions = std::max(captions, one.caption.size());
  }
  List1.columns[0].width =
      std::min(kMostForKeys, kWideKeys * static_cast<double>(keys) / static_cast<double>(keys + captions));
  controls.front().rows = std::min(kMostRows, static_cast<int>(rows.size()));
  List1.setRows(std::move(rows));
}

void formHelp::Form_KeyDown(int keyCode, int shift) {
  const bool closes = keyCode == key::f1 || keyCode == key::space;
  ControlForm::Form_KeyDown(closes ? key::escape : keyCode, shift);
}

void showHelp(Form& form) {
  FormRegistry& forms = *host().forms;
  if (forms.isLoaded(kHelpForm))
    return;
  forms.define(kHelpForm, [] { return std::make_unique<formHelp>(); });
  forms.as<formHelp>(kHelpForm).tell(form.actions().help());
  forms.showModal(kHelpForm);
  forms.unload(kHelpForm);
}

Action helpAction(Form& form) {
  return {.name = "help",
          .caption = "Keys",
          .keys = {{key::f1, kAnyShift}},
          .perform = [&form] { showHelp(form); },
          .help = "These keys"};
}

}  // namespace qrn::host
