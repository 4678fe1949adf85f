// The options of a room in case files.
#pragma once

#include "controller/room/arguments.h"
#include "controller/room/room.h"
#include "support/cases.h"

namespace qrn::test {

// [lowest=N] [highest=N] [rehearse=N] [close=PERCENT] [base=...] [names=N,TEXT]
inline controller::RoomOptions roomOptions(const Words& words, controller::RoomOptions options = {}) {
  for (const std::string& word : words) {
    const std::string name = word.substr(0, word.find('=')), value = word.substr(name.size() + 1);
    if (name == "base")
      options.bases.push_back(controller::readBase(value).value());
    else if (name == "names")
      options.names = controller::readNames(value);
    else if (name == "close")
      options.closePercent = std::stoi(value);
    else
      (name == "highest"  ? options.highest
       : name == "lowest" ? options.lowest
                          : options.rehearse) = std::stol(value);
  }
  return options;
}

}  // namespace qrn::test
