#include "host/actions.h"

#include <algorithm>
#include <map>

#include "host/forms.h"

namespace qrn::host {

namespace {

bool isEnabled(const Action& action) {
  return action.perform && (!action.enabled || action.enabled());
}

std::string plainKeyName(int code) {
  static const std::map<int, std::string> names{{key::enter, "Enter"},
                                                {key::escape, "Esc"},
                                                {key::space, "Space"},
                                                {key::pageUp, "PageUp"},
                                                {key::pageDown, "PageDown"},
                                                {key::end, "End"},
                                                {key::home, "Home"},
                                                {key::left, "Left"},
                                                {key::up, "Up"},
                                                {key::right, "Right"},
                                                {key::down, "Down"},
                                                {key::insert, "Insert"},
                                                {key::del, "Delete"},
                                                {key::multiply, "Num *"},
                                                {key::add, "Num +"},
                                                {key::subtract, "Num -"},
                                                {key::equal, "="},
                                                {key::minus, "-"},
                                                {key::back, "Backspace"},
                                                {key::tab, "Tab"}};
  if (const auto named = names.find(code); named != names.end())
    return named->second;
  if (code >= key::f1 && code < key::f1 + 12)
    return "F" + std::to_string(code - key::f1 + 1);
  if (code >= key::numpad0 && code < key::numpad0 + 10)
    return "Num " + std::to_string(code - key::numpad0);
  return code > ' ' && code < 127 ? std::string(1, static_cast<char>(code)) : "";
}

std::string keyNames(const std::vector<KeyStroke>& keys) {
  std::string names;
  for (const KeyStroke& stroke : keys)
    if (const std::string name = keyName(stroke); !name.empty())
      names += (names.empty() ? "" : ", ") + name;
  return names;
}

}  // namespace

std::string keyName(const KeyStroke& stroke) {
  const std::string plain = plainKeyName(stroke.code);
  if (plain.empty() || stroke.shift == kAnyShift)
    return plain;
  std::string name;
  for (const auto& [mask, word] :
       {std::pair{key::ctrlMask, "Ctrl+"}, {key::altMask, "Alt+"}, {key::shiftMask, "Shift+"}})
    if ((stroke.shift & mask) != 0)
      name += word;
  return name + plain;
}

const Action* ActionTable::find(std::string_view name) const {
  const auto found = std::find_if(actions_.begin(), actions_.end(),
                                  [&](const Action& action) { return action.name == name; });
  return found == actions_.end() ? nullptr : &*found;
}

const Action* ActionTable::forKey(int keyCode, int shift) const {
  const auto found = std::find_if(actions_.begin(), actions_.end(), [&](const Action& action) {
    return std::any_of(action.keys.begin(), action.keys.end(),
                       [&](const KeyStroke& stroke) { return stroke.matches(keyCode, shift); }) &&
           isEnabled(action);
  });
  return found == actions_.end() ? nullptr : &*found;
}

bool ActionTable::performKey(int keyCode, int shift) const {
  const Action* action = forKey(keyCode, shift);
  if (action == nullptr)
    return false;
  const std::function<void()> perform = action->perform;  // it may end the form, and this table with it
  perform();
  return true;
}

bool ActionTable::perform(std::string_view name) const {
  const Action* action = find(name);
  if (action == nullptr || !isEnabled(*action))
    return false;
  const std::function<void()> perform = action->perform;
  perform();
  return true;
}

std::vector<MenuRow> ActionTable::menu(std::string_view name) const {
  std::vector<MenuRow> rows;
  for (const Action& action : actions_)
    if (std::find(action.menus.begin(), action.menus.end(), name) != action.menus.end())
      rows.push_back({action.name, action.caption, keyNames(action.keys), isEnabled(action),
                      static_cast<bool>(action.checked), action.checked && action.checked(),
                      action.separated});
  return rows;
}

std::vector<KeyHelp> ActionTable::help() const {
  std::vector<KeyHelp> rows;
  for (const Action& action : actions_)
    if (!action.keys.empty() && !action.caption.empty())
      rows.push_back({keyNames(action.keys), action.caption});
  return rows;
}

}  // namespace qrn::host
