// What one vote screen is asked to show, in plain values. Everything that is seen follows from it
// (vote_model).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "charts/look/graph_look.h"
#include "core/records.h"

namespace qrn {

struct VoteOption {
  std::string key, text;
  std::int32_t colour = -1;  // of its bar, where the exercise has set one; -1: the theme's
  bool operator==(const VoteOption&) const = default;
};

// What stays as it is while one question is up.
struct VoteQuestion {
  double width = 0, height = 0;  // twips
  host::Ground ground;           // what is behind
  GraphLook look;                // and how text stands out from it
  AssessmentRecord stored;       // fonts, colours and places that the exercise keeps, made for this size
  std::string scale, item;       // `scale` "": not shown
  int at = 0, of = 0;            // the item's place in the list; 0: not said
  std::vector<VoteOption> options;
  bool showOptions = true;
  bool bars = true;         // room for them is kept
  int percentOrNumber = 0;  // beside the bars: 0 numbers, 1 percent, 2 both
  std::string statsCorner;  // "TL", "TR", "BL", "BR"; "" when statistics are never shown
  int statsLines = 4;
  bool aside = false;  // a column at the right for the code to join and the average
  bool operator==(const VoteQuestion&) const = default;
};

// Who has not voted yet. `labels` names as many as are to be named.
struct WaitingFor {
  std::string title;
  std::vector<std::string> labels;
  int all = 0;
  bool operator==(const WaitingFor&) const = default;
};

// What changes while the question is up.
struct VoteNow {
  bool closed = false;
  std::string count;        // as the count of votes says it
  bool clickable = false;   // a click on the count acts as Space
  int voted = 0, room = 0;  // keypads; `room` 0: nobody knows how many there are
  bool keyboard = false;    // the keyboard votes in their place
  std::optional<WaitingFor> waiting;
  std::vector<int> counts;  // votes per option
  int abstains = 0;
  bool barsShown = false;
  double grown = 1;               // how much of their way the bars have grown
  std::optional<double> average;  // shown large, with its mark on the scale
  std::string stats;              // the lines in the corner; "" for none
  std::string status;             // one plain sentence that must be read; "" for none
  std::string joinAddress;        // for phones that come late; "" for none
  bool operator==(const VoteNow&) const = default;
};

}  // namespace qrn
