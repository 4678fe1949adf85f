// An exercise on a slide of a presentation in memory, for tests of votes.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "core/glo.h"
#include "support/test_host.h"

namespace qrn::test {

// A slide whose tags refuse to be written when told so.
class StubbornSlide : public MemorySlide {
 public:
  StubbornSlide() : MemorySlide(900, 1) {}
  host::Tags& tags() override { return stubborn; }

  class StubbornTags : public MemoryTags {
   public:
    void Append(std::string_view key, std::string_view tail) override {
      if (refusals > 0) {
        --refusals;
        throw HostError(Fault::world, 61, "The disk is full");
      }
      MemoryTags::Append(key, tail);
    }
    int refusals = 0;
  } stubborn;
};

class VoteTest : public ::testing::Test {
 protected:
  VoteTest() {
    glo = Glo();
    glo.maxKeypads = 6;
    glo.oPowerPoint = &world.program;
    glo.oPresentation = &world.presentation;
    glo.oVoteSlide = &slide;
    glo.voteAssessmentNumber = 1;
    glo.assessmentInfo[0].active = true;
    for (std::vector<std::string>& labels : glo.scaleLabels)
      labels.assign(6, "");  // five points and the spare
  }
  ~VoteTest() override { glo = Glo(); }

  void addItems(const std::vector<int>& sortKeys) {
    glo.risks.assign(sortKeys.size() + 1, RiskRecord());
    for (std::size_t i = 0; i < sortKeys.size(); ++i) {
      glo.risks[i].sortKey = sortKeys[i];
      glo.risks[i].ID = static_cast<int>(i);
      glo.risks[i].text = "item " + std::to_string(sortKeys[i]);
      glo.risks[i].voting = true;
    }
  }
  void setVotes(std::vector<std::string> votes) {
    glo.liveVotes = std::move(votes);
    glo.liveVotes.push_back("9");  // the spare element, which nothing reads
  }
  // The records as the slide will show them at the next read.
  void store(const std::string& text) {
    slide.stubborn.values["QRNVOTES"] = text;
    glo.voteRecords.forget();
  }
  std::string stored() { return slide.stubborn.values["QRNVOTES"]; }
  std::vector<std::string> firstVotes(std::size_t count) {
    return {glo.liveVotes.begin(), glo.liveVotes.begin() + static_cast<std::ptrdiff_t>(count)};
  }

  TestHost world;
  StubbornSlide slide;
};

}  // namespace qrn::test
