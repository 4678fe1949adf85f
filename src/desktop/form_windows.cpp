#include "desktop/form_windows.h"

#include "charts/chart_display.h"
#include "charts/xy_vote_average_graph.h"
#include "core/windows/blank_form.h"
#include "desktop/control_window.h"
#include "desktop/surface_window.h"
#include "host/help.h"
#include "host/host.h"
#include "host/names.h"
#include "matrixgraph/xy_vote_graph.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::desktop {

namespace {

host::FormRegistry::ViewMaker blankView(host::FormRegistry& forms, WindowStack& stack) {
  return [&forms, &stack](host::Form& form) {
    blankForm& blank = dynamic_cast<blankForm&>(form);
    SurfaceWindow::Source source;
    source.surface = [&blank]() -> const host::Surface& { return blank.surface; };
    source.cursorHeld = [&stack] { return stack.cursorHeld(); };
    return std::make_unique<SurfaceView>(form, forms, stack, std::move(source));
  };
}

void addToVote(xyVoteRuntime& form, SurfaceWindow::Source& source) {
  source.cursorHeld = [&form, held = source.cursorHeld] { return form.cursorShown || held(); };
}

template <class T>
void addToGraph(T& form, SurfaceWindow::Source& source) {
  source.list = SideListSource{[&form] { return form.listVisible; }, &form.List1};
  source.info = true;
  source.barShown = [&form] { return form.buttonsVisible; };
}

}  // namespace

void attachFormWindows(host::FormRegistry& forms, WindowStack& stack) {
  forms.attach(formName::blank, blankView(forms, stack));
  forms.attach(formName::runtime, surfaceViewOf<xyVoteRuntime>(forms, stack, addToVote));
  forms.attach(formName::averageGraph,
               surfaceViewOf<xyVoteAverageGraph>(forms, stack, addToGraph<xyVoteAverageGraph>));
  forms.attach(formName::matrixGraph, surfaceViewOf<xyVoteGraph>(forms, stack, addToGraph<xyVoteGraph>));
  for (const char* dialog : {formName::quitOptions, "weightingSelector", "multiplot", host::kHelpForm})
    forms.attach(dialog, controlView(stack));
}

}  // namespace qrn::desktop
