// The neighbours of the running program in one place. `app` (or a test) fills it before anything else runs.
#pragma once

namespace qrn::host {

class Clock;
class ControllerLink;
class Dialogs;
class Environment;
class Files;
class FormRegistry;
class Loop;
class PresentationProgram;
class Random;
class Run;
class Sound;
class TextMeasure;
class XmlQuery;
class Windows;

struct Host {
  PresentationProgram* presentationProgram = nullptr;
  ControllerLink* controller = nullptr;
  Dialogs* dialogs = nullptr;
  Loop* loop = nullptr;
  Clock* clock = nullptr;
  Random* random = nullptr;
  Files* files = nullptr;
  Environment* environment = nullptr;
  TextMeasure* textMeasure = nullptr;
  Sound* sound = nullptr;
  FormRegistry* forms = nullptr;
  XmlQuery* xmlQuery = nullptr;  // null: demographic questions have no groups
  Run* run = nullptr;            // null: nothing to end
  Windows* windows = nullptr;    // null in a run without windows
};

Host& host();

// The run at hand, for whoever below has to end it.
class Run {
 public:
  virtual ~Run() = default;
  virtual void endProgram() = 0;
};
void endRun();  // nothing without one

}  // namespace qrn::host
