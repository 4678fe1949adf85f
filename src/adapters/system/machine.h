// Clock, randomness, environment and the message loop of a run without windows.
#pragma once

#include <functional>
#include <random>
#include <vector>

#include "host/system.h"
#include "host/wait.h"

namespace qrn::system {

class MachineClock : public host::Clock {
 public:
  host::DateTime now() const override;
  std::int64_t microseconds() const override;
};

class MachineRandom : public host::Random {
 public:
  MachineRandom() : engine_(std::random_device{}()) {}
  void Randomize(std::uint64_t seed) override { engine_.seed(seed); }
  double Rnd() override { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }

 private:
  std::mt19937_64 engine_;
};

// "temp" is a folder of this run alone, inside the user's own that holds the logs; "APPDATA" is the user's
// configuration folder and "ALLUSERSPROFILE" the machine's where they are not set.
class MachineEnvironment : public host::Environment {
 public:
  std::string Environ(std::string_view name) const override;
  std::string logFolder() const override;
  bool processRuns(const std::string& name) const override;
};

// Yields by draining its pumps (texts of the controller link and the like), sleeps by sleeping.
class PlainLoop : public host::PumpedLoop {
 public:
  void yield() override { runPumps(); }
  void sleep(int milliseconds) override;
};

// No sound in a run without windows.
class Silence : public host::Sound {
 public:
  void play(const std::string&) override {}
};

}  // namespace qrn::system
