// The vote records of the slide: saving one vote, finding it again, correcting it, and the keypad list beside
// it.
//
// A record is the line "date,time,votes,key". Votes are one token per keypad, each followed by ";": "X"
// abstain,
// "-" no vote, "A" ten, otherwise one digit. The key is the item's sortKey, "C" and the assessment number.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace qrn {

// Key of the vote records of item `risk` (index into glo.risks) on `assessment` (counted from 1).
std::string voteKey(int risk, int assessment);

// Called with each record line (no line end) once it is durably in the slide tag.
extern std::function<void(const std::string& line)> voteSaved;

// Stores glo.liveVotes as a new record of the current item (glo.currentRisk) and the assessment voted
// (glo.voteAssessmentNumber). When the disk fails the facilitator is told and may try again; a record given
// up then stays in memory, shows in all results, and goes out before the next one. False when it is not on
// the disk.
bool SaveCVotes();

// Tries again to store the records that a failing disk has left in memory; true when none is left.
bool saveLeftoverVotes();
// Number of records of this slide that are in memory only, and giving them up (after the live data has been
// cleared).
int leftoverVotes();
void forgetLeftoverVotes();

// Fills glo.voteRecords from the slide unless that has been done.
void readVoteRecords();
// Likewise glo.postalRecords.
void readPostalRecords();

// Fills glo.liveVotes, glo.keypadIncluded and glo.postalVotes from the newest record of `key`; a keypad that
// the filter leaves out reads as not voted. False when there is no vote; all keypads are "-100" then.
bool LoadVotes(const std::string& key);

// Fills glo.postalVotes from the postal store; false when it has no line of this key, and then the postal
// votes that LoadVotes found in the record itself stay. Call it after LoadVotes.
bool LoadPostalVotes(const std::string& key);

// Writes glo.liveVotes over the first record of `key` (any case), keeping its date and time. Keypads that
// have not voted leave no token, so later keypads move up. A tag without records gets a message: call it only
// to correct.
void modifyVoteResult(const std::string& key);

// The slide to open: the presentation tag qrnCurrentSlide, which is deleted, else where the show or the
// window stands. The show and the window are taken there. 0 when there is nothing to take it from.
int readCurrentSlide();

// glo.activeKeypads from the presentation tag ActiveKeypads; one empty element when there is none.
void ReadActiveKeypads();

// glo.sifterLines and glo.hasSifterData from the slide.
void LoadSifterSorterData();

// Grows glo.liveVotes, glo.keypadIncluded to glo.maxKeypads and the spare element, keeping their contents.
void sizeVoteArrays();

}  // namespace qrn
