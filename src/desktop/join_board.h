// What the room needs to join: the code, the address in large type and how many phones are in, laid out like
// the page to project. Without a way for phones it says why and shows no code.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include "host/controller.h"

namespace qrn::desktop {

// The texts of the board. `address` is "" when there is no code to show; `lines` stand beneath the title
// then.
struct JoinText {
  QString title;
  QStringList lines;
  QString address;
  QString count, counted;  // "12", "phones have joined"
  QString remark;
};
JoinText joinText(const host::RoomState& room);
JoinText noControllerText(const QString& why);

class JoinBoard : public QWidget {
 public:
  explicit JoinBoard(QWidget* parent);
  void setText(const JoinText& text);
  QSize minimumSizeHint() const override { return {240, 160}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  JoinText text_;
};

}  // namespace qrn::desktop
