// The run: everything in `glo` that is not saved.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/records.h"
#include "core/vote_record_text.h"
#include "host/windows.h"

namespace qrn::host {
class Presentation;
class PresentationProgram;
class Slide;
}  // namespace qrn::host

namespace qrn {

struct KeypadName {
  std::int32_t keypad = 0;
  std::string name;
  std::int32_t number = 0;
};

// One demographic question slide of the presentation, with its answers.
struct DemographicInfoGroup {
  std::int32_t optionNumber = 0;
  std::string groupName;
  bool selected = false;
};

struct DemographicInfo {
  std::int32_t slideID = 0, slideIndex = 0;
  std::string QID, questionText, votes;
  std::int32_t groupCount = 0;
  bool isDefault = false;
  std::vector<DemographicInfoGroup> groups;
};

// Made and copied in one place, too.
struct Session {
  Session();
  Session(const Session&);
  Session(Session&&) noexcept;
  Session& operator=(const Session&);
  Session& operator=(Session&&) noexcept;
  ~Session();

  // Host objects and folders
  host::PresentationProgram* oPowerPoint = nullptr;
  host::Presentation* oPresentation = nullptr;
  host::Slide* oVoteSlide = nullptr;
  std::string tempPath, matrixPath, appPath, helpFile, lockFile;
  std::string appTitle = "Matrix";
  std::int64_t PowerPoint_hWnd = 0, PowerPointSlideShow_hWnd = 0;
  host::WindowRect PowerPoint_RECT, PowerPointSlideShow_RECT;  // pixels; empty without such a window
  ScreenDimensions screen;                                     // what the forms fill
  std::vector<std::int64_t> disabledWindows;
  int currentSlide = 0, currentSlideID = 0;
  bool closing = false;
  bool exerciseLoaded = false;  // the slide holds an exercise, and it has been read

  // Command line and mode
  std::string cmdFile, cmdMode, cmdSlide, cmdField4, cmdField5;
  bool cmd_AutoStart = false;
  bool returnToEditor = false;

  // The exercise at hand
  bool exerciseDamaged = false;  // its text could not be read whole; the slide still holds it as it was

  // Records
  VoteRecordText voteRecords;    // mirrors the slide tag QRNVOTES
  VoteRecordText postalRecords;  // mirrors QRNPOSTALVOTES
  std::vector<std::string> sifterLines;
  bool hasSifterData = false;

  // Progress
  bool resumePending = false, runFinished = false;
  int logCategory = 1, logPairCount = 0, logCumulativePairCount = 0;
  std::array<bool, kAssessments> logAssessments{};

  // The item and vote at hand
  int currentRisk = 0;           // index into risks
  int currentItem = 0;           // the same in the runner's walk
  int currentAssessment = 1;     // 1-based
  int voteAssessmentNumber = 0;  // the assessment voted, 1-based: the number behind "C" in a key
  int voteStep = 0;
  std::array<int, kAssessments> assessmentVotePlan{};
  bool singleVoteRun = false;
  int jumpItem = 0, jumpAssessment = 0;
  bool quitRequested = false;

  // One running vote. liveVotes and the other keypad arrays are indexed by keypad number less 1 and keep one
  // spare element at the top.
  std::vector<std::string>
      liveVotes;  // "-100" not voted, "-1" no vote, "-2" abstain, "10" key 0, else the vote
  std::vector<int> postalVotes;
  std::vector<int> keypadIncluded;  // 1 counts, 0 and -1 do not
  int abstainCount = 0;
  std::int32_t voteType = 0, limits = 0, points = 0, allocation = 0;
  std::int32_t defaultVoteType = 9;
  std::string preVoteText, voteText, postVotedText;
  std::string voteTitle;  // name of the scale as the vote screen shows it; "" when it does not
  int options = 0, startFrom = 0;
  std::int32_t voteTextOptionCount = 0;
  int votesCast = 0;
  int voteComplete = 0, voteAbandoned = 0;
  bool restartVote = false, abstainEnabled = false;
  std::string allowedVotes;  // balance: the list of allowed votes
  bool voteOpen = false;     // presses count only while a vote is open
  bool displayOnly = false;  // a vote that is shown and not kept
  bool revotePending = false, revotePass = false;
  std::array<int, kAssessments> nextRounds{-1, -1, -1, -1, -1, -1, -1, -1, -1};
  std::array<int, kAssessments> defaultRounds{-1, -1, -1, -1, -1, -1, -1, -1, -1};  // -1: the current result

  // Keypads of the room
  std::string baseType;
  int keyboardFlag = 0;            // 1 once keyboard voting has been met
  bool keyboardTurnedOn = false;   // for this run, by the facilitator
  std::vector<int> keypadCounted;  // running tally by keypad: 0 not counted, 1 a number, 2 a valid vote
  int maxKeypads = 650;
  int keypadsNotVotedPopupOn = 0, keypadsNotVotedHowManyToShow = 0, keypadsNotVotedLo = 0,
      keypadsNotVotedHi = 650, keypadsNotVotedClose = 0, keypadsNotVotedClosePercent = 0, numKeypads = 0;
  bool useOffsets = false;
  std::vector<int> baseOffsets;
  std::vector<std::string> keypadPortInfo;
  std::vector<std::string> activeKeypads;
  bool roomRehearsed = false;  // the room's keypads vote by themselves: no list of them goes into the deck
  std::string activeKeypadList;
  bool scanMarked = false;  // a keypad scan has been started
  std::vector<KeypadName> keypadNames;

  // Filters and orders
  std::vector<DemographicInfo> demographicQuestions;
  bool demographicFilterOn = false;
  std::string demographicFilterText;
  std::int32_t listOrderCode = 0;
  std::string dataMessage;

  // Graphs
  std::int32_t averageDisplayKind = 0;
  bool showCumulative = false, showWeightedCumulative = false;
  std::array<int, 8> currentPlotPairings{-1, -1, -1, -1, -1, -1, -1, -1};
  std::array<int, 8> userSelectedPlotPairings{-1, -1, -1, -1, -1, -1, -1, -1};
  std::array<int, 8> lastDrawnPairings{-1, -1, -1, -1, -1, -1, -1, -1};
  std::array<int, 4> userPairActive{};
  bool useUserPairings = false;
  int MatrixGraphPlotting = 1;  // 1 points on the grid lines, 2 (skew) in cells of their own
};

}  // namespace qrn
