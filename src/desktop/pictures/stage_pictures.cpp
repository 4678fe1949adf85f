// Pictures of what stands over a graph that the room sees: questions, menus, help and dialogs.
#include <QApplication>
#include <QDialog>
#include <QMenu>

#include "adapters/qt/dialogs.h"
#include "charts/xy_vote_average_graph.h"
#include "core/glo.h"
#include "desktop/form_windows.h"
#include "desktop/pictures/made_up_deck.h"
#include "desktop/pictures/made_up_exercise.h"
#include "desktop/pictures/pictures.h"
#include "desktop/window_stack.h"
#include "host/controls.h"
#include "host/help.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn::pictures {

namespace {

constexpr int kSettledMs = 50;
constexpr const char *kMatrix = formName::matrixGraph, *kAverage = formName::averageGraph;

host::FormRegistry& forms() {
  return *host::host().forms;
}

// Shows itself over the form and returns when it is answered.
struct Piece {
  const char *name, *form;
  void (*ask)(host::Form& form, host::Dialogs& dialogs);
};

constexpr Piece kPieces[] = {
    {"question", kMatrix,
     [](host::Form&, host::Dialogs& dialogs) {
       dialogs.MsgBox(
           "Data already exists for this meeting. Would you like to continue from where it was previously "
           "stopped?\r\n\r\nCancel will return to editor mode",
           host::kTitle, host::Buttons::yesNoCancel, host::Icon::question, host::Answer::yes);
     }},
    {"message", kMatrix,
     [](host::Form&, host::Dialogs& dialogs) {
       dialogs.MsgBox("Cannot zoom in whilst showing MultiPlot", host::kTitle, host::Buttons::ok,
                      host::Icon::information);
     }},
    {"warning", kMatrix,
     [](host::Form&, host::Dialogs& dialogs) {
       dialogs.MsgBox("Must have at least 2 options", host::kTitle, host::Buttons::okCancel,
                      host::Icon::exclamation);
     }},
    {"input", kMatrix,
     [](host::Form&, host::Dialogs& dialogs) {
       dialogs.InputBox("Please enter the new item", host::kTitle, "Benches along the quay");
     }},
    {"menu", kMatrix,
     [](host::Form& form, host::Dialogs& dialogs) {
       dialogs.Menu(form.actions().menu("popupMenuCategory"), false);
     }},
    {"help", kMatrix, [](host::Form& form, host::Dialogs&) { host::showHelp(form); }},
    {"multiplots", kAverage,
     [](host::Form& form, host::Dialogs&) { form.actions().perform("xyVoteGraphPopupMultiPlot"); }},
    {"weightings", kAverage,
     [](host::Form& form, host::Dialogs&) { form.actions().perform("weightingSelector"); }},
};

void takeTop(Album& album, const desktop::WindowStack& stack, const QString& name) {
  QWidget* top = QApplication::activePopupWidget();
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (!top && widget->isVisible() && qobject_cast<QDialog*>(widget))
      top = widget;
  album.take(top ? *top : *stack.front(), name);
  if (top) {
    top->close();
    return;
  }
  for (const std::string& form : forms().loadedNames())
    if (auto* dialog = dynamic_cast<host::ControlForm*>(forms().find(form)))
      host::strikeKeys(*dialog, "Esc");
}

void takePiece(Album& album, desktop::WindowStack& stack, const Piece& piece, bool light, QSize size) {
  MadeUpDeck deck(8);
  deck.setScheme(light ? kLightScheme : kDarkScheme);
  fillExercise(deck, 12, 5, 40);
  host::Form& form = forms().load(piece.form);
  stack.placeForm(piece.form, QRect(QPoint(0, 0), size));
  if (auto* graph = dynamic_cast<xyVoteGraph*>(&form))
    graph->tmr_load_Timer();
  forms().show(piece.form);
  deliverEvents();
  qt::QtDialogs dialogs([&] { return stack.front(); });
  host::Timer settled(kSettledMs, [&] {
    takeTop(album, stack, QString("stage-%1-%2").arg(piece.name, light ? "light" : "dark"));
    settled.setEnabled(false);
  });
  settled.setEnabled(true);
  piece.ask(form, dialogs);
  for (const std::string& name : forms().loadedNames()) forms().unload(name);
  forms().releaseUnloaded();
}

}  // namespace

void takeStage(Album& album) {
  desktop::WindowStack stack;
  registerGraphForms();
  desktop::attachFormWindows(forms(), stack);
  for (const Piece& piece : kPieces)
    for (const bool light : {false, true}) takePiece(album, stack, piece, light, kSizes[1]);
  takePiece(album, stack, kPieces[0], false, kSizes[0]);
}

}  // namespace qrn::pictures
