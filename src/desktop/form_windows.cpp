#include "desktop/form_windows.h"

#include "charts/xy_vote_average_graph.h"
#include "core/blank_form.h"
#include "desktop/quit_options_window.h"
#include "desktop/surface_window.h"
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

void voteClicked(xyVoteRuntime& form, const host::Element& element) {
  if (element.array == "uctl_votesCast")
    form.uctl_votesCast_Click();
}

}  // namespace

void attachFormWindows(host::FormRegistry& forms, WindowStack& stack) {
  forms.attach("blankForm", blankView(forms, stack));
  forms.attach("xyVoteRuntime",
               surfaceViewOf<xyVoteRuntime>(forms, stack, voteClicked,
                                            [](const xyVoteRuntime& form) { return form.cursorShown; }));
  forms.attach("xyVoteAverageGraph", surfaceViewOf<xyVoteAverageGraph>(forms, stack));
  forms.attach("xyVoteGraph", surfaceViewOf<xyVoteGraph>(forms, stack));
  forms.attach("xyVoteQuitOptions", [&stack](host::Form& form) {
    return std::make_unique<QuitOptionsView>(dynamic_cast<xyVoteQuitOptions&>(form), stack);
  });
}

}  // namespace qrn::desktop
