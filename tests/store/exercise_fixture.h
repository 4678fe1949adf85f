// A run with a vote slide and a fresh exercise in `glo`.
#pragma once

#include "core/model.h"
#include "store/exercise_text.h"
#include "store/full_exercise.h"
#include "support/test_host.h"

namespace qrn::test {

class ExerciseTest : public ::testing::Test {
 protected:
  ExerciseTest() {
    begin();
    glo.oVoteSlide = &world.presentation.slide(1);
    glo.matrixPath = "/tmp/t/quorin/";
  }
  ~ExerciseTest() override { glo = Glo{}; }
  void begin() {
    static_cast<Exercise&>(glo) = Exercise{};
    initXYVote();
  }
  std::string fullText(int items) {
    begin();
    fillExercise(glo, items);
    return writeExercise(glo);
  }
  // The exercise that `text` gives in a fresh run; what came with it is in `reading`.
  const Exercise& loaded(const std::string& text, ReadFor purpose = ReadFor::run) {
    begin();
    reading = readExercise(text, glo, purpose);
    return reading.exercise;
  }
  MemoryTags& tags() { return world.presentation.slide(1).tagStore; }

  TestHost world;
  ExerciseReading reading;
};

inline std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t from = 0;
  for (std::size_t to = text.find("\r\n"); to != std::string::npos; to = text.find("\r\n", from)) {
    lines.push_back(text.substr(from, to - from));
    from = to + 2;
  }
  if (from < text.size())
    lines.push_back(text.substr(from) + " (no line end)");
  return lines;
}

}  // namespace qrn::test
