// Dialogs as data: a dialog is a list of controls, each bound to a value. One window shows them all; the
// settings, their search, the subcommands that get and set them and the tests walk the same list.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/forms.h"
#include "host/panel.h"

namespace qrn::host {

// A value as the exercise text writes it: numbers plain, flags -1 and 0.
struct Access {
  std::function<std::string()> get;
  std::function<bool(const std::string&)> set;  // false: it is no such value, nothing changes
  bool whole = false;                           // numbers without a fraction
};
Access flag(bool& value);
Access number(int& value);
Access number(float& value);
Access text(std::string& value);

struct Control {
  enum class Kind {
    note,     // words only
    check,    // a flag
    options,  // one of `choices`, all in sight; the value is its place
    choice,   // the same, one in sight
    number,   // `low` to `high`
    text,
    list,   // `panel`
    button  // `pressed`
  };
  Kind kind = Kind::note;
  std::string name{};  // "chk_avgradient"
  std::string caption{};
  Access value{};
  std::vector<std::string> choices{};
  double low = 0, high = 0;
  Panel* panel = nullptr;
  int rows = 0;  // of a list that are in sight at once; 0: what it has, five at most
  std::function<void()> pressed{};
  std::function<bool()> enabled{};  // left out: always
  std::string help{};               // one sentence for who does not know it
  std::string subject{};            // what sentences call it; left out: the caption
  // Where it stands towards the control before it: `under` it within the same place of the row, or `beside`
  // it.
  enum class Place { row, beside, under };
  Place place = Place::row;
};

bool isEnabled(const Control& control);
std::string valueOf(const Control& control);  // "" where there is none
// "" when the value was taken, else one sentence that says what would be.
std::string give(const Control& control, const std::string& value);

// A dialog made of controls. `accept` is what its first button does, `dismiss` the safe way out; both close
// it.
struct ControlForm : Form {
  using Form::Form;
  Control* find(const std::string& controlName);
  void accept();
  void dismiss();
  void Form_KeyDown(int keyCode, int shift) override;  // Enter accepts, Esc dismisses
  bool Form_QueryUnload(bool byUser) override;         // the close button dismisses

  std::string title;
  std::vector<Control> controls;
  std::string acceptCaption = "OK", dismissCaption = "Cancel";
  bool accepted = false;
  bool dismissIsDefault = false;  // the first button would delete or end something
  std::string focus;              // the control that the keyboard is to go to; its window takes it once

 protected:
  // Takes over what the controls hold. "" closes the dialog, else it stays and says why.
  virtual std::string take() { return ""; }
  virtual void dismissed() {}

 public:
  std::string problem;  // shown in the dialog; "" for none

 private:
  void close();
};

// Shows a dialog made of controls until it is answered; true when it was accepted.
bool askWith(const std::string& form);

}  // namespace qrn::host
