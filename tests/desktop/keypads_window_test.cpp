#include "desktop/keypads_window.h"

#include <QClipboard>

#include "desktop/style.h"
#include "desktop/window_world.h"

namespace {

using namespace qrn;

class Keypads : public ::testing::Test {
 protected:
  Keypads() {
    desktop::applyStyle(*qApp);
    room.address = "192.168.1.20:7878";
    room.page = "http://127.0.0.1:7878/join";
    room.candidates = {{"192.168.1.20", "wlp2s0", true}, {"10.8.0.3", "wg0", false}};
    room.phones = 12;
    window.show();
  }
  QPushButton* button(const char* caption) {
    for (QPushButton* each : window.findChildren<QPushButton*>())
      if (each->text().remove('&').startsWith(caption))
        return each;
    return nullptr;
  }
  QString told() {
    const QWidget* board = window.findChildren<desktop::JoinBoard*>().at(0);
    return board->accessibleName() + "\n" + board->accessibleDescription();
  }
  // Only the code is of pure white.
  bool showsCode() {
    const QImage image = window.findChildren<desktop::JoinBoard*>().at(0)->grab().toImage();
    int white = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) white += image.pixelColor(x, y) == QColor(Qt::white) ? 1 : 0;
    return white > 1000;
  }

  test::WindowWorld world;
  host::RoomState room;
  std::string chosen;
  QString opened;
  desktop::KeypadsWindow window{nullptr,
                                {[this](const std::string& host) { chosen = host; },
                                 [this](const QString& address) { opened = address; }}};
};

TEST_F(Keypads, SaysWhereToJoinOrWhyNobodyCan) {
  const auto shows = [&](std::vector<const char*> parts, bool code, bool choice) {
    for (const char* part : parts)
      EXPECT_TRUE(told().contains(part)) << part << " in " << told().toStdString();
    EXPECT_EQ(showsCode(), code) << parts[0];
    EXPECT_EQ(window.findChild<QComboBox*>()->isVisible(), choice) << parts[0];
    EXPECT_EQ(button("Copy")->isEnabled(), code) << parts[0];
  };
  window.showRoom(room);
  shows({"Join the vote", "192.168.1.20:7878", "12 phones have joined"}, true, true);
  room.phones = 1;
  room.rehearse = 20;
  room.candidates.pop_back();
  window.showRoom(room);
  shows({"1 phone has joined", "20 keypads vote by themselves."}, true, false);
  room.address = "";
  window.showRoom(room);
  shows({"Phones cannot reach this computer", "Connect it to the Wi-Fi"}, false, true);
  room.takesPhones = false;
  window.showRoom(room);
  shows({"This is a rehearsal", "without --rehearse"}, false, false);
  window.showNoController("It did not start.");
  shows({"No controller is running", "It did not start.", "keyboard"}, false, false);
  EXPECT_FALSE(button("Open")->isEnabled());
}

TEST_F(Keypads, ChoosesCopiesAndOpensThePageToProject) {
  window.showRoom(room);
  auto* chooser = window.findChild<QComboBox*>();
  EXPECT_EQ(chooser->currentText(), "192.168.1.20 (wlp2s0)");
  chooser->setFocus();
  QTest::keyClick(chooser, Qt::Key_Down);
  EXPECT_EQ(chosen, "10.8.0.3");
  button("Copy")->click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "http://192.168.1.20:7878/");
  button("Open")->click();
  EXPECT_EQ(opened, "http://127.0.0.1:7878/join");
}

TEST_F(Keypads, FullScreenHidesTheButtonsAndGivesTheFocusBack) {
  window.showRoom(room);
  QTest::keyClick(&window, Qt::Key_F11);
  EXPECT_TRUE(window.isFullScreen());
  EXPECT_FALSE(button("Full")->isVisible());
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.focusWidget(), button("Full"));
  EXPECT_TRUE(button("Full")->isDefault());
}

TEST_F(Keypads, NothingIsCutOnSmallScreens) {
  EXPECT_LT(window.width(), window.screen()->availableSize().width()) << "of 800 pixels here";
  window.showRoom(room);
  for (const QSize size : {QSize(512, 384), QSize(960, 540), QSize(1024, 768)}) {
    window.resize(size);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), size);
    EXPECT_EQ(test::cutParts(window), "");
  }
}

}  // namespace
