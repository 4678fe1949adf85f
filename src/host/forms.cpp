#include "host/forms.h"

#include <algorithm>

#include "base/errors.h"
#include "host/wait.h"

namespace qrn::host {

void FormRegistry::define(const std::string& name, FormMaker maker) {
  makers_[name] = std::move(maker);
}

void FormRegistry::attach(const std::string& name, ViewMaker maker) {
  viewMakers_[name] = std::move(maker);
}

Form& FormRegistry::load(const std::string& name) {
  if (Form* form = find(name))
    return *form;
  const auto maker = makers_.find(name);
  if (maker == makers_.end())
    throw HostError(Fault::program, 91, "No form is named " + name);
  Entry entry;
  entry.form = maker->second();
  Form& form = *entry.form;
  const auto viewMaker = viewMakers_.find(name);
  if (viewMaker != viewMakers_.end())
    entry.view = viewMaker->second(form);
  const bool hasWindow = entry.view != nullptr;
  loaded_[name] = std::move(entry);
  order_.push_back(name);
  if (hasWindow && place)
    place(name);
  form.Form_Load();
  return form;
}

void FormRegistry::show(const std::string& name) {
  load(name);
  const auto it = loaded_.find(name);  // Form_Load may have unloaded it again
  if (it == loaded_.end())
    return;
  it->second.form->visible = true;
  if (it->second.view)
    it->second.view->show(false);
}

void FormRegistry::showModal(const std::string& name) {
  load(name);
  const auto it = loaded_.find(name);
  if (it == loaded_.end())
    return;
  it->second.form->visible = true;
  if (it->second.view)
    it->second.view->show(true);
  waitUntilGone(name);
}

void FormRegistry::hide(const std::string& name) {
  const auto it = loaded_.find(name);
  if (it == loaded_.end())
    return;
  it->second.form->visible = false;
  if (it->second.view)
    it->second.view->hide();
}

bool FormRegistry::unload(const std::string& name, bool byUser) {
  const auto it = loaded_.find(name);
  if (it == loaded_.end())
    return true;
  if (!it->second.form->Form_QueryUnload(byUser))
    return false;
  Entry entry = std::move(it->second);
  loaded_.erase(name);
  std::erase(order_, name);
  entry.form->visible = false;
  if (entry.view)
    entry.view->hide();
  entry.form->Form_Unload();
  leaving_.push_back(std::move(entry));
  return true;
}

bool FormRegistry::isLoaded(const std::string& name) const {
  return loaded_.count(name) != 0;
}

bool FormRegistry::isVisible(const std::string& name) const {
  const auto it = loaded_.find(name);
  return it != loaded_.end() && it->second.form->visible;
}

Form* FormRegistry::find(const std::string& name) const {
  const auto it = loaded_.find(name);
  return it == loaded_.end() ? nullptr : it->second.form.get();
}

void FormRegistry::refresh(const std::string& name) {
  const auto it = loaded_.find(name);
  if (it != loaded_.end() && it->second.view)
    it->second.view->refresh();
}

void FormRegistry::bringToFront(const std::string& name) {
  const auto it = loaded_.find(name);
  if (it != loaded_.end() && it->second.view)
    it->second.view->bringToFront();
}

void FormRegistry::waitUntilGone(const std::string& name) {
  waitUntil([&] { return !isVisible(name); });
}

std::vector<std::string> FormRegistry::loadedNames() const {
  return order_;
}

}  // namespace qrn::host
