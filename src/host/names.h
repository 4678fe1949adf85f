// Names and numbers that stand in decks, in files beside the program, on its command line and on the way to
// the controller: each has its home here.
#pragma once

namespace qrn {

// Forms in the registry.
namespace formName {
inline constexpr const char *xyVote = "xyVote", *runtime = "xyVoteRuntime",
                            *quitOptions = "xyVoteQuitOptions", *matrixGraph = "xyVoteGraph",
                            *averageGraph = "xyVoteAverageGraph",
                            *distributionGraph = "xyVoteDistributionGraph",
                            *resultsTable = "xyVoteResultsTable", *balance = "xyVoteBalance",
                            *comms = "comms", *blank = "blankForm", *info = "infoForm",
                            *newItems = "newItemsForm", *newItemsStart = "newItemsStartForm",
                            *sifterVote = "sifterVoteForm", *liveRiskList = "liveRiskListCollection";
}  // namespace formName

// Tags of the vote slide and, the last four, of the presentation.
namespace tagName {
inline constexpr const char *exercise = "qrnMatrix", *damagedExercise = "qrnMatrixDamaged",
                            *progress = "qrnMatrixLog", *votes = "QRNVOTES", *postalVotes = "QRNPOSTALVOTES",
                            *convertedVotes = "qrnVotes", *question = "qrnVote",
                            *currentSlide = "qrnCurrentSlide", *activity = "qrnActivity",
                            *activeKeypads = "ActiveKeypads", *voteTerminated = "qrnVoteTerminated";
}  // namespace tagName

// Files beside the program that tell other programs something by being there.
namespace markerFile {
inline constexpr const char *keyboard = "baseKB.txt", *matrixActive = "MatrixActive.txt";
}  // namespace markerFile

// glo.cmdMode, and what glo.cmdFile and glo.cmdSlide hold besides names and numbers.
namespace runMode {
inline constexpr const char *display = "DISPLAY", *seriesVote = "SERIES VOTE", *setup = "SETUP",
                            *wizard = "WIZARD";
}  // namespace runMode
namespace cmdWord {
inline constexpr const char *slideHoldsExercise = "QRNMATRIX", *votesNotCleared = "VotesNotCleared";
}  // namespace cmdWord

inline constexpr const char* kKeyboardBase = "KBOARD";  // a base that is the keyboard of this machine

// `voteType` of an assessment.
namespace scaleKind {
inline constexpr int scalar = 1, sifter = 2, balance = 3;
}  // namespace scaleKind

// What the controller collects: glo.voteType, and the main vote's mode.
namespace voteKind {
inline constexpr int rank = 1, tag = 3, order = 5, allocate = 6, singleDigit = 9, singleItemSelect = 14;
}  // namespace voteKind

}  // namespace qrn
