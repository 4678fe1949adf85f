// Where phones join: the address in large type with its QR code, to be shown to the room.
#pragma once

#include <QDialog>
#include <QLabel>

namespace qrn::desktop {

class KeypadsWindow : public QDialog {
 public:
  explicit KeypadsWindow(QWidget* parent);
  void showAddress(const QString& address);  // "": says that there is no controller

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();
  void toggleFullScreen();

  QString address_;
  QLabel *heading_, *code_, *text_, *hint_;
  QWidget* buttons_;
};

}  // namespace qrn::desktop
