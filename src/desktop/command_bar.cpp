#include "desktop/command_bar.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "host/host.h"
#include "look/theme.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr const char* kSheet = R"(
  #commandBar { background: @card; border: 2px solid @line; border-radius: 12px; }
  QPushButton { background: @card; color: @text; border: 2px solid transparent; border-radius: 8px;
                padding: @gappx @halfpx; font-size: @floorpx; min-height: 0; min-width: 0; }
  QPushButton:hover { background: @field; border-color: @line; }
  QPushButton:checked { background: @data; color: @onData; }
  QPushButton:disabled { color: @quiet; }
)";

}  // namespace

CommandBar::CommandBar(host::Form& form, std::function<bool()> shown, QWidget* parent)
    : QWidget(parent), form_(form), shown_(std::move(shown)) {
  setObjectName(host::kCommandBar);
  setAttribute(Qt::WA_StyledBackground);
  setCursor(Qt::ArrowCursor);
  new QHBoxLayout(this);
  hide();
}

void CommandBar::make(const std::vector<host::MenuRow>& rows) {
  for (QPushButton* button : buttons_) button->hide(), button->deleteLater();  // one may be down just now
  buttons_.clear();
  names_.clear();
  for (const host::MenuRow& row : rows) {
    auto* button = new QPushButton(this);
    button->setFocusPolicy(Qt::NoFocus);  // the keys are the form's
    button->setCheckable(row.checkable);
    connect(button, &QPushButton::clicked, this, [this, name = row.name] { press(name); });
    layout()->addWidget(button);
    buttons_.push_back(button);
    names_.push_back(row.name);
  }
}

// What is done may end the form, and this bar with it.
void CommandBar::press(const std::string& name) {
  host::FormRegistry& forms = *host::host().forms;
  const std::string form = form_.name;
  if (forms.find(form) == &form_ && form_.actions().perform(name))
    forms.refresh(form);
}

int CommandBar::sync(int width) {
  if (!shown_()) {
    hide();
    return 0;
  }
  const QWidget& window = *parentWidget();
  const std::vector<host::MenuRow> rows = form_.actions().menu(host::kCommandBar);
  const bool same =
      std::equal(rows.begin(), rows.end(), names_.begin(), names_.end(),
                 [](const host::MenuRow& row, const std::string& name) { return row.name == name; });
  if (!same)
    make(rows);
  for (std::size_t at = 0; at < rows.size(); ++at) {
    const host::MenuRow& row = rows[at];
    const QString caption = render::toQt(row.caption).replace('&', "&&");
    buttons_[at]->setText(row.key.empty() ? caption : caption + "  " + render::toQt(row.key));
    buttons_[at]->setEnabled(row.enabled);
    buttons_[at]->setChecked(row.checked);
  }
  setStyleSheet(qt::themed(kSheet, slideTheme(), window.height()));
  ensurePolished();
  const int gap = qt::pixels(look::Size::floor, window.height()) / 3;
  layout()->setContentsMargins(gap, gap, gap, gap);
  const QSize size = layout()->sizeHint().boundedTo(QSize(width, window.height()));
  setGeometry((width - size.width()) / 2, window.height() - size.height() - gap, size.width(), size.height());
  show();
  raise();
  return size.height() + 2 * gap;
}

}  // namespace qrn::desktop
