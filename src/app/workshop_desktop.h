// The facilitator's program: the desktop with the logic behind it.
#pragma once

#include <memory>
#include <string>

namespace qrn::desktop {
class Desktop;
}

namespace qrn::app {

class Neighbours;

class WorkshopDesktop {
 public:
  explicit WorkshopDesktop(Neighbours& neighbours);
  ~WorkshopDesktop();
  WorkshopDesktop(const WorkshopDesktop&) = delete;
  WorkshopDesktop& operator=(const WorkshopDesktop&) = delete;

  // The deck window on `deck` ("": none), until the person leaves. Returns the exit code.
  int run(const std::string& deck);
  // The same, started by a command line of comma-separated fields.
  int runFields(const std::string& deck, const std::string& fields);

 private:
  void runExercise(int slide);
  void runCommandLine(const std::string& fields);

  Neighbours& neighbours_;
  std::unique_ptr<desktop::Desktop> desktop_;
  bool running_ = false;
};

}  // namespace qrn::app
