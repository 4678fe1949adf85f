#include "desktop/keypads_window.h"

#include <QClipboard>

#include "desktop/window_case.h"

namespace qrn::test {
namespace {

class KeypadsCase : public WindowCase {
 protected:
  KeypadsCase() {
    desktop::applyStyle(*qApp);
    keypads.show();
    // room [phones=N] [rehearse=N] [one] [unreachable] [nophones]: `one` address to choose alone
    on("room", [this](const Words& words) {
      host::RoomState room;
      room.address = words.has("unreachable") ? "" : "192.168.1.20:7878";
      room.page = "http://127.0.0.1:7878/join";
      room.candidates = {{"192.168.1.20", "wlp2s0", true}, {"10.8.0.3", "wg0", false}};
      room.candidates.resize(words.has("one") ? 1 : 2);
      room.takesPhones = !words.has("nophones");
      for (const std::string& word : words)
        if (word.starts_with("phones="))
          room.phones = std::stoi(word.substr(7));
        else if (word.starts_with("rehearse="))
          room.rehearse = std::stoi(word.substr(9));
      keypads.showRoom(room);
      tellBoard();
    });
    on("nocontroller", [this](const Words& words) {
      keypads.showNoController(QString::fromStdString(words.rest(0)));
      tellBoard();
    });
    on("copied", [this](const Words&) { tell(QGuiApplication::clipboard()->text().toStdString()); });
    on("screen", [this](const Words&) {
      tell(keypads.isFullScreen()                                        ? "full"
           : keypads.width() < keypads.screen()->availableSize().width() ? "part"
                                                                         : "all");
    });
  }
  QWidget& window() override { return keypads; }
  // Only the code is of pure white.
  void tellBoard() {
    auto& board = *keypads.findChild<desktop::JoinBoard*>();
    const QImage image = board.grab().toImage();
    int white = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) white += image.pixelColor(x, y) == QColor(Qt::white) ? 1 : 0;
    tell(board.accessibleName().toStdString());
    tell(escaped(board.accessibleDescription().toStdString()));
    tell(white > 1000 ? "with the code" : "without a code",
         keypads.findChild<QComboBox*>()->isVisible() ? ", to choose" : "");
  }

  desktop::KeypadsWindow keypads{
      nullptr,
      {[this](const std::string& host) { tell("chosen " + host); },
       [this](const QString& address) { tell("opens " + address.toStdString()); }}};
};

const bool kRegistered = registerCases<KeypadsCase>("KeypadsCase", QUORIN_CASES "/keypads_window.case");

}  // namespace
}  // namespace qrn::test
