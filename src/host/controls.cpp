#include "host/controls.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "host/host.h"

namespace qrn::host {

namespace {

std::optional<double> numberIn(const std::string& text) {
  double value = 0;
  const char* end = text.data() + text.size();
  const auto done = std::from_chars(text.data(), end, value);
  if (done.ec != std::errc() || done.ptr != end || !std::isfinite(value))
    return std::nullopt;
  return value;
}

std::string plain(double value) {
  std::array<char, 400> digits{};
  const auto done =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  return std::string(digits.data(), done.ptr);
}

bool isPlace(const Control& control) {
  return control.kind == Control::Kind::options || control.kind == Control::Kind::choice;
}

bool isNumber(const Control& control) {
  return control.kind == Control::Kind::number || isPlace(control);
}

double highest(const Control& control) {
  return isPlace(control) ? static_cast<double>(control.choices.size()) - 1 : control.high;
}

bool isInBounds(const Control& control, const std::string& value) {
  const std::optional<double> wanted = numberIn(value);
  return wanted && *wanted >= control.low && *wanted <= highest(control);
}

const std::string& subjectOf(const Control& control) {
  return control.subject.empty() ? control.caption : control.subject;
}

std::string whatItTakes(const Control& control, const std::string& value) {
  if (isNumber(control))
    return (control.value.whole ? " is a whole number from " : " is a number from ") + plain(control.low) +
           " to " + plain(highest(control)) + ".";
  return control.kind == Control::Kind::check ? " is -1 or 0." : " does not take \"" + value + "\".";
}

}  // namespace

Access flag(bool& value) {
  return {[&value] { return std::string(value ? "-1" : "0"); },
          [&value](const std::string& wanted) {
            if (wanted != "-1" && wanted != "0" && wanted != "1")
              return false;
            value = wanted != "0";
            return true;
          }};
}

Access number(int& value) {
  return {[&value] { return std::to_string(value); },
          [&value](const std::string& wanted) {
            const std::optional<double> one = numberIn(wanted);
            if (!one || *one != std::trunc(*one) || std::fabs(*one) > 32767)
              return false;
            value = static_cast<int>(*one);
            return true;
          },
          true};
}

Access number(float& value) {
  return {[&value] {
            std::array<char, 64> digits{};
            const auto done =
                std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
            return std::string(digits.data(), done.ptr);
          },
          [&value](const std::string& wanted) {
            const std::optional<double> one = numberIn(wanted);
            if (!one)
              return false;
            value = static_cast<float>(*one);
            return true;
          }};
}

Access text(std::string& value) {
  return {[&value] { return value; },
          [&value](const std::string& wanted) {
            value = wanted;
            return true;
          }};
}

bool isEnabled(const Control& control) {
  return !control.enabled || control.enabled();
}

std::string valueOf(const Control& control) {
  return control.value.get ? control.value.get() : "";
}

std::string give(const Control& control, const std::string& value) {
  if (!control.value.set)
    return subjectOf(control) + " holds no value.";
  if ((!isNumber(control) || isInBounds(control, value)) && control.value.set(value))
    return "";
  return subjectOf(control) + whatItTakes(control, value);
}

Control* ControlForm::find(const std::string& controlName) {
  const auto found = std::find_if(controls.begin(), controls.end(),
                                  [&](const Control& control) { return control.name == controlName; });
  return found == controls.end() ? nullptr : &*found;
}

void ControlForm::accept() {
  problem = take();
  accepted = problem.empty();
  if (accepted)
    close();
  else
    host().forms->refresh(name);
}

void ControlForm::dismiss() {
  accepted = false;
  dismissed();
  close();
}

void ControlForm::close() {
  host().forms->hide(name);
}

void ControlForm::Form_KeyDown(int keyCode, int) {
  if (keyCode == key::enter)
    dismissIsDefault ? dismiss() : accept();
  else if (keyCode == key::escape)
    dismiss();
}

bool askWith(const std::string& form) {
  FormRegistry& forms = *host().forms;
  forms.showModal(form);
  const auto* answered = dynamic_cast<const ControlForm*>(forms.find(form));
  const bool accepted = answered != nullptr && answered->accepted;
  forms.unload(form);
  return accepted;
}

bool ControlForm::Form_QueryUnload(bool byUser) {
  if (!byUser)
    return true;
  dismiss();
  return false;
}

}  // namespace qrn::host
