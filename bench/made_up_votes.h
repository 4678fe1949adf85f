// Vote records of an exercise that was never held, the same in every run.
#pragma once

#include <random>
#include <string>

namespace qrn::bench {

inline constexpr int kScalePoints = 5;

inline std::string voteRecord(std::mt19937& random, int sortKey, int assessment, int keypads) {
  std::string line = "14/03/2026,09:00:00,";
  for (int k = 0; k < keypads; ++k) {
    const unsigned long draw = random() % 20;
    line += draw == 0   ? 'X'
            : draw == 1 ? '-'
                        : static_cast<char>('1' + static_cast<int>(draw % kScalePoints));
    line += ';';
  }
  return line + "," + std::to_string(sortKey) + "C" + std::to_string(assessment) + "\r\n";
}

// One record for each item and assessment, sort keys from 1.
inline std::string voteRecords(int items, int assessments, int keypads) {
  std::mt19937 random(7);
  std::string text;
  for (int assessment = 1; assessment <= assessments; ++assessment)
    for (int item = 1; item <= items; ++item) text += voteRecord(random, item, assessment, keypads);
  return text;
}

}  // namespace qrn::bench
