// A run told as a conversation: a small exercise on slide 1, `glo` by the names of its members, questions
// with their answers, a clock that moves in waits alone.
//
//   set runByOption 1                     show risks.0.average liveVotes
//   items 12 7 30                         the list anew, with these sort keys
//   votes 5 X -                           what the keypads have voted; "" for none
//   tag QRNVOTES TEXT                     of the slide; without TEXT it is told (decktag: of the deck)
//   question [default] 1;2; 1=Sales* 2=W  one more with its votes and groups; * is chosen
//   asks yes Close vote                   the next question holds these words; its answer (enter: by Enter)
//   at 0.5 {                              the lines up to } half a second from now, inside a wait
//   wait 2                                seconds
//   full 1                                the next write of a tag finds the disk full (files: of a file)
//   errors                                what the error log has got since
//   ends                                  from now on the end of the program is told
#pragma once

#include "core/glo.h"
#include "support/cases.h"
#include "support/test_host.h"

namespace qrn::test {

// `glo` as the run of `world`, with a new exercise of three items and two assessments on slide 1.
void beginRun(TestHost& world);
void beginExercise();

// Items "item 0" ... in the place of the old; a scale of points "s1" ..., counted from 1; a record of votes.
void addItems(int count);
void addScale(int assessment, const std::string& title, int points, int startFrom = 1);
void addVote(int item, int assessment, const std::string& votes);

class RunCase : public CaseTest {
 protected:
  RunCase();
  ~RunCase() override { glo = Glo{}; }
  static void items(const std::vector<std::string>& sortKeys);
  MemoryTags& slideTags() { return world.presentation.slide(1).tagStore; }
  // The records as the slide will show them at the next read.
  void store(const std::string& text);
  std::string newErrors();

  TestHost world;

 private:
  struct TellingRun : host::Run {
    explicit TellingRun(RunCase& told) : told_(told) {}
    void endProgram() override { told_.tell("the program ends"); }
    RunCase& told_;
  } run_{*this};
  void memberCommands();
  void worldCommands();
  std::size_t errorsTold_ = 0;
};

}  // namespace qrn::test
