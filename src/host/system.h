// Clock, randomness, environment, files, sound and text measuring.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::host {

struct DateTime {
  int year = 2000, month = 1, day = 1, hour = 0, minute = 0, second = 0, millisecond = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime now() const = 0;               // local time
  virtual std::int64_t microseconds() const = 0;  // steady, from any start
  double Timer() const {                          // seconds since midnight
    const DateTime t = now();
    return t.hour * 3600 + t.minute * 60 + t.second + t.millisecond / 1000.0;
  }
};

class Random {
 public:
  virtual ~Random() = default;
  virtual void Randomize(std::uint64_t seed) = 0;
  virtual double Rnd() = 0;  // 0 <= x < 1
};

// Paths use the host's own separator; "~"-style or relative expansion is the caller's affair.
class Files {
 public:
  virtual ~Files() = default;
  virtual bool fileExists(const std::string& path) const = 0;
  virtual bool folderExists(const std::string& path) const = 0;
  virtual void makeFolder(const std::string& path) = 0;  // with its parents
  virtual std::string read(const std::string& path) const = 0;
  // All or nothing: a new file, flushed, renamed over the old one, folder flushed.
  virtual void write(const std::string& path, std::string_view text) = 0;
  virtual void append(const std::string& path, std::string_view text) = 0;
  virtual void Kill(const std::string& path) = 0;  // deletes; absent: nothing happens
  virtual std::vector<std::string> list(const std::string& folder) const = 0;  // names, sorted
};

class Environment {
 public:
  virtual ~Environment() = default;
  virtual std::string Environ(std::string_view name) const = 0;  // "" when not set
  // Where the logs of a day stand, whichever run writes them.
  virtual std::string logFolder() const { return Environ("temp"); }
  // Whether a program of that name runs on this machine; case does not matter.
  virtual bool processRuns(const std::string& name) const = 0;
};

// Measures text for layout, in twips (15 to a pixel at 96 dots an inch). `size` is in points.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  virtual double TextWidth(std::string_view text, const std::string& font, double size, bool bold,
                           bool italic) const = 0;  // widest line
  virtual double LineHeight(const std::string& font, double size) const = 0;
  // From the top of a line to its baseline, and from there up to the top of its capitals.
  virtual double Ascent(const std::string& font, double size, bool bold, bool italic) const = 0;
  virtual double CapHeight(const std::string& font, double size, bool bold, bool italic) const = 0;
  virtual bool fontInstalled(const std::string& font) const = 0;
  // Where a line may break inside a text without blanks, as offsets in bytes: scripts such as Chinese and
  // Thai set none between words.
  virtual std::vector<std::size_t> breaksInside(std::string_view word) const {
    (void)word;
    return {};
  }
};

class Sound {
 public:
  virtual ~Sound() = default;
  virtual void play(const std::string& file) = 0;
};

}  // namespace qrn::host
