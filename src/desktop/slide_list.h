// The list of slides on the deck window: what each row says, and how it is drawn.
#pragma once

#include <QAbstractListModel>
#include <QStyledItemDelegate>
#include <functional>
#include <optional>
#include <vector>

#include "desktop/desktop.h"
#include "desktop/slide_pictures.h"

namespace qrn::desktop {

using ExerciseFactsOf = std::function<std::optional<ExerciseFacts>(host::Slide&)>;

struct SlideRow {
  int slide = 0;   // from 1
  QString title;   // never empty
  QString damage;  // what is wrong with the slide, mostly nothing
  bool hidden = false;
  std::optional<ExerciseFacts> exercise;
};

// "12 items · 3 assessments · 36 votes"
QString factsLine(const ExerciseFacts& facts);
ExerciseFacts factsFromTags(host::Slide& slide);

class SlideListModel : public QAbstractListModel {
 public:
  SlideListModel(SlidePictures& pictures, ExerciseFactsOf factsOf);
  void setDeck(host::Presentation* deck);
  void slidesChanged();            // their tags, their number
  void pictureArrived(int slide);  // its row is to be painted again
  const SlideRow& row(int slide) const;
  QImage thumbnail(int slide) const { return pictures_.thumbnail(slide); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  SlidePictures& pictures_;
  ExerciseFactsOf factsOf_;
  host::Presentation* deck_ = nullptr;
  mutable std::vector<std::optional<SlideRow>> rows_;
};

class SlideListDelegate : public QStyledItemDelegate {
 public:
  explicit SlideListDelegate(const SlideListModel& model, QObject* parent);
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const SlideListModel& model_;
};

}  // namespace qrn::desktop
