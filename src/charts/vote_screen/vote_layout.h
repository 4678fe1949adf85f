// Where things stand on a vote screen and how its texts are set: the exercise's stored places where they are
// set, else places that suit every screen and every number of options. The open vote and its result have one
// layout, so nothing jumps when a vote closes.
#pragma once

#include <string>
#include <vector>

#include "charts/vote_screen/set_text.h"
#include "charts/vote_screen/vote_request.h"

namespace qrn {

struct Place {
  double Left = 0, Top = 0, Width = 0, Height = 0;  // twips
  double Right() const { return Left + Width; }
  double Bottom() const { return Top + Height; }
  double Middle() const { return Top + Height / 2; }
};

struct PlacedText {
  SetText text;
  Place place;
  host::Align align = host::Align::left;
};

// One option with its key before it and its bar beside it.
struct VoteRow {
  PlacedText option;
  Place key;           // the rounded square
  Place track;         // the bar at its full length
  bool told = true;    // false: one of very many, whose key and text have no room
  bool marked = true;  // false: no room for the number behind its bar
};

struct VoteLayout {
  PlacedText item, scale;
  Place step;  // "7 of 80" follows the scale; no width when there is no room for it
  std::vector<VoteRow> rows;
  double indent = 0;                               // of the options' texts behind their keys
  host::SurfaceFont keyFont, markFont, countFont;  // count: the quieter number behind the mark
  Place bars;                                      // all tracks with their marks
  bool ownKeys = false;    // bars stand apart from the options and have keys of their own
  Place stats, statsText;  // the label in its corner, and its words inside the margins
  host::SurfaceFont statsFont;
  host::Align statsAlign = host::Align::left;
  Place aside;  // the column at the right, no width when there is none
  Place track;  // of the votes cast
  Place count;  // the words beneath it
  Place told;   // who is missing, at the other end
  Place status;
};

VoteLayout layOut(const VoteQuestion& question);

// The parts of it: stored places (stored_places.cpp) take the place of the usual ones.
bool hasStoredOptions(const VoteQuestion& question);
void placeStoredTexts(const VoteQuestion& question, VoteLayout& layout);
void placeStoredOptions(const VoteQuestion& question, VoteLayout& layout);

// Type of the exercise: its family and slant at a size; its weight where `bold` is not given.
host::SurfaceFont typeOf(const FontRecord& stored, double size, bool bold);
// `place` moved, and if need be narrowed, so that it lies inside a screen of that size.
Place movedInside(Place place, double width, double height);
// Width of the widest mark that can stand behind a bar.
double markWidth(const VoteQuestion& question, const VoteLayout& layout);

}  // namespace qrn
