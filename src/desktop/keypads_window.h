// Where phones join, to be shown to the room, and how many have.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <functional>
#include <string>

#include "desktop/join_board.h"

namespace qrn::desktop {

class KeypadsWindow : public QDialog {
 public:
  struct Calls {
    std::function<void(const std::string& host)> choose;   // where phones shall join
    std::function<void(const QString& address)> openPage;  // in a browser
  };
  KeypadsWindow(QWidget* parent, Calls calls);
  void showRoom(const host::RoomState& room);
  void showNoController(const QString& why);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void makeButtons();
  void fillChooser();
  void copyAddress() const;
  void toggleFullScreen();

  Calls calls_;
  host::RoomState room_;
  JoinBoard* board_;
  QWidget *bar_, *chooserBar_;
  QComboBox* chooser_;
  QPushButton *full_ = nullptr, *copy_ = nullptr, *browser_ = nullptr;
};

}  // namespace qrn::desktop
