// What a form can do, told once: menus, pop-ups, buttons, the key handler, the help on F1 and scripted keys
// all read this table.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/forms.h"

namespace qrn::host {

inline constexpr int kAnyShift = -1;  // whatever else is held down
inline constexpr int kNoAlt = -2;     // whatever else is held down but Alt

// A key as forms test it, see host::key. `shift` is a mask or one of the above.
struct KeyStroke {
  int code = 0;
  int shift = 0;
  bool matches(int keyCode, int held) const {
    return code == keyCode &&
           (shift == kAnyShift || shift == held || (shift == kNoAlt && (held & key::altMask) == 0));
  }
  bool operator==(const KeyStroke&) const = default;
};

// "Ctrl+L", "F3", "Space"; kAnyShift and kNoAlt add nothing.
std::string keyName(const KeyStroke& stroke);
// The keys of "B,Esc,Alt+L,F3", whatever their case. Throws HostError (bad data) for a word that names no
// key.
std::vector<KeyStroke> readKeys(std::string_view words);
// Every key from one code to another.
std::vector<KeyStroke> keyRange(int first, int last, int shift = 0);

// The menu that stands as a row of buttons at the foot of a form's window.
inline constexpr const char* kCommandBar = "commandBar";

struct Action {
  std::string name{};             // as other rooms call it, "menuPairLines"
  std::string caption{};          // plain words; they stand in menus, on buttons and in the help
  std::vector<KeyStroke> keys{};  // the first is the one that menus and buttons name
  // Where it stands beside the keys: "menuHideShowRound", or "menuAverage/Order" for a menu within the menu.
  std::vector<std::string> menus{};
  std::function<void()> perform{};
  std::function<void(int keyCode)> performKey{};  // instead, where digits or letters do alike
  bool typed = false;  // its keys are characters in either case, which come through Form_KeyPress
  std::function<bool()> enabled{};  // left out: always
  std::function<bool()> checked{};  // left out: it bears no mark
  bool separated = false;           // a line above it in menus
  std::string help{};               // a sentence for the help; left out: the caption
};

bool isEnabled(const Action& action);
// The rows of several groups, one group behind the other.
std::vector<Action> together(const std::vector<std::vector<Action>>& groups);

// A row of a menu as it is shown.
struct MenuRow {
  std::string name{}, caption{}, key{}, group{};
  bool enabled = true, checkable = false, checked = false, separated = false;
};

// A row of the help: what the keys do.
struct KeyHelp {
  std::string keys, caption;
};

class ActionTable {
 public:
  ActionTable() = default;
  explicit ActionTable(std::vector<Action> actions) : actions_(std::move(actions)) {}

  const std::vector<Action>& all() const { return actions_; }
  const Action* find(std::string_view name) const;
  // The first row that has the key and is enabled now; null when there is none.
  const Action* forKey(int keyCode, int shift) const;
  // False when nothing was done: no such row, or it is not enabled now.
  bool performKey(int keyCode, int shift) const;
  bool performTyped(int keyAscii) const;  // of the typed rows
  bool perform(std::string_view name) const;

  std::vector<MenuRow> menu(std::string_view name) const;
  std::vector<KeyHelp> help() const;  // of every row with keys, enabled or not

 private:
  std::vector<Action> actions_;
};

// Shows a menu of the form's table and does what is chosen, if the form still stands by then.
void popUp(Form& form, const std::string& menu, bool atMouse = false);

// What a key on the form's window does: Form_KeyDown, then Form_KeyPress if the form still stands and is
// visible. `keyAscii` 0: the key types nothing.
void strike(Form& form, const KeyStroke& stroke, int keyAscii);
// Strikes keys as readKeys names them, one after the other while the form stands.
void strikeKeys(Form& form, std::string_view words);

// Tells a key that comes again within a tenth of a second: a bouncing contact, a heavy finger. Each key
// renews the guard, one that is dropped too: a key that is held never comes through again.
class KeyGuard {
 public:
  bool repeated(int keyCode);

 private:
  int last_ = 0;
  std::int64_t at_ = -1;  // microseconds
};

}  // namespace qrn::host
