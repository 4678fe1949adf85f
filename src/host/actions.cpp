#include "host/actions.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

#include "base/errors.h"
#include "base/text.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/system.h"

namespace qrn::host {

namespace {

constexpr std::int64_t kRepeatGuard = 100000;  // microseconds
constexpr int kLastCode = 255;
constexpr std::size_t kRun = 3;  // neighbouring keys that are told as "0 to 9"

constexpr std::pair<int, const char*> kModifiers[] = {
    {key::ctrlMask, "Ctrl+"}, {key::altMask, "Alt+"}, {key::shiftMask, "Shift+"}};

std::string plainKeyName(int code) {
  static const std::map<int, std::string> names{
      {key::enter, "Enter"},    {key::escape, "Esc"},     {key::space, "Space"},
      {key::clear, "Clear"},    {key::pageUp, "PageUp"},  {key::pageDown, "PageDown"},
      {key::end, "End"},        {key::home, "Home"},      {key::left, "Left"},
      {key::up, "Up"},          {key::right, "Right"},    {key::down, "Down"},
      {key::insert, "Insert"},  {key::del, "Delete"},     {key::rightSuper, "Super"},
      {key::menu, "Menu"},      {key::multiply, "Num *"}, {key::add, "Num +"},
      {key::subtract, "Num -"}, {key::equal, "="},        {key::comma, "Comma"},
      {key::minus, "-"},        {key::period, "Period"},  {key::back, "Backspace"},
      {key::tab, "Tab"}};
  if (const auto named = names.find(code); named != names.end())
    return named->second;
  if (code >= key::f1 && code < key::f1 + 12)
    return "F" + std::to_string(code - key::f1 + 1);
  if (code >= key::numpad0 && code < key::numpad0 + 10)
    return "Num " + std::to_string(code - key::numpad0);
  const bool plain = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z');
  return plain ? std::string(1, static_cast<char>(code)) : "";
}

KeyStroke readKey(std::string_view word) {
  KeyStroke stroke;
  std::string_view rest = word;
  for (bool found = true; found;) {
    found = false;
    for (const auto& [mask, prefix] : kModifiers)
      if (const std::string_view name(prefix); beginsWithWord(rest, name)) {
        stroke.shift |= mask;
        rest.remove_prefix(name.size());
        found = true;
      }
  }
  for (int code = 1; code <= kLastCode && stroke.code == 0 && !rest.empty(); ++code)
    if (sameWord(plainKeyName(code), rest))
      stroke.code = code;
  if (stroke.code == 0)
    throw HostError(Fault::badData, 5, "\"" + std::string(word) + "\" names no key");
  return stroke;
}

// Keys that count on: letters, digits, and the digits of the number pad.
bool countsOn(int code) {
  return std::isupper(code) || std::isdigit(code) || (code >= key::numpad0 && code < key::numpad0 + 10);
}

// How many keys from `at` on are neighbours on the keyboard.
std::size_t runAt(const std::vector<KeyStroke>& keys, std::size_t at) {
  std::size_t end = at + 1;
  while (end < keys.size() && keys[end].code == keys[end - 1].code + 1 && keys[end].shift == keys[at].shift &&
         countsOn(keys[at].code) && countsOn(keys[end].code))
    ++end;
  return end - at;
}

std::string keyNames(const std::vector<KeyStroke>& keys) {
  std::string names;
  for (std::size_t at = 0; at < keys.size();) {
    const std::size_t run = runAt(keys, at);
    std::string name = keyName(keys[at]);
    if (run >= kRun)
      name += " to " + plainKeyName(keys[at + run - 1].code);
    if (!name.empty())
      names += (names.empty() ? "" : ", ") + name;
    at += run >= kRun ? run : 1;
  }
  return names;
}

// The character that the key types, 0 for none.
int typedBy(const KeyStroke& stroke) {
  if ((stroke.shift & (key::altMask | key::ctrlMask)) != 0)
    return 0;
  if (stroke.code >= 'A' && stroke.code <= 'Z')
    return stroke.shift == 0 ? std::tolower(stroke.code) : stroke.code;
  const bool itself = (stroke.code >= '0' && stroke.code <= '9' && stroke.shift == 0) ||
                      stroke.code == key::enter || stroke.code == key::escape || stroke.code == key::space;
  return itself ? stroke.code : 0;
}

// Copies what it does first: it may end the form, and its table with it.
void perform(const Action& action, int keyCode) {
  if (const auto withKey = action.performKey)
    withKey(keyCode);
  else if (const auto alone = action.perform)
    alone();
}

}  // namespace

std::vector<Action> together(const std::vector<std::vector<Action>>& groups) {
  std::vector<Action> rows;
  for (const std::vector<Action>& group : groups) rows.insert(rows.end(), group.begin(), group.end());
  return rows;
}

std::string keyName(const KeyStroke& stroke) {
  const std::string plain = plainKeyName(stroke.code);
  if (plain.empty() || stroke.shift < 0)
    return plain;
  std::string name;
  for (const auto& [mask, word] : kModifiers)
    if ((stroke.shift & mask) != 0)
      name += word;
  return name + plain;
}

std::vector<KeyStroke> readKeys(std::string_view words) {
  std::vector<KeyStroke> keys;
  for (std::size_t at = 0; at <= words.size();) {
    const std::size_t comma = std::min(words.find(',', at), words.size());
    const std::string_view word = words.substr(at, comma - at);
    const std::size_t first = word.find_first_not_of(' ');
    keys.push_back(
        readKey(first == word.npos ? "" : word.substr(first, word.find_last_not_of(' ') + 1 - first)));
    at = comma + 1;
  }
  return keys;
}

std::vector<KeyStroke> keyRange(int first, int last, int shift) {
  std::vector<KeyStroke> keys;
  for (int code = first; code <= last; ++code) keys.push_back({code, shift});
  return keys;
}

bool isEnabled(const Action& action) {
  return (action.perform || action.performKey) && (!action.enabled || action.enabled());
}

const Action* ActionTable::find(std::string_view name) const {
  const auto found = std::find_if(actions_.begin(), actions_.end(),
                                  [&](const Action& action) { return action.name == name; });
  return found == actions_.end() ? nullptr : &*found;
}

const Action* ActionTable::forKey(int keyCode, int shift) const {
  const auto found = std::find_if(actions_.begin(), actions_.end(), [&](const Action& action) {
    return !action.typed && std::any_of(action.keys.begin(), action.keys.end(), [&](const KeyStroke& stroke) {
      return stroke.matches(keyCode, shift);
    }) && isEnabled(action);
  });
  return found == actions_.end() ? nullptr : &*found;
}

bool ActionTable::performKey(int keyCode, int shift) const {
  const Action* action = forKey(keyCode, shift);
  if (action == nullptr)
    return false;
  host::perform(*action, keyCode);
  return true;
}

bool ActionTable::performTyped(int keyAscii) const {
  const int keyCode = keyAscii > 0 && keyAscii < 128 ? std::toupper(keyAscii) : 0;
  for (const Action& action : actions_)
    if (action.typed && isEnabled(action) &&
        std::any_of(action.keys.begin(), action.keys.end(),
                    [&](const KeyStroke& stroke) { return stroke.code == keyCode; })) {
      host::perform(action, keyCode);
      return true;
    }
  return false;
}

bool ActionTable::perform(std::string_view name) const {
  const Action* action = find(name);
  if (action == nullptr || !isEnabled(*action))
    return false;
  host::perform(*action, action->keys.empty() ? 0 : action->keys.front().code);
  return true;
}

std::vector<MenuRow> ActionTable::menu(std::string_view name) const {
  std::vector<MenuRow> rows;
  for (const Action& action : actions_)
    for (const std::string& place : action.menus) {
      const std::size_t slash = std::min(place.find('/'), place.size());
      if (place.compare(0, slash, name) == 0)
        rows.push_back({action.name, action.caption, action.keys.empty() ? "" : keyName(action.keys.front()),
                        place.substr(std::min(slash + 1, place.size())), isEnabled(action),
                        static_cast<bool>(action.checked), action.checked && action.checked(),
                        action.separated});
    }
  return rows;
}

std::vector<KeyHelp> ActionTable::help() const {
  std::vector<KeyHelp> rows;
  for (const Action& action : actions_)
    if (!action.keys.empty() && !action.caption.empty())
      rows.push_back({keyNames(action.keys), action.help.empty() ? action.caption : action.help});
  return rows;
}

ActionTable Form::actions() {
  return ActionTable();
}

void Form::Form_KeyDown(int keyCode, int shift) {
  if (actions().performKey(keyCode, shift))
    host().forms->refresh(name);
}

void popUp(Form& form, const std::string& menu, bool atMouse) {
  const std::string name = form.name;
  const std::optional<std::string> chosen = host().dialogs->Menu(form.actions().menu(menu), atMouse);
  if (!chosen || host().forms->find(name) != &form)
    return;
  form.actions().perform(*chosen);
  host().forms->refresh(name);
}

void strike(Form& form, const KeyStroke& stroke, int keyAscii) {
  const FormRegistry& forms = *host().forms;
  const std::string name = form.name;
  const auto stands = [&] { return forms.find(name) == &form; };
  if (stroke.code != 0 && stands())
    form.Form_KeyDown(stroke.code, stroke.shift);
  if (keyAscii != 0 && stands() && form.visible)
    form.Form_KeyPress(keyAscii);
}

void strikeKeys(Form& form, std::string_view words) {
  for (const KeyStroke& stroke : readKeys(words)) strike(form, stroke, typedBy(stroke));
}

bool KeyGuard::repeated(int keyCode) {
  const std::int64_t now = host().clock->microseconds();
  const bool soon = keyCode == last_ && at_ >= 0 && now - at_ < kRepeatGuard;
  last_ = keyCode;
  at_ = now;
  return soon;
}

}  // namespace qrn::host
