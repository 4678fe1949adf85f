// The list beside a graph, and the small button that tells which items lack data.
#pragma once

#include <QListWidget>
#include <QPushButton>
#include <functional>
#include <string>
#include <vector>

namespace qrn::desktop {

struct SideListSource {
  std::function<bool()> visible;
  std::function<std::vector<std::string>()> lines;
  std::function<int()> current;  // -1: none
  std::function<void(int row)> chosen;
  std::function<void(int row)> opened, menuAsked;  // a double and a right click; may be left out
};

class SideList : public QListWidget {
 public:
  SideList(SideListSource source, QWidget* parent);
  // Takes what the form holds and stands at the right of the parent. Returns the width it takes, 0 when
  // hidden.
  int sync();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  int rowAt(const QMouseEvent& event) const;  // -1 where there is none
  void showLines();

  SideListSource source_;
  std::vector<std::string> lines_;  // as shown
};

struct InfoSource {
  std::function<bool()> visible;
  std::function<void()> clicked;
};

class InfoButton : public QPushButton {
 public:
  InfoButton(InfoSource source, QWidget* parent);
  void sync(int graphWidth);  // pixels, without the list beside it

 private:
  InfoSource source_;
};

}  // namespace qrn::desktop
