// Forms and their registry. A form is a struct with the state of its controls and the procedures that act on
// them; the desktop may attach a window to it by name. Forms reach forms above them through this registry
// only.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qrn::host {

class ActionTable;

// Masks of `shift` in key events, and the key codes that the forms test. Letters and digits are their
// upper-case ASCII codes.
namespace key {
inline constexpr int shiftMask = 1, ctrlMask = 2, altMask = 4;
inline constexpr int back = 8, tab = 9, clear = 12, enter = 13, escape = 27, space = 32, pageUp = 33,
                     pageDown = 34, end = 35, home = 36, left = 37, up = 38, right = 39, down = 40,
                     insert = 45, del = 46, rightSuper = 92, menu = 93;
inline constexpr int numpad0 = 96, multiply = 106, add = 107, subtract = 109, f1 = 112, f2 = 113, f3 = 114,
                     f4 = 115, f5 = 116, f6 = 117, f7 = 118, f10 = 121, equal = 187, comma = 188, minus = 189,
                     period = 190;
}  // namespace key

namespace mouse {
inline constexpr int left = 1, right = 2;  // `button` in mouse events
}

class Form {
 public:
  explicit Form(std::string formName) : name(std::move(formName)) {}
  virtual ~Form() = default;
  virtual void Form_Load() {}
  virtual void Form_Unload() {}
  // False refuses the close (the classic Cancel). `byUser` is true for the window's own close button.
  virtual bool Form_QueryUnload(bool byUser) {
    (void)byUser;
    return true;
  }
  virtual void Form_KeyDown(int keyCode, int shift);  // does what the table says
  virtual void Form_KeyPress(int keyAscii) { (void)keyAscii; }
  // What the form can do as it stands now; made anew at each call.
  virtual ActionTable actions();
  virtual void Form_Resize() {}
  // The mouse on the form's surface, in its twips. Moves come only while the left button is down; the second
  // press of a double click is Form_DblClick.
  virtual void Form_MouseDown(int button, double x, double y) {
    (void)button;
    (void)x;
    (void)y;
  }
  virtual void Form_MouseMove(double x, double y) {
    (void)x;
    (void)y;
  }
  virtual void Form_MouseUp(double x, double y) {
    (void)x;
    (void)y;
  }
  virtual void Form_DblClick(double x, double y) {
    (void)x;
    (void)y;
  }

  const std::string name;
  bool visible = false;
  // Inside of the window in twips, set by the desktop before Form_Load and at every change; the default
  // stands for a window-less run (1024x768 pixels).
  double ScaleWidth = 15360;
  double ScaleHeight = 11520;
};

// What the desktop attaches to a loaded form. The default does nothing, which is how a run without windows
// works.
class FormView {
 public:
  virtual ~FormView() = default;
  virtual void show(bool modal) { (void)modal; }
  virtual void hide() {}
  virtual void refresh() {}  // state has changed: paint again
  virtual void bringToFront() {}
};

class FormRegistry {
 public:
  using FormMaker = std::function<std::unique_ptr<Form>()>;
  using ViewMaker = std::function<std::unique_ptr<FormView>(Form&)>;

  void define(const std::string& name, FormMaker maker);  // by the subsystem that owns the form
  void attach(const std::string& name, ViewMaker maker);  // by the desktop
  // Puts the window of a form that is being loaded in its place, before Form_Load lays it out. Set by the
  // run.
  std::function<void(const std::string& name)> place;
  bool isDefined(const std::string& name) const { return makers_.count(name) != 0; }
  Form& load(const std::string& name);      // makes it and runs Form_Load once; loaded: as it is
  void show(const std::string& name);       // loads when needed
  void showModal(const std::string& name);  // returns when the form is hidden or gone
  void hide(const std::string& name);
  bool unload(const std::string& name, bool byUser = false);  // false when the form refused
  bool isLoaded(const std::string& name) const;
  bool isVisible(const std::string& name) const;
  Form* find(const std::string& name) const;  // null when not loaded
  void refresh(const std::string& name);
  void bringToFront(const std::string& name);
  void waitUntilGone(const std::string& name);   // hidden or unloaded
  std::vector<std::string> loadedNames() const;  // in the order of loading
  // Frees the forms that have been unloaded. An unloaded form stays in memory until then, since it may have
  // been unloaded from inside one of its own procedures; call this only where no form's code is running.
  void releaseUnloaded() { leaving_.clear(); }

  // The loaded form as its own type; loads it when needed.
  template <class T>
  T& as(const std::string& name) {
    return dynamic_cast<T&>(load(name));
  }

 private:
  struct Entry {
    std::unique_ptr<Form> form;
    std::unique_ptr<FormView> view;
  };
  std::map<std::string, FormMaker> makers_;
  std::map<std::string, ViewMaker> viewMakers_;
  std::map<std::string, Entry> loaded_;
  std::vector<std::string> order_;
  std::vector<Entry> leaving_;
};

}  // namespace qrn::host
