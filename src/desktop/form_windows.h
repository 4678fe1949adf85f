#pragma once

#include "desktop/window_stack.h"
#include "host/forms.h"

namespace qrn::desktop {

// A window for every form that has one. Both must outlive the forms loaded.
void attachFormWindows(host::FormRegistry& forms, WindowStack& stack);

}  // namespace qrn::desktop
