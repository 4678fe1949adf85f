#include "adapters/qt/dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QSplitter>
#include <QTreeView>

#include "adapters/qt/pop_up.h"
#include "adapters/qt/question_box.h"
#include "adapters/qt/wait_line.h"
#include "host/wait.h"

namespace qrn::qt {

namespace {

QString text(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

// A key that is still held from before, or held too long, answers no question.
class HeldKeysAnswerNothing : public QObject {
 public:
  HeldKeysAnswerNothing() { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress)
      return false;
    const auto* stroke = static_cast<QKeyEvent*>(event);
    return stroke->isAutoRepeat() && (stroke->key() == Qt::Key_Return || stroke->key() == Qt::Key_Enter ||
                                      stroke->key() == Qt::Key_Escape);
  }
};

// Shows the dialog and goes on delivering votes and timers until it is answered or gone.
int ask(QDialog& dialog) {
  const HeldKeysAnswerNothing held;
  dialog.setModal(true);
  dialog.show();
  dialog.raise();
  dialog.activateWindow();
  host::waitUntil([&] { return !dialog.isVisible(); });
  return dialog.result();
}

// "Exercises (*.mtx)|*.mtx" becomes "Exercises (*.mtx)"; the pattern is added where the description lacks it.
QString nameFilter(const std::string& filter) {
  const QStringList parts = text(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString pattern = QString(parts[i + 1]).replace(';', ' ').simplified();
    const qsizetype bracket = parts[i].lastIndexOf('(');
    filters << (bracket < 0 ? parts[i] : parts[i].left(bracket)).trimmed() + " (" + pattern + ")";
  }
  return filters.isEmpty() ? QString("All files (*)") : filters.join(";;");
}

// Names take what the other columns leave.
void fitColumns(QFileDialog& box) {
  for (const auto* files : box.findChildren<QTreeView*>()) {
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
  for (auto* halves : box.findChildren<QSplitter*>())
    halves->setSizes({box.width() / 5, box.width() * 4 / 5});
}

}  // namespace

QtDialogs::QtDialogs(std::function<QWidget*()> parent) : parent_(std::move(parent)) {}

QtDialogs::~QtDialogs() = default;

QWidget* QtDialogs::parent() const {
  return parent_ ? parent_() : nullptr;
}

host::Answer QtDialogs::MsgBox(const std::string& message, const std::string& title, host::Buttons buttons,
                               host::Icon icon, std::optional<host::Answer> enter) {
  const QPointer<QuestionBox> box =
      new QuestionBox(text(message), buttons, icon, enter.value_or(host::safeAnswer(buttons)), parent());
  box->setWindowTitle(text(title));
  const host::Answer unanswered = box->answer();
  ask(*box);
  if (!box)  // its parent window went away while it stood
    return unanswered;
  const host::Answer answer = box->answer();
  delete box;
  return answer;
}

std::optional<std::string> QtDialogs::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& preset) {
  const QPointer<InputCard> box = new InputCard(text(prompt), text(preset), parent());
  box->setWindowTitle(text(title));
  const int result = ask(*box);
  std::optional<std::string> answer;
  if (box && result == QDialog::Accepted)
    answer = box->text().toStdString();
  delete box;
  return answer;
}

std::optional<std::string> QtDialogs::FileDialog(const host::FileQuestion& question) {
  for (;;) {
    const std::optional<std::string> chosen = chooseFile(question);
    const std::string why = chosen && question.save && whyNot_ ? whyNot_(*chosen) : "";
    if (why.empty())
      return chosen;
    MsgBox(why + ".", host::kTitle, host::Buttons::ok, host::Icon::exclamation, std::nullopt);
  }
}

std::optional<std::string> QtDialogs::chooseFile(const host::FileQuestion& question) {
  const QPointer<QFileDialog> box =
      new QFileDialog(parent(), text(question.title), text(question.folder), nameFilter(question.filter));
  box->setOption(QFileDialog::DontUseNativeDialog);
  box->setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  box->setFileMode(question.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  box->resize(960, 640);
  fitColumns(*box);
  if (!question.name.empty())
    box->selectFile(text(question.name));
  const int result = ask(*box);
  std::optional<std::string> answer;
  if (box && result == QDialog::Accepted && !box->selectedFiles().isEmpty())
    answer = QDir::toNativeSeparators(box->selectedFiles().constFirst()).toStdString();
  delete box;
  return answer;
}

std::optional<std::string> QtDialogs::Menu(const std::vector<host::MenuRow>& rows, bool atMouse) {
  const HeldKeysAnswerNothing held;
  const QPointer<PopUp> menu = new PopUp(rows, parent());
  menu->showAt(atMouse);
  host::waitUntil([&] { return !menu || !menu->isVisible(); });
  std::optional<std::string> chosen;
  if (menu && !menu->chosen().empty())
    chosen = menu->chosen();
  delete menu;
  return chosen;
}

void QtDialogs::Info(const std::string& line) {
  if (say_)
    say_(line);
  if (!waitLine_)
    waitLine_ = std::make_unique<WaitLine>();
  line.empty() ? waitLine_->end() : waitLine_->begin(parent());
}

}  // namespace qrn::qt
