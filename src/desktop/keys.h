// Key events in the classic codes that the forms test.
#pragma once

#include <QKeyEvent>

namespace qrn::desktop {

struct KeyStroke {
  int keyCode = 0;   // 0: a key without a code here (modifiers alone, media keys)
  int shift = 0;     // host::key masks
  int keyAscii = 0;  // for Form_KeyPress; 0 when the key types no character
};

// The auto-repeat of a key that is held is no key.
KeyStroke classicKey(const QKeyEvent& event);

}  // namespace qrn::desktop
